// SPDX-License-Identifier: MIT
// Menus in popup windows, by mouse and by keys.

#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/toolkit/x11/FrameDesktop.h"
#include "toolkit/popups/COptionMenu.h"

namespace {

using namespace VSTGUI;

// A menu at (10, 10) with "sub" (of "one", "two"), a separator and two columns of checked and plain items.
class X11Menu : public FrameDesktop {
 protected:
  void openMenu() {
    open();
    for (const char* const title : {"one", "two"}) sub->addEntry(title);
    menu->addEntry(sub, "Sub-menu");
    menu->addSeparator();
    menu->addEntry("Not now", -1, CMenuItem::kDisabled);
    menu->addEntry("Checked")->setChecked(true);
    menu->addEntry("Another item");
    menu->addEntry("The last one");
    menu->setNbItemsPerColumn(4);
    frame->addView(menu);
    click(20, 15);
    ASSERT_TRUE(until([&] { return popups().size() == 1; }));
  }
  std::vector<xcb_window_t> popups() {
    auto windows = childrenOf(user->root());
    std::erase_if(windows, [&](xcb_window_t w) {
      return user->property(w, user->atom(Name::kNetWmWindowType)).words() !=
             std::vector<std::uint32_t>{user->atom(Name::kNetWmWindowTypePopupMenu)};
    });
    return windows;
  }
  // A point on the item whose top is at `top` of a popup, in the frame's pixels.
  void pointAt(xcb_window_t popup, int left, int top) {
    const auto place = geometry(popup);
    point(place.x - kLeft + left, place.y - kTop + top);
  }

  Listener listener;
  COptionMenu* sub = new COptionMenu({}, nullptr, 2);
  COptionMenu* menu = new COptionMenu({10, 10, 80, 24}, &listener, 1);
};

TEST_F(X11Menu, IsUsedByMouse) {
  openMenu();
  const auto place = geometry(popups()[0]);
  EXPECT_EQ(place.x, kLeft + 10);
  EXPECT_EQ(place.y, kTop + 24);
  ASSERT_TRUE(until([&] { return screenPixel(place.x + 2, place.y + 2) == 0x282a2e; }));
  pointAt(popups()[0], 20, 12);
  ASSERT_TRUE(until([&] { return popups().size() == 2; })) << "opens after a moment";
  pointAt(popups()[1], 20, 30);
  press();
  release();
  ASSERT_TRUE(until([&] { return !frame->isPopupOpen(); }));
  std::int32_t index = 0;
  EXPECT_EQ(menu->getLastItemMenu(index), sub);
  EXPECT_EQ(index, 1);
  EXPECT_TRUE(until([&] { return popups().empty() && screenPixel(place.x + 2, place.y + 2) == 0xff0000; }))
      << "the frame shows again";
}

TEST_F(X11Menu, IsUsedByKeysThatTheHostDoesntSee) {
  xcb_set_input_focus(*user, XCB_INPUT_FOCUS_PARENT, host, XCB_CURRENT_TIME);
  openMenu();
  type(XKB_KEY_Down);
  type(XKB_KEY_Down);
  type(XKB_KEY_Return);
  ASSERT_TRUE(until([&] { return !frame->isPopupOpen(); }));
  EXPECT_NE(listener.told.find("begin 3 end"), std::string::npos) << listener.told;
  EXPECT_FALSE(hostGot(XCB_KEY_PRESS));
  type(XKB_KEY_a);
  EXPECT_TRUE(until([&] { return hostGot(XCB_KEY_PRESS); })) << "the keyboard is the host's again";
}

TEST_F(X11Menu, ClosesOnAPressElsewhereAndWhenItsWindowHides) {
  openMenu();
  click(400, 400);
  ASSERT_TRUE(until([&] { return !frame->isPopupOpen(); }));
  click(20, 15);
  ASSERT_TRUE(until([&] { return popups().size() == 1; }));
  xcb_unmap_window(*user, host);
  (void)geometry(user->root());
  ASSERT_TRUE(until([&] { return !frame->isPopupOpen(); }));
  EXPECT_EQ(listener.told.find("begin"), std::string::npos);
  EXPECT_TRUE(until([&] { return popups().empty(); }));
}

}  // namespace
