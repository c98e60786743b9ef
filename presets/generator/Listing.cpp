// SPDX-License-Identifier: MIT
#include "presets/generator/Listing.h"

namespace modrift::factory {
namespace {

// The bar would end the cell.
std::string cell(const std::string& text) {
  std::string safe;
  for (const char c : text) safe += c == '|' ? std::string("\\|") : std::string(1, c);
  return safe;
}

}  // namespace

std::string listing(const FactorySet& set) {
  std::string text;
  const std::string* folder = nullptr;
  for (const Preset& preset : set.presets) {
    if (!folder || *folder != preset.folder)
      text += "\n### " + preset.folder + "\n\n| Preset | What it does |\n|---|---|\n";
    folder = &preset.folder;
    text += "| " + preset.name + " | " + cell(preset.about) + " |\n";
  }
  text += "\n### Shapes\n\n| Folder | Shapes |\n|---|---|\n";
  folder = nullptr;
  for (const Shape& shape : set.shapes) {
    const bool isNew = !folder || *folder != shape.folder;
    if (isNew && folder) text += " |\n";
    text += isNew ? "| " + shape.folder + " | " + shape.name : ", " + shape.name;
    folder = &shape.folder;
  }
  return text + " |\n";
}

}  // namespace modrift::factory
