// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <xcb/shape.h>

#include "toolkit/base/IDataPackage.h"
#include "toolkit/drawing/CBitmap.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/x11/Dnd.h"

namespace VSTGUI::X11 {

namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kVersion = 5;
constexpr std::uint32_t kOldestVersion = 3;
constexpr auto kStatusPatience = 2s;     // after the release
constexpr auto kTransferPatience = 20s;  // until the target has what it wants
constexpr std::uint32_t kGrabbed =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace

// A window with the dragged picture that follows the pointer and lets it see through.
struct DragSource::Picture {
  Picture(Connection& c, CBitmap& bitmap, double scale, CPoint grip)
      : connection(c),
        window(xcb_generate_id(c)),
        gripX(static_cast<int>(std::lround(grip.x * scale))),
        gripY(static_cast<int>(std::lround(grip.y * scale))) {
    const CRect size(0, 0, bitmap.getWidth(), bitmap.getHeight());
    const int width = std::max(1, static_cast<int>(std::ceil(size.getWidth() * scale)));
    const int height = std::max(1, static_cast<int>(std::ceil(size.getHeight() * scale)));
    constexpr std::uint32_t kUnmanaged = 1;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, c.root(), 0, 0, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &kUnmanaged);
    constexpr std::uint32_t kExposure = XCB_EVENT_MASK_EXPOSURE;
    xcb_change_window_attributes(c, window, XCB_CW_EVENT_MASK, &kExposure);
    xcb_shape_rectangles(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 0, nullptr);
    if (const auto* const visual = c.visual(c.screen().root_visual))
      canvas = std::make_unique<Canvas>(c, window, *visual, width, height, scale);
    if (!canvas || !canvas->isUsable()) return;
    CDrawContext context(canvas->surface(), size, scale);
    bitmap.draw(&context, size);
  }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  ~Picture() {
    canvas.reset();
    xcb_destroy_window(connection, window);
  }

  void moveTo(int rootX, int rootY) {
    const std::array<std::uint32_t, 2> place{static_cast<std::uint32_t>(rootX - gripX),
                                             static_cast<std::uint32_t>(rootY - gripY)};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
    xcb_map_window(connection, window);
  }

  Connection& connection;
  xcb_window_t window;
  int gripX;
  int gripY;
  std::unique_ptr<Canvas> canvas;
};

DragSource::DragSource(Connection& connection, xcb_window_t window, double scaleFactor)
    : connection_(connection),
      window_(window),
      scale_(scaleFactor),
      selection_(connection, window, Name::kXdndSelection) {}

DragSource::~DragSource() = default;

std::vector<Offer> DragSource::offersOf(IDataPackage& drag) const {
  std::string uris;
  std::string text;
  for (std::uint32_t i = 0; i < drag.getCount(); ++i) {
    const void* data = nullptr;
    IDataPackage::Type type = IDataPackage::kError;
    const std::uint32_t size = drag.getData(i, data, type);
    const std::string_view item(static_cast<const char*>(data), data ? size : 0);
    if (type == IDataPackage::kFilePath) uris += uriOfPath(item.substr(0, item.find('\0'))) + "\r\n";
    if (type == IDataPackage::kText) text += item;
  }
  std::vector<Offer> offers;
  if (!uris.empty()) offers.push_back({connection_.atom(Name::kTextUriList), uris});
  if (!text.empty())
    for (const Name name : {Name::kUtf8String, Name::kTextPlainUtf8, Name::kTextPlain})
      offers.push_back({connection_.atom(name), text});
  return offers;
}

bool DragSource::begin(IDataPackage* drag, CPoint offset, CBitmap* picture, int rootX, int rootY,
                       xcb_timestamp_t time) {
  if (dragging_) return false;
  cancel();  // a transfer that still hangs
  if (!selection_.own(offersOf(*drag), time)) return false;
  if (!connection_.grabPointer(window_, kGrabbed, kCursorNotAllowed)) {
    selection_.disown(time);
    return false;
  }
  // For Escape; the drag goes on without it.
  const auto keys =
      xcb_grab_keyboard(connection_, 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  xcb_discard_reply(connection_, keys.sequence);
  std::vector<std::uint32_t> types;
  for (const Offer& offer : selection_.offers()) types.push_back(offer.type);
  connection_.setProperty(window_, connection_.atom(Name::kXdndTypeList), XCB_ATOM_ATOM, types);
  if (picture && picture->isLoaded()) picture_ = std::make_unique<Picture>(connection_, *picture, scale_, offset);
  dragging_ = true;
  moved(rootX, rootY, time);
  return true;
}

// The deepest window there that takes drags: a program may hold windows of others.
DragSource::Target DragSource::targetAt(int rootX, int rootY) const {
  Target found = asTarget(connection_.root());
  for (xcb_window_t window = connection_.root(); window != kNoWindow;) {
    const auto inside = connection_.translated(connection_.root(), window, rootX, rootY);
    window = inside ? inside->child : kNoWindow;
    if (window == kNoWindow) break;
    const Target deeper = asTarget(window);
    if (deeper.window != kNoWindow) found = deeper;
  }
  return found;
}

DragSource::Target DragSource::asTarget(xcb_window_t window) const {
  xcb_window_t to = window;
  const xcb_atom_t proxyName = connection_.atom(Name::kXdndProxy);
  const auto proxy = connection_.property(window, proxyName).words();
  // A proxy that is still alive names itself.
  if (!proxy.empty() && connection_.property(proxy[0], proxyName).words() == std::vector{proxy[0]}) to = proxy[0];
  const auto version = connection_.property(to, connection_.atom(Name::kXdndAware)).words();
  if (version.empty() || version[0] < kOldestVersion) return {};
  return {window, to, std::min(version[0], kVersion)};
}

void DragSource::send(Name message, std::array<std::uint32_t, 4> words) {
  connection_.sendMessage(target_.to, target_.window, connection_.atom(message),
                          {window_, words[0], words[1], words[2], words[3]});
}

void DragSource::changeTarget(const Target& target) {
  if (target_.window != kNoWindow) send(Name::kXdndLeave, {});
  target_ = target;
  awaitsStatus_ = accepted_ = false;
  if (target_.window != kNoWindow) {
    const auto& offers = selection_.offers();
    const auto type = [&](std::size_t i) { return i < offers.size() ? offers[i].type : kNoAtom; };
    send(Name::kXdndEnter, {target_.version << 24 | (offers.size() > 3 ? 1u : 0u), type(0), type(1), type(2)});
  }
  showCursor();
}

void DragSource::showCursor() {
  xcb_change_active_pointer_grab(connection_, connection_.cursor(accepted_ ? kCursorCopy : kCursorNotAllowed),
                                 XCB_CURRENT_TIME, kGrabbed);
}

void DragSource::moved(int rootX, int rootY, xcb_timestamp_t time) {
  const NoPipeSignal guard;
  rootX_ = rootX;
  rootY_ = rootY;
  time_ = time;
  if (picture_) picture_->moveTo(rootX, rootY);
  const Target target = targetAt(rootX, rootY);
  if (target.window != target_.window) changeTarget(target);
  moved_ = true;
  if (!awaitsStatus_) sendPosition();
}

void DragSource::sendPosition() {
  if (target_.window == kNoWindow) return;
  moved_ = false;
  awaitsStatus_ = true;
  const std::uint32_t place =
      static_cast<std::uint32_t>(rootX_ & 0xffff) << 16 | static_cast<std::uint32_t>(rootY_ & 0xffff);
  send(Name::kXdndPosition, {0, place, time_, connection_.atom(Name::kXdndActionCopy)});
  connection_.flush();
}

void DragSource::status(const xcb_client_message_data_t& data) {
  if (data.data32[0] != target_.window || dropSent_) return;
  awaitsStatus_ = false;
  const bool accepted = data.data32[1] & 1;
  if (accepted != accepted_ && dragging_) {
    accepted_ = accepted;
    showCursor();
  }
  accepted_ = accepted;
  if (moved_) {
    sendPosition();
  } else if (released_) {
    decide();
  }
}

void DragSource::released(xcb_timestamp_t time) {
  time_ = time;
  ungrab();
  released_ = true;
  deadline_ = Clock::now() + kStatusPatience;
  if (!awaitsStatus_) decide();
}

// The target has said whether it wants the place where the button was let go.
void DragSource::decide() {
  if (target_.window == kNoWindow || !accepted_) {
    changeTarget({});
    end();
    return;
  }
  dropSent_ = true;
  deadline_ = Clock::now() + kTransferPatience;
  send(Name::kXdndDrop, {0, time_, 0, 0});
  connection_.flush();
}

void DragSource::cancel() {
  if (!dragging_ && !released_) return;
  ungrab();
  if (!dropSent_) changeTarget({});
  end();
}

void DragSource::ungrab() {
  if (!dragging_) return;
  dragging_ = false;
  picture_.reset();
  xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
  xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
  connection_.flush();
}

void DragSource::end() {
  selection_.disown(time_);
  target_ = {};
  released_ = dropSent_ = awaitsStatus_ = moved_ = accepted_ = false;
  connection_.flush();
}

bool DragSource::takes(const xcb_generic_event_t& event) {
  if (selection_.takes(event)) return true;
  const std::uint8_t type = eventType(event);
  if (type == XCB_EXPOSE && picture_) {
    const auto& area = eventAs<xcb_expose_event_t>(event);
    if (area.window != picture_->window) return false;
    if (picture_->canvas) picture_->canvas->expose(area.x, area.y, area.width, area.height);
    return true;
  }
  if (type != XCB_CLIENT_MESSAGE) return false;
  const auto& message = eventAs<xcb_client_message_event_t>(event);
  if (message.type == connection_.atom(Name::kXdndStatus)) {
    status(message.data);
    return true;
  }
  if (message.type != connection_.atom(Name::kXdndFinished)) return false;
  if (dropSent_ && message.data.data32[0] == target_.window) end();
  return true;
}

void DragSource::tick() {
  if (!released_ || Clock::now() < deadline_) return;
  if (!dropSent_) changeTarget({});
  end();
}

}  // namespace VSTGUI::X11
