// SPDX-License-Identifier: MIT
#include "toolkit/x11/Connection.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <pthread.h>
#include <xcb/randr.h>
#include <xcb/xcb_cursor.h>

namespace VSTGUI::X11 {

namespace {

// In the order of `Name`.
constexpr auto kNames = std::to_array<std::string_view>({
    "_XEMBED",
    "_XEMBED_INFO",
    "UTF8_STRING",
    "text/plain",
    "text/plain;charset=utf-8",
    "text/uri-list",
    "TARGETS",
    "TIMESTAMP",
    "INCR",
    "CLIPBOARD",
    "MODRIFT_PASTE",
    "MODRIFT_DROP",
    "XdndAware",
    "XdndProxy",
    "XdndEnter",
    "XdndPosition",
    "XdndStatus",
    "XdndLeave",
    "XdndDrop",
    "XdndFinished",
    "XdndSelection",
    "XdndTypeList",
    "XdndActionCopy",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_STATE",
    "_NET_WM_NAME",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
});
static_assert(kNames.size() == static_cast<std::size_t>(Name::kCount));

// Names in cursor themes, the best first; the last of each is in the server's own cursor font.
struct CursorNames {
  CCursorType type;
  std::array<const char*, 4> names;
};
constexpr auto kCursorNames = std::to_array<CursorNames>({
    {kCursorDefault, {"default", "left_ptr"}},
    {kCursorVSize, {"ns-resize", "size_ver", "sb_v_double_arrow"}},
    {kCursorSizeAll, {"all-scroll", "size_all", "fleur"}},
    {kCursorCopy, {"copy", "dnd-copy", "plus"}},
    {kCursorNotAllowed, {"not-allowed", "crossed_circle", "forbidden", "X_cursor"}},
    {kCursorHand, {"pointer", "pointing_hand", "hand2"}},
});

constexpr double kNormalDpi = 96;
constexpr double kMinScale = 0.5;
constexpr double kMaxScale = 8;
constexpr double kScaleSteps = 8;  // a unit: coarse enough that the edges of most rectangles fall on pixels
constexpr std::uint32_t kMaxPropertyWords = 1u << 20;

std::optional<double> positiveNumber(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || !(value > 0) || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace

NoPipeSignal::NoPipeSignal() noexcept {
  sigset_t pending;
  sigset_t pipe;
  sigpending(&pending);
  waiting_ = sigismember(&pending, SIGPIPE) == 1;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, &before_);
}

NoPipeSignal::~NoPipeSignal() {
  if (!waiting_) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    const timespec now{};
    sigtimedwait(&pipe, nullptr, &now);
  }
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

std::optional<double> dotsPerInch(std::string_view resources) {
  constexpr std::string_view kKey = "Xft.dpi:";
  while (!resources.empty()) {
    const std::size_t end = std::min(resources.find('\n'), resources.size());
    std::string_view line = resources.substr(0, end);
    resources.remove_prefix(std::min(end + 1, resources.size()));
    if (!line.starts_with(kKey)) continue;
    line.remove_prefix(std::min(line.find_first_not_of(" \t", kKey.size()), line.size()));
    return positiveNumber(line);
  }
  return std::nullopt;
}

std::unique_ptr<Connection> Connection::open(const char* display) {
  int screenNumber = 0;
  xcb_connection_t* const xcb = xcb_connect(display, &screenNumber);
  std::unique_ptr<Connection> made(new Connection(xcb, screenNumber));
  return made->isLost() || !made->screen_ ? nullptr : std::move(made);
}

Connection::Connection(xcb_connection_t* xcb, int screenNumber) : xcb_(xcb) {
  if (isLost()) return;
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb_));
  for (; screens.rem > 1 && screenNumber > 0; --screenNumber) xcb_screen_next(&screens);
  screen_ = screens.data;
  internNames();
  const auto* const randr = xcb_get_extension_data(xcb_, &xcb_randr_id);
  if (!randr || !randr->present) return;
  const Reply<xcb_randr_query_version_reply_t> version(
      xcb_randr_query_version_reply(xcb_, xcb_randr_query_version(xcb_, 1, 5), nullptr));
  hasRandr_ = version && (version->major_version > 1 || version->minor_version >= 5);
}

Connection::~Connection() {
  const NoPipeSignal guard;
  if (cursorContext_) xcb_cursor_context_free(cursorContext_);
  xcb_disconnect(xcb_);
}

void Connection::internNames() {
  std::array<xcb_intern_atom_cookie_t, kNames.size()> cookies;
  for (std::size_t i = 0; i < kNames.size(); ++i)
    cookies[i] = xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(kNames[i].size()), kNames[i].data());
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb_, cookies[i], nullptr));
    if (reply) atoms_[i] = reply->atom;
  }
}

const xcb_visualtype_t* Connection::visual(xcb_visualid_t id) const {
  for (auto depth = xcb_screen_allowed_depths_iterator(screen_); depth.rem; xcb_depth_next(&depth))
    for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual))
      if (visual.data->visual_id == id) return visual.data;
  return nullptr;
}

xcb_cursor_t Connection::cursor(CCursorType type) {
  const auto row =
      std::find_if(kCursorNames.begin(), kCursorNames.end(), [&](const CursorNames& r) { return r.type == type; });
  const CursorNames& wanted = row == kCursorNames.end() ? kCursorNames.front() : *row;
  xcb_cursor_t& cursor = cursors_.at(static_cast<std::size_t>(wanted.type));
  if (cursor != XCB_CURSOR_NONE) return cursor;
  if (!cursorContext_ && xcb_cursor_context_new(xcb_, const_cast<xcb_screen_t*>(screen_), &cursorContext_) < 0)
    return XCB_CURSOR_NONE;
  for (const char* const name : wanted.names) {
    if (!name || cursor != XCB_CURSOR_NONE) break;
    cursor = xcb_cursor_load_cursor(cursorContext_, name);
  }
  return cursor;
}

double Connection::scaleFactor() const {
  const char* const wanted = std::getenv("MODRIFT_SCALE");
  auto scale = wanted ? positiveNumber(wanted) : std::nullopt;
  if (!scale) {
    const auto dpi = dotsPerInch(property(root(), XCB_ATOM_RESOURCE_MANAGER).bytes);
    scale = dpi ? std::max(1.0, *dpi / kNormalDpi) : 1.0;
  }
  return std::round(std::clamp(*scale, kMinScale, kMaxScale) * kScaleSteps) / kScaleSteps;
}

xcb_window_t Connection::topLevelOf(xcb_window_t window) const {
  for (;;) {
    if (property(window, atom(Name::kWmState)).type != kNoAtom) return window;
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb_, xcb_query_tree(xcb_, window), nullptr));
    if (!tree || tree->parent == kNoWindow || tree->parent == root()) return window;
    window = tree->parent;
  }
}

CRect Connection::monitorAt(double x, double y) const {
  const Reply<xcb_get_geometry_reply_t> whole(xcb_get_geometry_reply(xcb_, xcb_get_geometry(xcb_, root()), nullptr));
  const CRect screen(0, 0, whole ? whole->width : screen_->width_in_pixels,
                     whole ? whole->height : screen_->height_in_pixels);
  if (!hasRandr_) return screen;
  const Reply<xcb_randr_get_monitors_reply_t> monitors(
      xcb_randr_get_monitors_reply(xcb_, xcb_randr_get_monitors(xcb_, root(), 1), nullptr));
  if (!monitors) return screen;
  for (auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get()); it.rem; xcb_randr_monitor_info_next(&it)) {
    const auto& m = *it.data;
    const CRect rect(m.x, m.y, m.x + m.width, m.y + m.height);
    if (!rect.isEmpty() && CPoint(x, y).isInside(rect)) return rect;
  }
  return screen;
}

std::optional<Connection::Place> Connection::translated(xcb_window_t from, xcb_window_t to, int x, int y) const {
  const Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
      xcb_, xcb_translate_coordinates(xcb_, from, to, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)),
      nullptr));
  return place ? std::optional<Place>({place->dst_x, place->dst_y, place->child}) : std::nullopt;
}

bool Connection::grabPointer(xcb_window_t window, std::uint32_t events, CCursorType shape) {
  const Reply<xcb_grab_pointer_reply_t> grab(
      xcb_grab_pointer_reply(xcb_,
                             xcb_grab_pointer(xcb_, 0, window, static_cast<std::uint16_t>(events), XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC, kNoWindow, cursor(shape), XCB_CURRENT_TIME),
                             nullptr));
  return grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
}

bool Connection::waitReadable(int milliseconds) const {
  pollfd waited{xcb_get_file_descriptor(xcb_), POLLIN, 0};
  return ::poll(&waited, 1, milliseconds) > 0;
}

std::vector<std::uint32_t> Connection::Property::words() const {
  std::vector<std::uint32_t> items(bytes.size() / sizeof(std::uint32_t));
  if (!items.empty()) std::memcpy(items.data(), bytes.data(), items.size() * sizeof(std::uint32_t));
  return items;
}

Connection::Property Connection::property(xcb_window_t window, xcb_atom_t name, bool remove) const {
  const auto cookie = xcb_get_property(xcb_, remove, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxPropertyWords);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb_, cookie, nullptr));
  if (!reply) return {};
  const auto* const first = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return {reply->type, {first, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))}};
}

void Connection::setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                             const std::vector<std::uint32_t>& words) {
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window, name, type, 32, static_cast<std::uint32_t>(words.size()),
                      words.data());
}

void Connection::setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, std::string_view bytes) {
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window, name, type, 8, static_cast<std::uint32_t>(bytes.size()),
                      bytes.data());
}

void Connection::sendMessage(xcb_window_t to, xcb_window_t window, xcb_atom_t type,
                             const std::array<std::uint32_t, 5>& words) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = type;
  std::copy(words.begin(), words.end(), std::begin(message.data.data32));
  xcb_send_event(xcb_, 0, to, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
}

}  // namespace VSTGUI::X11
