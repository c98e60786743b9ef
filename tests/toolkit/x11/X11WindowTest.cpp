// SPDX-License-Identifier: MIT
// Real windows on a real server: mouse, keys, sizes, and what happens when windows or the server go away.

#include <array>
#include <csignal>
#include <set>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/toolkit/x11/FrameDesktop.h"
#include "toolkit/popups/COptionMenu.h"
#include "toolkit/x11/Canvas.h"

namespace {

using namespace VSTGUI;

class X11Window : public FrameDesktop {
 protected:
  // Waits for a pixel of the host's window: what was painted takes its time to get to the screen.
  bool shows(int x, int y, std::uint32_t rgb) {
    return until([=, this] { return screenPixel(kLeft + x, kTop + y) == rgb; });
  }
};

TEST_F(X11Window, ReportsThePointer) {
  open();
  point(20, 30);
  ASSERT_TRUE(until([&] { return view->log.starts_with("enter move "); })) << view->log;
  press();
  point(120, 50);
  ASSERT_TRUE(until([&] { return view->lastMove == CPoint(120, 50); }));
  EXPECT_EQ(view->lastPress, CPoint(20, 30));
  EXPECT_EQ(view->pressWord, kLButton);
  CPoint where;
  EXPECT_TRUE(frame->getCurrentMouseLocation(where));
  EXPECT_EQ(where, CPoint(120, 50));
  EXPECT_EQ(frame->getCurrentMouseButtons(), kLButton);
  point(-30, 50);
  ASSERT_TRUE(until([&] { return view->lastMove == CPoint(-30, 50); })) << "a drag goes on outside";
  release();
  ASSERT_TRUE(until([&] { return view->log.ends_with("up exit "); })) << view->log;
  for (const std::uint8_t button : std::array<std::uint8_t, 3>{4, 4, 5}) click(50, 50, button);
  ASSERT_TRUE(until([&] { return view->wheel == 1; }));
}

TEST_F(X11Window, ReportsButtonsModifiersAndDoubleClicks) {
  open();
  const auto wordOf = [&](std::uint8_t button) {
    view->log.clear();
    press(button);
    release(button);
    EXPECT_TRUE(until([&] { return view->log.ends_with("up "); })) << view->log;
    return view->pressWord;
  };
  point(20, 20);
  EXPECT_EQ(wordOf(1), kLButton);
  int presses = 1;  // on a slow machine two may be too far apart
  while (wordOf(1) != (kLButton | kDoubleClick) && ++presses < 100) {
  }
  EXPECT_LT(presses, 100);
  for (const auto& [button, bit] : {std::pair{2, kMButton}, {3, kRButton}, {8, kButton4}, {9, kButton5}})
    EXPECT_EQ(wordOf(static_cast<std::uint8_t>(button)), bit);
  for (const auto& [symbol, bit] : {std::pair<std::uint32_t, std::int32_t>{XKB_KEY_Shift_L, kShift},
                                    {XKB_KEY_Control_L, kControl},
                                    {XKB_KEY_Alt_L, kAlt}}) {
    keyDown(symbol);
    EXPECT_EQ(wordOf(1) & ~kDoubleClick, kLButton | bit);
    EXPECT_EQ(frame->getCurrentMouseButtons(), bit);
    keyUp(symbol);
  }
}

TEST_F(X11Window, TakesKeysWhileAViewHasTheFocusAndLeavesThemToTheHostOtherwise) {
  open();
  point(20, 20);
  xcb_set_input_focus(*user, XCB_INPUT_FOCUS_PARENT, host, XCB_CURRENT_TIME);
  type(XKB_KEY_a);
  ASSERT_TRUE(until([&] { return hostGot(XCB_KEY_PRESS); })) << "though the pointer is over our window";
  click(20, 20);
  ASSERT_TRUE(until([&] { return frame->getFocusView() == view; }));
  type(XKB_KEY_a);
  type(XKB_KEY_v, XKB_KEY_Control_L);
  type(XKB_KEY_Left);
  type(XKB_KEY_b, XKB_KEY_Shift_L);
  type(XKB_KEY_F1);
  ASSERT_TRUE(until([&] { return view->keys.size() == 7; })) << view->keys.size();
  const VstKeyCode wanted[] = {{'a', 0, 0},       {0, VKEY_CONTROL, 0}, {'v', 0, MODIFIER_CONTROL},
                               {0, VKEY_LEFT, 0}, {0, VKEY_SHIFT, 0},   {'B', 0, MODIFIER_SHIFT},
                               {0, VKEY_F1, 0}};
  for (std::size_t i = 0; i < std::size(wanted); ++i) {
    EXPECT_EQ(view->keys[i].character, wanted[i].character) << i;
    EXPECT_EQ(view->keys[i].virt, wanted[i].virt) << i;
    EXPECT_EQ(view->keys[i].modifier, wanted[i].modifier) << i;
  }
  EXPECT_TRUE(until([&] { return hostGot(XCB_KEY_PRESS); })) << "F1 wasn't wanted";
  frame->setFocusView(nullptr);
  const Reply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(*user, xcb_get_input_focus(*user), nullptr));
  EXPECT_EQ(focus->focus, host);
}

TEST_F(X11Window, FollowsTheEmbeddingProtocol) {
  open();
  const auto info = user->property(window, user->atom(Name::kXembedInfo)).words();
  EXPECT_EQ(info, (std::vector<std::uint32_t>{0, 1}));
  user->sendMessage(window, window, user->atom(Name::kXembed), {0, 0, 0, host, 0});
  user->flush();
  click(20, 20);
  bool asked = false;
  EXPECT_TRUE(until([&] {
    while (const Event event = user->poll())
      if (eventType(*event) == XCB_CLIENT_MESSAGE)
        asked = asked || eventAs<xcb_client_message_event_t>(*event).data.data32[1] == 3;
    return asked;
  })) << "for the focus";
}

TEST_F(X11Window, ResizesTheHostsWindowWithItsOwn) {
  open();
  EXPECT_TRUE(frame->setSize(300, 150));
  EXPECT_EQ(geometry(window).width, 300);
  ASSERT_TRUE(until([&] { return geometry(host).width == 300 && geometry(host).height == 150; }));
  EXPECT_FALSE(frame->setSize(1e6, 100)) << "more than a window can have";
  EXPECT_EQ(frame->getWidth(), 300);
  const std::array<std::uint32_t, 2> larger{500, 400};
  xcb_configure_window(*user, host, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, larger.data());
  ASSERT_TRUE(until([&] { return geometry(host).width == 500; }));
  EXPECT_EQ(geometry(window).width, 300) << "the host may have other things there";
  view->setViewSize({0, 0, 300, 150});
  ASSERT_TRUE(shows(290, 140, 0xff0000));
  EXPECT_TRUE(frame->setSize(250, 120));
  EXPECT_EQ(geometry(window).width, 250);
}

TEST_F(X11Window, PaintsWhatChangedAndWhatWasHiddenOverItsBackground) {
  open();
  EXPECT_TRUE(shows(5, 5, 0x0000ff) && shows(100, 50, 0xff0000));
  const int draws = view->draws;
  xcb_unmap_window(*user, host);
  xcb_map_window(*user, host);
  ASSERT_TRUE(shows(5, 5, 0x0000ff));
  EXPECT_EQ(view->draws, draws) << "the picture is kept";
  frame->close();
  frame->setBackgroundColor({32, 64, 200});
  ASSERT_TRUE(frame->open(asParent(host)));
  CPoint where;
  EXPECT_TRUE(frame->getCurrentMouseLocation(where)) << "so that the window is there";
  EXPECT_EQ(screenPixel(kLeft + 100, kTop + 50), 0x2040c8u);
  ASSERT_TRUE(shows(100, 50, 0xff0000));
}

TEST_F(X11Window, IsDrawnLargeOnFineScreens) {
  const std::string resources = "Xft.antialias:\t1\nXft.dpi:\t144\n";
  user->setProperty(user->root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, resources);
  (void)geometry(user->root());
  open();
  EXPECT_EQ(frame->getScaleFactor(), 1.5);
  EXPECT_EQ(geometry(window).width, 300);
  frame->close();
  ::setenv("MODRIFT_SCALE", "2", 1);
  EXPECT_EQ(platform.getScaleFactor(), 2.0);
  open();
  EXPECT_EQ(geometry(window).width, 400);
  EXPECT_EQ(geometry(window).height, 200);
  EXPECT_TRUE(shows(19, 19, 0x0000ff) && shows(20, 20, 0xff0000));
  click(180, 60);
  ASSERT_TRUE(until([&] { return view->lastPress == CPoint(90, 30); }));
  EXPECT_TRUE(frame->setSize(210, 100));
  EXPECT_EQ(geometry(window).width, 420);
}

TEST_F(X11Window, ClosesWithTheHostsWindow) {
  for (const bool withMenu : {false, true}) {
    open();
    auto* const menu = new COptionMenu({0, 0, 50, 20}, nullptr, 1);
    menu->addEntry("entry");
    frame->addView(menu);
    point(90, 20);
    if (!withMenu) press();
    ASSERT_TRUE(withMenu ? menu->popup() : until([&] { return view->log.ends_with("down "); }));
    destroyHost();
    EXPECT_FALSE(frame->setSize(300, 200)) << "before we heard of it";
    point(60, 60);
    ASSERT_TRUE(until([&] { return !frame->isOpen(); }));
    EXPECT_FALSE(frame->isPopupOpen());
    EXPECT_EQ(view->getFrame(), frame.get()) << "the views stay";
    release();
    host = newHostWindow(kLeft, kTop);
  }
}

TEST_F(X11Window, NeedsADisplayAndAParentAndClosesWhenTheServerGoes) {
  const auto opens = [](std::uintptr_t parent) {
    const auto made = Counted<CFrame>::adopt(new CFrame({0, 0, 20, 20}, nullptr));
    const bool isOpen = made->open(reinterpret_cast<void*>(parent));
    made->close();
    return isOpen;
  };
  EXPECT_TRUE(opens(host));
  EXPECT_FALSE(opens(0));
  EXPECT_FALSE(opens(host + 77)) << "no such window";
  open();
  server.stop();
  ::setenv("DISPLAY", "", 1);  // another test's server may have the number by now
  EXPECT_FALSE(opens(host));
  frame->invalid();
  CPoint where;
  EXPECT_FALSE(frame->getCurrentMouseLocation(where));
  EXPECT_FALSE(frame->setSize(300, 200));
  frame->setCursor(kCursorHand);
  frame->paintNow({0, 0, 50, 50});
  frame->idle();
  EXPECT_FALSE(frame->isOpen());
}

TEST_F(X11Window, HasACursorForEachCode) {
  std::set<xcb_cursor_t> seen;
  for (const CCursorType type :
       {kCursorDefault, kCursorVSize, kCursorSizeAll, kCursorCopy, kCursorNotAllowed, kCursorHand}) {
    EXPECT_TRUE(seen.insert(user->cursor(type)).second) << type;
    EXPECT_TRUE(seen.contains(user->cursor(type))) << "made once";
  }
  EXPECT_FALSE(seen.contains(XCB_CURSOR_NONE));
  EXPECT_EQ(user->cursor(static_cast<CCursorType>(77)), user->cursor(kCursorDefault));
}

TEST(X11Signals, DontEndTheHostWhenTheServerGoesInTheMiddleOfAWrite) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ::close(ends[0]);
  {
    const X11::NoPipeSignal guard;
    EXPECT_EQ(::write(ends[1], "x", 1), -1);
  }
  ::close(ends[1]);
  sigset_t pending;
  sigpending(&pending);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST(X11Damage, KeepsRectanglesWholeAndFew) {
  X11::Damage damage;
  const auto after = [&](const std::vector<CRect>& added) {
    for (const CRect& rect : added) damage.add(rect);
    return damage.take();
  };
  EXPECT_EQ(after({{0, 0, 10, 10}, {20, 0, 30, 10}, {}}), (std::vector<CRect>{{0, 0, 10, 10}, {20, 0, 30, 10}}));
  EXPECT_TRUE(damage.isEmpty());
  EXPECT_EQ(after({{0, 0, 10, 10}, {20, 0, 30, 10}, {5, 5, 25, 8}}), (std::vector<CRect>{{0, 0, 30, 10}}));
  EXPECT_EQ(after({{0, 20, 10, 30}, {0, 0, 30, 10}, {25, 5, 28, 35}}), (std::vector<CRect>{{0, 0, 30, 35}}))
      << "which reaches an earlier one only once it has grown";
  for (int i = 0; i < 100; ++i) damage.add({i * 10.0, 0, i * 10.0 + 5, 5});
  const auto rects = damage.take();
  EXPECT_LE(rects.size(), 12u);
  EXPECT_EQ(rects.front().left, 0);
  EXPECT_EQ(rects.back().right, 995);
}

TEST(X11Scale, ReadsTheResourcesAsTheyCome) {
  EXPECT_EQ(X11::dotsPerInch("Xft.dpi:\t192\n"), 192.0);
  EXPECT_EQ(X11::dotsPerInch("a:1\nXft.dpi: 120.5"), 120.5);
  for (const char* const none : {"", "Xft.dpi:", "Xft.dpi:\tno", "Xft.dpi:\t-5", "Xft.dpi:\tinf", "myXft.dpi:\t100"})
    EXPECT_FALSE(X11::dotsPerInch(none)) << none;
}

}  // namespace
