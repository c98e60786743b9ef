// SPDX-License-Identifier: MIT
#include "presets/generator/FactoryWriter.h"

#include <span>
#include <stdexcept>
#include <string>

#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "presets/generator/Application.h"

namespace modrift::factory {
namespace {

void write(const std::filesystem::path& path, std::span<const std::byte> bytes) {
  if (const std::error_code error = model::replaceFile(path, bytes))
    throw std::runtime_error(path.string() + ": cannot be written (" + error.message() + ")");
}

}  // namespace

void writePreset(const std::filesystem::path& path, const Preset& preset) {
  write(path, model::writePreset(chunkOf(preset)));
}

void writeShape(const std::filesystem::path& path, const Shape& shape) { write(path, model::writeShape(shape.points)); }

}  // namespace modrift::factory
