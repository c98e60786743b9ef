// SPDX-License-Identifier: MIT
// The edited graph's shape: in stored units, and rendered.
#include <algorithm>

#include "editor/graph/EditedGraph.h"

using namespace model;
using VSTGUI::CPoint;

namespace editor {

namespace {

// How the shape on show is rendered: in full precision, and held inside of the graph also where its points aren't. Each
// segment that is long enough gets its curve handle in the middle of the cells that it fills.
template <class OnMiddle>
struct ShownShape {
  OnMiddle onMiddle;

  static double height(double y) noexcept { return y; }
  static double limited(double y) noexcept { return std::clamp(y, 0.0, 1.0); }
  void rendered(std::size_t from, std::size_t to, int start, int length) const {
    onMiddle(from, to, std::min(start + (length + 1) / 2, kGraphTableSize - 1));
  }
};

}  // namespace

void EditedGraph::RenderShape() {
  points[at(lastPoint + 1)].x = graphWidth;
  curveHandles.fill(kNoHandle);
  const std::span<float, kGraphTableSize> table(shapeTable.data(), kGraphTableSize);
  const auto placeCurveHandle = [&](std::size_t from, std::size_t to, int middle) {
    const double y = 1.0 - static_cast<double>(table[at(middle)]);
    curveHandles[from] = around({(points[from].x + points[to].x) / 2, y * graphHeight}, closeEnoughDistance);
  };
  renderGraph(storedPoints(Rounding::none), table, ShownShape<decltype(placeCurveHandle)>{placeCurveHandle});
  std::fill(shapeTable.begin() + kGraphTableSize, shapeTable.end(), table.back());
}

// The height of the curve, as it was last rendered.
double EditedGraph::curveY(double x) const {
  const int index = std::clamp(static_cast<int>(scale().toStored({x, 0}, Rounding::factor).x), 0, kGraphTableSize - 1);
  return (1.0 - static_cast<double>(shapeTable[at(index)])) * graphHeight;
}

GraphPoints EditedGraph::storedPoints(Rounding rounding) const {
  GraphPoints stored;
  stored.lastPoint = lastPoint;
  for (std::size_t i = 0; i < at(kGraphSlots); ++i) {
    const CPoint place = scale().toStored(points[i], rounding);
    stored.x[i] = place.x;
    stored.y[i] = place.y;
    stored.curve[i] = i < curves.size() ? curves[i] : kEditedStraight;
  }
  return stored;
}

void EditedGraph::takePoints(const GraphPoints& stored, int slots, Rounding rounding) {
  lastPoint = std::clamp(stored.lastPoint, 1, kEditedPoints - 1);
  for (int i = 0; i < slots; ++i) {
    points[at(i)] = scale().toPixels({stored.x[at(i)], stored.y[at(i)]}, rounding);
    if (i < kEditedPoints) curves[at(i)] = stored.curve[at(i)];
    placeHandle(i);
  }
}

GraphState EditedGraph::graphState() const { return {storedPoints(Rounding::none), loopPoint, startPoint}; }

void EditedGraph::setGraphState(const GraphState& state) {
  takePoints(state.points, kGraphSlots, Rounding::none);
  loopPoint = state.loopPoint;
  startPoint = state.startPoint;
  RenderShape();
  renderDirty = true;
}

void EditedGraph::joinEnds(bool firstLeads) {
  CPoint& first = points[0];
  CPoint& last = points[at(lastPoint)];
  (firstLeads ? last : first).y = (firstLeads ? first : last).y;
  placeHandle(0);
  placeHandle(lastPoint);
}

}  // namespace editor
