// SPDX-License-Identifier: MIT
// Text, laid out by pango in the nearest faces that fontconfig knows.

#include <cmath>
#include <cstring>
#include <memory>
#include <pango/pangocairo.h>
#include <string>

#include "toolkit/base/CString.h"
#include "toolkit/base/Utf8.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/CDrawContextImpl.h"

// pango keeps fonts for the next use and loads them on threads of its own. The leak check can't follow the offsets on
// which fontconfig's part of them hangs, and the race check can't see the locks of a library that isn't built with it.
#if defined(__SANITIZE_ADDRESS__)
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
#elif defined(__SANITIZE_THREAD__)
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();
// The same goes for the order in which libdbus takes its own locks, for the file selectors of some windows.
extern "C" const char* __tsan_default_suppressions() {
  return "race:libfontconfig\nrace:libpango\ndeadlock:libdbus-1\n";
}
#endif

namespace VSTGUI {

namespace {

// What stands in for a face that isn't there, the ones with the same widths first.
constexpr const char* kFallbackFaces = ",Liberation Sans,Arimo,Helvetica,DejaVu Sans,sans-serif";

// One valid line: bytes that are no UTF-8 show as such, control characters as blanks.
std::string oneLine(const char* text) {
  std::string line = madeValidUtf8(text);
  for (char& c : line)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
  return line;
}

PangoFontDescription* describe(const std::string& name, double size, std::int32_t style) {
  PangoFontDescription* const font = pango_font_description_new();
  pango_font_description_set_family(font, (name + kFallbackFaces).c_str());
  pango_font_description_set_absolute_size(font, std::max(size, 1.0) * PANGO_SCALE);
  if (style & kBoldFace) pango_font_description_set_weight(font, PANGO_WEIGHT_BOLD);
  if (style & kItalicFace) pango_font_description_set_style(font, PANGO_STYLE_ITALIC);
  return font;
}

void setAntialias(PangoContext* context, bool antialias) {
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, antialias ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
}

double inUnits(int pangoUnits) { return static_cast<double>(pangoUnits) / PANGO_SCALE; }

PangoRectangle extentsOf(PangoLayoutLine* line) {
  PangoRectangle logical;
  pango_layout_line_get_extents(line, nullptr, &logical);
  return logical;
}

}  // namespace

PangoLayoutLine* CDrawContext::Impl::layoutLine(const char* text, bool antialias) {
  if (!layout) {
    layout = pango_cairo_create_layout(cr);
    pango_layout_set_single_paragraph_mode(layout, TRUE);
  }
  setAntialias(pango_layout_get_context(layout), antialias);
  pango_layout_context_changed(layout);
  PangoFontDescription* const font = describe(state.fontName, state.fontSize, state.fontStyle);
  pango_layout_set_font_description(layout, font);
  pango_font_description_free(font);
  PangoAttrList* const attributes = pango_attr_list_new();
  if (state.fontStyle & kUnderlineFace)
    pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
  pango_layout_set_attributes(layout, attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_text(layout, oneLine(text).c_str(), -1);
  return pango_layout_get_line_readonly(layout, 0);
}

void CDrawContext::drawString(const char* text, const CPoint& point, bool antialias) {
  if (!text || !*text) return;
  PangoLayoutLine* const line = impl_->layoutLine(text, antialias);
  const Impl::Operation operation(*impl_);
  const CPoint at = impl_->placed(point);
  impl_->setColor(impl_->state.fontColor);
  cairo_move_to(impl_->cr, impl_->onGrid(at.x), impl_->onGrid(at.y));
  pango_cairo_show_layout_line(impl_->cr, line);
}

void CDrawContext::drawString(const char* text, const CRect& rect, CHoriTxtAlign align, bool antialias) {
  if (!text || !*text) return;
  const PangoRectangle extents = extentsOf(impl_->layoutLine(text, antialias));
  const double room = rect.getWidth() - inUnits(extents.width);
  const double left = rect.left + (align == kLeftText ? 0 : align == kRightText ? room : room / 2);
  const double top = rect.top + (rect.getHeight() - inUnits(extents.height)) / 2;
  drawString(text, CPoint(left, top - inUnits(extents.y)), antialias);
}

void CDrawContext::drawString(IPlatformString* text, const CRect& rect, CHoriTxtAlign align, bool antialias) {
  if (text) drawString(text->getUTF8String(), rect, align, antialias);
}

CCoord CDrawContext::getStringWidth(const char* text) {
  return text ? inUnits(extentsOf(impl_->layoutLine(text, true)).width) : 0;
}

CCoord CDrawContext::getFontHeight() { return inUnits(extentsOf(impl_->layoutLine(" ", true)).height); }

}  // namespace VSTGUI
