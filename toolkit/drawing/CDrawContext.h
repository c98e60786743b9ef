// SPDX-License-Identifier: MIT
// Draws lines, shapes, pictures and text on a surface. [ui]
//
// Coordinates are those of the view that draws: its parent's, whose origin the container sets. Everything is cut to the
// clip rectangle.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CColor.h"
#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/CFont.h"
#include "toolkit/drawing/CGraphicsPath.h"
#include "toolkit/drawing/DrawTypes.h"

struct _cairo;
struct _cairo_surface;

namespace VSTGUI {

class CBitmap;
class IPlatformString;

class CDrawContext : public CBaseObject {
 public:
  enum PathDrawMode : std::int32_t { kPathFilled = 0, kPathFilledEvenOdd = 1, kPathStroked = 2 };

  // Draws on `surface`, whose device scale is `scaleFactor` pixels a unit, cut to `clip`. Keeps a reference of it.
  CDrawContext(_cairo_surface* surface, const CRect& clip, double scaleFactor);
  ~CDrawContext() override;
  CDrawContext(const CDrawContext&) = delete;
  CDrawContext& operator=(const CDrawContext&) = delete;

  // Bracket a run of drawing; nothing is lost without them.
  virtual void beginDraw() {}
  virtual void endDraw();

  void setFrameColor(const CColor& color);
  void setFillColor(const CColor& color);
  void setFontColor(const CColor& color);
  [[nodiscard]] CColor getFrameColor() const;
  [[nodiscard]] CColor getFillColor() const;
  [[nodiscard]] CColor getFontColor() const;
  // A size of 0 or below and a style of -1 stand for the font's own.
  void setFont(const CFontDesc* font, CCoord size = 0, std::int32_t style = -1);
  // In units; 0 draws the thinnest line, one device pixel.
  void setLineWidth(double width);
  [[nodiscard]] double getLineWidth() const;
  void setLineStyle(const CLineStyle& style);
  void setDrawMode(CDrawMode mode);
  [[nodiscard]] CDrawMode getDrawMode() const;
  // Multiplies the alpha of all that follows.
  void setGlobalAlpha(float alpha);

  // Colours, font, line, draw mode, alpha, clip and origin; calls nest.
  void saveGlobalState();
  void restoreGlobalState();

  CRect& getClipRect(CRect& rect) const;
  void setClipRect(const CRect& rect);
  // Cuts the clip for good: setClipRect doesn't get beyond this until the state is restored. For containers.
  void limitClipRect(const CRect& rect);
  // Moves the origin of all that follows; the clip stays where it is on the surface.
  void offsetOrigin(CCoord dx, CCoord dy);

  void moveTo(const CPoint& point);
  // A line from the last point of moveTo or lineTo.
  void lineTo(const CPoint& point);
  void drawLine(const CPoint& from, const CPoint& to);
  void drawRect(const CRect& rect, CDrawStyle style = kDrawStroked);
  // The ellipse that touches the sides of `rect`.
  void drawEllipse(const CRect& rect, CDrawStyle style = kDrawStroked);

  // One line of UTF-8 text, in the middle of the rectangle's height; cut by the clip and not by the rectangle.
  void drawString(const char* text, const CRect& rect, CHoriTxtAlign align = kCenterText, bool antialias = true);
  void drawString(IPlatformString* text, const CRect& rect, CHoriTxtAlign align = kCenterText, bool antialias = true);
  // From a point on the base line.
  void drawString(const char* text, const CPoint& point, bool antialias = true);
  [[nodiscard]] CCoord getStringWidth(const char* text);
  // Ascent and descent of the font in units.
  [[nodiscard]] CCoord getFontHeight();

  // The caller owns the result.
  [[nodiscard]] CGraphicsPath* createGraphicsPath() const { return new CGraphicsPath; }
  // Paths are taken as they are in every draw mode. A stroke's width is scaled with the transform, but for the
  // thinnest.
  void drawGraphicsPath(const CGraphicsPath* path, PathDrawMode mode = kPathFilled,
                        const CGraphicsTransform* transform = nullptr);
  void fillLinearGradient(const CGraphicsPath* path, const CGradient& gradient, const CPoint& start, const CPoint& end,
                          bool evenOdd = false, const CGraphicsTransform* transform = nullptr);

  void drawBitmap(const CBitmap* bitmap, const CRect& rect, const CPoint& offset = CPoint(), float alpha = 1.0f);

  [[nodiscard]] double getScaleFactor() const;

  VSTGUI_CLASS(CDrawContext, CBaseObject)

 private:
  struct State;
  struct Impl;
  void drawShape(const CRect& rect, CDrawStyle style, void (*add)(_cairo*, const CRect&));

  std::unique_ptr<Impl> impl_;
};

}  // namespace VSTGUI
