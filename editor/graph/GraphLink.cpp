#include "editor/graph/GraphLink.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "editor/graph/GraphGeometry.h"
#include "editor/graph/LFODisplay.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"

using namespace model;

namespace {

static_assert(kAutomatedPointCount == kAutomatedPoints / 3);

std::size_t at(int i) { return static_cast<std::size_t>(i); }

int pointParameter(int point) { return kPoint1 + 3 * point; }
int xParameter(int point) { return pointParameter(point) + 1; }
int curveParameter(int segment) { return pointParameter(segment) + 2; }

float xValue(const LFODisplay& display, int point) {
  return static_cast<float>(display.points[at(point)].x / display.graphWidth);
}

float yValue(const LFODisplay& display, int point) {
  return static_cast<float>(1.0 - display.points[at(point)].y / display.graphHeight);
}

// A float close to the curve law's pole would round into it.
float curveValue(const LFODisplay& display, int segment) {
  const auto value = static_cast<float>(display.curves[at(segment)]);
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
void sendStopped(const LFODisplay& display, LfoDSP& effect) {
  for (std::size_t n = display.selection.size(); n-- > 0;) {
    const int i = display.selection[n].index;
    if (i >= kAutomatedPointCount || i == 0 || i >= effect.envNumPoints[0]) continue;
    const float x = xValue(display, i);
    if (static_cast<float>(effect.envX[0][i] / kGraphWidth) != x) effect.setParameterAutomated(xParameter(i), x);
  }
}

// True when the parameters carried all of it.
bool sendSelection(const LFODisplay& display, LfoDSP& effect) {
  bool whole = !display.selection.empty();
  for (const MultiSelectPoint& entry : display.selection) {
    if (entry.index >= kAutomatedPointCount) {
      whole = false;
      continue;
    }
    effect.setParameterAutomated(xParameter(entry.index), xValue(display, entry.index));
    effect.setParameterAutomated(pointParameter(entry.index), yValue(display, entry.index));
  }
  if (effect.bWarmedUp) sendStopped(display, effect);
  return whole;
}

bool sendAsParameters(LFODisplay& display, LfoDSP& effect, int graph) {
  if (effect.bSuspended || graph != 0) return false;
  if (display.selectionActive) return sendSelection(display, effect);
  return display.automationGesture && display.getValue() < kReportWithoutParameters && sendPressed(display, effect);
}

void copyTable(const LFODisplay& display, LfoDSP& effect, int graph) {
  Shared<float>* const table = effect.graphTable[at(graph)].get();
  for (std::size_t i = 0; i < at(kGraphTableSize); ++i) table[i] = display.shapeTable[i];
}

void copyGraph(const LFODisplay& display, LfoDSP& effect, int graph) {
  effect.envNumPoints[at(graph)] = static_cast<std::int8_t>(display.lastPoint);
  copyTable(display, effect, graph);
  for (int i = 0; i < kEditedPoints; ++i) {
    const VSTGUI::CPoint& p = display.points[at(i)];
    effect.envCurve[graph][i] = display.curves[at(i)];
    effect.envX[graph][i] = graphgeometry::storedX(p.x, display.graphWidth);
    effect.envY[graph][i] = graphgeometry::storedY(p.y, display.graphHeight);
  }
}

void takePoint(LFODisplay& display, const LfoDSP& effect, int graph, int i) {
  display.points[at(i)] = {graphgeometry::pixelX(effect.envX[graph][i], display.graphWidth),
                           graphgeometry::pixelY(effect.envY[graph][i], display.graphHeight)};
  if (i < kEditedPoints) display.curves[at(i)] = effect.envCurve[graph][i];
  display.MakeEnvHandle(i);
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
  const int last = std::clamp<int>(effect.envNumPoints[at(graph)], 1, kEditedPoints - 1);
  const int slots = pointsOnly ? last + 1 : kEditedPoints;
  for (int i = 0; i < slots; ++i) takePoint(display, effect, graph, i);
  display.lastPoint = last;
  display.points[at(last)].y = display.points[0].y;
  display.MakeEnvHandle(last);
  display.RenderShape();
  display.renderDirty = true;
  if (pointsOnly) return;
  copyTable(display, effect, graph);
  display.graphLoaded(graph, before);
}
