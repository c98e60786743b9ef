// SPDX-License-Identifier: MIT
// A frame's life, its window, focus, popups and painting. Events are in CFrameEvents.cpp.
#include "toolkit/views/CFrame.h"

#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/CGraphicsPath.h"
#include "toolkit/views/FramePopup.h"
#include "toolkit/views/IFocusDrawing.h"
#include "toolkit/views/TextField.h"

namespace VSTGUI {

CFrame::CFrame(const CRect& size, VSTGUIEditorInterface* editor)
    : CViewContainer({0, 0, size.getWidth(), size.getHeight()}), editor_(editor) {
  setBackgroundColor(kBlackCColor);
}

CFrame::~CFrame() {
  CFrame::removeAll(true);
  close();
  for (FrameGuest* const guest : std::exchange(guests_, {})) guest->frameGoes();
  if (textField_) textField_->detach();
}

bool CFrame::open(void* parent, PlatformType type) {
  auto* const platform = getPlatform(type);
  if (platformFrame_ || !platform) return false;
  platformFrame_ = platform->createFrame(this, getViewSize(), parent);
  if (!platformFrame_) return false;
  invalid();
  return true;
}

void CFrame::close() {
  if (!platformFrame_) return;
  closePopup();
  setFocusView(nullptr);
  for (FrameGuest* const guest : std::vector(guests_)) guest->frameCloses();
  mouseDownView_ = hoverView_ = dragView_ = nullptr;
  buttonHeld_ = leftIsRight_ = dragBegan_ = false;
  platformFrame_.reset();
}

void CFrame::idle() {
  invalidateDirtyViews();
  if (platformFrame_) platformFrame_->processEvents();
}

void CFrame::paintNow(const CRect& rect) {
  if (!platformFrame_) return;
  platformFrame_->invalidRect(rect);
  platformFrame_->paintNow();
}

bool CFrame::setSize(CCoord width, CCoord height) {
  if (!(width >= 1 && height >= 1)) return false;
  const CRect size(0, 0, width, height);
  if (size == getViewSize()) return true;
  if (editor_ && !editor_->beforeSizeChange(size, getViewSize())) return false;
  if (platformFrame_ && !platformFrame_->setSize(width, height)) return false;
  setViewSize(size);
  return true;
}

bool CFrame::getSize(CRect& rect) const {
  rect = getViewSize();
  return true;
}

double CFrame::getScaleFactor() const { return platformFrame_ ? platformFrame_->getScaleFactor() : 1.0; }

bool CFrame::getCurrentMouseLocation(CPoint& where) const {
  return platformFrame_ && platformFrame_->getCurrentMousePosition(where);
}

CButtonState CFrame::getCurrentMouseButtons() const {
  return platformFrame_ ? reported(platformFrame_->getCurrentMouseButtons()) : CButtonState();
}

void CFrame::setCursor(std::int32_t cursor) {
  if (platformFrame_) platformFrame_->setMouseCursor(static_cast<CCursorType>(cursor));
}

std::uint32_t CFrame::getTicks() {
  const auto* const platform = getPlatform();
  return static_cast<std::uint32_t>(platform ? platform->getMilliseconds() : steadyMilliseconds());
}

void CFrame::setFocusView(CView* view) {
  if (view == focusView_) return;
  const Counted<CView> old = focusView_;
  const Counted<CView> next = view;
  focusView_ = nullptr;
  if (old) old->looseFocus();
  if (!next || focusView_) {  // none wanted, or the old view's farewell gave it to another
    updateWantsKeyboard();
    return;
  }
  focusView_ = next;
  next->takeFocus();
  updateWantsKeyboard();
}

void CFrame::updateWantsKeyboard() {
  if (platformFrame_) platformFrame_->setWantsKeyboard(focusView_ || textField_ || popup_);
}

bool CFrame::doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture) {
  if (!drag || !platformFrame_ || !platformFrame_->doDrag(drag, offset, picture)) return false;
  dragBegan_ = true;
  return true;
}

IPlatformTextEdit* CFrame::createPlatformTextEdit(IPlatformTextEditCallback* callback) {
  if (!callback || !platformFrame_ || textField_) return nullptr;
  auto* const owner = dynamic_cast<CView*>(callback);
  if (owner && owner->getFrame() == this && focusView_ != owner) {
    setFocusView(nullptr);
    focusView_ = owner;  // it is taking the focus already
  }
  textField_ = new TextField(*this, callback, owner);
  updateWantsKeyboard();
  return textField_;
}

void CFrame::textFieldClosed(const TextField* field) {
  if (field != textField_) return;
  if (focusView_ && focusView_ == textField_->getOwner()) focusView_ = nullptr;
  textField_ = nullptr;
  updateWantsKeyboard();
}

bool CFrame::openPopup(std::unique_ptr<FramePopup> popup) {
  if (!popup || !platformFrame_ || popup_) return false;
  popup_ = std::move(popup);
  popup_->open();
  updateWantsKeyboard();
  return true;
}

void CFrame::closePopup() {
  if (!popup_) return;
  popup_->dismiss();
  finishPopup();
}

void CFrame::finishPopup() {
  if (!popup_ || !popup_->isFinished()) return;
  const Counted<CFrame> alive = this;
  const auto report = popup_->takeReport();
  popup_.reset();
  updateWantsKeyboard();
  if (report) report();
}

void CFrame::viewWillBeRemoved(CView* view) {
  const auto leaves = [&](const CView* held) {
    for (const CView* v = held; v; v = v->getParentView())
      if (v == view) return true;
    return false;
  };
  if (popup_ && leaves(popup_->getOwner())) closePopup();
  if (focusView_ && leaves(focusView_)) setFocusView(nullptr);
  for (CView** const held : {&mouseDownView_, &hoverView_, &dragView_})
    if (*held && leaves(*held)) *held = nullptr;
}

void CFrame::invalidRect(const CRect& rect) {
  CRect inside = rect;
  if (platformFrame_ && isVisible() && !inside.bound(getViewSize()).isEmpty()) platformFrame_->invalidRect(inside);
}

void CFrame::draw(CDrawContext* context) {
  CViewContainer::draw(context);
  if (auto* const focused = dynamic_cast<IFocusDrawing*>(focusDrawing_ ? focusView_ : nullptr)) {
    const auto path = Counted<CGraphicsPath>::adopt(context->createGraphicsPath());
    if (focused->getFocusPath(*path)) {
      CPoint origin;
      focusView_->localToFrame(origin);
      context->saveGlobalState();
      context->offsetOrigin(origin.x, origin.y);
      context->setFrameColor(kBlueCColor);
      context->drawGraphicsPath(path, CDrawContext::kPathStroked);
      context->restoreGlobalState();
    }
  }
  if (textField_) textField_->draw(*context);
}

void CFrame::platformDraw(CDrawContext& context, const CRect& dirty) {
  context.saveGlobalState();
  context.limitClipRect(dirty);
  draw(&context);
  context.restoreGlobalState();
}

void CFrame::platformPopupDraw(PopupId popup, CDrawContext& context, const CRect& /*dirty*/) {
  if (popup_) popup_->draw(popup, context);
}

void CFrame::platformScaleFactorChanged(double /*scaleFactor*/) { invalid(); }

void CFrame::platformClosed() { close(); }

}  // namespace VSTGUI
