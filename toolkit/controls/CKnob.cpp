// SPDX-License-Identifier: MIT
#include "toolkit/controls/CKnob.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kLinearUnits = 200;  // of pointer travel for the whole range
constexpr float kFineWheel = 0.1f;   // of a notch, with the zoom modifier

}  // namespace

CKnob::CKnob(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CBitmap* background,
             CBitmap* handleBitmap, const CPoint& offset, std::int32_t style)
    : CControl(size, toTell, initialTag, background),
      handle(handleBitmap),
      drawStyle(style),
      startAngle(0.75f * kPi),
      rangeAngle(1.5f * kPi) {
  backOffset = offset;
}

void CKnob::draw(CDrawContext* context) {
  copyBackOffset(context);
  drawHandle(context);
  setDirty(false);
}

void CKnob::drawHandle(CDrawContext* context) {
  CPoint tip;
  valueToPoint(tip);
  tip = tip + getViewSize().getTopLeft();
  if (handle) {
    CRect place(0, 0, handle->getWidth(), handle->getHeight());
    handle->draw(context, place.offset(tip.x - handle->getWidth() / 2, tip.y - handle->getHeight() / 2));
    return;
  }
  context->setDrawMode(kSmoothMode);
  context->setLineWidth(handleLineWidth);
  context->setLineStyle(CLineStyle(CLineStyle::kLineCapRound));
  context->setFrameColor(colorHandle);
  context->drawLine(getViewSize().getCenter(), tip);
}

void CKnob::valueToPoint(CPoint& point) const {
  const float angle = startAngle + getValueNormalized() * rangeAngle;
  point.x = getWidth() / 2 + (getWidth() / 2 - inset) * static_cast<double>(std::cos(angle));
  point.y = getHeight() / 2 + (getHeight() / 2 - inset) * static_cast<double>(std::sin(angle));
}

float CKnob::valueFromPoint(const CPoint& point) const {
  const auto direction = static_cast<float>(std::atan2(point.y - getHeight() / 2, point.x - getWidth() / 2));
  const float turn = std::fmod(direction - startAngle + 4 * kPi, 2 * kPi);  // clockwise from the minimum
  const float gap = 2 * kPi - rangeAngle;                                   // between maximum and minimum
  const float normalized = turn > rangeAngle + gap / 2 ? 0.0f : std::min(turn / rangeAngle, 1.0f);
  return getMin() + normalized * (getMax() - getMin());
}

void CKnob::setUpLinearDrag(const CPoint& where, CButtonState buttons) {
  const bool fine = (buttons & kZoomModifier) != 0;
  firstPoint_ = where;
  startValue_ = getValue();
  dragModifiers_ = buttons.getModifierState();
  valuePerUnit_ = (getMax() - getMin()) / (kLinearUnits * (fine ? zoomFactor : 1.0f));
}

CMouseEventResult CKnob::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (modifierClicked(buttons) || checkDefaultValue(buttons)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  beginEdit();
  setUpLinearDrag(where, buttons);
  grip_ = getValue() - valueFromPoint(where - getViewSize().getTopLeft());
  lastPoint_ = where;
  const auto* const frame = getFrame();
  if (frame && frame->getEditor() && frame->getEditor()->getKnobMode() == kCircularMode) {
    grip_ = 0;
    lastPoint_ = where - CPoint(1, 1);  // the press itself turns the knob to the pointer
  }
  return onMouseMoved(where, buttons);
}

float CKnob::draggedValue(const CPoint& where, CButtonState buttons) {
  const auto* const frame = getFrame();
  const auto mode = frame && frame->getEditor() ? frame->getEditor()->getKnobMode() : kLinearMode;
  if (mode != kLinearMode) return valueFromPoint(where - getViewSize().getTopLeft()) + grip_;
  if (buttons.getModifierState() != dragModifiers_) setUpLinearDrag(lastPoint_, buttons);
  const double travel = (where.x - firstPoint_.x) + (firstPoint_.y - where.y);
  return startValue_ + static_cast<float>(travel) * valuePerUnit_;
}

CMouseEventResult CKnob::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (where == lastPoint_) return kMouseEventHandled;
  const float before = getValue();
  setValue(draggedValue(where, buttons));
  bounceValue();
  lastPoint_ = where;
  if (getValue() != before) valueChanged();
  if (isDirty()) invalid();
  return kMouseEventHandled;
}

CMouseEventResult CKnob::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  endEdit();
  return kMouseEventHandled;
}

bool CKnob::onWheel(const CPoint& /*where*/, const float& distance, const CButtonState& buttons) {
  const float notch = getWheelInc() * ((buttons & kZoomModifier) != 0 ? kFineWheel : 1.0f);
  setValueNormalized(getValueNormalized() + distance * notch);
  if (!isDirty()) return true;
  invalid();
  beginEdit();
  valueChanged();
  endEdit();
  return true;
}

void CKnob::setColorHandle(const CColor& color) {
  colorHandle = color;
  setDirty();
}

void CKnob::setHandleLineWidth(CCoord width) {
  handleLineWidth = width;
  setDirty();
}

void CKnob::setInsetValue(CCoord newInset) {
  inset = newInset;
  setDirty();
}

}  // namespace VSTGUI
