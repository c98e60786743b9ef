// SPDX-License-Identifier: MIT
// Buttons drawn with a bitmap of stacked images: released (or off) on top, pressed (or on) below. [ui]
#pragma once

#include "toolkit/controls/CControl.h"

namespace VSTGUI {

// Flips between minimum and maximum on a left press and reports it as one edit.
class COnOffButton : public CControl {
 public:
  COnOffButton(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background = nullptr,
               std::int32_t style = 0);

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  // Kept for the caller; drawing and presses don't depend on it.
  [[nodiscard]] std::int32_t getStyle() const { return style_; }
  void setStyle(std::int32_t style) { style_ = style; }

  VSTGUI_CLASS_WITH_COPY(COnOffButton, CControl)

 private:
  std::int32_t style_;
};

// Holds its maximum while pressed with the pointer inside, its minimum with the pointer outside. The release reports a
// value above 0, then goes to the minimum and reports that too.
class CKickButton : public CControl, public IMultiBitmapControl {
 public:
  CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background,
              const CPoint& offset = CPoint());
  CKickButton(const CRect& size, IControlListener* listener, std::int32_t tag, CCoord heightOfOneImage,
              CBitmap* background, const CPoint& offset = CPoint());

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;

  VSTGUI_CLASS_WITH_COPY(CKickButton, CControl)
};

}  // namespace VSTGUI
