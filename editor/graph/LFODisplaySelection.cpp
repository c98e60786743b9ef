// Selecting points, by a rectangle or by their distance, and moving what is selected.
#include <algorithm>
#include <cmath>

#include "editor/graph/GraphGeometry.h"
#include "editor/graph/LFODisplay.h"

using namespace VSTGUI;
using graphgeometry::wholePixels;

namespace {

constexpr int kMarqueeStart = 10;  // pixels that a press must travel to become a marquee
constexpr int kStretchHeight = kLButton | kShift;
constexpr int kStretchWidth = kStretchHeight | kAlt;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

double moved(double origin, double by, float weight, double extent) {
  const double share = static_cast<double>(static_cast<float>(by * static_cast<double>(weight))) +
                       static_cast<double>(static_cast<float>(origin)) / extent;
  return std::clamp(share * extent, 0.0, extent);
}

}  // namespace

// The pointer's distance from the pressed point is the reach; weights fall from 1 at the point to 0 at the rim. A reach
// of 0 gives a weight that is no number, which keeps the point from moving.
void LFODisplay::selectByReach(const CPoint& where) {
  const double center = points[at(pressedPoint)].x;
  const auto reach = static_cast<float>(wholePixels(center - where.x) / graphWidth);
  const double half = graphWidth * static_cast<double>(reach);
  selectionRect = {center - half, 0, center + half, graphHeight};
  selection.clear();
  for (int i = 0; i <= lastPoint; ++i) {
    const CPoint& p = points[at(i)];
    pointSnapshot[at(i)] = p;
    if (!p.isInside(selectionRect)) continue;
    const double distance = wholePixels(p.x - center) / graphWidth / static_cast<double>(reach);
    AllocateSelPoint(i, static_cast<float>(1.0 - distance));
  }
  if (!selection.empty()) selectionActive = true;
  renderDirty = true;
}

void LFODisplay::selectInRect(const CRect& rect, int lastCandidate) {
  selection.clear();
  for (int i = 0; i <= lastCandidate; ++i) {
    pointSnapshot[at(i)] = points[at(i)];
    if (points[at(i)].isInside(rect)) AllocateSelPoint(i, 1.0f);
  }
}

void LFODisplay::dragMarquee(const CPoint& where, int masked) {
  const CPoint travel = where - marqueeOrigin;
  const bool far = std::max(wholePixels(travel.x), wholePixels(travel.y)) > kMarqueeStart;
  if (pressedPoint < 0 && masked == kLButton && far) marqueeActive = true;
  if (!marqueeActive) return;
  selectionRect = CRect(marqueeOrigin.x, marqueeOrigin.y, where.x, where.y).normalize();
  selectInRect(selectionRect, lastPoint - 1);
}

// False when a weight is no number.
bool LFODisplay::dragSelection(CPoint& where, int masked) {
  where.y = std::clamp(where.y, 0.0, graphHeight);
  if (!isPoint(pressedPoint)) return true;
  valueShown_ = true;
  const CPoint travel = where - dragOrigin;
  return moveSelection(static_cast<double>(static_cast<float>(travel.x)) / graphWidth,
                       static_cast<double>(static_cast<float>(travel.y)) / graphHeight, masked);
}

// Moves by shares of the graph's extents, from the points' origins. Shift stretches about the middle line, with Alt
// about the middle of the cycle.
bool LFODisplay::moveSelection(double dx, double dy, int masked) {
  bool firstSelected = false;
  for (const MultiSelectPoint& entry : selection) {
    if (entry.index > lastPoint) continue;
    if (std::isnan(entry.weight)) return false;
    const bool flipsY = masked == kStretchHeight && entry.origin.y > graphHeight * 0.5;
    const bool flipsX = masked == kStretchWidth && entry.origin.x > graphWidth * 0.5;
    moveSelected(entry, flipsX ? -dx : dx, flipsY ? -dy : dy);
    firstSelected = firstSelected || entry.index == 0;
    if (entry.index == lastPoint) linkSelectedEnds(firstSelected);
    MakeEnvHandle(entry.index);
    renderDirty = selectionMoved = true;
  }
  if (firstSelected) linkSelectedEnds(true);
  if (renderDirty) restoreOrder();
  return true;
}

void LFODisplay::moveSelected(const MultiSelectPoint& entry, double ex, double ey) {
  const int i = entry.index;
  CPoint place(moved(entry.origin.x, ex, entry.weight, graphWidth),
               moved(entry.origin.y, ey, entry.weight, graphHeight));
  if (i == lastPoint) {
    place.x = graphWidth;
  } else if (i == 0) {
    place.x = 0;
  } else {
    place.x = std::max(place.x, points[at(i - 1)].x);
  }
  points[at(i)] = place;
}

// The ends of the cycle meet: at the first point's height if that is selected, else at the last one's.
void LFODisplay::linkSelectedEnds(bool firstSelected) {
  CPoint& first = points[0];
  CPoint& last = points[at(lastPoint)];
  (firstSelected ? last : first).y = (firstSelected ? first : last).y;
  MakeEnvHandle(0);
  MakeEnvHandle(lastPoint);
}

void LFODisplay::restoreOrder() {
  points[at(lastPoint + 1)].x = graphWidth;
  for (int i = lastPoint; i >= 1; --i) {
    if (points[at(i)].x <= points[at(i + 1)].x) continue;
    points[at(i)].x = points[at(i + 1)].x;
    MakeEnvHandle(i);
  }
}

// The next drag starts from where the points are.
void LFODisplay::renewOrigins() {
  for (MultiSelectPoint& entry : selection) entry.origin = points[at(entry.index)];
}
