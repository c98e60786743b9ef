// SPDX-License-Identifier: MIT
// The rendering of one graph into its table. A frame of these rows is one of the table's 65536 values, and a graph is a
// block: it is rendered on the audio thread when the host automates a point.
#include <memory>
#include <span>

#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "model/CurveLaw.h"
#include "threads/Shared.h"

using namespace model;

namespace bench {
namespace {

void rendering(benchmark::State& state, int lastPoint, double curve) {
  GraphPoints points;
  points.lastPoint = lastPoint;
  for (std::size_t i = 0; i < points.x.size(); ++i) {
    points.x[i] = std::min(kGraphWidth, kGraphWidth * static_cast<double>(i) / lastPoint);
    points.y[i] = i % 2 == 0 ? 0.0 : 1.0;
    points.curve[i] = curve;
  }
  const auto table = std::make_unique<Shared<float>[]>(kGraphTableSize);
  const std::span<Shared<float>, kGraphTableSize> whole(table.get(), kGraphTableSize);
  measure(state, kGraphTableSize, [&](std::size_t) {
    renderGraph(points, whole);
    benchmark::ClobberMemory();
  });
}

}  // namespace

void addRenderingRows() {
  addRow("rendering a value/3 points, straight", [](benchmark::State& s) { rendering(s, 2, kStraightCurve); });
  addRow("rendering a value/64 points, curved", [](benchmark::State& s) { rendering(s, 63, 0.8); });
}

}  // namespace bench
