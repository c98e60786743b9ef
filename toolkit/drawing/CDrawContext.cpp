// SPDX-License-Identifier: MIT
#include "toolkit/drawing/CDrawContext.h"

#include <cmath>
#include <numbers>

#include "toolkit/drawing/CBitmap.h"
#include "toolkit/drawing/CDrawContextImpl.h"

namespace VSTGUI {

namespace {

// Without anti-aliasing a line of one pixel on a pixel's edge could fall on either side; this much, in device pixels,
// brings it to the right and below, where the integral modes put it.
constexpr double kAliasedNudge = 1.0 / 64;

cairo_matrix_t matrixOf(const CGraphicsTransform& t) {
  cairo_matrix_t matrix;
  cairo_matrix_init(&matrix, t.m11, t.m21, t.m12, t.m22, t.dx, t.dy);
  return matrix;
}

// cairo refuses matrices that flatten everything, and refuses all drawing after one.
bool isUsable(const CGraphicsTransform* t) {
  if (!t) return true;
  const double determinant = t->m11 * t->m22 - t->m12 * t->m21;
  return std::isfinite(determinant) && determinant != 0 && std::isfinite(t->dx) && std::isfinite(t->dy);
}

bool isFinite(const CPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

void addEllipse(cairo_t* cr, const CRect& rect) {
  cairo_matrix_t before;
  cairo_get_matrix(cr, &before);
  cairo_translate(cr, rect.getCenter().x, rect.getCenter().y);
  cairo_scale(cr, rect.getWidth() / 2, rect.getHeight() / 2);
  cairo_new_path(cr);
  cairo_arc(cr, 0, 0, 1, 0, 2 * std::numbers::pi);
  cairo_close_path(cr);
  cairo_set_matrix(cr, &before);
}

void addRectangle(cairo_t* cr, const CRect& rect) {
  cairo_rectangle(cr, rect.left, rect.top, rect.getWidth(), rect.getHeight());
}

}  // namespace

CDrawContext::Impl::Impl(cairo_surface_t* target, const CRect& clip, double scaleFactor)
    : cr(cairo_create(target)), scale(scaleFactor) {
  state.limit = state.clip = clip;
}

CDrawContext::Impl::~Impl() {
  if (layout) g_object_unref(layout);
  cairo_destroy(cr);
}

CDrawContext::Impl::Operation::Operation(const Impl& impl) : cr_(impl.cr) {
  cairo_save(cr_);
  const CRect& clip = impl.state.clip;
  const double left = impl.onGrid(clip.left);
  const double top = impl.onGrid(clip.top);
  cairo_rectangle(cr_, left, top, impl.onGrid(clip.right) - left, impl.onGrid(clip.bottom) - top);
  cairo_clip(cr_);
  cairo_new_path(cr_);
  cairo_set_antialias(cr_, impl.state.drawMode.antiAliased() ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}

void CDrawContext::Impl::setColor(const CColor& color) const {
  cairo_set_source_rgba(cr, color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                        color.alpha / 255.0 * state.alpha);
}

double CDrawContext::Impl::onGrid(double v) const { return std::round(v * scale) / scale; }

double CDrawContext::Impl::strokeWidth() const {
  const double pixels = state.lineWidth * scale;
  if (pixels <= 0) return 1 / scale;
  return state.drawMode.integral() ? std::max(1.0, std::round(pixels)) / scale : state.lineWidth;
}

CPoint CDrawContext::Impl::lineEnd(const CPoint& p) const {
  const CPoint at = placed(p);
  if (state.drawMode.integral()) {
    // A line of width 1 covers the unit that starts at its coordinate, one of width 2 a unit on each side.
    const double before = std::floor(std::max(1.0, std::round(state.lineWidth)) / 2);
    const double half = strokeWidth() / 2;
    return {onGrid(at.x - before) + half, onGrid(at.y - before) + half};
  }
  if (state.drawMode.antiAliased()) return at;
  return {at.x + kAliasedNudge / scale, at.y + kAliasedNudge / scale};
}

void CDrawContext::Impl::stroke() const {
  const double width = strokeWidth();
  cairo_set_line_width(cr, width);
  cairo_set_line_cap(cr, static_cast<cairo_line_cap_t>(state.lineStyle.cap));
  cairo_set_line_join(cr, static_cast<cairo_line_join_t>(state.lineStyle.join));
  std::vector<double> dashes = state.lineStyle.dashes;
  for (double& length : dashes) length *= width;
  if (!dashes.empty())
    cairo_set_dash(cr, dashes.data(), static_cast<int>(dashes.size()), state.lineStyle.dashPhase * width);
  setColor(state.frameColor);
  cairo_stroke(cr);
}

void CDrawContext::Impl::addPath(const CGraphicsPath& path) const {
  using Element = CGraphicsPath::Element;
  for (const Element& element : path.getElements()) {
    const auto& p = element.points;
    if (!isFinite(p[0]) || !isFinite(p[1]) || !isFinite(p[2])) continue;
    switch (element.type) {
      case Element::kBegin:
        cairo_move_to(cr, p[0].x, p[0].y);
        break;
      case Element::kLine:
        cairo_line_to(cr, p[0].x, p[0].y);
        break;
      case Element::kCurve:
        cairo_curve_to(cr, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
        break;
      case Element::kClose:
        cairo_close_path(cr);
        break;
    }
  }
}

CDrawContext::CDrawContext(_cairo_surface* surface, const CRect& clip, double scaleFactor)
    : impl_(std::make_unique<Impl>(surface, clip, scaleFactor)) {}
CDrawContext::~CDrawContext() = default;

void CDrawContext::endDraw() { cairo_surface_flush(cairo_get_target(impl_->cr)); }

void CDrawContext::setFrameColor(const CColor& color) { impl_->state.frameColor = color; }
void CDrawContext::setFillColor(const CColor& color) { impl_->state.fillColor = color; }
void CDrawContext::setFontColor(const CColor& color) { impl_->state.fontColor = color; }
CColor CDrawContext::getFrameColor() const { return impl_->state.frameColor; }
CColor CDrawContext::getFillColor() const { return impl_->state.fillColor; }
CColor CDrawContext::getFontColor() const { return impl_->state.fontColor; }
void CDrawContext::setLineWidth(double width) { impl_->state.lineWidth = width; }
double CDrawContext::getLineWidth() const { return impl_->state.lineWidth; }
void CDrawContext::setLineStyle(const CLineStyle& style) { impl_->state.lineStyle = style; }
void CDrawContext::setDrawMode(CDrawMode mode) { impl_->state.drawMode = mode; }
CDrawMode CDrawContext::getDrawMode() const { return impl_->state.drawMode; }
void CDrawContext::setGlobalAlpha(float alpha) { impl_->state.alpha = alpha; }
double CDrawContext::getScaleFactor() const { return impl_->scale; }

void CDrawContext::setFont(const CFontDesc* font, CCoord size, std::int32_t style) {
  if (!font) return;
  impl_->state.fontName = font->getName();
  impl_->state.fontSize = size > 0 ? size : font->getSize();
  impl_->state.fontStyle = style == -1 ? font->getStyle() : style;
}

void CDrawContext::saveGlobalState() { impl_->saved.push_back(impl_->state); }

void CDrawContext::restoreGlobalState() {
  if (impl_->saved.empty()) return;
  impl_->state = std::move(impl_->saved.back());
  impl_->saved.pop_back();
}

CRect& CDrawContext::getClipRect(CRect& rect) const {
  rect = impl_->state.clip;
  return rect.offset(-impl_->state.origin.x, -impl_->state.origin.y);
}

void CDrawContext::setClipRect(const CRect& rect) {
  CRect onSurface = rect;
  onSurface.offset(impl_->state.origin.x, impl_->state.origin.y);
  impl_->state.clip = onSurface.bound(impl_->state.limit);
}

void CDrawContext::limitClipRect(const CRect& rect) {
  setClipRect(rect);
  impl_->state.limit = impl_->state.clip;
}

void CDrawContext::offsetOrigin(CCoord dx, CCoord dy) { impl_->state.origin.offset(dx, dy); }

void CDrawContext::moveTo(const CPoint& point) { impl_->pen = point; }

void CDrawContext::lineTo(const CPoint& point) {
  drawLine(impl_->pen, point);
  impl_->pen = point;
}

void CDrawContext::drawLine(const CPoint& from, const CPoint& to) {
  if (!isFinite(from) || !isFinite(to)) return;
  const Impl::Operation operation(*impl_);
  CPoint start = impl_->lineEnd(from);
  CPoint end = impl_->lineEnd(to);
  if (impl_->state.drawMode.integral()) {
    // Lengthwise an upright or level line goes from edge to edge, so that its ends are sharp too.
    if (from.x == to.x) {
      start.y = impl_->onGrid(impl_->placed(from).y);
      end.y = impl_->onGrid(impl_->placed(to).y);
    } else if (from.y == to.y) {
      start.x = impl_->onGrid(impl_->placed(from).x);
      end.x = impl_->onGrid(impl_->placed(to).x);
    }
  }
  cairo_move_to(impl_->cr, start.x, start.y);
  cairo_line_to(impl_->cr, end.x, end.y);
  impl_->stroke();
}

void CDrawContext::drawShape(const CRect& rect, CDrawStyle style, void (*add)(_cairo*, const CRect&)) {
  if (!isFinite(rect.getTopLeft()) || !isFinite({rect.right, rect.bottom})) return;
  CRect place = rect;
  place.offset(impl_->state.origin.x, impl_->state.origin.y);
  const bool integral = impl_->state.drawMode.integral();
  if (integral)
    place = {impl_->onGrid(place.left), impl_->onGrid(place.top), impl_->onGrid(place.right),
             impl_->onGrid(place.bottom)};
  if (place.isEmpty()) return;
  const Impl::Operation operation(*impl_);
  if (style != kDrawStroked) {
    add(impl_->cr, place);
    impl_->setColor(impl_->state.fillColor);
    cairo_fill(impl_->cr);
  }
  if (style == kDrawFilled) return;
  if (integral) {
    const double half = impl_->strokeWidth() / 2;
    place.inset(std::min(half, place.getWidth() / 2), std::min(half, place.getHeight() / 2));
    if (place.isEmpty()) place = {place.left, place.top, place.right + 1e-6, place.bottom + 1e-6};
  } else if (!impl_->state.drawMode.antiAliased()) {
    place.offset(kAliasedNudge / impl_->scale, kAliasedNudge / impl_->scale);
  }
  add(impl_->cr, place);
  impl_->stroke();
}

void CDrawContext::drawRect(const CRect& rect, CDrawStyle style) { drawShape(rect, style, addRectangle); }
void CDrawContext::drawEllipse(const CRect& rect, CDrawStyle style) { drawShape(rect, style, addEllipse); }

void CDrawContext::drawGraphicsPath(const CGraphicsPath* path, PathDrawMode mode, const CGraphicsTransform* transform) {
  if (!path || !isUsable(transform)) return;
  const Impl::Operation operation(*impl_);
  cairo_t* const cr = impl_->cr;
  const double nudge = mode == kPathStroked && !impl_->state.drawMode.antiAliased() ? kAliasedNudge / impl_->scale : 0;
  cairo_translate(cr, impl_->state.origin.x + nudge, impl_->state.origin.y + nudge);
  cairo_matrix_t unscaled;
  cairo_get_matrix(cr, &unscaled);
  if (transform) {
    const cairo_matrix_t matrix = matrixOf(*transform);
    cairo_transform(cr, &matrix);
  }
  impl_->addPath(*path);
  if (mode == kPathStroked) {
    if (impl_->state.lineWidth <= 0) cairo_set_matrix(cr, &unscaled);
    impl_->stroke();
    return;
  }
  cairo_set_fill_rule(cr, mode == kPathFilledEvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
  impl_->setColor(impl_->state.fillColor);
  cairo_fill(cr);
}

void CDrawContext::fillLinearGradient(const CGraphicsPath* path, const CGradient& gradient, const CPoint& start,
                                      const CPoint& end, bool evenOdd, const CGraphicsTransform* transform) {
  if (!path || !isUsable(transform)) return;
  const Impl::Operation operation(*impl_);
  cairo_t* const cr = impl_->cr;
  cairo_translate(cr, impl_->state.origin.x, impl_->state.origin.y);
  cairo_pattern_t* const pattern = cairo_pattern_create_linear(start.x, start.y, end.x, end.y);
  const auto addStop = [&](double position, const CColor& c) {
    cairo_pattern_add_color_stop_rgba(pattern, position, c.red / 255.0, c.green / 255.0, c.blue / 255.0,
                                      c.alpha / 255.0 * impl_->state.alpha);
  };
  addStop(gradient.getColor1Start(), gradient.getColor1());
  addStop(gradient.getColor2Start(), gradient.getColor2());
  cairo_set_source(cr, pattern);
  cairo_pattern_destroy(pattern);
  if (transform) {
    const cairo_matrix_t matrix = matrixOf(*transform);
    cairo_transform(cr, &matrix);
  }
  impl_->addPath(*path);
  cairo_set_fill_rule(cr, evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
  cairo_fill(cr);
}

void CDrawContext::drawBitmap(const CBitmap* bitmap, const CRect& rect, const CPoint& offset, float alpha) {
  if (!bitmap || !bitmap->isLoaded() || rect.isEmpty()) return;
  const Impl::Operation operation(*impl_);
  cairo_t* const cr = impl_->cr;
  const CPoint at = impl_->placed(rect.getTopLeft());
  const double left = impl_->onGrid(at.x);
  const double top = impl_->onGrid(at.y);
  // The edges of a bitmap that was rounded up to whole pixels must not show.
  cairo_rectangle(cr, left, top, impl_->onGrid(at.x + rect.getWidth()) - left,
                  impl_->onGrid(at.y + rect.getHeight()) - top);
  cairo_clip(cr);
  cairo_set_source_surface(cr, bitmap->getSurface(), left - impl_->onGrid(offset.x), top - impl_->onGrid(offset.y));
  cairo_pattern_set_filter(cairo_get_source(cr),
                           bitmap->getScaleFactor() == impl_->scale ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
  cairo_paint_with_alpha(cr, static_cast<double>(alpha) * impl_->state.alpha);
}

}  // namespace VSTGUI
