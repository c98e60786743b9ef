// SPDX-License-Identifier: MIT
// Shows its value, or any text, in one line. [ui]
#pragma once

#include <string>

#include "toolkit/base/CColor.h"
#include "toolkit/controls/CControl.h"
#include "toolkit/drawing/CFont.h"
#include "toolkit/drawing/DrawTypes.h"

namespace VSTGUI {

class IPlatformString;

// Style bits that the display itself looks at.
inline constexpr std::int32_t kNoTextStyle = 0x800;         // no text
inline constexpr std::int32_t kNoBackgroundStyle = 0x1000;  // neither background nor frame

class CParamDisplay : public CControl {
 public:
  using StringConvert = void (*)(float value, char* text);  // `text` has room for 256 bytes
  using StringConvertUser = void (*)(float value, char* text, void* user);
  using String2FloatConvert = void (*)(char* text, float& value);

  explicit CParamDisplay(const CRect& size, CBitmap* background = nullptr, std::int32_t style = 0);
  CParamDisplay(const CParamDisplay& other);

  virtual void setFont(CFontRef newFont);
  virtual void setFontColor(CColor color);
  virtual void setBackColor(CColor color);
  virtual void setFrameColor(CColor color);
  virtual void setShadowColor(CColor color);
  virtual void setHoriAlign(CHoriTxtAlign align);
  virtual void setTextTransparency(bool transparent);
  virtual void setStringConvert(StringConvert convert);
  virtual void setStringConvert(StringConvertUser convert, void* user);
  virtual void setString2FloatConvert(String2FloatConvert convert);
  virtual void setStyle(std::int32_t newStyle);

  // The font, colour and alignment of this display; a shadow colour with alpha lies 1 to the right and below.
  virtual void drawPlatformText(CDrawContext* context, IPlatformString* text, const CRect& rect);
  virtual void drawPlatformText(CDrawContext* context, IPlatformString* text);
  virtual void drawBack(CDrawContext* context);

  // A copy of kNormalFont until `setFont`, so that its size can be set.
  [[nodiscard]] CFontRef getFont() const { return font; }
  [[nodiscard]] CColor getFontColor() const { return fontColor; }
  [[nodiscard]] CColor getBackColor() const { return backColor; }
  [[nodiscard]] CColor getFrameColor() const { return frameColor; }
  [[nodiscard]] CColor getShadowColor() const { return shadowColor; }
  [[nodiscard]] CHoriTxtAlign getHoriAlign() const { return horiTxtAlign; }
  [[nodiscard]] bool getTextTransparency() const { return textTransparency; }
  [[nodiscard]] std::int32_t getStyle() const { return style; }
  // What `draw` shows: the value through the converter, else with two decimals.
  [[nodiscard]] std::string valueText() const;

  void draw(CDrawContext* context) override;

  VSTGUI_CLASS_WITH_COPY(CParamDisplay, CControl)

 protected:
  StringConvert stringConvert = nullptr;
  StringConvertUser stringConvertUser = nullptr;
  String2FloatConvert string2FloatConvert = nullptr;
  void* userData = nullptr;
  CHoriTxtAlign horiTxtAlign = kCenterText;
  std::int32_t style;
  Counted<CFontDesc> font;
  CColor fontColor = kWhiteCColor;
  CColor backColor = kBlackCColor;
  CColor frameColor = kBlackCColor;
  CColor shadowColor = kTransparentCColor;
  bool textTransparency = false;
};

}  // namespace VSTGUI
