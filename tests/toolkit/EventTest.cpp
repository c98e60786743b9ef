// SPDX-License-Identifier: MIT
// How the pointer, drags and keys reach the views.

#include <array>
#include <gtest/gtest.h>

#include "tests/toolkit/Window.h"

namespace {

using namespace VSTGUI;

// Two views side by side, "l" of which wants all of a press and "r", in a container at (100, 0), only the press itself.
struct TwoViews : Window {
  TwoViews() {
    auto* const box = new CViewContainer({100, 0, 200, 100});
    box->addView(right);
    frame->addView(left);
    frame->addView(box);
  }
  std::string log;
  Probe* left = new Probe({0, 0, 100, 100}, kMouseEventHandled, &log, "l");
  Probe* right = new Probe({0, 0, 100, 100}, kMouseDownEventHandledButDontNeedMovedOrUpEvents, &log, "r");
};

TEST(Events, ReachTheViewThatTheyBelongTo) {
  using Words = std::array<const char*, 3>;
  for (const auto& [what, doings, log] : {
           Words{"a handled press keeps the pointer until the release", "press 10 10 move 150 10 release 0 0",
                 "lenter lmove ldown ldrag lup lexit renter "},
           {"one that wants no more gets no moves and no release", "press 150 20 move 10 10 release 0 0 move 11 10",
            "renter rmove rdown rexit lenter lmove "},
           {"leaving the window leaves the view", "move 10 10 leave 0 0", "lenter lmove lexit "},
           {"drags from outside reach what is under them", "dragin 10 10 dragover 20 10 dragover 150 10 drop 160 10",
            "ldragenter ldragmove ldragleave rdragenter rdragmove rdrop "},
       }) {
    TwoViews window;
    window.play(doings);
    EXPECT_EQ(window.log, log) << what;
  }
}

TEST(Events, CarryPlacesOfTheParentAndWordsWithDoubleClicksAndTheAppleKey) {
  TwoViews window;
  auto& user = window.user();
  window.play("click 150 20");
  EXPECT_EQ(window.right->lastPress, CPoint(50, 20));
  user.doubleClick({10, 10});
  EXPECT_EQ(window.left->pressWord, kLButton | kDoubleClick);
  window.play("click 10 10");
  EXPECT_EQ(window.left->pressWord, kLButton) << "a third click begins anew";
  window.play("wait 1000 0 click 10 10");
  EXPECT_EQ(window.left->pressWord, kLButton);
  user.holdModifiers(kApple);
  window.play("press 10 10");
  EXPECT_EQ(window.left->pressWord, kRButton | kApple | kDoubleClick);
  EXPECT_EQ(window.frame->getCurrentMouseButtons(), kRButton | kApple);
  user.dragEnter(window.dragged, {10, 10});
  EXPECT_TRUE(user.drop({10, 10}));
}

TEST(Events, PassViewsThatAreGoneInvisibleOrDisabled) {
  TwoViews window;
  auto* const cover = new Probe({0, 0, 100, 100}, kMouseEventHandled, &window.log, "c");
  window.frame->addView(cover);
  cover->setVisible(false);
  window.play("click 10 10");
  cover->setVisible(true);
  cover->setMouseEnabled(false);
  window.play("click 60 10");
  EXPECT_EQ(window.log, "lenter lmove ldown lup lmove ldown lup ");
  auto* const leaver = new Probe({0, 0, 50, 50}, kMouseEventHandled);
  leaver->whenPressed = [&] { window.frame->removeView(leaver); };
  window.frame->addView(leaver);
  const auto before = window.frame->getNbViews();
  window.play("press 10 10 move 20 10 release 0 0");
  EXPECT_EQ(window.frame->getNbViews(), before - 1);
}

TEST(Events, ADragOutEndsThePressAndKeepsThePackage) {
  Window window;
  auto* const source = new Probe({0, 0, 50, 50}, kMouseEventHandled);
  source->whenDragged = [&] { window.frame->doDrag(std::exchange(window.dragged, nullptr), {0, 0}); };
  window.frame->addView(source);
  window.play("press 10 10 move -5 10");
  EXPECT_EQ(source->log, "enter move down drag up exit ");
  const void* data = nullptr;
  IDataPackage::Type type = IDataPackage::kError;
  ASSERT_NE(window.user().draggedOut(), nullptr);
  EXPECT_EQ(window.user().draggedOut()->getData(0, data, type), 6u);
  EXPECT_STREQ(static_cast<const char*>(data), "/a.mid");
  window.user().endDrag();
}

TEST(Frame, OpensOnAPlatformOnlyAndChangesItsSizeWhenAllAgree) {
  const auto alone = Counted<CFrame>::adopt(new CFrame({0, 0, 10, 10}, nullptr));
  EXPECT_FALSE(alone->open(nullptr));
  CPoint where;
  EXPECT_FALSE(alone->getCurrentMouseLocation(where));
  Window window;
  const auto resized = [&] {
    const bool allowed = window.frame->setSize(300, 150);
    EXPECT_EQ(window.frame->getWidth(), allowed ? 300 : 200);
    return allowed;
  };
  for (bool* const refuses : {&window.refusesSize, &window.user().refusesSize}) {
    *refuses = true;
    EXPECT_FALSE(resized());
    *refuses = false;
  }
  EXPECT_TRUE(resized());
}

}  // namespace
