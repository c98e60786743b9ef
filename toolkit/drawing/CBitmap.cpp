// SPDX-License-Identifier: MIT
#include "toolkit/drawing/CBitmap.h"

#include <cairo.h>
#include <cmath>

#include "toolkit/base/Bundle.h"
#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

namespace {

constexpr double kMaxPixels = 32767;  // a side of cairo's pictures in memory

// Null instead of a surface that is in error.
CairoSurface usable(cairo_surface_t* surface) {
  CairoSurface made(surface);
  return cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS ? std::move(made) : nullptr;
}

CairoSurface loadPng(const CResourceDescription& resource) {
  const std::string name = resource.lookupName("bmp");
  const auto path = gBundleRef ? gBundleRef->findResource(name, "png") : Bundle({}).findResource(name, "png");
  return path.empty() ? nullptr : usable(cairo_image_surface_create_from_png(path.c_str()));
}

}  // namespace

CBitmap::CBitmap(const CResourceDescription& resource) : surface_(loadPng(resource)) {
  if (!surface_) return;
  width_ = cairo_image_surface_get_width(surface_.get());
  height_ = cairo_image_surface_get_height(surface_.get());
}

CBitmap::CBitmap(CCoord width, CCoord height, double scaleFactor) : scaleFactor_(scaleFactor) {
  const double pixelsWide = std::ceil(width * scaleFactor);
  const double pixelsHigh = std::ceil(height * scaleFactor);
  if (!(pixelsWide >= 1 && pixelsHigh >= 1 && pixelsWide <= kMaxPixels && pixelsHigh <= kMaxPixels)) return;
  surface_ = usable(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(pixelsWide), static_cast<int>(pixelsHigh)));
  if (!surface_) return;
  cairo_surface_set_device_scale(surface_.get(), scaleFactor, scaleFactor);
  width_ = width;
  height_ = height;
}

void CBitmap::draw(CDrawContext* context, const CRect& rect, const CPoint& offset, float alpha) {
  context->drawBitmap(this, rect, offset, alpha);
}

}  // namespace VSTGUI
