// SPDX-License-Identifier: MIT
// Graphs to edit without a window, and what must hold of each, whatever was done to it.
#pragma once

#include <gtest/gtest.h>
#include <vector>

#include "editor/graph/EditedGraph.h"

inline constexpr double kWidth = static_cast<double>(model::kPixelWidth);  // of a graph of the reference size
inline constexpr double kHeight = static_cast<double>(model::kPixelHeight);
inline constexpr double kNear = 1e-4;  // pixels that rounding to floats may move a point

inline void expectAt(const VSTGUI::CPoint& actual, double x, double y) {
  EXPECT_NEAR(actual.x, x, kNear);
  EXPECT_NEAR(actual.y, y, kNear);
}

// From the left to the right end, all at one height.
inline std::vector<VSTGUI::CPoint> line(int lastPoint, double y = kHeight / 2) {
  std::vector<VSTGUI::CPoint> points;
  for (int i = 0; i <= lastPoint; ++i) points.emplace_back(kWidth * i / lastPoint, y);
  return points;
}

// Of the reference size, with its ends linked.
class DrawnGraph : public editor::EditedGraph {
 public:
  explicit DrawnGraph(const std::vector<VSTGUI::CPoint>& through) : EditedGraph(kWidth, kHeight, true) {
    lastPoint = static_cast<int>(through.size()) - 1;
    for (int i = 0; i <= lastPoint; ++i) {
      points[editor::at(i)] = through[editor::at(i)];
      placeHandle(i);
    }
    RenderShape();
  }
  VSTGUI::CPoint point(int i) const { return points[editor::at(i)]; }
  double curve(int segment) const { return curves[editor::at(segment)]; }
  double shownY(double x) const { return kHeight * (1.0 - shapeTable[static_cast<std::size_t>(x / kWidth * 65536)]); }
  // The place in the graph that was asked for.
  VSTGUI::CPoint move(int i, VSTGUI::CPoint where, bool snaps = false) {
    movePoint(i, where, snaps);
    return where;
  }
  void step(VSTGUI::CPoint where, bool snaps = false) {
    drawStep(where, snaps);
    RenderShape();
  }
  void select(std::initializer_list<int> chosen) {
    selection.clear();
    for (const int i : chosen) AllocateSelPoint(i, 1.0f);
    selectionActive = true;
  }
  bool shift(double x, double y, editor::Stretch stretch = editor::Stretch::none) {
    return moveSelection(x / kWidth, y / kHeight, stretch);
  }
};

// Points in order and in the graph, each under its handle, and curves that every drag can bend back.
inline void expectSound(const editor::EditedGraph& graph) {
  ASSERT_GE(graph.lastPoint, 1);
  ASSERT_LT(graph.lastPoint, editor::kEditedPoints);
  ASSERT_LE(graph.selection.size(), 64u);
  double before = 0.0;
  for (std::size_t i = 0; i <= editor::at(graph.lastPoint); ++i) {
    const VSTGUI::CPoint& p = graph.points[i];
    ASSERT_TRUE(p.x >= before - kNear && p.x <= graph.graphWidth + kNear) << i;
    ASSERT_TRUE(p.y >= 0.0 && p.y <= graph.graphHeight) << i;
    ASSERT_EQ(graph.pointHandles[i].left, p.x - graph.closeEnoughDistance) << i;
    ASSERT_TRUE(i == editor::at(graph.lastPoint) || (graph.curves[i] > 0.0 && graph.curves[i] < 1.0)) << i;
    before = p.x;
  }
  for (std::size_t i = 0; i < 65536; ++i) ASSERT_TRUE(graph.shapeTable[i] >= 0.0f);
}
