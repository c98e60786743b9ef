// SPDX-License-Identifier: MIT
// The inside of a draw context. Internal to the files that implement it.
#pragma once

#include <cairo.h>
#include <pango/pango.h>
#include <string>
#include <vector>

#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

struct CDrawContext::State {
  CColor frameColor = kBlackCColor;
  CColor fillColor = kBlackCColor;
  CColor fontColor = kBlackCColor;
  std::string fontName = "Arial";
  double fontSize = 12;
  std::int32_t fontStyle = kNormalFace;
  double lineWidth = 1;
  CLineStyle lineStyle;
  CDrawMode drawMode = kAliasing;
  double alpha = 1;
  // On the surface, in units: where drawing may go, the part of it that is set, and the place of (0, 0).
  CRect limit;
  CRect clip;
  CPoint origin;
};

struct CDrawContext::Impl {
  Impl(cairo_surface_t* target, const CRect& clip, double scaleFactor);
  ~Impl();
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  // A cairo state of its own for one operation: clip, anti-aliasing, and nothing that outlives it.
  class Operation {
   public:
    explicit Operation(const Impl& impl);
    ~Operation() { cairo_restore(cr_); }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

   private:
    cairo_t* cr_;
  };

  void setColor(const CColor& color) const;
  // On the nearest device pixel's edge.
  [[nodiscard]] double onGrid(double v) const;
  [[nodiscard]] CPoint placed(const CPoint& p) const { return p + state.origin; }
  // The place of a line's end on the surface.
  [[nodiscard]] CPoint lineEnd(const CPoint& p) const;
  // The width of a line on the surface, whole device pixels in the integral modes.
  [[nodiscard]] double strokeWidth() const;
  void stroke() const;
  // Adds a path under the current matrix.
  void addPath(const CGraphicsPath& path) const;
  // The line of a text in the state's font; belongs to the context and is valid until the next call.
  PangoLayoutLine* layoutLine(const char* text, bool antialias);

  cairo_t* cr;
  double scale;
  State state;
  std::vector<State> saved;
  CPoint pen;
  PangoLayout* layout = nullptr;
};

}  // namespace VSTGUI
