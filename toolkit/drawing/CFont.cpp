// SPDX-License-Identifier: MIT
#include "toolkit/drawing/CFont.h"

namespace VSTGUI {

namespace {

// Never counted down to 0: each holds the reference that it was made with.
CFontDesc systemFont("Lucida Grande", 12);
CFontDesc normalFontVeryBig("Arial", 18);
CFontDesc normalFontBig("Arial", 14);
CFontDesc normalFont("Arial", 12);
CFontDesc normalFontSmall("Arial", 11);
CFontDesc normalFontSmaller("Arial", 10);
CFontDesc normalFontVerySmall("Arial", 9);

}  // namespace

CFontDesc* const kSystemFont = &systemFont;
CFontDesc* const kNormalFontVeryBig = &normalFontVeryBig;
CFontDesc* const kNormalFontBig = &normalFontBig;
CFontDesc* const kNormalFont = &normalFont;
CFontDesc* const kNormalFontSmall = &normalFontSmall;
CFontDesc* const kNormalFontSmaller = &normalFontSmaller;
CFontDesc* const kNormalFontVerySmall = &normalFontVerySmall;

CFontDesc::CFontDesc(const char* name, CCoord size, std::int32_t style)
    : name_(name ? name : ""), size_(size), style_(style) {}

void CFontDesc::setName(const char* name) { name_ = name ? name : ""; }

}  // namespace VSTGUI
