// SPDX-License-Identifier: MIT
// Pictures in memory. [ui]
#pragma once

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CResourceDescription.h"
#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/CairoPointers.h"

namespace VSTGUI {

class CDrawContext;

class CBitmap : public CBaseObject {
 public:
  // A PNG file of the bundle: a name as it stands, a number as "bmp%05d" (with or without ".png" in the folder).
  // A picture that is missing or damaged leaves a bitmap of width and height 0, which draws nothing.
  explicit CBitmap(const CResourceDescription& resource);
  // An empty, transparent picture. Sizes are in frame units; each unit has `scaleFactor` device pixels.
  CBitmap(CCoord width, CCoord height, double scaleFactor = 1.0);
  CBitmap(const CBitmap&) = delete;
  CBitmap& operator=(const CBitmap&) = delete;

  [[nodiscard]] bool isLoaded() const { return surface_ != nullptr; }
  [[nodiscard]] CCoord getWidth() const { return width_; }
  [[nodiscard]] CCoord getHeight() const { return height_; }
  [[nodiscard]] double getScaleFactor() const { return scaleFactor_; }

  // Draws the part of the picture that starts at `offset` into `rect`; nothing outside `rect` changes.
  virtual void draw(CDrawContext* context, const CRect& rect, const CPoint& offset = CPoint(), float alpha = 1.0f);

  // The pixels, for this folder; null when nothing was loaded.
  [[nodiscard]] _cairo_surface* getSurface() const { return surface_.get(); }

  VSTGUI_CLASS(CBitmap, CBaseObject)

 private:
  CairoSurface surface_;
  CCoord width_ = 0;
  CCoord height_ = 0;
  double scaleFactor_ = 1.0;
};

}  // namespace VSTGUI
