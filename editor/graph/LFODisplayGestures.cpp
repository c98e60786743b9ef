// SPDX-License-Identifier: MIT
// The pointer's gestures: press, hover, drag, release. What they do to the graph is EditedGraph's.
#include <algorithm>

#include "editor/graph/GraphReports.h"
#include "editor/graph/LFODisplay.h"
#include "model/ParameterIndex.h"
#include "toolkit/views/CFrame.h"

using namespace model;
using namespace VSTGUI;
using editor::at;
using editor::kFirstCurveHandle;
using editor::Stretch;
using editor::wholePixels;

namespace {

// The part of the button word that tells gestures apart: buttons and modifiers, without the double-click.
constexpr int kGestureBits = kAnyButton | kAnyModifier;
constexpr int kSnapDrag = kLButton | kAlt;
constexpr int kSegmentDrag = kLButton | kShift;
constexpr int kSnapSegmentDrag = kSegmentDrag | kAlt;
constexpr int kLoopPress = kLButton | kShift | kControl;
constexpr int kStartPress = kLoopPress | kAlt;

bool drawsSegments(int state) { return state == kSegmentDrag || state == kSnapSegmentDrag; }

Stretch stretchOf(int masked) {
  if (masked == kSegmentDrag) return Stretch::height;
  return masked == kSnapSegmentDrag ? Stretch::width : Stretch::none;
}

constexpr int kMarqueeStart = 10;  // pixels that a press must travel to become a marquee

}  // namespace

void LFODisplay::setCursor(int code) {
  if (CFrame* const frame = getFrame()) frame->setCursor(code);
}

// --- Press

CMouseEventResult LFODisplay::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if ((buttons & (kLButton | kRButton)) == 0) return kMouseEventNotHandled;
  endStep();
  beginStep();
  const CMouseEventResult result = press(where, buttons);
  if (result != kMouseEventHandled) endStep();
  return result;
}

CMouseEventResult LFODisplay::press(CPoint& where, const CButtonState& buttons) {
  automationGesture = bendsAllCurves = valueShown_ = cursorRests_ = false;
  pressButtons = buttons & kGestureBits;
  if (pressButtons == (kLButton | kApple) || buttons.isRightButton()) {
    value = editor::kReportRefresh;
    valueChanged();
    return kMouseEventNotHandled;
  }
  pressValue = value;
  CheckIfMouseInAnyPoint(where);
  const int hit = pressedPoint;
  if (hit < 0) return pressNothing(where, buttons);
  if (placeMarker(hit)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  if (buttons.isDoubleClick()) return pressTwice(hit, where, buttons);
  return beginDrag(where, buttons);
}

bool LFODisplay::placeMarker(int point) {
  if (pressButtons != kStartPress && pressButtons != kLoopPress) return false;
  (pressButtons == kStartPress ? startPoint : loopPoint) = point;
  value = editor::kReportGraph;
  valueChanged();
  pressedPoint = -1;  // no release will come
  return true;
}

CMouseEventResult LFODisplay::pressNothing(CPoint& where, const CButtonState& buttons) {
  marqueeActive = selectionActive = false;
  if (drawsSegments(buttons)) return onMouseMoved(where, buttons);
  if (buttons.isDoubleClick() && buttons.isLeftButton()) return pressNewPoint(where, buttons);
  pressCurveHandle(where);
  return beginDrag(where, buttons);
}

CMouseEventResult LFODisplay::pressNewPoint(CPoint& where, const CButtonState& buttons) {
  where = inGraph(where);  // the view is larger; the drag must find the point under the pointer
  pressedPoint = addPoint(where);
  CheckIfMouseInAnyPoint(where);
  valueChanged();
  return onMouseMoved(where, buttons);
}

void LFODisplay::pressCurveHandle(const CPoint& where) {
  const int segment = curveHandleAt(where);
  if (segment < 0) return;
  pressedPoint = kFirstCurveHandle + segment;
  pressY = static_cast<int>(where.y);
  pressCurve = static_cast<float>(curves[at(segment)]);
}

CMouseEventResult LFODisplay::pressTwice(int point, CPoint& where, const CButtonState& buttons) {
  if (dropPoint(point)) pressedPoint = -1;
  marqueeOrigin = where;  // of what the button may still do before it is let go
  return onMouseUp(where, buttons);
}

CMouseEventResult LFODisplay::beginDrag(CPoint& where, const CButtonState& buttons) {
  if (pressedPoint < 0) {
    marqueeOrigin = where;
    selectionMoved = false;
  } else if (selectionActive) {
    selectionActive = isSelected(pressedPoint);
  }
  return onMouseMoved(where, buttons);
}

// --- Hover

CMouseEventResult LFODisplay::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  automationGesture = false;
  if ((buttons & kLButton) != 0) return drag(where, buttons);
  hover(where, buttons);
  return kMouseEventHandled;
}

void LFODisplay::hover(const CPoint& where, const CButtonState& buttons) {
  CheckIfMouseOverAnyPoint(where);
  if (buttons.getModifierState() == kShift) {
    handShown_ = true;
    setCursor(kCursorHand);
  } else if (handShown_ || dropCursor_) {
    handShown_ = dropCursor_ = false;
    setCursor(kCursorDefault);
  }
}

CMouseEventResult LFODisplay::onMouseEntered(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventHandled;
}

CMouseEventResult LFODisplay::onMouseExited(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  if (handShown_) setCursor(kCursorDefault);
  handShown_ = false;
  if (hoverPoint != -1) {
    hoverPoint = -1;
    renderDirty = true;
    invalid();
  }
  return kMouseEventHandled;
}

bool LFODisplay::onWheel(const CPoint& /*where*/, const float& /*distance*/, const CButtonState& /*buttons*/) {
  return false;
}

// --- Drag

CMouseEventResult LFODisplay::drag(CPoint& where, const CButtonState& buttons) {
  const int masked = buttons & kGestureBits;
  if ((masked & kControl) != 0 && isPoint(pressedPoint)) {
    selectByReach(pressedPoint, where);
  } else {
    dragMarquee(where, masked);
    if (selectionActive && !dragSelection(where, masked)) return kMouseEventHandled;
  }
  lastMouse = where;
  value = pressValue == editor::kReportAtRest ? editor::kReportDrag : editor::kReportAtRest;
  if (!selectionActive) {
    dragPressed(where, buttons);
    if (drawsSegments(buttons)) dragSteps(where, buttons == kSnapSegmentDrag);
  }
  valueChanged();
  if (isDirty()) invalid();
  return kMouseEventHandled;
}

void LFODisplay::dragPressed(CPoint& where, int state) {
  const bool alt = state == kSnapDrag;
  if (isPoint(pressedPoint)) {
    dragPoint(where, alt);
  } else if (pressedPoint >= kFirstCurveHandle && pressedPoint < kFirstCurveHandle + lastPoint) {
    dragCurve(pressedPoint - kFirstCurveHandle, where.y, alt);
  }
}

// An end takes the first point with it, which has parameters.
void LFODisplay::dragPoint(CPoint& where, bool snaps) {
  automationGesture = isEnd(pressedPoint) || pressedPoint < kAutomatedPointCount;
  valueShown_ = true;
  movePoint(pressedPoint, where, snaps);
}

void LFODisplay::dragCurve(int segment, double y, bool all) {
  automationGesture = segment + 1 < kAutomatedPointCount;
  bendsAllCurves = all;
  const double from = static_cast<double>(pressCurve), down = y - pressY;
  all ? bendAllCurves(segment, from, down) : bendCurve(segment, from, down);
}

void LFODisplay::dragSteps(CPoint& where, bool snaps) {
  pressedPoint = hoverPoint = -1;
  valueShown_ = false;
  drawStep(where, snaps);
  CheckIfMouseOverAnyPoint(where);
}

void LFODisplay::dragMarquee(const CPoint& where, int masked) {
  const CPoint travel = where - marqueeOrigin;
  const bool far = std::max(wholePixels(travel.x), wholePixels(travel.y)) > kMarqueeStart;
  if (pressedPoint < 0 && masked == kLButton && far) marqueeActive = true;
  if (!marqueeActive) return;
  selectionRect = CRect(marqueeOrigin.x, marqueeOrigin.y, where.x, where.y).normalize();
  selectInRect(lastPoint - 1);
}

// False when a weight is NaN.
bool LFODisplay::dragSelection(CPoint& where, int masked) {
  where.y = std::clamp(where.y, 0.0, graphHeight);
  if (!isPoint(pressedPoint)) return true;
  valueShown_ = true;
  const CPoint travel = where - dragOrigin;
  return moveSelection(editor::single(travel.x) / graphWidth, editor::single(travel.y) / graphHeight,
                       stretchOf(masked));
}

// --- Release

CMouseEventResult LFODisplay::onMouseUp(CPoint& where, const CButtonState& /*buttons*/) {
  release(where);
  valueShown_ = false;
  endStep();
  return kMouseEventHandled;
}

void LFODisplay::release(CPoint& where) {
  if (automationGesture || !openEdits.empty()) {  // also where a modifier made another gesture of it on the way
    gestureEnding = true;
    valueChanged();
    gestureEnding = automationGesture = false;
  }
  if (selectionActive && pressedPoint >= 0 && selectionMoved) {
    value = editor::kReportSelectionEnd;
    valueChanged();
    selectionMoved = false;
    renewOrigins();
    cursorRests_ = true;
    setCursor(kCursorDefault);
    return;
  }
  if (marqueeActive) {
    selectInRect(lastPoint);
    selectionActive = !selection.empty();
  }
  marqueeActive = selectionMoved = false;
  pressedPoint = -1;
  lastMouse = {512, 512};
  pressButtons = 0;
  value = editor::kReportAtRest;
  valueChanged();
  renderDirty = true;
  onMouseMoved(where, CButtonState());
}
