// SPDX-License-Identifier: MIT
// The edited graph's points: hits, the list, moves, curves.
#include "editor/graph/EditedGraph.h"

#include <algorithm>

using namespace model;
using VSTGUI::CPoint;
using VSTGUI::CRect;

namespace editor {

namespace {

// Pixels in a graph of the reference size; they grow with it.
constexpr double kHandleHalf = 2.5;
constexpr double kHandleMargin = 5.5;

double growth(double width) { return width / static_cast<double>(kPixelWidth); }

// What a drag leaves of a curve value: never the poles of the curve law, so that each bend can be undone by a drag.
constexpr double kLeastCurve = 1e-13;
constexpr double kMostCurve = 0.999999999998;
constexpr double kNearlyStraight = 0.499999999998;

double usableCurve(double curve) {
  if (curve <= 0.0) return kLeastCurve;
  if (curve >= 1.0) return kMostCurve;
  return curve == 0.5 ? kNearlyStraight : curve;
}

// Pixels by which points may have moved on their way through the effect.
constexpr double kRoundingPixels = 1e-2;

}  // namespace

EditedGraph::EditedGraph(double width, double height, bool ends)
    : graphWidth(width),
      graphHeight(height),
      shapeScale(static_cast<float>(kGraphWidth / width)),
      closeEnoughDistance(growth(width) * kHandleHalf),
      handleMargin(growth(width) * kHandleMargin),
      shapeTable(kDisplayTable),
      linkedEnds(ends) {
  points.fill({graphWidth, 0});
  points[0] = {0, 0};
  curves.fill(kEditedStraight);
  selection.reserve(at(kEditedPoints));
  for (int i = 0; i <= lastPoint; ++i) placeHandle(i);
  RenderShape();
}

// --- Places and hits

bool EditedGraph::CloseEnough(float a, float b) const {
  return closeEnoughDistance > wholePixels(static_cast<double>(a - b));
}

bool EditedGraph::checkIfInside(const CPoint& point, const CRect& handle) const {
  return point.isInside(grown(handle, handleMargin));
}

int EditedGraph::pointAt(const CPoint& where) const {
  for (int i = lastPoint; i >= 0; --i)
    if (checkIfInside(where, pointHandles[at(i)])) return i;
  return -1;
}

int EditedGraph::curveHandleAt(const CPoint& where) const {
  for (int s = lastPoint - 1; s >= 0; --s)
    if (curveHandles[at(s)] != kNoHandle && checkIfInside(where, curveHandles[at(s)])) return s;
  return -1;
}

CPoint EditedGraph::inGraph(const CPoint& where) const {
  return {std::clamp(where.x, 0.0, graphWidth), std::clamp(where.y, 0.0, graphHeight)};
}

void EditedGraph::placeHandle(int i) {
  if (i < 0 || i >= kEditedPoints) return;
  const CPoint& p = points[at(i)];
  const double half = closeEnoughDistance;
  pointHandles[at(i)] = {p.x - half, p.y - half, p.x + 1 + half, p.y + 1 + half};
}

// The first point that doesn't lie left of `x`; the last point where there is none.
int EditedGraph::firstPointFrom(double x) const {
  for (int i = 0; i < lastPoint; ++i)
    if (points[at(i)].x >= x) return i;
  return lastPoint;
}

// --- The list

void EditedGraph::InsertEnvPoint(int i) {
  for (int k = lastPoint; k >= i; --k) {
    points[at(k + 1)] = points[at(k)];
    pointHandles[at(k + 1)] = pointHandles[at(k)];
    if (k + 1 < kEditedPoints) curves[at(k + 1)] = curves[at(k)];
  }
  if (loopPoint >= i && loopPoint != kNoLoopPoint) ++loopPoint;
  if (startPoint >= i) ++startPoint;
}

void EditedGraph::insertPoint(int i, const CPoint& place) {
  InsertEnvPoint(i);
  points[at(i)] = place;
  placeHandle(i);
  lastPoint = std::min(lastPoint + 1, kEditedPoints - 1);
}

void EditedGraph::removePoint(int i) {
  if (i < 0 || i >= kEditedPoints - 1) return;
  for (std::size_t k = at(i); k + 1 < points.size(); ++k) points[k] = points[k + 1];
  for (std::size_t k = at(i); k + 1 < curves.size(); ++k) curves[k] = curves[k + 1];
  --lastPoint;
  for (int k = i; k <= lastPoint; ++k) placeHandle(k);
  if (loopPoint >= i && loopPoint != kNoLoopPoint) --loopPoint;
  if (startPoint >= i) --startPoint;
}

int EditedGraph::addPoint(const CPoint& where) {
  const int i = firstPointFrom(where.x);
  insertPoint(i, where);
  return i;
}

bool EditedGraph::dropPoint(int i) {
  if (i <= 0 || i >= lastPoint) return false;
  removePoint(i);
  forgetSelected(i);
  curves[at(i - 1)] = kEditedStraight;
  return true;
}

// --- Moves

void EditedGraph::movePoint(int i, CPoint& where, bool snaps) {
  where.y = std::clamp(where.y, 0.0, graphHeight);
  isEnd(i) ? moveEnd(i, where, snaps) : moveInner(i, where, snaps);
}

void EditedGraph::moveInner(int i, CPoint& where, bool snaps) {
  if (snaps) where = grid().nearest(where);
  CPoint place = inGraph(where);
  place.x = std::min(place.x, points[at(i + 1)].x);
  place.x = std::max(place.x, points[at(i - 1)].x);
  points[at(i)] = place;
  placeHandle(i);
}

void EditedGraph::moveEnd(int i, CPoint& where, bool snaps) {
  if (snaps) where.y = grid().nearest(where).y;
  if (linkedEnds || i == 0) points[0].y = where.y;
  if (linkedEnds || i == lastPoint) points[at(lastPoint)].y = where.y;
  placeHandle(0);
  placeHandle(lastPoint);
}

// --- Curves

double EditedGraph::bent(int segment, double from, double down) const {
  const double delta = single(down) / graphHeight;
  const bool rises = points[at(segment)].y > points[at(segment + 1)].y;
  return usableCurve(rises ? from + delta : from - delta);
}

void EditedGraph::bendCurve(int segment, double from, double down) { curves[at(segment)] = bent(segment, from, down); }

// Whichever way the segments run and in whichever half they lie.
void EditedGraph::bendAllCurves(int segment, double from, double down) {
  const double curve = bent(segment, from, down);
  for (int t = 0; t < lastPoint; ++t) {
    const double left = points[at(t)].y;
    const double right = points[at(t + 1)].y;
    const bool low = left + right > graphHeight + kRoundingPixels;
    const bool rising = left > right;
    curves[at(t)] = low != rising ? 1.0 - curve : curve;
  }
}

}  // namespace editor
