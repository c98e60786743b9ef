// SPDX-License-Identifier: MIT
#include "toolkit/drawing/CGraphicsPath.h"

namespace VSTGUI {

bool CGraphicsPath::hasOpenSubpath() const { return !elements_.empty() && elements_.back().type != Element::kClose; }

void CGraphicsPath::beginSubpath(const CPoint& start) { elements_.push_back({Element::kBegin, {start, {}, {}}}); }

void CGraphicsPath::addLine(const CPoint& to) {
  if (hasOpenSubpath()) {
    elements_.push_back({Element::kLine, {to, {}, {}}});
  } else {
    beginSubpath(to);
  }
}

void CGraphicsPath::addBezierCurve(const CPoint& control1, const CPoint& control2, const CPoint& end) {
  if (!hasOpenSubpath()) beginSubpath(control1);
  elements_.push_back({Element::kCurve, {control1, control2, end}});
}

void CGraphicsPath::addRect(const CRect& rect) {
  beginSubpath(rect.getTopLeft());
  addLine({rect.right, rect.top});
  addLine({rect.right, rect.bottom});
  addLine({rect.left, rect.bottom});
  closeSubpath();
}

void CGraphicsPath::closeSubpath() {
  if (hasOpenSubpath()) elements_.push_back({Element::kClose, {}});
}

}  // namespace VSTGUI
