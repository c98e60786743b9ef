// SPDX-License-Identifier: MIT
#include "tests/toolkit/x11/Desktop.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>
#include <xcb/xtest.h>

using namespace VSTGUI;

namespace {

constexpr auto kPatience = std::chrono::seconds(10);

// One line; empty when the other end closes without one.
std::string readLine(FILE* file) {
  std::string line;
  for (int c = 0; file && (c = std::fgetc(file)) != EOF && c != '\n';) line += static_cast<char>(c);
  return line;
}

}  // namespace

Daemon::Daemon(const std::string& command)
    : output_(::popen(("echo $$; exec " + command + " 2>/dev/null").c_str(), "re")) {
  process_ = std::atoi(readLine(output_).c_str());
  address_ = readLine(output_);
}

void Daemon::stop() {
  if (process_ <= 0) return;
  ::kill(process_, SIGKILL);
  ::pclose(output_);
  process_ = 0;
}

Desktop::Desktop() {
  for (const char* const variable : {"MODRIFT_SCALE", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"})
    ::unsetenv(variable);
}

Desktop::~Desktop() { setPlatform(PlatformType::kDefaultNative, nullptr); }

void Desktop::SetUp() {
  if (server.address().empty()) GTEST_SKIP() << "Xvfb is not installed, so nothing of X11 is tested";
  ::setenv("DISPLAY", (":" + server.address()).c_str(), 1);
  user = Connection::open();
  ASSERT_NE(user, nullptr);
  setPlatform(PlatformType::kDefaultNative, &platform);
  host = newHostWindow(kLeft, kTop);
  point(-20, -20);
}

xcb_window_t Desktop::newHostWindow(Connection& owner, int x, int y) {
  const xcb_window_t made = xcb_generate_id(owner);
  const std::array<std::uint32_t, 3> values{owner.screen().white_pixel, 1,
                                            XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(owner, XCB_COPY_FROM_PARENT, made, owner.root(), static_cast<std::int16_t>(x),
                    static_cast<std::int16_t>(y), kHostWidth, kHostHeight, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                    values.data());
  xcb_map_window(owner, made);
  owner.flush();
  // The server has seen to it.
  (void)Reply<xcb_get_geometry_reply_t>(xcb_get_geometry_reply(owner, xcb_get_geometry(owner, made), nullptr));
  return made;
}

bool Desktop::until(const std::function<bool()>& done) {
  user->flush();
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (std::chrono::steady_clock::now() < deadline) {
    idle();
    if (done()) return true;
    user->waitReadable(2);
  }
  return false;
}

void Desktop::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
  xcb_test_fake_input(*user, type, detail, XCB_CURRENT_TIME, user->root(), static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 0);
  (void)geometry(user->root());
}

void Desktop::point(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, kLeft + x, kTop + y); }

void Desktop::click(int x, int y, std::uint8_t button) {
  point(x, y);
  press(button);
  release(button);
}

std::uint8_t Desktop::keycode(std::uint32_t symbol) {
  const auto* const setup = xcb_get_setup(*user);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const Reply<xcb_get_keyboard_mapping_reply_t> mapping(
      xcb_get_keyboard_mapping_reply(*user, xcb_get_keyboard_mapping(*user, setup->min_keycode, count), nullptr));
  const auto* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (int i = 0; i < xcb_get_keyboard_mapping_keysyms_length(mapping.get()); ++i)
    if (symbols[i] == symbol) return static_cast<std::uint8_t>(setup->min_keycode + i / mapping->keysyms_per_keycode);
  ADD_FAILURE() << "no key for " << symbol;
  return 0;
}

void Desktop::type(std::uint32_t symbol, std::uint32_t held) {
  if (held != 0) keyDown(held);
  keyDown(symbol);
  keyUp(symbol);
  if (held != 0) keyUp(held);
}

void Desktop::destroyHost() {
  xcb_destroy_window(*user, host);
  (void)geometry(user->root());
}

xcb_get_geometry_reply_t Desktop::geometry(xcb_window_t which) {
  const Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(*user, xcb_get_geometry(*user, which), nullptr));
  return reply ? *reply : xcb_get_geometry_reply_t{};
}

std::vector<xcb_window_t> Desktop::childrenOf(xcb_window_t which) {
  const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(*user, xcb_query_tree(*user, which), nullptr));
  if (!tree) return {};
  const auto* const first = xcb_query_tree_children(tree.get());
  return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::uint32_t Desktop::screenPixel(int x, int y) {
  const Reply<xcb_get_image_reply_t> image(
      xcb_get_image_reply(*user,
                          xcb_get_image(*user, XCB_IMAGE_FORMAT_Z_PIXMAP, user->root(), static_cast<std::int16_t>(x),
                                        static_cast<std::int16_t>(y), 1, 1, ~0u),
                          nullptr));
  if (!image) return 0xffffffff;
  const std::uint8_t* const bytes = xcb_get_image_data(image.get());
  return static_cast<std::uint32_t>(bytes[2] << 16 | bytes[1] << 8 | bytes[0]);
}

bool Desktop::hostGot(std::uint8_t type) {
  while (const Event event = user->poll())
    if (eventType(*event) == type) return true;
  return false;
}

int Desktop::openFiles(const std::string& process) {
  int count = 0;
  for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator("/proc/" + process + "/fd")) ++count;
  return count;
}
