// SPDX-License-Identifier: MIT
// Menus: their items, and the popup under pointer and keyboard.

#include <gtest/gtest.h>
#include <vector>

#include "tests/toolkit/Window.h"
#include "toolkit/popups/COptionMenu.h"

namespace {

using namespace VSTGUI;

// A menu at (10, 10) with "sub" (of "one", "two"), a separator, "off" (disabled) and "plain".
struct MenuWindow : Window {
  MenuWindow() {
    sub->addEntry("one");
    sub->addEntry("two");
    menu->addEntry(sub, "sub");
    menu->addSeparator();
    menu->addEntry("off", -1, CMenuItem::kDisabled);
    menu->addEntry("plain");
    frame->addView(menu);
  }
  void open() { play("click 15 15"); }
  // A point on an item of the popup `level`.
  CPoint on(std::size_t level, int item) {
    static const double tops[] = {4, 23, 30, 49};
    const CRect popup = user().popups().at(level);
    return {popup.left + 20, popup.top + (level == 0 ? tops[item] : 4 + 19 * item) + 5};
  }
  void keys(const std::vector<std::uint8_t>& virts) {
    for (const std::uint8_t virt : virts) user().key(0, virt);
  }
  // The menu that was used last, and the item's index in it.
  std::pair<COptionMenu*, std::int32_t> chosen() {
    std::int32_t index = 0;
    COptionMenu* const used = menu->getLastItemMenu(index);
    return {used, index};
  }
  Listener listener;
  COptionMenu* sub = new COptionMenu({}, nullptr, 83);
  COptionMenu* menu = new COptionMenu({10, 10, 80, 24}, &listener, 83);
};
using Choice = std::pair<COptionMenu*, std::int32_t>;

// Counts the ends of its kind.
struct Watched : COptionMenu {
  explicit Watched(int& ends) : COptionMenu({}, nullptr, 0), ends_(ends) {}
  ~Watched() override { ++ends_; }
  int& ends_;
};

TEST(MenuItems, AreFoundMovedMarkedAndRemoved) {
  int gone = 0;
  COptionMenu menu({}, nullptr, 0);
  menu.addEntry("b");
  menu.addEntry("a", 0);
  menu.addSeparator(1);
  menu.addEntry(new Watched(gone), "sub");
  EXPECT_EQ(menu.getNbEntries(), 4);
  EXPECT_STREQ(menu.getEntry(0)->getTitle(), "a");
  EXPECT_EQ(menu.getEntry(0)->getSubmenu(), nullptr);
  EXPECT_EQ(menu.getEntry(4), nullptr);
  EXPECT_FALSE(menu.setCurrent(1)) << "a separator can't be current";
  EXPECT_TRUE(menu.setCurrent(1, false));
  EXPECT_EQ(menu.getCurrentIndex(true), 2);
  EXPECT_EQ(menu.getCurrentIndex(false), 1);
  menu.checkEntry(0, true);
  menu.checkEntryAlone(2);
  EXPECT_TRUE(!menu.isCheckEntry(0) && menu.isCheckEntry(2));
  EXPECT_TRUE(menu.removeEntry(0));
  EXPECT_EQ(menu.getCurrentIndex(), 1);
  EXPECT_EQ(gone, 0);
  menu.removeAllEntry();
  EXPECT_EQ(gone, 1) << "sub-menus go with their items";
  EXPECT_EQ(menu.getCurrent(), nullptr);
}

// As an editor builds menus of folders out of shells that it keeps, and takes all down again.
TEST(MenuItems, LeaveSubMenusAloneThatSomebodyElseOwnsToo) {
  for (const bool menuFirst : {true, false}) {
    int gone = 0;
    auto* const top = new COptionMenu({}, nullptr, 83);
    std::vector<COptionMenu*> shells(3);  // two in the menu, one in the other
    for (COptionMenu*& shell : shells) shell = new Watched(gone);
    for (std::size_t i = 0; i < 3; ++i) {
      shells[i]->remember();
      (i < 2 ? top : shells[0])->addEntry(shells[i], "folder");
    }
    top->addEntry(new Watched(gone), "nobody else's");
    if (menuFirst) {
      top->removeAllEntry();
      shells[0]->removeAllEntry();
      EXPECT_EQ(gone, 1);
    }
    for (COptionMenu* const shell : shells) {
      EXPECT_EQ(shell->getNbReference(), menuFirst ? 1 : 2);
      shell->forget();
    }
    top->forget();
    EXPECT_EQ(gone, 4);
  }
}

TEST(MenuPopups, ReportTheItemThatWasClicked) {
  MenuWindow window;
  auto& user = window.user();
  EXPECT_EQ(window.chosen(), Choice(nullptr, -1));
  const CColor before = user.pixel(20, 28);
  window.open();
  ASSERT_EQ(user.popups().size(), 1u) << "a click leaves it open";
  EXPECT_EQ(user.popups()[0].getTopLeft(), CPoint(10, 24));
  EXPECT_NE(user.pixel(20, 28), before) << "it shows";
  user.click(window.on(0, 2));
  EXPECT_TRUE(window.frame->isPopupOpen()) << "a disabled item can't be chosen";
  const CPoint plain = window.on(0, 3);
  user.moveTo(plain);
  EXPECT_GT(user.pixel(static_cast<int>(plain.x) - 15, static_cast<int>(plain.y)).blue, 150) << "lit";
  user.click(plain);
  EXPECT_FALSE(window.frame->isPopupOpen());
  EXPECT_EQ(user.popups().size(), 0u);
  EXPECT_EQ(window.listener.told, "over begin 3 end ");
  EXPECT_EQ(window.chosen(), Choice(window.menu, 3));
}

TEST(MenuPopups, OpenSubMenusAfterAMomentAndReportThem) {
  MenuWindow window;
  auto& user = window.user();
  window.play("press 15 15");
  user.moveTo(window.on(0, 0));
  EXPECT_EQ(user.popups().size(), 1u);
  window.platform.advance(200);
  ASSERT_EQ(user.popups().size(), 2u);
  user.moveTo(window.on(1, 1));
  user.release();  // one press, dragged to the item
  EXPECT_EQ(window.chosen(), Choice(window.sub, 1));
  EXPECT_EQ(window.menu->getLastResult(), 1);
  EXPECT_EQ(window.listener.told, "over begin 0 end ") << "the value is an index in the menu itself";
  window.platform.workArea = {0, 0, 200, 60};
  window.open();
  EXPECT_EQ(user.popups().size(), 1u) << "a click chooses nothing, though the popup has come under the pointer";
}

TEST(MenuPopups, CloseWithoutAReport) {
  for (const std::function<void(MenuWindow&)>& leave : std::vector<std::function<void(MenuWindow&)>>{
           [](MenuWindow& w) { w.play("click 190 90"); }, [](MenuWindow& w) { w.keys({VKEY_ESCAPE}); },
           [](MenuWindow& w) { w.user().activate(false); }, [](MenuWindow& w) { w.frame->removeView(w.menu); }}) {
    MenuWindow window;
    window.open();
    EXPECT_FALSE(window.menu->popup()) << "one at a time";
    EXPECT_TRUE(window.user().wantsKeyboard());
    leave(window);
    EXPECT_FALSE(window.frame->isPopupOpen() || window.user().wantsKeyboard());
    EXPECT_EQ(window.listener.told.find("begin"), std::string::npos);
  }
}

TEST(MenuPopups, WorkByKeys) {
  MenuWindow window;
  window.open();
  window.keys({VKEY_DOWN, VKEY_RIGHT});  // "sub", and into it, on "one"
  ASSERT_EQ(window.user().popups().size(), 2u);
  window.user().key('t');
  window.keys({VKEY_RETURN});
  EXPECT_EQ(window.chosen(), Choice(window.sub, 1));
  window.open();
  window.keys({VKEY_DOWN, VKEY_DOWN, VKEY_RETURN});  // past the separator and the disabled item
  EXPECT_EQ(window.chosen(), Choice(window.menu, 3));
}

TEST(MenuPopups, BreakIntoColumnsAndStayOnTheScreen) {
  Window window;
  auto* const menu = new COptionMenu({10, 10, 80, 24}, nullptr, 77);
  window.frame->addView(menu);
  for (int i = 0; i < 40; ++i) menu->addEntry("i");
  const auto popupOf = [&](int perColumn) {
    menu->setNbItemsPerColumn(perColumn);
    menu->popup();
    const CRect rect = window.user().popups().at(0);
    window.frame->closePopup();
    return rect;
  };
  EXPECT_EQ(popupOf(18).getHeight(), 18 * 19 + 8);
  EXPECT_EQ(popupOf(18).getWidth(), 3 * 60 + 8);
  EXPECT_EQ(popupOf(-1).getHeight(), 40 * 19 + 8);
  window.platform.workArea = {0, 0, 200, 400};
  const CRect small = popupOf(-1);
  EXPECT_EQ(small.getWidth(), 2 * 60 + 8);
  EXPECT_TRUE(small.top >= 0 && small.bottom <= 400);
}

}  // namespace
