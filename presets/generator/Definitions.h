// SPDX-License-Identifier: MIT
// The factory set as it stands in the definition files: one file a folder of the set, docs/presets.md has the format.
//
// `readShapes` and `readPresets` take one file's text each, `readFactorySet` a whole tree. What cannot be understood
// ends in a `DefinitionError` that names file and line.
#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/CurveLaw.h"
#include "presets/generator/Words.h"

namespace modrift::factory {

struct Shape {
  std::string folder, name;
  model::GraphPoints points;
};

// What moves, as a preset promises it and the tests measure it at 120 beats a minute.
struct Movement {
  enum class Of { volume, pan, cutoff, resonance, var, controller };
  Of of = Of::volume;
  bool once = false;  // once after a note and then at rest, instead of again and again
  Length period;
  std::string periodText;
  double depth = 0.0;  // between the lowest and the highest: dB for the volume, steps for the controller, else percent
  double toneHz = 1000.0;  // of the test tone that shows it
};

struct Setting {
  int index;  // as setParameter takes it
  float value;
};

struct Preset {
  std::string folder, name, about;
  std::vector<Setting> settings;             // in the order of the file; all others stay as a new effect has them
  std::map<int, model::GraphPoints> graphs;  // by graph, from 0
  std::vector<Movement> movements;
};

struct FactorySet {
  std::vector<Shape> shapes;
  std::vector<Preset> presets;
};

struct DefinitionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// `file` names the text in messages; its name without ending is the folder.
[[nodiscard]] std::vector<Shape> readShapes(const std::filesystem::path& file, std::string_view text);
[[nodiscard]] std::vector<Preset> readPresets(const std::filesystem::path& file, std::string_view text,
                                              const std::vector<Shape>& shapes);
// All `*.txt` of the folder, and of its folder Shapes, in the order of their names.
[[nodiscard]] FactorySet readFactorySet(const std::filesystem::path& folder);

}  // namespace modrift::factory
