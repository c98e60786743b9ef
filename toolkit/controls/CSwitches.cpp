// SPDX-License-Identifier: MIT
#include "toolkit/controls/CSwitches.h"

#include <algorithm>
#include <cmath>

#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

namespace {

// Draws the image that belongs to the value, from the minimum at the top to the maximum.
void drawImage(CDrawContext* context, const CControl& control, const IMultiBitmapControl& images) {
  auto* const background = control.getDrawBackground();
  if (!background) return;
  const auto last = static_cast<float>(images.imageCount(background) - 1);
  const CPoint image(0, std::round(control.getValueNormalized() * last) * images.getHeightOfOneImage());
  background->draw(context, control.getViewSize(), control.getBackOffset() + image);
}

}  // namespace

CRockerSwitch::CRockerSwitch(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CCoord imageHeight,
                             CBitmap* background, const CPoint& offset, std::int32_t style)
    : CControl(size, toTell, initialTag, background), IMultiBitmapControl(imageHeight), style_(style) {
  vmin = -1.0f;
  backOffset = offset;
}

void CRockerSwitch::draw(CDrawContext* context) {
  drawImage(context, *this, *this);
  setDirty(false);
}

float CRockerSwitch::valueAt(const CPoint& where) const {
  const CRect& size = getViewSize();
  if (!where.isInside(size)) return getValue();
  const bool upper = style_ == kRockerHorizontal ? where.x >= size.getCenter().x : where.y >= size.getCenter().y;
  return upper ? getMax() : getMin();
}

void CRockerSwitch::moveTo(float newValue) {
  if (newValue == getValue()) return;
  setValue(newValue);
  valueChanged();
  if (isDirty()) invalid();
}

CMouseEventResult CRockerSwitch::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (modifierClicked(buttons)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  beginEdit();
  return onMouseMoved(where, buttons);
}

CMouseEventResult CRockerSwitch::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  moveTo(valueAt(where));
  return kMouseEventHandled;
}

CMouseEventResult CRockerSwitch::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  moveTo((getMin() + getMax()) / 2);
  endEdit();
  return kMouseEventHandled;
}

CHorizontalSwitch::CHorizontalSwitch(const CRect& size, IControlListener* toTell, std::int32_t initialTag,
                                     CBitmap* background, const CPoint& offset)
    : CControl(size, toTell, initialTag, background), IMultiBitmapControl(size.getHeight()) {
  backOffset = offset;
}

void CHorizontalSwitch::draw(CDrawContext* context) {
  drawImage(context, *this, *this);
  setDirty(false);
}

CMouseEventResult CHorizontalSwitch::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (modifierClicked(buttons) || checkDefaultValue(buttons)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  beginEdit();
  return onMouseMoved(where, buttons);
}

CMouseEventResult CHorizontalSwitch::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  const std::int32_t positions = imageCount(getDrawBackground());
  if (positions < 2 || !(getWidth() > 0)) return kMouseEventHandled;
  const auto position = std::floor((where.x - getViewSize().left) / getWidth() * positions);
  const auto normalized = static_cast<float>(std::clamp(position / (positions - 1), 0.0, 1.0));
  const float before = getValue();
  setValueNormalized(normalized);
  if (getValue() != before) valueChanged();
  if (isDirty()) invalid();
  return kMouseEventHandled;
}

CMouseEventResult CHorizontalSwitch::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  endEdit();
  return kMouseEventHandled;
}

}  // namespace VSTGUI
