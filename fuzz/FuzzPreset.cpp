// SPDX-License-Identifier: MIT
// A preset file: its chunk lies inside the file, and what is read of it is written and read again the same.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "fuzz/Require.h"
#include "model/PresetFile.h"
#include "model/StateChunk.h"
#include "model/StateFields.h"

using namespace model;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto file = std::as_bytes(std::span(data, size));
  const auto chunk = model::chunkOfPreset(file);
  if (!chunk) return 0;
  require(chunk->data() == file.data() + model::kPresetHeaderBytes && chunk->size() <= size - model::kPresetHeaderBytes,
          "the chunk lies inside the file");
  const auto reading = model::readChunk(*chunk);
  const auto* const loaded = std::get_if<model::LoadedState>(&reading);
  if (!loaded) return 0;
  for (const model::Field& field : model::stateFields()) {
    for (int i = 0; i < field.count; ++i) {
      const double value = field.get(loaded->state, i);
      require(std::isfinite(value) && value >= field.low && value <= field.high, "values are inside their limits");
    }
  }
  for (int g = 0; g < kGraphs; ++g) {
    const GraphPoints points = model::pointsOf(loaded->state, g);
    const auto end = points.x.begin() + points.lastPoint + 1;
    require(std::is_sorted(points.x.begin(), end) && points.x[0] == 0.0 && *(end - 1) == kGraphWidth, "X rises");
  }
  const auto again = model::writePreset(model::writeChunk(loaded->state));
  const auto reread = model::readChunk(model::chunkOfPreset(again).value());
  // Points that a scale has brought from pixels carry more digits than are stored; the second time they do not.
  const auto third = model::readChunk(model::writeChunk(std::get<model::LoadedState>(reread).state));
  require(std::get<model::LoadedState>(third).state == std::get<model::LoadedState>(reread).state,
          "a state that was written comes back as it was");
  return 0;
}
