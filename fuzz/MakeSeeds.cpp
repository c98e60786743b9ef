// Writes the first inputs of the fuzz targets for stored states into folders below the one that it is given.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "model/Bytes.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "model/StateChunk.h"
#include "model/StateFields.h"

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::byte>;

void write(const fs::path& path, std::span<const std::byte> bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Everything on, all graphs with many points.
model::State busyState() {
  model::State state;
  GraphPoints points = freshGraph();
  points.lastPoint = 20;
  for (std::size_t i = 0; i < 20; ++i) {
    points.x[i] = static_cast<double>(i) * 3000.0;
    points.y[i] = i % 2 ? 0.25 : 0.75;
    points.curve[i] = static_cast<double>(i) / 20.0;
  }
  for (int g = 0; g < kGraphs; ++g) model::setPoints(state, g, points);
  for (const model::Field& field : model::stateFields()) {
    const bool bSetting = field.parameter >= 0 && field.name != "version";
    for (int i = 0; bSetting && i < field.count; ++i) model::store(state, field, i, 0.75 + i);
  }
  return state;
}

Bytes currentChunk(const model::State& state, float version) {
  const auto chunk = model::writeChunk(state);
  Bytes bytes(chunk.begin(), chunk.end());
  model::put(std::span(bytes), static_cast<std::size_t>(model::findField("version")->now.offset), version);
  return bytes;
}

// Today's bytes moved to where the old layout has them.
Bytes oldChunk(const model::State& state, float version) {
  const Bytes from = currentChunk(state, version);
  Bytes bytes(18813);
  for (const model::Field& field : model::stateFields()) {
    if (field.old.offset < 0) continue;
    const std::size_t length = model::widthOf(field.type) * static_cast<std::size_t>(field.count);
    std::copy_n(from.begin() + field.now.offset, length, bytes.begin() + field.old.offset);
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 1;
  const fs::path folder = argv[1];
  const model::State states[] = {model::State(), busyState()};
  for (std::size_t s = 0; s < std::size(states); ++s) {
    const std::string name = s ? "busy" : "fresh";
    for (const float version : {0.9f, 0.975f, 1.17f, 1.235f, model::kStateVersion}) {
      const std::string at = name + "-" + std::to_string(version);
      write(folder / "chunk" / at, currentChunk(states[s], version));
      write(folder / "preset" / at, model::writePreset(currentChunk(states[s], version)));
    }
    write(folder / "chunk" / (name + "-old"), oldChunk(states[s], 1.0f));
    write(folder / "preset" / (name + "-old"), model::writePreset(oldChunk(states[s], 1.0f)));
    auto shape = model::writeShape(model::pointsOf(states[s], 0));
    write(folder / "shape" / name, shape);
    shape[2049] = std::byte{7};
    write(folder / "shape" / (name + "-pixels"), shape);
    write(folder / "shape" / (name + "-old"), std::span(shape).first(model::kSmallestOldShape));
  }
}
