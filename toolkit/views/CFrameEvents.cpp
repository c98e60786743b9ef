// SPDX-License-Identifier: MIT
// How events of the window reach the views.

#include <cmath>

#include "toolkit/base/IDataPackage.h"
#include "toolkit/views/CFrame.h"
#include "toolkit/views/FramePopup.h"
#include "toolkit/views/TextField.h"

namespace VSTGUI {

namespace {

constexpr std::uint32_t kDoubleClickMs = 400;
constexpr double kDoubleClickUnits = 4;

CPoint inView(const CView* view, CPoint where) { return view->frameToLocal(where); }

// A button that went down, out of a word that may hold others too.
std::int32_t lowestButton(CButtonState buttons) {
  const std::int32_t word = buttons.getButtonState();
  return word & -word;
}

}  // namespace

// The word that views see: finds double-clicks, and makes the Apple key's left button a right one.
CButtonState CFrame::pressWord(const CPoint& where, CButtonState buttons) {
  const LastPress press{where, getTicks(), lowestButton(buttons)};
  const CPoint travel = where - lastPress_.where;
  const bool twice = press.button == lastPress_.button && press.ticks - lastPress_.ticks <= kDoubleClickMs &&
                     std::abs(travel.x) <= kDoubleClickUnits && std::abs(travel.y) <= kDoubleClickUnits;
  lastPress_ = press;
  heldButton_ = press.button;
  if (twice) lastPress_.button = 0;  // a third press begins anew
  leftIsRight_ = buttons.isLeftButton() && (buttons & kApple) != 0;
  return reported(twice ? buttons | kDoubleClick : static_cast<std::int32_t>(buttons));
}

CButtonState CFrame::reported(CButtonState buttons) const {
  return leftIsRight_ && (buttons & kLButton) != 0 ? (buttons & ~kLButton) | kRButton
                                                   : static_cast<std::int32_t>(buttons);
}

CMouseEventResult CFrame::platformMouseDown(const CPoint& where, CButtonState buttons) {
  const Counted<CFrame> alive = this;
  if (popup_) {
    popup_->mouseDown(where);
    finishPopup();
    return kMouseEventHandled;
  }
  if (buttonHeld_) return kMouseEventHandled;  // further buttons don't disturb a drag
  const CButtonState word = pressWord(where, buttons);
  buttonHeld_ = true;
  if (pressTextField(where, word)) return kMouseEventHandled;
  CView* const view = getViewAt(where, true);
  hoverOver(view, where, word);
  return view ? pressView(view, where, word) : kMouseEventNotHandled;
}

// A press in the text field is the field's own; one elsewhere takes the keyboard from it.
bool CFrame::pressTextField(const CPoint& where, CButtonState buttons) {
  if (!textField_) return false;
  const Counted<TextField> field = textField_;
  if (field->contains(where)) {
    field->mouseDown(where, buttons);
    fieldPressed_ = true;
    return true;
  }
  field->leave();
  return false;
}

CMouseEventResult CFrame::pressView(CView* view, const CPoint& where, CButtonState buttons) {
  const Counted<CView> alive = view;
  CPoint local = inView(view, where);
  const CMouseEventResult result = view->onMouseDown(local, buttons);
  const bool here = view->getFrame() == this;
  if (here && view->wantsFocus() && result != kMouseEventNotHandled && result != kMouseEventNotImplemented)
    setFocusView(view);
  if (result == kMouseEventHandled && here && buttonHeld_) mouseDownView_ = view;
  if (dragBegan_) endPress(where, buttons);
  return result;
}

CMouseEventResult CFrame::platformMouseMoved(const CPoint& where, CButtonState buttons) {
  const Counted<CFrame> alive = this;
  if (popup_) {
    popup_->mouseMoved(where);
    return kMouseEventHandled;
  }
  if (buttonHeld_ && buttons.getButtonState() == 0) endPress(where, buttons);  // the release got lost
  if (fieldPressed_) {
    if (textField_) textField_->mouseMoved(where);
    return kMouseEventHandled;
  }
  // A button that went down elsewhere, say before the window opened under the pointer, drags nothing here.
  const CButtonState word = reported(buttonHeld_ ? buttons : CButtonState(buttons.getModifierState()));
  if (buttonHeld_ && !mouseDownView_) return kMouseEventNotHandled;
  if (!buttonHeld_) hoverOver(getViewAt(where, true), where, word);
  const Counted<CView> view = mouseDownView_ ? mouseDownView_ : hoverView_;
  if (!view) return kMouseEventNotHandled;
  CPoint local = inView(view, where);
  const CMouseEventResult result = view->onMouseMoved(local, word);
  if (dragBegan_) endPress(where, word);
  return result;
}

CMouseEventResult CFrame::platformMouseUp(const CPoint& where, CButtonState buttons) {
  const Counted<CFrame> alive = this;
  if (popup_) {
    popup_->mouseUp(where);
    buttonHeld_ = false;
    finishPopup();
    return kMouseEventHandled;
  }
  if (!buttonHeld_ || (buttons & heldButton_) == 0) return kMouseEventNotHandled;
  return endPress(where, buttons);
}

// The release, or what takes its place when a drag out of the frame begins.
CMouseEventResult CFrame::endPress(const CPoint& where, CButtonState buttons) {
  const CButtonState word = reported(buttons);
  const Counted<CView> view = mouseDownView_;
  mouseDownView_ = nullptr;
  buttonHeld_ = fieldPressed_ = dragBegan_ = false;
  CMouseEventResult result = kMouseEventNotHandled;
  if (view) {
    CPoint local = inView(view, where);
    result = view->onMouseUp(local, word);
  }
  leftIsRight_ = false;
  if (platformFrame_ && !popup_) hoverOver(getViewAt(where, true), where, buttons.getModifierState());
  return result;
}

void CFrame::platformMouseExited(CButtonState buttons) {
  const Counted<CFrame> alive = this;
  if (!buttonHeld_ && !popup_) hoverOver(nullptr, {-1, -1}, reported(buttons));
}

// Tells the view that the pointer leaves and the one that it enters.
void CFrame::hoverOver(CView* view, const CPoint& where, CButtonState buttons) {
  if (view == hoverView_) return;
  const Counted<CView> left = hoverView_;
  const Counted<CView> entered = view;
  hoverView_ = view;
  if (left) {
    CPoint local = inView(left, where);
    left->onMouseExited(local, buttons);
  }
  if (entered && hoverView_ == entered) {
    CPoint local = inView(entered, where);
    entered->onMouseEntered(local, buttons);
  }
}

bool CFrame::platformWheel(const CPoint& where, float distance, CButtonState buttons) {
  return onWheel(where, distance, reported(buttons));
}

bool CFrame::onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) {
  if (popup_) return true;
  const Counted<CView> view = getViewAt(where, true);
  return view && view->onWheel(inView(view, where), distance, buttons);
}

bool CFrame::platformKeyDown(VstKeyCode& key) { return CFrame::onKeyDown(key) == kKeyHandled; }

bool CFrame::platformKeyUp(VstKeyCode& key) { return CFrame::onKeyUp(key) == kKeyHandled; }

std::int32_t CFrame::onKeyDown(VstKeyCode& key) {
  const Counted<CFrame> alive = this;
  if (popup_) {
    popup_->keyDown(key);
    finishPopup();
    return kKeyHandled;
  }
  if (textField_ && !keyInField_) {
    const Counted<TextField> field = textField_;
    keyInField_ = true;
    const bool taken = field->getCallback()->platformOnKeyDown(key);
    keyInField_ = false;
    return taken || (textField_ == field && field->keyDown(key)) ? kKeyHandled : kKeyNotHandled;
  }
  return offerKey(key, &CView::onKeyDown);
}

std::int32_t CFrame::onKeyUp(VstKeyCode& key) { return offerKey(key, &CView::onKeyUp); }

std::int32_t CFrame::offerKey(VstKeyCode& key, std::int32_t (CView::*operation)(VstKeyCode&)) {
  for (Counted<CView> view = focusView_; view && view != this; view = view->getParentView())
    if ((view->*operation)(key) == kKeyHandled) return kKeyHandled;
  return kKeyNotHandled;
}

void CFrame::platformActivated(bool active) {
  const Counted<CFrame> alive = this;
  if (active) return;
  closePopup();
  if (const Counted<TextField> field = textField_) field->leave();
}

void CFrame::platformPopupsDismissed() { closePopup(); }

// Tells the view that the drag leaves and the one that it enters, or that it moves.
void CFrame::dragOver(IDataPackage* drag, const CPoint& where) {
  const Counted<CView> view = getViewAt(where, true);
  if (view == dragView_) {
    if (view) view->onDragMove(drag, inView(view, where));
    return;
  }
  const Counted<CView> left = dragView_;
  dragView_ = view;
  if (left) left->onDragLeave(drag, inView(left, where));
  if (view && dragView_ == view) view->onDragEnter(drag, inView(view, where));
}

void CFrame::platformDragEnter(IDataPackage* drag, const CPoint& where) {
  dragView_ = nullptr;
  dragOver(drag, where);
}

void CFrame::platformDragMove(IDataPackage* drag, const CPoint& where) { dragOver(drag, where); }

void CFrame::platformDragLeave(IDataPackage* drag, const CPoint& where) {
  const Counted<CView> view = dragView_;
  dragView_ = nullptr;
  if (view) view->onDragLeave(drag, inView(view, where));
}

bool CFrame::platformDrop(IDataPackage* drag, const CPoint& where) {
  dragOver(drag, where);
  const Counted<CView> view = dragView_;
  dragView_ = nullptr;
  return view && view->onDrop(drag, inView(view, where));
}

}  // namespace VSTGUI
