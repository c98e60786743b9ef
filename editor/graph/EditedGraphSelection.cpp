// SPDX-License-Identifier: MIT
// The edited graph's selection: points in a rectangle or by their distance, and moving them.
#include <algorithm>
#include <cmath>

#include "editor/graph/EditedGraph.h"

using namespace model;
using VSTGUI::CPoint;

namespace editor {

namespace {

double moved(double origin, double by, float weight, double extent) {
  const double share = single(by * static_cast<double>(weight)) + single(origin) / extent;
  return std::clamp(share * extent, 0.0, extent);
}

}  // namespace

// --- Entries

std::uint32_t EditedGraph::AllocateSelPoint(int index, float weight) {
  if (selection.size() >= at(kEditedPoints)) return ~std::uint32_t{0};
  const CPoint& p = points[at(index)];
  selection.push_back({std::clamp(weight, 0.0f, 1.0f), p, p, index});  // NaN stays NaN
  return static_cast<std::uint32_t>(selection.size());
}

std::vector<MultiSelectPoint>::iterator EditedGraph::DeallocateSelPoint(std::vector<MultiSelectPoint>::iterator entry) {
  return selection.erase(entry);
}

bool EditedGraph::isSelected(int point) const {
  return std::ranges::any_of(selection, [&](const MultiSelectPoint& entry) { return entry.index == point; });
}

// Of a point that is gone; those behind it have moved up.
void EditedGraph::forgetSelected(int removed) {
  std::erase_if(selection, [&](const MultiSelectPoint& entry) { return entry.index == removed; });
  for (MultiSelectPoint& entry : selection) entry.index -= entry.index > removed;
  selectionActive = selectionActive && !selection.empty();
}

void EditedGraph::removeSelected() {
  for (std::size_t n = selection.size(); n-- > 0;)
    if (const int index = selection[n].index; index > 0 && index < lastPoint) removePoint(index);
  selection.clear();
  selectionActive = selectionMoved = false;
}

// --- Selecting

// Weights fall from 1 at the point to 0 at the rim. A reach of 0 gives a weight of NaN, which keeps the point from
// moving.
void EditedGraph::selectByReach(int center, const CPoint& where) {
  const double middle = points[at(center)].x;
  const double reach = single(wholePixels(middle - where.x) / graphWidth);
  const double half = graphWidth * reach;
  selectionRect = {middle - half, 0, middle + half, graphHeight};
  selection.clear();
  for (int i = 0; i <= lastPoint; ++i) {
    const CPoint& p = points[at(i)];
    pointSnapshot[at(i)] = p;
    if (!p.isInside(selectionRect)) continue;
    const double distance = wholePixels(p.x - middle) / graphWidth / reach;
    AllocateSelPoint(i, static_cast<float>(1.0 - distance));
  }
  if (!selection.empty()) selectionActive = true;
  renderDirty = true;
}

void EditedGraph::selectInRect(int lastCandidate) {
  selection.clear();
  for (int i = 0; i <= lastCandidate; ++i) {
    pointSnapshot[at(i)] = points[at(i)];
    if (points[at(i)].isInside(selectionRect)) AllocateSelPoint(i, 1.0f);
  }
}

// --- Moving

bool EditedGraph::moveSelection(double dx, double dy, Stretch stretch) {
  bool firstSelected = false;
  for (const MultiSelectPoint& entry : selection) {
    if (entry.index > lastPoint) continue;
    if (std::isnan(entry.weight)) return false;
    const bool flipsY = stretch == Stretch::height && entry.origin.y > graphHeight * 0.5;
    const bool flipsX = stretch == Stretch::width && entry.origin.x > graphWidth * 0.5;
    moveSelected(entry, flipsX ? -dx : dx, flipsY ? -dy : dy);
    firstSelected = firstSelected || entry.index == 0;
    if (entry.index == lastPoint) joinEnds(firstSelected);
    placeHandle(entry.index);
    renderDirty = selectionMoved = true;
  }
  if (firstSelected) joinEnds(true);
  if (renderDirty) restoreOrder();
  return true;
}

void EditedGraph::moveSelected(const MultiSelectPoint& entry, double dx, double dy) {
  const int i = entry.index;
  CPoint place(moved(entry.origin.x, dx, entry.weight, graphWidth),
               moved(entry.origin.y, dy, entry.weight, graphHeight));
  if (i == lastPoint) {
    place.x = graphWidth;
  } else if (i == 0) {
    place.x = 0;
  } else {
    place.x = std::max(place.x, points[at(i - 1)].x);
  }
  points[at(i)] = place;
}

// Those that stay stop those that move to the right.
void EditedGraph::restoreOrder() {
  points[at(lastPoint + 1)].x = graphWidth;
  for (int i = lastPoint; i >= 1; --i) {
    if (points[at(i)].x <= points[at(i + 1)].x) continue;
    points[at(i)].x = points[at(i + 1)].x;
    placeHandle(i);
  }
}

void EditedGraph::renewOrigins() {
  for (MultiSelectPoint& entry : selection) entry.origin = points[at(entry.index)];
}

}  // namespace editor
