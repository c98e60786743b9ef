// The pointer's gestures on single points and curves: press, drag, hover, release. Selections are in
// LFODisplaySelection.cpp, drawing by segments in LFODisplaySegments.cpp.
#include <algorithm>

#include "editor/graph/GraphGeometry.h"
#include "editor/graph/LFODisplay.h"
#include "toolkit/views/CFrame.h"

using namespace VSTGUI;

namespace {

// The part of the button word that tells gestures apart: buttons and modifiers, without the double-click.
constexpr int kGestureBits = kAnyButton | kAnyModifier;
constexpr int kSnapDrag = kLButton | kAlt;
constexpr int kSegmentDrag = kLButton | kShift;
constexpr int kSnapSegmentDrag = kSegmentDrag | kAlt;
constexpr int kLoopPress = kLButton | kShift | kControl;
constexpr int kStartPress = kLoopPress | kAlt;

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

bool drawsSegments(int state) { return state == kSegmentDrag || state == kSnapSegmentDrag; }

std::size_t at(int i) { return static_cast<std::size_t>(i); }

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
    value = kReportRefresh;
    valueChanged();
    return kMouseEventNotHandled;
  }
  pressValue = value;
  CheckIfMouseInAnyPoint(where);
  const int hit = pressedPoint;
  if (hit < 0) return pressNothing(where, buttons);
  if (placeMarker(hit)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  if (buttons.isDoubleClick()) return dropPoint(hit, where, buttons);
  return beginDrag(where, buttons);
}

bool LFODisplay::placeMarker(int point) {
  if (pressButtons != kStartPress && pressButtons != kLoopPress) return false;
  (pressButtons == kStartPress ? startPoint : loopPoint) = point;
  value = kReportMarker;
  valueChanged();
  pressedPoint = -1;  // no release will come
  return true;
}

CMouseEventResult LFODisplay::pressNothing(CPoint& where, const CButtonState& buttons) {
  marqueeActive = selectionActive = false;
  if (drawsSegments(buttons)) return onMouseMoved(where, buttons);
  if (buttons.isDoubleClick() && buttons.isLeftButton()) return addPoint(where, buttons);
  pressCurveHandle(where);
  return beginDrag(where, buttons);
}

CMouseEventResult LFODisplay::addPoint(CPoint& where, const CButtonState& buttons) {
  where = inGraph(where);  // the view is larger; the drag must find the point under the pointer
  const int i = firstPointFrom(where.x);
  insertPoint(i, where);
  pressedPoint = i;
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

// A double-click on a point; the ends of a graph stay.
CMouseEventResult LFODisplay::dropPoint(int point, CPoint& where, const CButtonState& buttons) {
  if (point > 0 && point < lastPoint) {
    removePoint(point);
    forgetSelected(point);
    pressedPoint = -1;
    curves[at(point - 1)] = kEditedStraight;
  }
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
    selectByReach(where);
  } else {
    dragMarquee(where, masked);
    if (selectionActive && !dragSelection(where, masked)) return kMouseEventHandled;
  }
  lastMouse = where;
  value = pressValue == 0.0f ? 1.0f : 0.0f;
  if (!selectionActive) {
    dragPressed(where, buttons);
    if (drawsSegments(buttons)) drawSegment(where, buttons == kSnapSegmentDrag);
  }
  valueChanged();
  if (isDirty()) invalid();
  return kMouseEventHandled;
}

void LFODisplay::dragPressed(CPoint& where, int state) {
  const bool snaps = state == kSnapDrag;
  if (pressedPoint == 0 || pressedPoint == lastPoint) {
    dragEnd(where, snaps);
  } else if (isPoint(pressedPoint)) {
    dragPoint(where, snaps);
  } else if (pressedPoint >= kFirstCurveHandle && pressedPoint < kFirstCurveHandle + lastPoint) {
    bendCurve(pressedPoint - kFirstCurveHandle, where.y, snaps);
  }
}

void LFODisplay::dragPoint(CPoint& where, bool snaps) {
  automationGesture = pressedPoint < kAutomatedPointCount;
  valueShown_ = true;
  where.y = std::clamp(where.y, 0.0, graphHeight);
  if (snaps) where = onGrid(where);
  CPoint place = inGraph(where);
  place.x = std::min(place.x, points[at(pressedPoint + 1)].x);
  place.x = std::max(place.x, points[at(pressedPoint - 1)].x);
  points[at(pressedPoint)] = place;
  MakeEnvHandle(pressedPoint);
}

// The first or the last point, which keep their x.
void LFODisplay::dragEnd(CPoint& where, bool snaps) {
  automationGesture = valueShown_ = true;
  where.y = std::clamp(where.y, 0.0, graphHeight);
  if (snaps) where.y = onGrid(where).y;
  if (linkedEnds || pressedPoint == 0) points[0].y = where.y;
  if (linkedEnds || pressedPoint == lastPoint) points[at(lastPoint)].y = where.y;
  MakeEnvHandle(0);
  MakeEnvHandle(lastPoint);
}

// Up bends rising and falling segments to the same side.
void LFODisplay::bendCurve(int segment, double y, bool all) {
  automationGesture = segment + 1 < kAutomatedPointCount;
  bendsAllCurves = all;
  auto delta = static_cast<double>(static_cast<float>(y - pressY)) / graphHeight;
  if (points[at(segment)].y > points[at(segment + 1)].y) delta = -delta;
  const double curve = usableCurve(static_cast<double>(pressCurve) - delta);
  if (all) {
    bendLike(curve);
  } else {
    curves[at(segment)] = curve;
  }
}

// Gives all segments one look, whichever way they run and in whichever half they lie.
void LFODisplay::bendLike(double curve) {
  for (int t = 0; t < lastPoint; ++t) {
    const double left = points[at(t)].y;
    const double right = points[at(t + 1)].y;
    const bool low = left + right > graphHeight + kRoundingPixels;
    const bool rising = left > right;
    curves[at(t)] = low != rising ? 1.0 - curve : curve;
  }
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
    value = kReportSelectionEnd;
    valueChanged();
    selectionMoved = false;
    renewOrigins();
    cursorRests_ = true;
    setCursor(kCursorDefault);
    return;
  }
  if (marqueeActive) {
    selectInRect(selectionRect, lastPoint);
    selectionActive = !selection.empty();
  }
  marqueeActive = selectionMoved = false;
  pressedPoint = -1;
  lastMouse = {512, 512};
  pressButtons = 0;
  value = 0.0f;
  valueChanged();
  renderDirty = true;
  onMouseMoved(where, CButtonState());
}
