// SPDX-License-Identifier: MIT
// A display of its own for each test, the window of a host on it, and a user at mouse and keyboard.
#pragma once

#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

#include "toolkit/x11/Connection.h"
#include "toolkit/x11/X11Platform.h"

using VSTGUI::X11::Connection;
using VSTGUI::X11::Event;
using VSTGUI::X11::eventAs;
using VSTGUI::X11::eventType;
using VSTGUI::X11::Name;
using VSTGUI::X11::Reply;

// A program in the background whose first line of output says how it can be reached.
class Daemon {
 public:
  explicit Daemon(const std::string& command);
  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;
  ~Daemon() { stop(); }
  void stop();
  [[nodiscard]] pid_t process() const { return process_; }
  // Empty when the program isn't installed or didn't start.
  [[nodiscard]] const std::string& address() const { return address_; }

 private:
  FILE* output_;
  pid_t process_ = 0;
  std::string address_;
};

// A screen with the host's window at (60, 40) on it.
class Desktop : public testing::Test {
 protected:
  static constexpr int kLeft = 60;
  static constexpr int kTop = 40;
  static constexpr std::uint16_t kHostWidth = 200;
  static constexpr std::uint16_t kHostHeight = 100;

  Desktop();
  ~Desktop() override;
  void SetUp() override;

  // A turn of what is tested.
  virtual void idle() = 0;
  // Idles until `done` or for ten seconds; false when the time is up.
  bool until(const std::function<bool()>& done);
  [[nodiscard]] xcb_window_t newHostWindow(int x, int y) { return newHostWindow(*user, x, y); }
  // A window that goes when `owner` does.
  [[nodiscard]] xcb_window_t newHostWindow(Connection& owner, int x, int y);
  // As hosts hand a window over.
  [[nodiscard]] static void* asParent(xcb_window_t which) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(which));
  }

  // Waits until the server has done it.
  void destroyHost();

  // At pixels of the host's window.
  void point(int x, int y);
  void press(std::uint8_t button = 1) { fake(XCB_BUTTON_PRESS, button); }
  void release(std::uint8_t button = 1) { fake(XCB_BUTTON_RELEASE, button); }
  void click(int x, int y, std::uint8_t button = 1);
  void keyDown(std::uint32_t symbol) { fake(XCB_KEY_PRESS, keycode(symbol)); }
  void keyUp(std::uint32_t symbol) { fake(XCB_KEY_RELEASE, keycode(symbol)); }
  // With a modifier key held, unless it is 0.
  void type(std::uint32_t symbol, std::uint32_t held = 0);

  [[nodiscard]] xcb_get_geometry_reply_t geometry(xcb_window_t which);
  [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t which);
  // Files that this process has open.
  [[nodiscard]] static int openFiles() { return openFiles("self"); }
  // Files that the server has open: one for each of its clients, besides its own.
  [[nodiscard]] int serverFiles() const { return openFiles(std::to_string(server.process())); }
  // 0xRRGGBB of a pixel of the screen.
  [[nodiscard]] std::uint32_t screenPixel(int x, int y);
  // True once an event of the type has come to the host's own connection.
  bool hostGot(std::uint8_t type);

  Daemon server{"Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp"};
  VSTGUI::X11Platform platform;
  std::unique_ptr<Connection> user;
  xcb_window_t host = XCB_WINDOW_NONE;
  xcb_window_t window = XCB_WINDOW_NONE;  // of what is tested, in the host's

 private:
  static int openFiles(const std::string& process);
  void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
  [[nodiscard]] std::uint8_t keycode(std::uint32_t symbol);
};
