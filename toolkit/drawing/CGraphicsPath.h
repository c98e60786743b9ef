// SPDX-License-Identifier: MIT
// Outlines of lines and Bézier curves, and the gradients that fill them. [ui]
#pragma once

#include <vector>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CColor.h"
#include "toolkit/base/Geometry.h"

namespace VSTGUI {

// From `color1` up to the position `start` to `color2` from the position `end` on; positions run from 0 to 1.
class CGradient : public CBaseObject {
 public:
  CGradient(double start, double end, const CColor& color1, const CColor& color2)
      : start_(start), end_(end), color1_(color1), color2_(color2) {}
  [[nodiscard]] double getColor1Start() const { return start_; }
  [[nodiscard]] double getColor2Start() const { return end_; }
  [[nodiscard]] const CColor& getColor1() const { return color1_; }
  [[nodiscard]] const CColor& getColor2() const { return color2_; }

  VSTGUI_CLASS_WITH_COPY(CGradient, CBaseObject)

 private:
  double start_;
  double end_;
  CColor color1_;
  CColor color2_;
};

class CGraphicsPath : public CBaseObject {
 public:
  struct Element {
    enum Type { kBegin, kLine, kCurve, kClose } type;
    CPoint points[3];  // begin and line use the first; a curve its two control points and its end
  };

  void beginSubpath(const CPoint& start);
  // Without an open sub-path these begin one at their own first point.
  void addLine(const CPoint& to);
  void addBezierCurve(const CPoint& control1, const CPoint& control2, const CPoint& end);
  void addRect(const CRect& rect);
  void closeSubpath();

  // The caller owns the result.
  [[nodiscard]] CGradient* createGradient(double start, double end, const CColor& color1, const CColor& color2) const {
    return new CGradient(start, end, color1, color2);
  }
  [[nodiscard]] const std::vector<Element>& getElements() const { return elements_; }

  VSTGUI_CLASS_WITH_COPY(CGraphicsPath, CBaseObject)

 private:
  [[nodiscard]] bool hasOpenSubpath() const;

  std::vector<Element> elements_;
};

}  // namespace VSTGUI
