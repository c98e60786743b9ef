// SPDX-License-Identifier: MIT
// Steppers and rows of positions, drawn with a bitmap of stacked images from minimum to maximum. [ui]
#pragma once

#include "toolkit/controls/CControl.h"

namespace VSTGUI {

enum CRockerStyle : std::int32_t { kRockerVertical = 1, kRockerHorizontal = 2 };

// From -1 to 1. While pressed it holds the minimum (left or upper half) or the maximum by the half under the pointer,
// and keeps it with the pointer outside; the release brings it back to the middle. Each change is reported, so a press
// that strays out and back steps once. With three images: minimum, middle, maximum.
class CRockerSwitch : public CControl, public IMultiBitmapControl {
 public:
  CRockerSwitch(const CRect& size, IControlListener* listener, std::int32_t tag, CCoord heightOfOneImage,
                CBitmap* background, const CPoint& offset = CPoint(), std::int32_t style = kRockerHorizontal);

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;

  VSTGUI_CLASS_WITH_COPY(CRockerSwitch, CControl)

 private:
  [[nodiscard]] float valueAt(const CPoint& where) const;
  void moveTo(float newValue);

  std::int32_t style_;
};

// As many positions from left to right as the bitmap has images; a press or drag takes the one under the pointer.
class CHorizontalSwitch : public CControl, public IMultiBitmapControl {
 public:
  CHorizontalSwitch(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background,
                    const CPoint& offset = CPoint());

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;

  VSTGUI_CLASS_WITH_COPY(CHorizontalSwitch, CControl)
};

}  // namespace VSTGUI
