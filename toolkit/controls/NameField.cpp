// SPDX-License-Identifier: MIT
#include "toolkit/controls/NameField.h"

#include "toolkit/controls/ThemeDrawing.h"
#include "toolkit/drawing/Theme.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

using namespace Theme;

NameField::NameField(const CRect& size, std::string text, Key key)
    : CView(size), text_(std::move(text)), key_(std::move(key)) {
  setWantsFocus(true);
}

void NameField::setText(const std::string& text) {
  text_ = text;
  if (field_) field_->setText(text.c_str());
  invalid();
}

void NameField::draw(CDrawContext* context) {
  CRect inside = getViewSize();
  drawBox(*context, inside, kSunkenColor, kBorderColor);
  inside.inset(platformGetTextInset().x + 1, 1);
  drawTextLine(*context, text_, inside, kTextColor, kLeftText);
}

CMouseEventResult NameField::onMouseDown(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

void NameField::takeFocus() { field_ = getFrame()->createPlatformTextEdit(this); }

void NameField::looseFocus() {
  if (!field_) return;
  text_ = field_->getText();
  std::exchange(field_, nullptr)->forget();
  invalid();
}

CColor NameField::platformGetBackColor() const { return kSunkenColor; }

CColor NameField::platformGetFontColor() const { return kTextColor; }

CRect NameField::platformGetSize() const {
  CRect inside = getViewSize();
  return inside.inset(1, 1);
}

void NameField::platformLooseFocus(bool /*returnPressed*/) {
  if (getFrame()) getFrame()->setFocusView(nullptr);
}

}  // namespace VSTGUI
