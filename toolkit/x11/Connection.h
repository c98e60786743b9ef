// SPDX-License-Identifier: MIT
// One connection to the X server, and what is asked of it once: screen, names, cursors, scale. [ui]
//
// Each frame has a connection of its own: when it closes, the server itself takes back all windows, grabs and
// selections that are left, a broken connection ends one frame, and no handler of the process is touched. Requests that
// may fail by somebody else's doing are sent unchecked, and their errors are dropped with the events.
#pragma once

#include <array>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

#include "toolkit/base/Events.h"
#include "toolkit/base/Geometry.h"

struct xcb_cursor_context_t;

namespace VSTGUI::X11 {

struct FreeMemory {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
// What xcb gives to the caller.
template <class T>
using Reply = std::unique_ptr<T, FreeMemory>;
using Event = Reply<xcb_generic_event_t>;

template <class T>
[[nodiscard]] const T& eventAs(const xcb_generic_event_t& event) {
  return reinterpret_cast<const T&>(event);
}

// Its kind, without the mark of those that clients sent.
[[nodiscard]] inline std::uint8_t eventType(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

// As plain numbers, which the enumerators of the same meaning don't mix with.
inline constexpr xcb_atom_t kNoAtom = XCB_ATOM_NONE;
inline constexpr xcb_window_t kNoWindow = XCB_WINDOW_NONE;

enum class Name : std::size_t {
  kXembed,
  kXembedInfo,
  kUtf8String,
  kTextPlain,
  kTextPlainUtf8,
  kTextUriList,
  kTargets,
  kTimestamp,
  kIncr,
  kClipboard,
  kPasteProperty,
  kDropProperty,
  kXdndAware,
  kXdndProxy,
  kXdndEnter,
  kXdndPosition,
  kXdndStatus,
  kXdndLeave,
  kXdndDrop,
  kXdndFinished,
  kXdndSelection,
  kXdndTypeList,
  kXdndActionCopy,
  kWmProtocols,
  kWmDeleteWindow,
  kWmState,
  kNetWmName,
  kNetWmWindowType,
  kNetWmWindowTypeDialog,
  kNetWmWindowTypePopupMenu,
  kCount
};

// A write to a server that goes at that moment raises SIGPIPE, which would end the host. While one of these lives the
// calling thread doesn't get it. Not for stretches that call back: what is started there would inherit it.
class NoPipeSignal {
 public:
  NoPipeSignal() noexcept;
  NoPipeSignal(const NoPipeSignal&) = delete;
  NoPipeSignal& operator=(const NoPipeSignal&) = delete;
  ~NoPipeSignal();

 private:
  sigset_t before_{};
  bool waiting_ = false;  // one was there already and isn't ours
};

// The value of "Xft.dpi" in the text of the server's resources; none if it isn't there or no number above 0.
[[nodiscard]] std::optional<double> dotsPerInch(std::string_view resources);

class Connection {
 public:
  // Null without a display. `display` null stands for the environment's.
  [[nodiscard]] static std::unique_ptr<Connection> open(const char* display = nullptr);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  [[nodiscard]] xcb_connection_t* get() const { return xcb_; }
  operator xcb_connection_t*() const { return xcb_; }  // NOLINT: stands for the plain pointer in calls of xcb
  [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  [[nodiscard]] xcb_atom_t atom(Name name) const { return atoms_[static_cast<std::size_t>(name)]; }
  [[nodiscard]] bool isLost() const { return xcb_connection_has_error(xcb_) != 0; }
  // Null for an id that no visual has.
  [[nodiscard]] const xcb_visualtype_t* visual(xcb_visualid_t id) const;
  [[nodiscard]] xcb_cursor_t cursor(CCursorType type);
  // Device pixels of a unit: from MODRIFT_SCALE, else from the server's dots per inch, else 1. In steps of 1/8.
  [[nodiscard]] double scaleFactor() const;
  // The window of the program that holds `window`, as window managers know it; the topmost where there is no manager.
  [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t window) const;
  // The monitor that holds a point of the root window, in pixels; the root window where there is none.
  [[nodiscard]] CRect monitorAt(double x, double y) const;

  // A place in pixels of one window as another has it, and the child of that one that lies there; none for a window
  // that is gone.
  struct Place {
    int x;
    int y;
    xcb_window_t child;
  };
  [[nodiscard]] std::optional<Place> translated(xcb_window_t from, xcb_window_t to, int x, int y) const;
  // Has pointer events go to `window` wherever they happen; false while somebody else has them.
  bool grabPointer(xcb_window_t window, std::uint32_t events, CCursorType shape);

  [[nodiscard]] Event poll() { return Event(xcb_poll_for_event(xcb_)); }
  // Waits until there is something to read; false when the time is up.
  bool waitReadable(int milliseconds) const;
  void flush() {
    const NoPipeSignal guard;
    xcb_flush(xcb_);
  }

  // A property's bytes, at most 4 MB of them; empty when it isn't there.
  struct Property {
    xcb_atom_t type = kNoAtom;
    std::string bytes;
    // The items of a property of format 32.
    [[nodiscard]] std::vector<std::uint32_t> words() const;
  };
  [[nodiscard]] Property property(xcb_window_t window, xcb_atom_t name, bool remove = false) const;
  void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, const std::vector<std::uint32_t>& words);
  void setProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type, std::string_view bytes);
  // Sends a client message of five words about `window` to `to`.
  void sendMessage(xcb_window_t to, xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& words);

 private:
  explicit Connection(xcb_connection_t* xcb, int screenNumber);
  void internNames();

  xcb_connection_t* xcb_;
  const xcb_screen_t* screen_ = nullptr;
  std::array<xcb_atom_t, static_cast<std::size_t>(Name::kCount)> atoms_{};
  xcb_cursor_context_t* cursorContext_ = nullptr;
  std::array<xcb_cursor_t, 10> cursors_{};
  bool hasRandr_ = false;
};

}  // namespace VSTGUI::X11
