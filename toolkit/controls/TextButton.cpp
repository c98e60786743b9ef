// SPDX-License-Identifier: MIT
#include "toolkit/controls/TextButton.h"

#include "toolkit/controls/ThemeDrawing.h"
#include "toolkit/drawing/Theme.h"

namespace VSTGUI {

using namespace Theme;

void TextButton::setTitle(std::string title) {
  title_ = std::move(title);
  invalid();
}

void TextButton::setLook(bool down, bool over) {
  down_ = down;
  over_ = over;
  invalid();
}

void TextButton::draw(CDrawContext* context) {
  const CRect inside = getViewSize();
  drawBox(*context, inside, down_ && over_ ? kHoverColor : kBackColor, over_ ? kHoverColor : kBorderColor);
  drawTextLine(*context, title_, inside, kTextColor, kCenterText);
}

CMouseEventResult TextButton::onMouseDown(CPoint& /*where*/, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  setLook(true, true);
  return kMouseEventHandled;
}

CMouseEventResult TextButton::onMouseMoved(CPoint& where, const CButtonState& /*buttons*/) {
  setLook(down_, where.isInside(getViewSize()));
  return kMouseEventHandled;
}

CMouseEventResult TextButton::onMouseUp(CPoint& where, const CButtonState& /*buttons*/) {
  const bool meant = down_ && where.isInside(getViewSize());
  setLook(false, meant);
  if (meant) pressed_();
  return kMouseEventHandled;
}

CMouseEventResult TextButton::onMouseExited(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  setLook(down_, false);
  return kMouseEventHandled;
}

}  // namespace VSTGUI
