// SPDX-License-Identifier: MIT
#include <cmath>

#include "toolkit/base/IDataPackage.h"
#include "toolkit/x11/ButtonWord.h"
#include "toolkit/x11/X11Frame.h"

namespace VSTGUI::X11 {

namespace {

// Messages of an embedder, and the one to it that asks for the focus.
enum XembedMessage : std::uint32_t {
  kEmbeddedNotify = 0,
  kWindowActivate = 1,
  kWindowDeactivate = 2,
  kFocusIn = 4,
  kFocusOut = 5,
};

constexpr xcb_button_t kWheelUp = 4;
constexpr xcb_button_t kWheelDown = 5;

}  // namespace

void Frame::readEvents() {
  const NoPipeSignal guard;
  while (Event event = connection_->poll()) {
    if (event->response_type == 0) continue;  // a request that was allowed to fail
    if (clipboard_.takes(*event) || paste_.takes(*event) || keyboard_.takes(*event) || dragSource_.takes(*event))
      continue;
    events_.push_back(std::move(event));
  }
}

bool Frame::deliverEvents() {
  const std::weak_ptr<int> alive = life_;
  readEvents();
  while (!events_.empty()) {
    const Event event = std::move(events_.front());
    events_.pop_front();
    // Of a run of moves only the last matters.
    if (!events_.empty() && eventType(*event) == XCB_MOTION_NOTIFY && eventType(*events_.front()) == XCB_MOTION_NOTIFY)
      continue;
    if (!dropTarget_.takes(*event)) {
      if (alive.expired()) return false;
      handle(*event);
    }
    if (alive.expired()) return false;
    if (events_.empty()) readEvents();
  }
  dragSource_.tick();
  dropTarget_.tick();
  if (alive.expired()) return false;
  if (!connection_->isLost()) return true;
  callback_->platformClosed();
  return !alive.expired();
}

void Frame::handle(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_EXPOSE:
      return onExpose(eventAs<xcb_expose_event_t>(event));
    case XCB_BUTTON_PRESS:
      return onButton(eventAs<xcb_button_press_event_t>(event), true);
    case XCB_BUTTON_RELEASE:
      return onButton(eventAs<xcb_button_press_event_t>(event), false);
    case XCB_MOTION_NOTIFY:
      return onMotion(eventAs<xcb_button_press_event_t>(event));
    case XCB_ENTER_NOTIFY:
      return onCrossing(eventAs<xcb_enter_notify_event_t>(event), true);
    case XCB_LEAVE_NOTIFY:
      return onCrossing(eventAs<xcb_enter_notify_event_t>(event), false);
    case XCB_KEY_PRESS:
      return onKey(eventAs<xcb_key_press_event_t>(event), true);
    case XCB_KEY_RELEASE:
      return onKey(eventAs<xcb_key_press_event_t>(event), false);
    case XCB_FOCUS_IN:
      return onFocus(eventAs<xcb_focus_in_event_t>(event), true);
    case XCB_FOCUS_OUT:
      return onFocus(eventAs<xcb_focus_in_event_t>(event), false);
    case XCB_CLIENT_MESSAGE:
      return onMessage(eventAs<xcb_client_message_event_t>(event));
    case XCB_REPARENT_NOTIFY:
      if (eventAs<xcb_reparent_notify_event_t>(event).window == window_)
        parent_ = eventAs<xcb_reparent_notify_event_t>(event).parent;
      return;
    case XCB_DESTROY_NOTIFY:
      return onDestroyed(eventAs<xcb_destroy_notify_event_t>(event).window);
    default:
      return;
  }
}

void Frame::onExpose(const xcb_expose_event_t& event) {
  if (event.window == window_) return canvas_->expose(event.x, event.y, event.width, event.height);
  for (auto& [id, popup] : popups_)
    if (popup.window == event.window) popup.canvas->expose(event.x, event.y, event.width, event.height);
}

void Frame::onDestroyed(xcb_window_t window) {
  if (window == window_) callback_->platformClosed();
}

CPoint Frame::unitsOf(xcb_window_t window, int x, int y) const {
  const CPoint units(x / scale_, y / scale_);
  for (const auto& [id, popup] : popups_)
    if (popup.window == window) return units + popup.rect.getTopLeft();
  return units;
}

void Frame::notePointer(const xcb_button_press_event_t& event) {
  rootX_ = event.root_x;
  rootY_ = event.root_y;
  time_ = event.time;
}

// While something is dragged out, the pointer is the drag's.
bool Frame::dragTakesPointer(const xcb_button_press_event_t& event, std::uint8_t type) {
  if (!dragSource_.isDragging()) return false;
  const std::int32_t others = (buttonsOf(event.state) | held_) & ~buttonOf(event.detail);
  if (type == XCB_MOTION_NOTIFY) dragSource_.moved(event.root_x, event.root_y, event.time);
  if (type == XCB_BUTTON_RELEASE && others == 0) dragSource_.released(event.time);
  return true;
}

void Frame::onButton(const xcb_button_press_event_t& event, bool press) {
  notePointer(event);
  const std::int32_t button = buttonOf(event.detail);
  held_ = press ? held_ | button : held_ & ~button;
  if (dragTakesPointer(event, press ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE)) return;
  const CPoint where = unitsOf(event.event, event.event_x, event.event_y);
  const std::int32_t word = wordOf(event.state) | heldBeyondState() | button;
  if (button != 0) {
    if (press) {
      const std::weak_ptr<int> alive = life_;
      callback_->platformMouseDown(where, word);
      if (!alive.expired() && wantsKeyboard_ && !keyboardGrabbed_) takeFocus();  // it may have been lost meanwhile
    } else {
      callback_->platformMouseUp(where, word);
    }
  } else if (press && (event.detail == kWheelUp || event.detail == kWheelDown)) {
    callback_->platformWheel(where, event.detail == kWheelUp ? 1.0f : -1.0f, word);
  }
}

// A motion event has the fields of a press.
void Frame::onMotion(const xcb_button_press_event_t& event) {
  notePointer(event);
  held_ &= buttonsOf(event.state) | kButton4 | kButton5;  // a release may have gone elsewhere
  if (dragTakesPointer(event, XCB_MOTION_NOTIFY)) return;
  const CPoint where = unitsOf(event.event, event.event_x, event.event_y);
  callback_->platformMouseMoved(where, wordOf(event.state) | heldBeyondState());
}

void Frame::onCrossing(const xcb_enter_notify_event_t& event, bool enter) {
  if (event.mode == XCB_NOTIFY_MODE_GRAB || event.detail == XCB_NOTIFY_DETAIL_INFERIOR || dragSource_.isDragging())
    return;
  const std::int32_t word = wordOf(event.state);
  const CPoint where = unitsOf(event.event, event.event_x, event.event_y);
  if (enter) {
    callback_->platformMouseMoved(where, word);
  } else if (event.event == window_) {
    callback_->platformMouseExited(word);
  }
}

void Frame::onKey(const xcb_key_press_event_t& event, bool press) {
  time_ = event.time;
  if (!press) {
    VstKeyCode key = keyboard_.released(event);
    const std::weak_ptr<int> alive = life_;
    const bool handled = callback_->platformKeyUp(key);
    if (!alive.expired() && !handled) sendToHost(event, press);
    return;
  }
  const std::weak_ptr<int> alive = life_;
  for (VstKeyCode& key : keyboard_.pressed(event)) {
    if (dragSource_.isDragging()) {
      if (key.virt == VKEY_ESCAPE) dragSource_.cancel();
      continue;
    }
    const bool handled = callback_->platformKeyDown(key);
    if (alive.expired()) return;
    if (!handled) sendToHost(event, press);
  }
}

// A key that no view wanted is the host's. An embedder has had it already.
void Frame::sendToHost(const xcb_key_press_event_t& event, bool press) {
  if (embedder_ != kNoWindow || dragSource_.isDragging() || !popups_.empty()) return;
  xcb_key_press_event_t copy = event;
  copy.event = parent_;
  copy.child = kNoWindow;
  const std::uint32_t mask = press ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE;
  xcb_send_event(*connection_, 1, parent_, mask, reinterpret_cast<const char*>(&copy));
}

// Grabs, the pointer's place in a window with the focus, and moves between a window and its children aren't a change of
// who has the keyboard.
void Frame::onFocus(const xcb_focus_in_event_t& event, bool in) {
  if (event.event != window_ || event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) return;
  if (event.detail == XCB_NOTIFY_DETAIL_POINTER || event.detail == XCB_NOTIFY_DETAIL_POINTER_ROOT ||
      event.detail == XCB_NOTIFY_DETAIL_INFERIOR)
    return;
  if (!in) tookFocus_ = false;
  keyboard_.reset();
  callback_->platformActivated(in);
}

void Frame::onMessage(const xcb_client_message_event_t& event) {
  if (event.type != connection_->atom(Name::kXembed) || event.format != 32 || event.window != window_) return;
  switch (event.data.data32[1]) {
    case kEmbeddedNotify:
      embedder_ = event.data.data32[3];
      return;
    case kFocusIn:
    case kWindowActivate:
      return callback_->platformActivated(true);
    case kFocusOut:
    case kWindowDeactivate:
      tookFocus_ = false;
      return callback_->platformActivated(false);
    default:
      return;
  }
}

}  // namespace VSTGUI::X11
