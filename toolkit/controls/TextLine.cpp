// SPDX-License-Identifier: MIT
#include "toolkit/controls/TextLine.h"

#include "toolkit/controls/ThemeDrawing.h"

namespace VSTGUI {

void TextLine::setText(std::string text) {
  text_ = std::move(text);
  invalid();
}

void TextLine::draw(CDrawContext* context) { drawTextLine(*context, text_, getViewSize(), color_, kLeftText); }

}  // namespace VSTGUI
