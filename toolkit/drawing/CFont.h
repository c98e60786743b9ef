// SPDX-License-Identifier: MIT
// Fonts by name, size and style. [ui]
//
// Names are those of the drawings; fontconfig finds the machine's nearest face of the same widths.
#pragma once

#include <cstdint>
#include <string>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/Geometry.h"

namespace VSTGUI {

enum CTxtFace : std::int32_t { kNormalFace = 0, kBoldFace = 2, kItalicFace = 4, kUnderlineFace = 8 };

class CFontDesc : public CBaseObject {
 public:
  // `size` in frame units; `style` is a sum of CTxtFace bits.
  explicit CFontDesc(const char* name, CCoord size = 0, std::int32_t style = kNormalFace);

  [[nodiscard]] const char* getName() const { return name_.c_str(); }
  [[nodiscard]] CCoord getSize() const { return size_; }
  [[nodiscard]] std::int32_t getStyle() const { return style_; }
  virtual void setName(const char* name);
  virtual void setSize(double size) { size_ = size; }
  virtual void setStyle(std::int32_t style) { style_ = style; }

  VSTGUI_CLASS_WITH_COPY(CFontDesc, CBaseObject)

 private:
  std::string name_;
  CCoord size_;
  std::int32_t style_;
};

using CFontRef = CFontDesc*;

extern CFontDesc* const kSystemFont;           // "Lucida Grande", 12
extern CFontDesc* const kNormalFontVeryBig;    // "Arial", 18
extern CFontDesc* const kNormalFontBig;        // "Arial", 14
extern CFontDesc* const kNormalFont;           // "Arial", 12
extern CFontDesc* const kNormalFontSmall;      // "Arial", 11
extern CFontDesc* const kNormalFontSmaller;    // "Arial", 10
extern CFontDesc* const kNormalFontVerySmall;  // "Arial", 9

}  // namespace VSTGUI
