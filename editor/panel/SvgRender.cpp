// SPDX-License-Identifier: MIT
#include "editor/panel/SvgRender.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <nanosvg.h>
#include <string_view>
#include <vector>

#include "editor/panel/ReferenceSize.h"
#include "messages/Messages.h"
#include "toolkit/drawing/VectorImage.h"
#include "toolkit/views/CFrame.h"

using namespace VSTGUI;

namespace {

// The largest bitmap: the background of a window of 8000 by 8000 passes.
constexpr double kMostPixels = 8192.0 * 8192.0;
// Pixels from the origin; far beyond, the fixed-point numbers of the drawing library wrap round.
constexpr double kFarthestPixel = 1e6;

struct ImageDeleter {
  void operator()(NSVGimage* image) const noexcept { nsvgDelete(image); }
};
using Image = std::unique_ptr<NSVGimage, ImageDeleter>;

// Whether the text has a style sheet. nanosvg stumbles over half of one, and follows a class that names itself without
// end.
bool hasStyleSheet(std::string_view text) {
  constexpr std::string_view kName = "style";
  for (auto tag = text.find('<'); tag != text.npos; tag = text.find('<', tag + 1)) {
    const auto name = text.find_first_not_of(" \t\n\v\f\r", tag + 1);
    if (name != text.npos && text.substr(name, kName.size()) == kName) return true;
  }
  return false;
}

// nanosvg changes its input and needs an end mark. It looks past that mark for the end of a reference "url(#...", whose
// name it cuts at 63 characters.
Image parse(std::span<const char> text) {
  if (hasStyleSheet({text.data(), text.size()})) return nullptr;
  constexpr std::size_t kEndMarks = 72;
  std::vector<char> buffer(text.size() + kEndMarks);
  std::ranges::copy(text, buffer.begin());
  return Image(nsvgParse(buffer.data(), "px", 72.0f));
}

CPoint pointAt(const NSVGpath& path, int index) {
  const float* point = path.pts + 2 * index;
  return {point[0], point[1]};
}

bool withinReach(CPoint p) { return std::abs(p.x) <= kFarthestPixel && std::abs(p.y) <= kFarthestPixel; }

// False for NaN too.
bool canBePainted(const NSVGshape& shape, const CGraphicsTransform& transform) {
  for (const NSVGpath* path = shape.paths; path; path = path->next)
    for (int i = 0; i < path->npts; ++i)
      if (!withinReach(transform.apply(pointAt(*path, i)))) return false;
  return withinReach(transform.apply({shape.strokeWidth, shape.strokeWidth}));
}

void addPath(CGraphicsPath& outline, const NSVGpath& path) {
  outline.beginSubpath(pointAt(path, 0));
  for (int i = 0; i < path.npts - 1; i += 3)
    outline.addBezierCurve(pointAt(path, i + 1), pointAt(path, i + 2), pointAt(path, i + 3));
  if (path.closed > 0) outline.closeSubpath();
}

void paintShape(CDrawContext& context, const NSVGshape& shape, const CGraphicsTransform& transform) {
  const auto outline = Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
  context.beginDraw();
  for (const NSVGpath* path = shape.paths; path; path = path->next) addPath(*outline.get(), *path);
  if (shape.fill.type == NSVG_PAINT_COLOR) {
    context.setFillColor(NSVGCOLOR_TO_CCOLOR(shape.fill.color, shape.opacity));
    context.drawGraphicsPath(outline, CDrawContext::kPathFilled, &transform);
  }
  if (shape.stroke.type == NSVG_PAINT_COLOR) {
    context.setLineWidth(shape.strokeWidth);
    context.setFrameColor(NSVGCOLOR_TO_CCOLOR(shape.stroke.color, shape.opacity));
    context.drawGraphicsPath(outline, CDrawContext::kPathStroked, &transform);
  }
  context.endDraw();
}

COffscreenContext* createContext(CFrame* frame, double width, double height) {
  const double wholeWidth = std::trunc(width + 0.5);
  const double wholeHeight = std::trunc(height + 0.5);
  if (!(wholeWidth * wholeHeight <= kMostPixels)) return nullptr;  // for NaN too
  auto* context = COffscreenContext::create(frame, wholeWidth, wholeHeight, 1.0);
  if (context) context->setDrawMode(kSmoothMode);
  return context;
}

// The label of a stand-in in the largest size, up to half of the box's height, with which it fits into the width.
void drawLabel(CDrawContext& context, std::string_view text, const CRect& box) {
  const std::string label(text.substr(0, text.rfind('.')));
  const double size = box.getHeight() / 2;
  context.setFont(kSystemFont, size);
  const double width = context.getStringWidth(label.c_str());
  const double room = box.getWidth() * 0.9;
  if (width > room) context.setFont(kSystemFont, std::max(1.0, size * room / width));
  context.drawString(label.c_str(), box, kCenterText);
}

}  // namespace

CColor NSVGCOLOR_TO_CCOLOR(unsigned int color, float opacity) noexcept {
  const auto byteAt = [color](int shift) { return static_cast<std::uint8_t>(color >> shift & 0xFFu); };
  const float limited = opacity > 0.0f ? std::min(opacity, 1.0f) : 0.0f;
  const auto weight = static_cast<unsigned int>(limited * 256.0f);
  return {byteAt(0), byteAt(8), byteAt(16), static_cast<std::uint8_t>(byteAt(24) * weight >> 8)};
}

namespace editor {

COffscreenContext* renderSvgText(std::span<const char> text, CFrame* frame, double scaleX, double scaleY) {
  const Image image = parse(text);
  if (!image || !image->shapes) return nullptr;
  CRect size;
  frame->getSize(size);
  const double sx = size.getWidth() / kReferenceWidth * scaleX;
  const double sy = size.getHeight() / kReferenceHeight * scaleY;
  COffscreenContext* context = createContext(frame, image->width * sx, image->height * sy);
  if (!context) return nullptr;
  const CGraphicsTransform transform(sx, 0, 0, sy, 0, 0);
  for (const NSVGshape* shape = image->shapes; shape; shape = shape->next)
    if (canBePainted(*shape, transform)) paintShape(*context, *shape, transform);
  return context;
}

COffscreenContext* placeholderImage(const char* file, CFrame* frame, int frames, double width, double height) {
  constexpr CColor kFace{32, 32, 32};
  constexpr CColor kEdgeOff{128, 128, 128};
  constexpr CColor kEdgeOn{1, 158, 242};  // the graph's line, for every frame but the first
  messages::imageMissing(file);
  const double boxHeight = std::max(1.0, height);
  COffscreenContext* context = createContext(frame, std::max(1.0, width), boxHeight * frames);
  if (!context) return nullptr;
  context->setFillColor(kFace);
  context->setFontColor(kWhiteCColor);
  context->setLineWidth(1);
  for (int i = 0; i < frames; ++i) {
    const CRect box(0.5, boxHeight * i + 0.5, context->getWidth() - 0.5, boxHeight * (i + 1) - 0.5);
    context->setFrameColor(i == 0 ? kEdgeOff : kEdgeOn);
    context->drawRect(box, kDrawFilledAndStroked);
    drawLabel(*context, file, box);
  }
  return context;
}

}  // namespace editor

COffscreenContext* RenderSVGToBitmap(CTarnelSVG* image, CFrame* frame, double scaleX, double scaleY) {
  const auto text = Counted<IPlatformSVG>::adopt(image->getPlatformSVG());
  if (!text) return nullptr;
  return editor::renderSvgText({text->getPointer(), static_cast<std::size_t>(text->getSize())}, frame, scaleX, scaleY);
}
