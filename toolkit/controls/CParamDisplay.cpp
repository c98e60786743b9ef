// SPDX-License-Identifier: MIT
#include "toolkit/controls/CParamDisplay.h"

#include <array>
#include <cstdio>

#include "toolkit/base/CString.h"
#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

CParamDisplay::CParamDisplay(const CRect& size, CBitmap* background, std::int32_t initialStyle)
    : CControl(size, nullptr, 0, background),
      style(initialStyle),
      font(Counted<CFontDesc>::adopt(new CFontDesc(*kNormalFont))) {}

CParamDisplay::CParamDisplay(const CParamDisplay& other) = default;

void CParamDisplay::setFont(CFontRef newFont) {
  if (newFont) font = newFont;
  setDirty();
}

void CParamDisplay::setFontColor(CColor color) {
  fontColor = color;
  setDirty();
}

void CParamDisplay::setBackColor(CColor color) {
  backColor = color;
  setDirty();
}

void CParamDisplay::setFrameColor(CColor color) {
  frameColor = color;
  setDirty();
}

void CParamDisplay::setShadowColor(CColor color) {
  shadowColor = color;
  setDirty();
}

void CParamDisplay::setHoriAlign(CHoriTxtAlign align) {
  horiTxtAlign = align;
  setDirty();
}

void CParamDisplay::setTextTransparency(bool transparent) {
  textTransparency = transparent;
  setDirty();
}

void CParamDisplay::setStringConvert(StringConvert convert) {
  stringConvert = convert;
  setDirty();
}

void CParamDisplay::setStringConvert(StringConvertUser convert, void* user) {
  stringConvertUser = convert;
  userData = user;
  setDirty();
}

void CParamDisplay::setString2FloatConvert(String2FloatConvert convert) {
  string2FloatConvert = convert;
  setDirty();
}

void CParamDisplay::setStyle(std::int32_t newStyle) {
  style = newStyle;
  setDirty();
}

void CParamDisplay::drawBack(CDrawContext* context) {
  if (auto* const background = getDrawBackground()) {
    background->draw(context, getViewSize(), backOffset);
    return;
  }
  if (getTransparency() || textTransparency || (style & kNoBackgroundStyle) != 0) return;
  context->setDrawMode(kAliasing);
  context->setLineWidth(1);
  context->setFillColor(backColor);
  context->setFrameColor(frameColor);
  context->drawRect(getViewSize(), kDrawFilledAndStroked);
}

void CParamDisplay::drawPlatformText(CDrawContext* context, IPlatformString* text) {
  drawPlatformText(context, text, getViewSize());
}

void CParamDisplay::drawPlatformText(CDrawContext* context, IPlatformString* text, const CRect& rect) {
  if (!text || (style & kNoTextStyle) != 0) return;
  context->saveGlobalState();
  context->setClipRect(getViewSize());
  context->setFont(font);
  if (shadowColor.alpha > 0) {
    CRect shadow = rect;
    context->setFontColor(shadowColor);
    context->drawString(text, shadow.offset(1, 1), horiTxtAlign);
  }
  context->setFontColor(fontColor);
  context->drawString(text, rect, horiTxtAlign);
  context->restoreGlobalState();
}

std::string CParamDisplay::valueText() const {
  std::array<char, 256> text{};
  if (stringConvertUser) {
    stringConvertUser(getValue(), text.data(), userData);
  } else if (stringConvert) {
    stringConvert(getValue(), text.data());
  } else {
    std::snprintf(text.data(), text.size(), "%2.2f", static_cast<double>(getValue()));
  }
  text.back() = 0;
  return text.data();
}

void CParamDisplay::draw(CDrawContext* context) {
  drawBack(context);
  drawPlatformText(context, CString(valueText().c_str()).getPlatformString());
  setDirty(false);
}

}  // namespace VSTGUI
