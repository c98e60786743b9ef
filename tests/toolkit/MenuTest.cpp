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
  // A point on an item of the popup `level`.
  CPoint on(std::size_t level, int item) {
    static const double tops[] = {4, 23, 30, 49};
    const CRect popup = user().popups().at(level);
    return {popup.left + 20, popup.top + (level == 0 ? tops[item] : 4 + 19 * item) + 5};
  }
  Listener listener;
  COptionMenu* sub = new COptionMenu({}, nullptr, 83);
  COptionMenu* menu = new COptionMenu({10, 10, 80, 24}, &listener, 83);
};

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
  EXPECT_FALSE(menu.isCheckEntry(0));
  EXPECT_TRUE(menu.isCheckEntry(2));
  EXPECT_TRUE(menu.removeEntry(0));
  EXPECT_EQ(menu.getCurrentIndex(), 1);
  EXPECT_EQ(gone, 0);
  menu.removeAllEntry();
  EXPECT_EQ(gone, 1) << "sub-menus go with their items";
  EXPECT_EQ(menu.getCurrent(), nullptr);
}

// As an editor builds menus of folders out of shells that it keeps, and takes all down again.
TEST(MenuItems, LeaveShellsThatWereRememberedToTheirKeeper) {
  for (const bool menuFirst : {true, false}) {
    int gone = 0;
    std::vector<COptionMenu*> shells(24);
    for (COptionMenu*& shell : shells) shell = new Watched(gone);
    auto* const top = new COptionMenu({}, nullptr, 83);
    const auto add = [](COptionMenu* menu, COptionMenu* shell) {
      shell->remember();
      menu->addEntry(shell, "folder");
    };
    for (std::size_t i = 0; i < 10; ++i) add(top, shells[i]);
    for (std::size_t i = 10; i < 15; ++i) add(shells[i - 10], shells[i]);
    top->addEntry(new Watched(gone), "nobody else's");
    if (menuFirst) {
      top->removeAllEntry();
      for (COptionMenu* const shell : shells) shell->removeAllEntry();
      EXPECT_EQ(gone, 1);
      for (const COptionMenu* const shell : shells) EXPECT_EQ(shell->getNbReference(), 1);
    }
    for (COptionMenu* const shell : shells) shell->forget();
    top->forget();
    EXPECT_EQ(gone, 25);
  }
}

TEST(MenuPopups, ReportTheItemThatWasClicked) {
  MenuWindow window;
  auto& user = window.user();
  std::int32_t index = 0;
  EXPECT_EQ(window.menu->getLastItemMenu(index), nullptr);
  user.click({15, 15});
  ASSERT_EQ(user.popups().size(), 1u) << "a click leaves it open";
  EXPECT_EQ(user.popups()[0].left, 10);
  EXPECT_EQ(user.popups()[0].top, 24);
  user.click(window.on(0, 2));
  EXPECT_TRUE(window.frame->isPopupOpen()) << "a disabled item can't be chosen";
  user.click(window.on(0, 3));
  EXPECT_FALSE(window.frame->isPopupOpen());
  EXPECT_EQ(user.popups().size(), 0u);
  EXPECT_EQ(window.listener.values, std::vector<float>{3.0f});
  EXPECT_EQ(window.menu->getLastItemMenu(index), window.menu);
  EXPECT_EQ(index, 3);
}

TEST(MenuPopups, OpenSubMenusAfterAMomentAndReportThem) {
  MenuWindow window;
  auto& user = window.user();
  user.press({15, 15});
  user.moveTo(window.on(0, 0));
  EXPECT_EQ(user.popups().size(), 1u);
  window.platform.advance(200);
  ASSERT_EQ(user.popups().size(), 2u);
  user.moveTo(window.on(1, 1));
  user.release();  // one press, dragged to the item
  std::int32_t index = 0;
  EXPECT_EQ(window.menu->getLastItemMenu(index), window.sub);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(window.menu->getLastResult(), 1);
  EXPECT_EQ(window.listener.values.size(), 1u);
}

TEST(MenuPopups, CloseWithoutAReport) {
  MenuWindow window;
  auto& user = window.user();
  user.click({15, 15});
  user.click({190, 90});
  EXPECT_FALSE(window.frame->isPopupOpen());
  user.click({15, 15});
  EXPECT_TRUE(user.key(0, VKEY_ESCAPE));
  EXPECT_FALSE(window.frame->isPopupOpen());
  user.click({15, 15});
  user.activate(false);
  EXPECT_FALSE(window.frame->isPopupOpen());
  user.click({15, 15});
  window.frame->removeView(window.menu);
  EXPECT_FALSE(window.frame->isPopupOpen());
  EXPECT_TRUE(window.listener.values.empty());
}

TEST(MenuPopups, WorkByKeys) {
  MenuWindow window;
  auto& user = window.user();
  user.click({15, 15});
  user.key(0, VKEY_DOWN);   // "sub"
  user.key(0, VKEY_RIGHT);  // into it, on "one"
  ASSERT_EQ(user.popups().size(), 2u);
  user.key('t');
  user.key(0, VKEY_RETURN);
  std::int32_t index = 0;
  EXPECT_EQ(window.menu->getLastItemMenu(index), window.sub);
  EXPECT_EQ(index, 1);
  user.click({15, 15});
  user.key(0, VKEY_DOWN);
  user.key(0, VKEY_DOWN);  // past the separator and the disabled item
  user.key(0, VKEY_RETURN);
  EXPECT_EQ(window.menu->getLastItemMenu(index), window.menu);
  EXPECT_EQ(index, 3);
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
  EXPECT_LE(small.getHeight(), 400);
  EXPECT_EQ(small.getWidth(), 2 * 60 + 8);
  EXPECT_GE(small.top, 0);
  EXPECT_LE(small.bottom, 400);
}

TEST(MenuPopups, ShowOnThePicture) {
  MenuWindow window;
  const CColor before = window.user().pixel(20, 28);
  window.user().click({15, 15});
  EXPECT_NE(window.user().pixel(20, 28), before);
  window.user().moveTo(window.on(0, 3));
  const CPoint item = window.on(0, 3);
  EXPECT_GT(window.user().pixel(static_cast<int>(item.x) - 15, static_cast<int>(item.y)).blue, 150) << "lit";
}

}  // namespace
