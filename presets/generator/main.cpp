// SPDX-License-Identifier: MIT
// Makes the factory set from its definitions. Run by the build as
//   modrift_factory DEFINITIONS OUTPUT     writes presets and shapes in their folders below OUTPUT
//   modrift_factory DEFINITIONS --list     prints the tables of docs/presets.md
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "presets/generator/Definitions.h"
#include "presets/generator/FactoryWriter.h"
#include "presets/generator/Listing.h"

namespace {

namespace fs = std::filesystem;
using namespace modrift::factory;

fs::path placeIn(const fs::path& folder, const std::string& name, const char* ending) {
  fs::create_directories(folder);
  return folder / (name + ending);
}

void writeSet(const FactorySet& set, const fs::path& output) {
  for (const Shape& shape : set.shapes)
    writeShape(placeIn(output / "Shapes" / shape.folder, shape.name, ".shp"), shape);
  for (const Preset& preset : set.presets) writePreset(placeIn(output / preset.folder, preset.name, ".fxp"), preset);
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::fputs("usage: modrift_factory DEFINITIONS (OUTPUT | --list)\n", stderr);
    return 2;
  }
  const FactorySet set = readFactorySet(argv[1]);
  if (std::string_view(argv[2]) == "--list") {
    std::fputs(listing(set).c_str(), stdout);
  } else {
    writeSet(set, argv[2]);
  }
  return 0;
} catch (const std::exception& fault) {
  std::fprintf(stderr, "modrift_factory: %s\n", fault.what());
  return 1;
}
