// SPDX-License-Identifier: MIT
// Writes the first inputs of the fuzz targets for stored states into folders below the one that it is given.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "tests/model/ChunkBuilder.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, std::span<const std::byte> bytes) {
  fs::create_directories(path.parent_path());
  if (model::replaceFile(path, bytes)) std::abort();
}

void writeChunk(const fs::path& folder, const std::string& name, const std::vector<std::byte>& chunk) {
  write(folder / "chunk" / name, chunk);
  write(folder / "preset" / name, model::writePreset(chunk));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 1;
  const fs::path folder = argv[1];
  const model::State states[] = {model::State(), randomState(1)};
  for (std::size_t s = 0; s < std::size(states); ++s) {
    const std::string name = s ? "busy" : "fresh";
    for (const float version : {0.9f, 0.975f, 1.17f, 1.235f, model::kStateVersion}) {
      const std::string at = name + "-" + std::to_string(version);
      writeChunk(folder, at, ChunkBuilder::current(states[s], version).bytes());
    }
    writeChunk(folder, name + "-old", ChunkBuilder::old(states[s], 1.0f).bytes());
    auto shape = model::writeShape(model::pointsOf(states[s], 0));
    write(folder / "shape" / name, shape);
    shape[2049] = std::byte{7};
    write(folder / "shape" / (name + "-pixels"), shape);
    write(folder / "shape" / (name + "-old"), std::span(shape).first(model::kSmallestOldShape));
  }
}
