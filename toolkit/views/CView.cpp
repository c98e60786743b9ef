// SPDX-License-Identifier: MIT
#include "toolkit/views/CView.h"

#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/views/CViewContainer.h"

namespace VSTGUI {

CView::CView(const CRect& size) : size_(size), mouseableArea_(size) {}

CView::CView(const CView& other)
    : CBaseObject(other),
      size_(other.size_),
      mouseableArea_(other.mouseableArea_),
      background_(other.background_),
      disabledBackground_(other.disabledBackground_),
      visible_(other.visible_),
      mouseEnabled_(other.mouseEnabled_),
      transparent_(other.transparent_),
      wantsFocus_(other.wantsFocus_) {}

void CView::draw(CDrawContext* context) {
  if (auto* const background = getDrawBackground()) background->draw(context, size_);
  setDirty(false);
}

CMouseEventResult CView::onMouseDown(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventNotImplemented;
}
CMouseEventResult CView::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventNotImplemented;
}
CMouseEventResult CView::onMouseMoved(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventNotImplemented;
}
CMouseEventResult CView::onMouseEntered(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventNotImplemented;
}
CMouseEventResult CView::onMouseExited(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  return kMouseEventNotImplemented;
}
bool CView::onWheel(const CPoint& /*where*/, const float& /*distance*/, const CButtonState& /*buttons*/) {
  return false;
}
bool CView::onDrop(IDataPackage* /*drag*/, const CPoint& /*where*/) { return false; }
void CView::onDragEnter(IDataPackage* /*drag*/, const CPoint& /*where*/) {}
void CView::onDragLeave(IDataPackage* /*drag*/, const CPoint& /*where*/) {}
void CView::onDragMove(IDataPackage* /*drag*/, const CPoint& /*where*/) {}
std::int32_t CView::onKeyDown(VstKeyCode& /*key*/) { return kKeyNotHandled; }
std::int32_t CView::onKeyUp(VstKeyCode& /*key*/) { return kKeyNotHandled; }

void CView::setViewSize(const CRect& size, bool invalidate) {
  if (invalidate) invalid();
  size_ = size;
  if (invalidate) invalid();
}

void CView::invalidRect(const CRect& rect) {
  if (!visible_ || !parent_) return;
  CRect inParent = rect;
  const CPoint origin = parent_->childOrigin();
  parent_->invalidRect(inParent.offset(origin.x, origin.y));
}

void CView::setDirty(bool dirty) {
  if (dirty) {
    dirtyMarks_.fetch_add(1, std::memory_order_relaxed);
  } else {
    drawnMarks_ = dirtyMarks_.load(std::memory_order_relaxed);
  }
}

bool CView::isDirty() const { return dirtyMarks_.load(std::memory_order_relaxed) != drawnMarks_; }

std::uint32_t CView::shownState() const { return dirtyMarks_.load(std::memory_order_relaxed); }

void CView::setVisible(bool visible) {
  if (visible == visible_) return;
  invalid();
  visible_ = visible;
  invalid();
}

void CView::setMouseEnabled(bool enabled) {
  if (enabled == mouseEnabled_) return;
  mouseEnabled_ = enabled;
  setDirty();
}

void CView::setBackground(CBitmap* background) {
  background_ = background;
  setDirty();
}

void CView::setDisabledBackground(CBitmap* background) {
  disabledBackground_ = background;
  setDirty();
}

CBitmap* CView::getDrawBackground() const {
  return !mouseEnabled_ && disabledBackground_ ? disabledBackground_ : background_;
}

bool CView::hitTest(const CPoint& where) const { return mouseableArea_.holds(where); }

void CView::attached(CViewContainer* parent) {
  parent_ = parent;
  invalid();
}

void CView::removed() {
  invalid();
  parent_ = nullptr;
}

CFrame* CView::getFrame() const { return parent_ ? parent_->getFrame() : nullptr; }

CPoint& CView::localToFrame(CPoint& point) const {
  for (const CView* view = parent_; view; view = view->parent_) point = point + view->childOrigin();
  return point;
}

CPoint& CView::frameToLocal(CPoint& point) const {
  for (const CView* view = parent_; view; view = view->parent_) point = point - view->childOrigin();
  return point;
}

}  // namespace VSTGUI
