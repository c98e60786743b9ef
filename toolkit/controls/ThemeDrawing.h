// SPDX-License-Identifier: MIT
// What the toolkit's own parts of a dialog draw with: boxes and lines of text in the colours of `Theme`. [ui]
#pragma once

#include <string>

#include "toolkit/base/CColor.h"
#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/DrawTypes.h"

namespace VSTGUI {

class CDrawContext;

void drawBox(CDrawContext& context, const CRect& rect, const CColor& back, const CColor& border);
// Cut at the rectangle.
void drawTextLine(CDrawContext& context, const std::string& text, const CRect& rect, const CColor& color,
                  CHoriTxtAlign align);

}  // namespace VSTGUI
