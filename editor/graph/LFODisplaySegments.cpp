// Drawing by segments: the grid cell under the pointer becomes a flat step, and the curve on both sides stays.
#include <algorithm>
#include <cmath>

#include "editor/graph/LFODisplay.h"

using namespace VSTGUI;

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

float single(double x) { return static_cast<float>(x); }

}  // namespace

void LFODisplay::drawSegment(CPoint& where, bool snaps) {
  pressedPoint = hoverPoint = -1;
  valueShown_ = false;
  if (snaps) where.y = onGrid(where).y;
  where = inGraph(where);
  const int cells = gridSize;
  const float share = single(where.x / graphWidth) * static_cast<float>(cells);
  const double cell = std::floor(std::clamp(static_cast<double>(share), 0.0, cells - 1.0));
  const double left = static_cast<double>(single(1.0 / cells * cell * graphWidth));
  const double right = std::min(graphWidth, left + std::floor(graphWidth / cells));
  const int start = putSegmentStart(openSegment(left, where.y), left, where.y);
  const int j = std::min(start + 1, kEditedPoints - 1);
  clearSegment(j, right);
  closeSegment(j, right, where.y);
  CheckIfMouseOverAnyPoint(where);
}

// Keeps the curve up to the cell with a point on it; gives the index at which the step begins.
int LFODisplay::openSegment(double left, double y) {
  const int i = firstPointFrom(left - closeEnoughDistance * 0.5);
  if (i == 0) {
    openSegmentAtStart(y);
    return 0;
  }
  if (!CloseEnough(single(points[at(i)].x), single(left))) insertPoint(i, {left, curveY(left)});
  return i + 1;
}

void LFODisplay::openSegmentAtStart(double y) {
  points[0].y = y;
  MakeEnvHandle(0);
  if (!CloseEnough(single(points[at(lastPoint)].x), single(points[at(lastPoint - 1)].x)))
    insertPoint(lastPoint, CPoint(points[at(lastPoint)]));
  if (!linkedEnds) return;
  points[at(lastPoint)].y = y;
  MakeEnvHandle(lastPoint);
}

// The step's left point, in place of what lay at the edge; gives its index.
int LFODisplay::putSegmentStart(int first, double left, double y) {
  while (first < lastPoint && CloseEnough(single(points[at(first)].x), single(left))) removePoint(first);
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
void LFODisplay::clearSegment(int j, double right) {
  const auto inside = [&](int i) { return points[at(i)].x < right - closeEnoughDistance * 0.5; };
  while (j <= lastPoint && j < kEditedPoints - 1 && inside(j)) removePoint(j);
  const auto atEdge = [&](int i) { return CloseEnough(single(points[at(i)].x), single(right)); };
  while (j < lastPoint && atEdge(j) && atEdge(j + 1)) removePoint(j);
}

// The step's right point, which stays left of what lies at the edge, and a point on the old curve from where that goes
// on. In the last place of all it pushes out what was there.
void LFODisplay::closeSegment(int j, double right, double y) {
  const bool goesOn = j <= lastPoint && j < kEditedPoints - 1;
  insertPoint(j, {goesOn ? std::min(right, points[at(j)].x) : right, y});
  points[at(lastPoint + 1)].x = graphWidth;
  const int next = std::min(j + 1, kEditedPoints - 1);
  if (!CloseEnough(single(points[at(next)].x), single(right))) insertPoint(next, {right, curveY(right)});
}
