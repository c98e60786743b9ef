// SPDX-License-Identifier: MIT
// A draw context with a bitmap of its own, at the device's resolution. [ui]
#pragma once

#include "toolkit/drawing/CBitmap.h"
#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

class CFrame;

class COffscreenContext : public CDrawContext {
 public:
  // The bitmap is transparent at first. It has `scale` times the frame's scale factor pixels a unit (the frame may be
  // null: 1). Null for a size below one unit, beyond 32767 pixels, or without memory. The caller owns the result.
  [[nodiscard]] static COffscreenContext* create(CFrame* frame, CCoord width, CCoord height, double scale = 1.0);

  // Belongs to the context; remember it to keep it longer.
  [[nodiscard]] CBitmap* getBitmap() const { return bitmap_; }
  [[nodiscard]] CCoord getWidth() const { return bitmap_->getWidth(); }
  [[nodiscard]] CCoord getHeight() const { return bitmap_->getHeight(); }
  // Draws what this context holds from `source` on into `destination` of another.
  void copyFrom(CDrawContext* context, const CRect& destination, const CPoint& source = CPoint());

  VSTGUI_CLASS(COffscreenContext, CDrawContext)

 private:
  explicit COffscreenContext(Counted<CBitmap> bitmap);

  Counted<CBitmap> bitmap_;
};

}  // namespace VSTGUI
