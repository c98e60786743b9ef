// SPDX-License-Identifier: MIT
// A knob that is turned by dragging, in the way that the editor's knob mode says. [ui]
#pragma once

#include "toolkit/base/CColor.h"
#include "toolkit/controls/CControl.h"

namespace VSTGUI {

class CKnob : public CControl {
 public:
  // `handle` is drawn centred on the value's point; without it a line from the middle to that point is.
  CKnob(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background, CBitmap* handle,
        const CPoint& offset = CPoint(), std::int32_t drawStyle = 0);

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
  bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) override;

  // The point of the current value, relative to the view's top left corner.
  virtual void valueToPoint(CPoint& point) const;
  // The value whose direction from the middle is that of a point (relative to the top left corner).
  [[nodiscard]] virtual float valueFromPoint(const CPoint& point) const;
  virtual void drawHandle(CDrawContext* context);

  // Radians, clockwise from the right: where the minimum lies, and how far the maximum is from it.
  void setStartAngle(float angle) { startAngle = angle; }
  void setRangeAngle(float angle) { rangeAngle = angle; }
  // How much finer a drag with Shift is.
  void setZoomFactor(float factor) { zoomFactor = factor; }
  [[nodiscard]] float getZoomFactor() const { return zoomFactor; }
  void setColorHandle(const CColor& color);
  [[nodiscard]] const CColor& getColorHandle() const { return colorHandle; }
  void setHandleLineWidth(CCoord width);
  [[nodiscard]] CCoord getHandleLineWidth() const { return handleLineWidth; }
  void setInsetValue(CCoord inset);
  [[nodiscard]] CBitmap* getHandleBitmap() const { return handle; }
  [[nodiscard]] std::int32_t getDrawStyle() const { return drawStyle; }

  VSTGUI_CLASS_WITH_COPY(CKnob, CControl)

 protected:
  CColor colorHandle = kWhiteCColor;
  Counted<CBitmap> handle;
  std::int32_t drawStyle;
  CCoord handleLineWidth = 1;
  CCoord inset = 3;
  float startAngle;
  float rangeAngle;
  float zoomFactor = 1.5f;

 private:
  void setUpLinearDrag(const CPoint& where, CButtonState buttons);
  [[nodiscard]] float draggedValue(const CPoint& where, CButtonState buttons);

  CPoint firstPoint_;
  CPoint lastPoint_;
  float startValue_ = 0;
  float valuePerUnit_ = 0;
  float grip_ = 0;  // value at the press less the value under the pointer
  std::int32_t dragModifiers_ = 0;
};

}  // namespace VSTGUI
