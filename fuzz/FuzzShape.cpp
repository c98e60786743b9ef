// SPDX-License-Identifier: MIT
// A shape file: any bytes give a graph that can be drawn and comes back from a file of its own, or are refused.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "fuzz/Require.h"
#include "model/CurveLaw.h"
#include "model/ShapeFile.h"

using namespace model;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto points = model::readShape(std::as_bytes(std::span(data, size)));
  if (!points) return 0;
  require(points->lastPoint >= 1 && points->lastPoint <= kStoredSlots, "the last point has a slot");
  const auto end = points->x.begin() + points->lastPoint + 1;
  require(std::is_sorted(points->x.begin(), end) && points->x[0] == 0.0 && *(end - 1) == kGraphWidth, "X rises");
  static std::vector<float> table(kGraphTableSize);
  renderGraph(*points, std::span<float, kGraphTableSize>(table));
  const auto isInside = [](float value) { return value >= -0.01f && value <= 1.01f; };
  require(std::ranges::all_of(table, isInside), "the table stays near 0 to 1");
  const auto again = model::readShape(model::writeShape(*points));
  require(again && again->y == points->y && again->lastPoint == points->lastPoint, "a shape comes back as it was");
  return 0;
}
