// SPDX-License-Identifier: MIT
#include "toolkit/controls/CButtons.h"

#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

COnOffButton::COnOffButton(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CBitmap* background,
                           std::int32_t style)
    : CControl(size, toTell, initialTag, background), style_(style) {}

void COnOffButton::draw(CDrawContext* context) {
  if (auto* const background = getDrawBackground()) {
    const bool on = getValueNormalized() > 0.5f;
    background->draw(context, getViewSize(), backOffset + CPoint(0, on ? background->getHeight() / 2 : 0));
  }
  setDirty(false);
}

CMouseEventResult COnOffButton::onMouseDown(CPoint& /*where*/, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (modifierClicked(buttons)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  setValue(getValueNormalized() > 0.5f ? getMin() : getMax());
  beginEdit();
  valueChanged();
  endEdit();
  if (isDirty()) invalid();
  return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CKickButton::CKickButton(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CBitmap* background,
                         const CPoint& offset)
    : CKickButton(size, toTell, initialTag, size.getHeight(), background, offset) {}

CKickButton::CKickButton(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CCoord imageHeight,
                         CBitmap* background, const CPoint& offset)
    : CControl(size, toTell, initialTag, background), IMultiBitmapControl(imageHeight) {
  backOffset = offset;
}

void CKickButton::draw(CDrawContext* context) {
  if (auto* const background = getDrawBackground()) {
    const bool pressed = getValue() == getMax() && imageCount(background) > 1;
    background->draw(context, getViewSize(), backOffset + CPoint(0, pressed ? heightOfOneImage : 0));
  }
  setDirty(false);
}

CMouseEventResult CKickButton::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (modifierClicked(buttons)) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  beginEdit();
  return onMouseMoved(where, buttons);
}

CMouseEventResult CKickButton::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  setValue(where.isInside(getViewSize()) ? getMax() : getMin());
  if (isDirty()) invalid();
  return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  if (getValue() > 0) valueChanged();
  setValue(getMin());
  valueChanged();
  if (isDirty()) invalid();
  endEdit();
  return kMouseEventHandled;
}

}  // namespace VSTGUI
