// SPDX-License-Identifier: MIT
#include "toolkit/views/CViewContainer.h"

#include <algorithm>

#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

namespace {

bool contains(const CRect& outer, const CRect& inner) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

}  // namespace

CViewContainer::CViewContainer(const CRect& size) : CView(size) {}

CViewContainer::CViewContainer(const CViewContainer& other) : CView(other), backgroundColor_(other.backgroundColor_) {
  for (const CView* const view : other.views_) {
    auto* const copy = dynamic_cast<CView*>(view->newCopy());
    if (!copy) continue;
    views_.push_back(copy);
    copy->attached(this);
  }
}

CViewContainer::~CViewContainer() {
  for (; !views_.empty(); views_.pop_back()) {
    views_.back()->removed();
    views_.back()->forget();
  }
}

bool CViewContainer::addView(CView* view) {
  if (!view || view == this || view->isAttached()) return false;
  views_.push_back(view);
  view->attached(this);
  return true;
}

bool CViewContainer::removeView(CView* view, bool forget) {
  if (!isChild(view)) return false;
  const Counted<CView> alive = view;
  viewWillBeRemoved(view);
  const auto found = std::find(views_.begin(), views_.end(), view);
  if (found == views_.end()) return false;  // somebody who heard of it was faster
  views_.erase(found);
  view->removed();
  if (forget) view->forget();
  return true;
}

bool CViewContainer::removeAll(bool forget) {
  const bool any = !views_.empty();
  while (!views_.empty()) removeView(views_.back(), forget);
  return any;
}

CView* CViewContainer::getView(std::uint32_t index) const { return index < views_.size() ? views_[index] : nullptr; }

bool CViewContainer::isChild(const CView* view, bool deep) const {
  if (!view) return false;
  if (!deep) return view->getParentView() == this;
  for (const CView* v = view->getParentView(); v; v = v->getParentView())
    if (v == this) return true;
  return false;
}

CView* CViewContainer::getViewAt(const CPoint& where, bool deep) const {
  for (auto it = views_.rbegin(); it != views_.rend(); ++it) {
    CView* const view = *it;
    if (!view->isVisible() || !view->getMouseEnabled() || !view->hitTest(where)) continue;
    const auto* const container = deep ? dynamic_cast<const CViewContainer*>(view) : nullptr;
    CView* const below = container ? container->getViewAt(where - container->childOrigin(), true) : nullptr;
    return below ? below : view;
  }
  return nullptr;
}

void CViewContainer::setBackgroundColor(const CColor& color) {
  backgroundColor_ = color;
  setDirty();
}

void CViewContainer::invalidateDirtyViews() {
  if (!isVisible()) return;
  if (isDirty()) {
    invalid();
    return;
  }
  for (CView* const view : views_) {
    if (!view->isVisible()) continue;
    if (auto* const container = dynamic_cast<CViewContainer*>(view)) {
      container->invalidateDirtyViews();
    } else if (view->isDirty()) {
      view->invalid();
    }
  }
}

// A container's mouseable area follows its size.
bool CViewContainer::hitTest(const CPoint& where) const { return getViewSize().holds(where); }

void CViewContainer::draw(CDrawContext* context) {
  const CRect& size = getViewSize();
  context->saveGlobalState();
  context->limitClipRect(size);
  if (!getTransparency() && backgroundColor_.alpha > 0) {
    context->setFillColor(backgroundColor_);
    context->drawRect(size, kDrawFilled);
  }
  CView::draw(context);
  context->offsetOrigin(childOrigin().x, childOrigin().y);
  const auto views = std::vector<CView*>(views_);
  for (CView* const view : views) drawView(*context, *view);
  context->restoreGlobalState();
}

void CViewContainer::drawView(CDrawContext& context, CView& view) {
  CRect clip;
  context.getClipRect(clip);
  if (!view.isVisible() || !clip.rectOverlap(view.getViewSize())) return;
  CRect visible = view.getViewSize();
  visible.bound({0, 0, getWidth(), getHeight()});
  const bool drawnInPart = !contains(clip, visible);
  const bool wasDirty = view.isDirty();
  const std::uint32_t shown = view.shownState();
  context.saveGlobalState();
  context.limitClipRect(view.getViewSize());
  view.draw(&context);
  context.restoreGlobalState();
  // Drawing clears the mark, even if only a part was to be painted or the value changed meanwhile.
  if (wasDirty && drawnInPart) view.invalid();
  if (view.shownState() != shown) view.setDirty();
}

void CViewContainer::viewWillBeRemoved(CView* view) {
  if (auto* const parent = getParentView()) parent->viewWillBeRemoved(view);
}

}  // namespace VSTGUI
