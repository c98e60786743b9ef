// SPDX-License-Identifier: MIT
// The graph display: construction, hover, grid size, undo.
#include "editor/graph/LFODisplay.h"

#include <algorithm>

#include "editor/graph/GraphReports.h"
#include "effect/LfoClock.h"

using namespace model;
using namespace VSTGUI;
using editor::at;
using editor::GraphHistory;
using editor::GraphState;

LFODisplay::LFODisplay(const CRect& size, IControlListener* newListener, std::int32_t newTag, double width,
                       double height, CBitmap* background, const CPoint& offset, int linked)
    : CParamDisplay(size, background),
      EditedGraph(width, height, linked != 0),
      curvePolyline(at(static_cast<int>(width)) + 3),
      scopeOutCopy(editor::kDisplayTable),
      scopeInCopy(editor::kDisplayTable),
      weightColors(editor::weightRamp()) {
  setListener(newListener);
  setTag(newTag);
  setBackOffset(offset);
  setWantsFocus(true);
}

LFODisplay::~LFODisplay() = default;

float LFODisplay::CalcRateTime(float rate) { return static_cast<float>(effect::rateStep(rate, bTriplet, bDotted)); }

CurveCoef LFODisplay::CalcCurveCoef(double curve, int length) noexcept { return calcCurveCoef(curve, length); }

void LFODisplay::MakeEnvHandle(int i) { placeHandle(i); }

// --- Under the pointer

void LFODisplay::CheckIfMouseInAnyPoint(const CPoint& where) {
  pressedPoint = pointAt(where);
  if (pressedPoint >= 0) dragOrigin = where;
  CheckIfMouseOverAnyPoint(where);
}

void LFODisplay::CheckIfMouseOverAnyPoint(const CPoint& where) {
  const int before = hoverPoint;
  hoverPoint = pointAt(where);
  if (hoverPoint >= 0) {
    lastHoverPoint = hoverPoint;
  } else if (const int segment = curveHandleAt(where); segment >= 0) {
    hoverPoint = editor::kFirstCurveHandle + segment;
  }
  if (hoverPoint == before) return;
  renderDirty = true;
  invalid();
}

bool LFODisplay::isPointHilighted() const { return lastHoverPoint >= 0 && lastHoverPoint <= lastPoint; }

void LFODisplay::clearSelectedPoints() {
  removeSelected();
  marqueeActive = false;
  valueChanged();
  RenderShape();
  invalid();
}

void LFODisplay::SetGridSize(int cells) {
  const int size = editor::limitedCells(cells);
  if (size == gridSize) return;
  gridSize = size;
  backgroundValid = false;
  renderDirty = true;
  setDirty();  // any thread may come here
}

// --- Undo

void LFODisplay::endGestures() {
  selection.clear();
  marqueeActive = selectionActive = selectionMoved = automationGesture = valueShown_ = false;
  pressedPoint = hoverPoint = -1;
  before_.reset();
}

void LFODisplay::graphLoaded(int graph, const GraphState& before) {
  if (graph == shownGraph_ && !sameGraph(before, graphState())) steps().record(graph, before);
  shownGraph_ = graph;
}

void LFODisplay::beginStep() {
  steps().endRun();
  before_ = graphState();
}

void LFODisplay::endStep() {
  if (before_ && !sameGraph(*before_, graphState())) steps().record(std::max(shownGraph_, 0), *before_);
  before_.reset();
}

bool LFODisplay::takeStep(std::optional<GraphState> (GraphHistory::*step)(int, const GraphState&)) {
  if (isDragging()) return false;
  const auto state = (steps().*step)(std::max(shownGraph_, 0), graphState());
  if (!state) return false;
  endGestures();
  setGraphState(*state);
  invalid();
  value = editor::kReportGraph;
  valueChanged();
  value = editor::kReportAtRest;
  return true;
}

bool LFODisplay::undo() { return takeStep(&GraphHistory::undo); }
bool LFODisplay::redo() { return takeStep(&GraphHistory::redo); }
