// SPDX-License-Identifier: MIT
// A window's picture: drawn in memory, brought to the window in the rectangles that changed. [ui]
#pragma once

#include <memory>
#include <vector>

#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/CairoPointers.h"
#include "toolkit/x11/Connection.h"

namespace VSTGUI::X11 {

// The rectangles that wait to be painted. A rectangle that was added lies whole in one of those that come out, since a
// view that is drawn in two parts would be drawn twice. Those that overlap become one, and so do all when they are
// many.
class Damage {
 public:
  void add(const CRect& rect);
  [[nodiscard]] bool isEmpty() const { return rects_.empty(); }
  [[nodiscard]] std::vector<CRect> take() { return std::exchange(rects_, {}); }

 private:
  std::vector<CRect> rects_;
};

class Canvas {
 public:
  // `width` and `height` in device pixels; `visual` is the window's.
  Canvas(Connection& connection, xcb_window_t window, const xcb_visualtype_t& visual, int width, int height,
         double scaleFactor);

  // What was painted before is lost. False when there is no memory for it; then nothing has changed.
  bool resize(int width, int height);
  // False when it can't be drawn on.
  [[nodiscard]] bool isUsable() const;

  // In units, grown to whole pixels.
  void invalidate(const CRect& rect);
  [[nodiscard]] bool isDirty() const { return !damage_.isEmpty(); }
  // Rectangles in units, each on whole pixels.
  [[nodiscard]] std::vector<CRect> takeDamage() { return damage_.take(); }
  [[nodiscard]] _cairo_surface* surface() const { return memory_.get(); }
  [[nodiscard]] CRect size() const { return {0, 0, width_ / scale_, height_ / scale_}; }  // in units
  // Brings a rectangle, in units, to the window.
  void present(const CRect& rect);
  // The window needs this rectangle, in device pixels, again.
  void expose(int x, int y, int width, int height);
  // Before the connection closes: gives back what cairo holds of it.
  void detachFromServer();

 private:
  [[nodiscard]] CairoSurface newMemory(int width, int height) const;
  // The rectangle on whole pixels.
  [[nodiscard]] CRect toPixels(const CRect& units) const;

  double scale_;
  double width_;  // device pixels
  double height_;
  CairoSurface window_;
  CairoSurface memory_;
  Damage damage_;
};

}  // namespace VSTGUI::X11
