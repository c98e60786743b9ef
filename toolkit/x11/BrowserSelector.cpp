// SPDX-License-Identifier: MIT
// The toolkit's own file browser in a window of its own.

#include <cmath>
#include <cstring>

#include "toolkit/popups/FileBrowser.h"
#include "toolkit/x11/FileSelectors.h"

namespace VSTGUI::X11 {

namespace {

// The layout of the property WM_NORMAL_HINTS, as far as it is used here.
constexpr std::uint32_t kFixedSize = 1u << 4 | 1u << 5;  // smallest and largest size are given
constexpr std::size_t kHintWords = 18;
constexpr std::size_t kMinWidthWord = 5;

class BrowserSelector : public FileSelector {
 public:
  BrowserSelector(const FileSelectorRequest& request, xcb_window_t owner, PlatformType platform)
      : connection_(Connection::open()), browser_(request) {
    if (!connection_) return;
    createWindow(request, owner);
    connection_->flush();
    opened_ = browser_.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(window_)), platform);
  }

  State poll() override {
    if (!opened_ || connection_->isLost()) return State::kUnavailable;
    while (const Event event = connection_->poll()) take(*event);
    if (closed_) return State::kDone;
    if (!browser_.isDone()) return State::kRunning;
    paths_ = browser_.getPaths();
    return State::kDone;
  }

 private:
  void createWindow(const FileSelectorRequest& request, xcb_window_t owner) {
    Connection& c = *connection_;
    const double scale = c.scaleFactor();
    const auto pixels = [&](double units) { return static_cast<std::uint16_t>(std::ceil(units * scale)); };
    const std::uint16_t width = pixels(FileBrowser::size().getWidth());
    const std::uint16_t height = pixels(FileBrowser::size().getHeight());
    window_ = xcb_generate_id(c);
    const std::array<std::uint32_t, 2> values{c.screen().black_pixel, XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, c.root(), 0, 0, width, height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
    c.setProperty(window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, request.title);
    c.setProperty(window_, c.atom(Name::kNetWmName), c.atom(Name::kUtf8String), request.title);
    c.setProperty(window_, c.atom(Name::kNetWmWindowType), XCB_ATOM_ATOM,
                  std::vector<std::uint32_t>{c.atom(Name::kNetWmWindowTypeDialog)});
    c.setProperty(window_, c.atom(Name::kWmProtocols), XCB_ATOM_ATOM,
                  std::vector<std::uint32_t>{c.atom(Name::kWmDeleteWindow)});
    if (owner != kNoWindow)
      c.setProperty(window_, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, std::vector<std::uint32_t>{owner});
    std::vector<std::uint32_t> hints(kHintWords);
    hints[0] = kFixedSize;
    hints[kMinWidthWord] = hints[kMinWidthWord + 2] = width;
    hints[kMinWidthWord + 1] = hints[kMinWidthWord + 3] = height;
    c.setProperty(window_, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    xcb_map_window(c, window_);
  }

  void take(const xcb_generic_event_t& event) {
    const auto type = eventType(event);
    if (type == XCB_CLIENT_MESSAGE) {
      const auto& message = eventAs<xcb_client_message_event_t>(event);
      if (message.data.data32[0] == connection_->atom(Name::kWmDeleteWindow)) closed_ = true;
    }
    if (type == XCB_FOCUS_IN && eventAs<xcb_focus_in_event_t>(event).detail != XCB_NOTIFY_DETAIL_INFERIOR)
      passFocusOn();
  }

  // Window managers give the keyboard to the outer window; the browser is in the inner one.
  void passFocusOn() {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(*connection_, xcb_query_tree(*connection_, window_), nullptr));
    if (!tree || xcb_query_tree_children_length(tree.get()) == 0) return;
    xcb_set_input_focus(*connection_, XCB_INPUT_FOCUS_PARENT, xcb_query_tree_children(tree.get())[0], XCB_CURRENT_TIME);
    connection_->flush();
  }

  std::unique_ptr<Connection> connection_;
  xcb_window_t window_ = kNoWindow;
  FileBrowser browser_;
  bool opened_ = false;
  bool closed_ = false;
};

}  // namespace

std::unique_ptr<FileSelector> browserSelector(const FileSelectorRequest& request, xcb_window_t owner,
                                              PlatformType platform) {
  return std::make_unique<BrowserSelector>(request, owner, platform);
}

}  // namespace VSTGUI::X11
