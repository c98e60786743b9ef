// SPDX-License-Identifier: MIT
#include "toolkit/x11/Canvas.h"

#include <algorithm>
#include <cairo-xcb.h>
#include <cairo.h>
#include <cmath>

namespace VSTGUI::X11 {

namespace {

constexpr std::size_t kMaxRects = 12;

}  // namespace

void Damage::add(const CRect& rect) {
  if (rect.isEmpty()) return;
  CRect whole = rect;
  for (auto it = rects_.begin(); it != rects_.end();) {
    if (!it->rectOverlap(whole)) {
      ++it;
      continue;
    }
    whole.unite(*it);
    rects_.erase(it);
    it = rects_.begin();  // the grown one may overlap those that were left alone
  }
  rects_.push_back(whole);
  if (rects_.size() <= kMaxRects) return;
  for (const CRect& other : rects_) whole.unite(other);
  rects_.assign(1, whole);
}

Canvas::Canvas(Connection& connection, xcb_window_t window, const xcb_visualtype_t& visual, int width, int height,
               double scaleFactor)
    : scale_(scaleFactor), width_(width), height_(height) {
  auto* const type = const_cast<xcb_visualtype_t*>(&visual);  // cairo's interface; it only reads
  window_.reset(cairo_xcb_surface_create(connection, window, type, width, height));
  memory_ = newMemory(width, height);
}

// Of the window's own kind, so that its pixels can be sent as they are.
CairoSurface Canvas::newMemory(int width, int height) const {
  const bool hasAlpha = cairo_surface_get_content(window_.get()) == CAIRO_CONTENT_COLOR_ALPHA;
  CairoSurface made(cairo_image_surface_create(hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24, width, height));
  cairo_surface_set_device_scale(made.get(), scale_, scale_);
  return made;
}

bool Canvas::isUsable() const {
  return cairo_surface_status(memory_.get()) == CAIRO_STATUS_SUCCESS &&
         cairo_surface_status(window_.get()) == CAIRO_STATUS_SUCCESS;
}

bool Canvas::resize(int width, int height) {
  CairoSurface grown = newMemory(width, height);
  if (cairo_surface_status(grown.get()) != CAIRO_STATUS_SUCCESS) return false;
  memory_ = std::move(grown);
  cairo_xcb_surface_set_size(window_.get(), width, height);
  width_ = width;
  height_ = height;
  damage_ = {};
  invalidate(size());
  return true;
}

CRect Canvas::toPixels(const CRect& units) const {
  return {std::max(0.0, std::floor(units.left * scale_)), std::max(0.0, std::floor(units.top * scale_)),
          std::min(width_, std::ceil(units.right * scale_)), std::min(height_, std::ceil(units.bottom * scale_))};
}

void Canvas::invalidate(const CRect& rect) {
  const CRect pixels = toPixels(rect);
  damage_.add({pixels.left / scale_, pixels.top / scale_, pixels.right / scale_, pixels.bottom / scale_});
}

void Canvas::present(const CRect& rect) {
  const CRect rounded = toPixels(rect);
  if (rounded.isEmpty()) return;
  cairo_surface_flush(memory_.get());
  // The same pixels without a scale, which cairo can send without a transform.
  const CairoSurface pixels(cairo_image_surface_create_for_data(
      cairo_image_surface_get_data(memory_.get()), cairo_image_surface_get_format(memory_.get()),
      static_cast<int>(width_), static_cast<int>(height_), cairo_image_surface_get_stride(memory_.get())));
  const CairoContext cairo(cairo_create(window_.get()));
  cairo_rectangle(cairo.get(), rounded.left, rounded.top, rounded.getWidth(), rounded.getHeight());
  cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
  cairo_set_source_surface(cairo.get(), pixels.get(), 0, 0);
  cairo_fill(cairo.get());
  cairo_surface_flush(window_.get());
}

void Canvas::expose(int x, int y, int width, int height) {
  present({x / scale_, y / scale_, (x + width) / scale_, (y + height) / scale_});
}

void Canvas::detachFromServer() {
  cairo_device_t* const device = cairo_surface_get_device(window_.get());
  if (device) cairo_device_reference(device);
  cairo_surface_finish(window_.get());
  if (!device) return;
  cairo_device_finish(device);
  cairo_device_destroy(device);
}

}  // namespace VSTGUI::X11
