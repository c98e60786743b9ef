// SPDX-License-Identifier: MIT
#include "cli/commands/EditorWindow.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fmt/core.h>
#include <poll.h>
#include <string_view>
#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include "cli/terminal/Errors.h"

namespace modrift::cli {
namespace {

constexpr char kClass[] = "modrift\0Modrift";  // instance and class, each with its zero

struct Free {
  void operator()(void* answer) const noexcept { std::free(answer); }
};
template <class Answer>
using Owned = std::unique_ptr<Answer, Free>;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
  const auto request = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, request, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::uint32_t positive(int size) { return static_cast<std::uint32_t>(std::max(size, 1)); }

const xcb_screen_t& screenOf(xcb_connection_t* connection, int number) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; number > 0 && screens.rem > 1; --number) xcb_screen_next(&screens);
  return *screens.data;
}

}  // namespace

struct EditorWindow::State {
  Connection connection;
  xcb_window_t window = 0;
  xcb_atom_t protocols = 0;
  xcb_atom_t deleteWindow = 0;

  // Only the editor changes the size, so that the frame round it fits.
  void fixSize(int widthPx, int heightPx) const {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_min_size(&hints, widthPx, heightPx);
    xcb_icccm_size_hints_set_max_size(&hints, widthPx, heightPx);
    xcb_icccm_set_wm_normal_hints(connection.get(), window, &hints);
  }

  void setText(xcb_atom_t property, xcb_atom_t type, std::string_view text) const {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  }

  [[nodiscard]] bool isGone() const { return xcb_connection_has_error(connection.get()) != 0; }

  // False when the user asks for the end, or somebody has brought it.
  [[nodiscard]] bool take(const xcb_generic_event_t& event) const {
    constexpr unsigned kSentByAnother = 0x80;
    switch (event.response_type & ~kSentByAnother) {
      case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type != protocols || message.data.data32[0] != deleteWindow;
      }
      case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window != window;
      default:
        return true;
    }
  }
};

EditorWindow::EditorWindow(int widthPx, int heightPx, const std::string& title) : state_(std::make_unique<State>()) {
  int screenNumber = 0;
  state_->connection.reset(xcb_connect(nullptr, &screenNumber));
  if (state_->isGone()) {
    const char* const display = std::getenv("DISPLAY");
    throw RunError(fmt::format("{}: an X server to open a window on was expected (screenshot needs none)",
                               display != nullptr && *display != '\0' ? display : "DISPLAY"));
  }
  xcb_connection_t* const connection = state_->connection.get();
  const xcb_screen_t& screen = screenOf(connection, screenNumber);
  state_->window = xcb_generate_id(connection);
  const std::array<std::uint32_t, 2> values = {screen.black_pixel, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, state_->window, screen.root, 0, 0,
                    static_cast<std::uint16_t>(positive(widthPx)), static_cast<std::uint16_t>(positive(heightPx)), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK,
                    values.data());
  state_->protocols = atom(connection, "WM_PROTOCOLS");
  state_->deleteWindow = atom(connection, "WM_DELETE_WINDOW");
  xcb_icccm_set_wm_protocols(connection, state_->window, state_->protocols, 1, &state_->deleteWindow);
  state_->setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
  state_->setText(atom(connection, "_NET_WM_NAME"), atom(connection, "UTF8_STRING"), title);
  state_->setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, {kClass, sizeof kClass});
  state_->fixSize(widthPx, heightPx);
  xcb_flush(connection);
}

EditorWindow::~EditorWindow() {
  xcb_destroy_window(state_->connection.get(), state_->window);
  xcb_flush(state_->connection.get());
}

void* EditorWindow::parent() const noexcept { return reinterpret_cast<void*>(std::uintptr_t{state_->window}); }

void EditorWindow::show() {
  xcb_map_window(state_->connection.get(), state_->window);
  xcb_flush(state_->connection.get());
}

void EditorWindow::resize(int widthPx, int heightPx) {
  state_->fixSize(widthPx, heightPx);
  const std::array<std::uint32_t, 2> size = {positive(widthPx), positive(heightPx)};
  xcb_configure_window(state_->connection.get(), state_->window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       size.data());
  xcb_flush(state_->connection.get());
}

bool EditorWindow::processEvents(int milliseconds) {
  pollfd waiting = {xcb_get_file_descriptor(state_->connection.get()), POLLIN, 0};
  poll(&waiting, 1, milliseconds);
  bool goesOn = true;
  while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(state_->connection.get())})
    goesOn = state_->take(*event) && goesOn;
  return goesOn && !state_->isGone();
}

}  // namespace modrift::cli
