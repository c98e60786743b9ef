// SPDX-License-Identifier: MIT
#include "editor/graph/GraphLink.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "editor/graph/GraphReports.h"
#include "editor/graph/LFODisplay.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"

using namespace model;

namespace editor {

namespace {

int pointParameter(int point) { return kPoint1 + kNumbersOfPoint * point; }
int xParameter(int point) { return pointParameter(point) + 1; }
int curveParameter(int segment) { return pointParameter(segment) + 2; }

// What a point's parameters say of it, 0 to 1; Y upwards.
float xValue(const EditedGraph& graph, int point) {
  return static_cast<float>(graph.scale().toStored(graph.points[at(point)], Rounding::none).x / kGraphWidth);
}

float yValue(const EditedGraph& graph, int point) {
  return static_cast<float>(1.0 - graph.scale().toStored(graph.points[at(point)], Rounding::none).y);
}

// A float close to the curve law's pole would round into it.
float curveValue(const EditedGraph& graph, int segment) {
  const auto value = static_cast<float>(graph.curves[at(segment)]);
  return value == 0.5f ? std::nextafter(0.5f, 0.0f) : value;
}

// One value of a drag that hosts may record; the last one closes the gesture.
void sendDragged(LFODisplay& display, LfoDSP& effect, int parameter, float value) {
  std::erase(display.openEdits, parameter);
  if (display.gestureEnding) {
    effect.endEdit(parameter);
  } else {
    display.openEdits.push_back(parameter);
    effect.beginEdit(parameter);
  }
  effect.setParameterAutomated(parameter, value);
}

void endOpenEdits(LFODisplay& display, LfoDSP& effect) {
  for (const int parameter : std::exchange(display.openEdits, {})) effect.endEdit(parameter);
}

// False where what is pressed has no parameters.
bool sendPressed(LFODisplay& display, LfoDSP& effect) {
  const int pressed = display.pressedPoint;
  if (pressed >= 0 && pressed < kAutomatedPointCount) {
    if (pressed > 0) sendDragged(display, effect, xParameter(pressed), xValue(display, pressed));
    sendDragged(display, effect, pointParameter(pressed), yValue(display, pressed));
    return true;
  }
  const int segment = pressed - kFirstCurveHandle;
  if (segment < 0 || segment + 1 >= kAutomatedPointCount) return false;
  sendDragged(display, effect, curveParameter(segment), curveValue(display, segment));
  return !display.bendsAllCurves;
}

// A point's x stops at its neighbours. Where several move to the right, those that were stopped by one that had still
// to go are sent again, from the right.
void sendStopped(const EditedGraph& graph, LfoDSP& effect) {
  for (std::size_t n = graph.selection.size(); n-- > 0;) {
    const int i = graph.selection[n].index;
    if (i >= kAutomatedPointCount || i == 0 || i >= effect.envNumPoints[0]) continue;
    const float x = xValue(graph, i);
    if (static_cast<float>(effect.envX[0][i] / kGraphWidth) != x) effect.setParameterAutomated(xParameter(i), x);
  }
}

// True when the parameters carried all of it.
bool sendSelection(const EditedGraph& graph, LfoDSP& effect) {
  bool whole = !graph.selection.empty();
  for (const MultiSelectPoint& entry : graph.selection) {
    if (entry.index >= kAutomatedPointCount) {
      whole = false;
      continue;
    }
    effect.setParameterAutomated(xParameter(entry.index), xValue(graph, entry.index));
    effect.setParameterAutomated(pointParameter(entry.index), yValue(graph, entry.index));
  }
  if (effect.bWarmedUp) sendStopped(graph, effect);
  return whole;
}

bool sendAsParameters(LFODisplay& display, LfoDSP& effect, int graph) {
  if (effect.bSuspended || graph != 0) return false;
  if (display.selectionActive) return sendSelection(display, effect);
  return display.automationGesture && display.getValue() < kReportWithoutParameters && sendPressed(display, effect);
}

void copyTable(const EditedGraph& graph, LfoDSP& effect, int target) {
  Shared<float>* const table = effect.graphTable[at(target)].get();
  for (std::size_t i = 0; i < at(kGraphTableSize); ++i) table[i] = graph.shapeTable[i];
}

void copyGraph(const EditedGraph& graph, LfoDSP& effect, int target) {
  copyTable(graph, effect, target);
  effect.setPoints(target, graph.storedPoints(Rounding::factor), kEditedPoints);
  // A block that renders automated points just now, or a load, may end after this and leave its own table behind: the
  // next block renders the points once more. Blocks do so for graph 1 only, the one that is automated.
  if (target == 0 && effect.bWarmedUp) effect.bGraphsDirty.publish(true);
}

}  // namespace

void commitGraphEdit(LFODisplay& display, LfoDSP& effect) {
  // A note may have selected another graph that has not been loaded yet; the edit is still one of the graph in view.
  const int graph = display.shownGraph() >= 0 ? display.shownGraph() : static_cast<int>(effect.currentGraph);
  const bool sent = sendAsParameters(display, effect, graph);
  if (display.gestureEnding) endOpenEdits(display, effect);  // also while suspended
  display.RenderShape();
  // Before the first block parameters only wait.
  if (sent && effect.bWarmedUp) {
    effect.renderEnv(graph);
  } else {
    copyGraph(display, effect, graph);
  }
  display.renderDirty = true;
}

void abandonGraphDrag(LFODisplay& display, LfoDSP& effect) {
  display.endStep();
  endOpenEdits(display, effect);
}

void loadGraph(LFODisplay& display, LfoDSP& effect, bool pointsOnly) {
  const int graph = effect.currentGraph;
  const GraphState before = display.graphState();
  if (!pointsOnly) {
    display.endGestures();
    endOpenEdits(display, effect);
  }
  const GraphPoints stored = effect.pointsOf(graph);
  const int used = std::clamp(stored.lastPoint + 1, 2, kEditedPoints);
  display.takePoints(stored, pointsOnly ? used : kEditedPoints, Rounding::factor);
  display.joinEnds(true);
  display.RenderShape();
  display.renderDirty = true;
  if (pointsOnly) return;
  copyTable(display, effect, graph);
  display.graphLoaded(graph, before);
}

}  // namespace editor
