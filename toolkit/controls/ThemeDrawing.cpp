// SPDX-License-Identifier: MIT
#include "toolkit/controls/ThemeDrawing.h"

#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

void drawBox(CDrawContext& context, const CRect& rect, const CColor& back, const CColor& border) {
  context.setDrawMode(kAliasing);
  context.setLineWidth(1);
  context.setFillColor(back);
  context.setFrameColor(border);
  context.drawRect(rect, kDrawFilledAndStroked);
}

void drawTextLine(CDrawContext& context, const std::string& text, const CRect& rect, const CColor& color,
                  CHoriTxtAlign align) {
  context.saveGlobalState();
  context.setClipRect(rect);
  context.setFont(kNormalFont);
  context.setFontColor(color);
  context.drawString(text.c_str(), rect, align);
  context.restoreGlobalState();
}

}  // namespace VSTGUI
