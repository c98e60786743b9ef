// SPDX-License-Identifier: MIT
// Drawing into the edited graph by segments: the grid cell under the pointer becomes a flat step.
#include <algorithm>

#include "editor/graph/EditedGraph.h"

using namespace model;
using VSTGUI::CPoint;

namespace editor {

namespace {

bool closeOn(const EditedGraph& graph, int i, double x) {
  return graph.CloseEnough(static_cast<float>(graph.points[at(i)].x), static_cast<float>(x));
}

}  // namespace

void EditedGraph::drawStep(CPoint& where, bool snaps) {
  if (snaps) where.y = grid().nearest(where).y;
  where = inGraph(where);
  const auto [left, right] = grid().columnAt(where.x);
  const int start = putStepStart(openStep(left, where.y), left, where.y);
  const int j = std::min(start + 1, kEditedPoints - 1);
  clearStep(j, right);
  closeStep(j, right, where.y);
}

// Keeps the curve up to the cell with a point on it; gives the index at which the step begins.
int EditedGraph::openStep(double left, double y) {
  const int i = firstPointFrom(left - closeEnoughDistance * 0.5);
  if (i == 0) {
    openStepAtStart(y);
    return 0;
  }
  if (!closeOn(*this, i, left)) insertPoint(i, {left, curveY(left)});
  return i + 1;
}

void EditedGraph::openStepAtStart(double y) {
  points[0].y = y;
  placeHandle(0);
  if (!closeOn(*this, lastPoint, points[at(lastPoint - 1)].x)) insertPoint(lastPoint, CPoint(points[at(lastPoint)]));
  if (linkedEnds) joinEnds(true);
}

// The step's left point, in place of what lay at the edge; gives its index.
int EditedGraph::putStepStart(int first, double left, double y) {
  while (first < lastPoint && closeOn(*this, first, left)) removePoint(first);
  CPoint place(left, y);
  if (first > 0 && points[at(first - 1)].x > left) place.x = points[at(first - 1)].x + 0.0001;
  if (first < kEditedPoints) {
    insertPoint(first, place);
  } else {
    points[at(first)] = place;
  }
  return first;
}

// Removes what lies inside the cell, and doubles at its right edge. The last point goes too where it is inside: one
// point too many may have pushed the end of the graph out.
void EditedGraph::clearStep(int j, double right) {
  const auto inside = [&](int i) { return points[at(i)].x < right - closeEnoughDistance * 0.5; };
  while (j <= lastPoint && j < kEditedPoints - 1 && inside(j)) removePoint(j);
  while (j < lastPoint && closeOn(*this, j, right) && closeOn(*this, j + 1, right)) removePoint(j);
}

// The step's right point, which stays left of what lies at the edge, and a point on the old curve from where that goes
// on. In the last place of all it pushes out what was there.
void EditedGraph::closeStep(int j, double right, double y) {
  const bool goesOn = j <= lastPoint && j < kEditedPoints - 1;
  insertPoint(j, {goesOn ? std::min(right, points[at(j)].x) : right, y});
  points[at(lastPoint + 1)].x = graphWidth;
  const int next = std::min(j + 1, kEditedPoints - 1);
  if (!closeOn(*this, next, right)) insertPoint(next, {right, curveY(right)});
}

}  // namespace editor
