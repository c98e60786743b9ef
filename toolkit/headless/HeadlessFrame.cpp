// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstring>

#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/headless/HeadlessPlatform.h"

namespace VSTGUI {

namespace {

int pixelsOf(double units, double scale) { return std::max(1, static_cast<int>(std::ceil(units * scale))); }

// A colour of a premultiplied pixel.
std::uint8_t straight(std::uint32_t premultiplied, std::uint32_t alpha) {
  return static_cast<std::uint8_t>(alpha == 0 ? 0 : std::min(255u, (premultiplied * 255 + alpha / 2) / alpha));
}

}  // namespace

HeadlessFrame::HeadlessFrame(HeadlessPlatform& platform, IPlatformFrameCallback* callback, const CRect& size)
    : platform_(platform), callback_(callback), scaleFactor_(platform.scaleFactor), size_(size), dirty_(size) {
  pixels_ = newSurface(size_);
  platform_.frames_.push_back(this);
}

HeadlessFrame::~HeadlessFrame() { std::erase(platform_.frames_, this); }

CairoSurface HeadlessFrame::newSurface(const CRect& size) const {
  CairoSurface made(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixelsOf(size.getWidth(), scaleFactor_),
                                               pixelsOf(size.getHeight(), scaleFactor_)));
  cairo_surface_set_device_scale(made.get(), scaleFactor_, scaleFactor_);
  return made;
}

void HeadlessFrame::moveTo(const CPoint& where) {
  pointer_ = where;
  callback_->platformMouseMoved(where, buttons_);
}

CMouseEventResult HeadlessFrame::press(const CPoint& where, std::int32_t button) {
  if (!(pointer_ == where)) moveTo(where);
  buttons_ |= button;
  return callback_->platformMouseDown(where, buttons_);
}

void HeadlessFrame::release(std::int32_t button) {
  const std::int32_t word = buttons_ | button;
  buttons_ &= ~button;
  callback_->platformMouseUp(pointer_, word);
}

void HeadlessFrame::click(const CPoint& where, std::int32_t button) {
  press(where, button);
  release(button);
}

void HeadlessFrame::doubleClick(const CPoint& where, std::int32_t button) {
  click(where, button);
  click(where, button);
}

void HeadlessFrame::leaveWindow() {
  pointer_ = {-1, -1};
  callback_->platformMouseExited(buttons_);
}

bool HeadlessFrame::wheel(const CPoint& where, float distance) {
  moveTo(where);
  return callback_->platformWheel(where, distance, buttons_);
}

bool HeadlessFrame::key(std::int32_t character, std::uint8_t virt, std::uint8_t modifier) {
  VstKeyCode code{character, virt, modifier};
  const bool handled = callback_->platformKeyDown(code);
  callback_->platformKeyUp(code);
  return handled;
}

void HeadlessFrame::type(const char* ascii) {
  for (; *ascii; ++ascii) key(*ascii);
}

void HeadlessFrame::activate(bool active) { callback_->platformActivated(active); }

void HeadlessFrame::dragEnter(IDataPackage* drag, const CPoint& where) {
  draggedIn_ = drag;
  callback_->platformDragEnter(drag, pointer_ = where);
}

void HeadlessFrame::dragMove(const CPoint& where) { callback_->platformDragMove(draggedIn_, pointer_ = where); }

void HeadlessFrame::dragLeave() {
  callback_->platformDragLeave(draggedIn_, pointer_);
  draggedIn_ = nullptr;
}

bool HeadlessFrame::drop(const CPoint& where) {
  const bool taken = callback_->platformDrop(draggedIn_, pointer_ = where);
  draggedIn_ = nullptr;
  return taken;
}

void HeadlessFrame::endDrag() {
  draggedOut_ = nullptr;
  buttons_ &= ~kAnyButton;
}

void HeadlessFrame::answerFileSelector(const std::vector<std::string>& paths) {
  if (auto* const callback = std::exchange(selectorCallback_, nullptr)) callback->fileSelectorDone(paths);
}

bool HeadlessFrame::setSize(CCoord width, CCoord height) {
  if (refusesSize) return false;
  size_ = {0, 0, width, height};
  pixels_ = newSurface(size_);
  dirty_ = size_;
  return true;
}

void HeadlessFrame::invalidRect(const CRect& rect) { dirty_.unite(rect); }

void HeadlessFrame::paintNow() {
  const CRect dirty = dirty_;
  dirty_ = CRect();
  if (!dirty.isEmpty()) {
    CDrawContext context(pixels_.get(), size_, scaleFactor_);
    callback_->platformDraw(context, dirty);
  }
  paintPopups();
}

void HeadlessFrame::paintPopups() {
  for (auto& [id, popup] : popups_) {
    if (popup.dirty.isEmpty()) continue;
    const CRect dirty = popup.dirty;
    popup.dirty = CRect();
    CDrawContext context(popup.pixels.get(), {0, 0, popup.rect.getWidth(), popup.rect.getHeight()}, scaleFactor_);
    callback_->platformPopupDraw(id, context, dirty);
  }
}

bool HeadlessFrame::getCurrentMousePosition(CPoint& where) const {
  where = pointer_;
  return true;
}

void HeadlessFrame::openPopup(PopupId popup, const CRect& rect) {
  popups_[popup] = {rect, {0, 0, rect.getWidth(), rect.getHeight()}, newSurface(rect)};
}

void HeadlessFrame::closePopup(PopupId popup) { popups_.erase(popup); }

void HeadlessFrame::invalidPopupRect(PopupId popup, const CRect& rect) {
  if (const auto found = popups_.find(popup); found != popups_.end()) found->second.dirty.unite(rect);
}

bool HeadlessFrame::doDrag(IDataPackage* drag, const CPoint& /*offset*/, CBitmap* /*picture*/) {
  if ((buttons_ & kAnyButton) == 0) return false;
  draggedOut_ = drag;
  return true;
}

bool HeadlessFrame::runFileSelector(const FileSelectorRequest& request, IFileSelectorCallback* callback) {
  if (selectorCallback_) return false;
  selector_ = request;
  selectorCallback_ = callback;
  return true;
}

void HeadlessFrame::cancelFileSelector(IFileSelectorCallback* callback) {
  if (selectorCallback_ == callback) selectorCallback_ = nullptr;
}

_cairo_surface* HeadlessFrame::picture() {
  paintNow();
  composed_ = newSurface(size_);
  const CairoContext cairo(cairo_create(composed_.get()));
  cairo_set_source_surface(cairo.get(), pixels_.get(), 0, 0);
  cairo_paint(cairo.get());
  for (const auto& [id, popup] : popups_) {
    cairo_set_source_surface(cairo.get(), popup.pixels.get(), popup.rect.left, popup.rect.top);
    cairo_paint(cairo.get());
  }
  cairo_surface_flush(composed_.get());
  return composed_.get();
}

bool HeadlessFrame::writePng(const std::string& path) {
  return cairo_surface_write_to_png(picture(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

CColor HeadlessFrame::pixel(int x, int y) {
  _cairo_surface* const surface = picture();
  if (x < 0 || y < 0 || x >= cairo_image_surface_get_width(surface) || y >= cairo_image_surface_get_height(surface))
    return kTransparentCColor;
  const unsigned char* const row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
  std::uint32_t argb = 0;
  std::memcpy(&argb, row + 4 * x, sizeof argb);
  const std::uint32_t alpha = argb >> 24;
  return {straight(argb >> 16 & 0xff, alpha), straight(argb >> 8 & 0xff, alpha), straight(argb & 0xff, alpha),
          static_cast<std::uint8_t>(alpha)};
}

std::vector<CRect> HeadlessFrame::popups() const {
  std::vector<CRect> rects;
  for (const auto& [id, popup] : popups_) rects.push_back(popup.rect);
  return rects;
}

}  // namespace VSTGUI
