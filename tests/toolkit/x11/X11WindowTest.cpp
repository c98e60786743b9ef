// Real windows on a real server: mouse, keys, sizes, and what happens when windows or the server go away.

#include <array>
#include <csignal>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/toolkit/x11/FrameDesktop.h"
#include "toolkit/popups/COptionMenu.h"
#include "toolkit/x11/Canvas.h"

namespace {

using namespace VSTGUI;

class X11Window : public FrameDesktop {};

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
  EXPECT_EQ(wordOf(1), kLButton | kDoubleClick);
  EXPECT_EQ(wordOf(2), kMButton);
  EXPECT_EQ(wordOf(3), kRButton);
  EXPECT_EQ(wordOf(8), kButton4);
  struct Held {
    std::uint32_t symbol;
    std::int32_t bit;
  };
  for (const auto& [symbol, bit] :
       {Held{XKB_KEY_Shift_L, kShift}, {XKB_KEY_Control_L, kControl}, {XKB_KEY_Alt_L, kAlt}}) {
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
  keyDown(XKB_KEY_Control_L);
  type(XKB_KEY_v);
  keyUp(XKB_KEY_Control_L);
  type(XKB_KEY_Left);
  keyDown(XKB_KEY_Shift_L);
  type(XKB_KEY_b);
  keyUp(XKB_KEY_Shift_L);
  type(XKB_KEY_F1);
  ASSERT_TRUE(until([&] { return view->keys.size() == 7; })) << view->keys.size();
  EXPECT_EQ(view->keys[0].character, 'a');
  EXPECT_EQ(view->keys[1].virt, VKEY_CONTROL);
  EXPECT_EQ(view->keys[2].character, 'v');
  EXPECT_EQ(view->keys[2].modifier, MODIFIER_CONTROL);
  EXPECT_EQ(view->keys[3].virt, VKEY_LEFT);
  EXPECT_EQ(view->keys[5].character, 'B');
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
      if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE)
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
  ASSERT_TRUE(until([&] { return screenPixel(kLeft + 290, kTop + 140) == 0xff0000; }));
  EXPECT_TRUE(frame->setSize(250, 120));
  EXPECT_EQ(geometry(window).width, 250);
}

TEST_F(X11Window, PaintsWhatChangedAndWhatWasHidden) {
  open();
  EXPECT_EQ(screenPixel(kLeft + 5, kTop + 5), 0x0000ffu);
  EXPECT_EQ(screenPixel(kLeft + 100, kTop + 50), 0xff0000u);
  const int draws = view->draws;
  xcb_unmap_window(*user, host);
  xcb_map_window(*user, host);
  ASSERT_TRUE(until([&] { return screenPixel(kLeft + 5, kTop + 5) == 0x0000ff; }));
  EXPECT_EQ(view->draws, draws) << "the picture is kept";
}

TEST_F(X11Window, ShowsItsBackgroundWhereNothingIsPaintedYet) {
  open();
  frame->close();
  frame->setBackgroundColor({32, 64, 200});
  ASSERT_TRUE(frame->open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(host))));
  CPoint where;
  EXPECT_TRUE(frame->getCurrentMouseLocation(where)) << "so that the window is there";
  EXPECT_EQ(screenPixel(kLeft + 100, kTop + 50), 0x2040c8u);
  ASSERT_TRUE(until([&] { return screenPixel(kLeft + 100, kTop + 50) == 0xff0000; }));
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
  EXPECT_EQ(screenPixel(kLeft + 19, kTop + 19), 0x0000ffu);
  EXPECT_EQ(screenPixel(kLeft + 20, kTop + 20), 0xff0000u);
  click(180, 60);
  ASSERT_TRUE(until([&] { return view->lastPress == CPoint(90, 30); }));
  EXPECT_TRUE(frame->setSize(210, 100));
  EXPECT_EQ(geometry(window).width, 420);
}

TEST_F(X11Window, ClosesWithTheHostsWindow) {
  open();
  click(20, 20);
  xcb_destroy_window(*user, host);
  (void)geometry(user->root());
  ASSERT_TRUE(until([&] { return !frame->isOpen(); }));
  EXPECT_EQ(view->getFrame(), frame.get()) << "the views stay";

  host = newHostWindow(kLeft, kTop);
  open();
  point(20, 20);
  press();
  ASSERT_TRUE(until([&] { return view->log.ends_with("down "); }));
  xcb_destroy_window(*user, host);
  point(60, 60);
  ASSERT_TRUE(until([&] { return !frame->isOpen(); })) << "in the middle of a drag";
  release();

  host = newHostWindow(kLeft, kTop);
  open();
  auto* const menu = new COptionMenu({0, 0, 50, 20}, nullptr, 1);
  menu->addEntry("entry");
  frame->addView(menu);
  menu->popup();
  ASSERT_TRUE(frame->isPopupOpen());
  xcb_destroy_window(*user, host);
  (void)geometry(user->root());
  EXPECT_FALSE(frame->setSize(300, 200)) << "before we heard of it";
  ASSERT_TRUE(until([&] { return !frame->isOpen(); }));
  EXPECT_FALSE(frame->isPopupOpen());
}

TEST_F(X11Window, ClosesWhenTheServerGoes) {
  open();
  server.stop();
  frame->invalid();
  CPoint where;
  EXPECT_FALSE(frame->getCurrentMouseLocation(where));
  EXPECT_FALSE(frame->setSize(300, 200));
  frame->setCursor(kCursorHand);
  frame->paintNow({0, 0, 50, 50});
  frame->idle();
  EXPECT_FALSE(frame->isOpen());
}

TEST_F(X11Window, NeedsADisplayAndAParent) {
  const auto opens = [](std::uintptr_t parent) {
    const auto made = Counted<CFrame>::adopt(new CFrame({0, 0, 20, 20}, nullptr));
    const bool open = made->open(reinterpret_cast<void*>(parent));
    made->close();
    return open;
  };
  EXPECT_TRUE(opens(host));
  EXPECT_FALSE(opens(0));
  EXPECT_FALSE(opens(host + 77)) << "no such window";
  server.stop();
  EXPECT_FALSE(opens(host));
}

TEST_F(X11Window, LeavesNothingBehindHoweverOftenItOpens) {
  open();
  frame->close();
  const int before = openFiles();
  for (int i = 0; i < 200; ++i) {
    ASSERT_TRUE(frame->open(asParent(host))) << i;
    frame->setCursor(kCursorVSize);
    frame->idle();
    frame->close();
  }
  EXPECT_EQ(openFiles(), before);
  EXPECT_TRUE(until([&] { return childrenOf(host).empty(); }));
}

TEST_F(X11Window, HasACursorForEachCode) {
  std::vector<xcb_cursor_t> seen;
  for (const CCursorType type :
       {kCursorDefault, kCursorVSize, kCursorSizeAll, kCursorCopy, kCursorNotAllowed, kCursorHand}) {
    const xcb_cursor_t cursor = user->cursor(type);
    EXPECT_NE(cursor, 0u) << type;
    EXPECT_EQ(user->cursor(type), cursor) << "made once";
    EXPECT_EQ(std::count(seen.begin(), seen.end(), cursor), 0);
    seen.push_back(cursor);
  }
  EXPECT_EQ(user->cursor(static_cast<CCursorType>(77)), seen.front());
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
  damage.add({0, 0, 10, 10});
  damage.add({20, 0, 30, 10});
  damage.add({});
  EXPECT_EQ(damage.take(), (std::vector<CRect>{{0, 0, 10, 10}, {20, 0, 30, 10}}));
  EXPECT_TRUE(damage.isEmpty());
  damage.add({0, 0, 10, 10});
  damage.add({20, 0, 30, 10});
  damage.add({5, 5, 25, 8});
  EXPECT_EQ(damage.take(), (std::vector<CRect>{{0, 0, 30, 10}})) << "one that joins two others";
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
