// How the pointer, drags and keys reach the views.

#include <gtest/gtest.h>

#include "tests/toolkit/Window.h"
#include "toolkit/controls/CButtons.h"
#include "toolkit/popups/CNewFileSelector.h"

namespace {

using namespace VSTGUI;

struct TwoViews : Window {
  TwoViews() {
    auto* const box = new CViewContainer({100, 0, 200, 100});
    box->addView(right);
    frame->addView(left);
    frame->addView(box);
  }
  Probe* left = new Probe({0, 0, 100, 100}, kMouseEventHandled);
  Probe* right = new Probe({0, 0, 100, 100},  // in a container at (100, 0)
                           kMouseDownEventHandledButDontNeedMovedOrUpEvents);
};

TEST(Events, AHandledPressKeepsThePointerUntilTheRelease) {
  TwoViews window;
  window.user().press({10, 10});
  window.user().moveTo({150, 10});
  EXPECT_EQ(window.right->log, "");
  window.user().release();
  EXPECT_EQ(window.left->log, "enter move down drag up exit ");
  EXPECT_EQ(window.right->log, "enter ");
}

TEST(Events, APressThatWantsNoMoreGetsNoMovesAndNoRelease) {
  TwoViews window;
  window.user().press({150, 20});
  EXPECT_EQ(window.right->lastPress, CPoint(50, 20)) << "a view's points are in its parent's coordinates";
  window.user().moveTo({10, 10});
  window.user().release();
  window.user().moveTo({11, 10});
  EXPECT_EQ(window.right->log, "enter move down exit ");
  EXPECT_EQ(window.left->log, "enter move ");
}

TEST(Events, LeavingTheWindowLeavesTheView) {
  TwoViews window;
  window.user().moveTo({10, 10});
  window.user().leaveWindow();
  EXPECT_EQ(window.left->log, "enter move exit ");
}

TEST(Events, ButtonWordsTellDoubleClicksAndTheAppleKey) {
  TwoViews window;
  auto& user = window.user();
  user.doubleClick({10, 10});
  EXPECT_EQ(window.left->pressWord, kLButton | kDoubleClick);
  user.click({10, 10});
  EXPECT_EQ(window.left->pressWord, kLButton) << "a third click begins anew";
  window.platform.advance(1000);
  user.click({10, 10});
  EXPECT_EQ(window.left->pressWord, kLButton);
  user.holdModifiers(kApple);
  user.press({10, 10});
  EXPECT_EQ(window.left->pressWord, kRButton | kApple | kDoubleClick);
  EXPECT_EQ(window.frame->getCurrentMouseButtons(), kRButton | kApple);
}

TEST(Events, AViewThatGoesAwayInItsOwnPressIsForgottenSafely) {
  class Leaver : public Probe {
   public:
    using Probe::Probe;
    CMouseEventResult onMouseDown(CPoint&, const CButtonState&) override {
      getFrame()->removeView(this);
      return kMouseEventHandled;
    }
  };
  Window window;
  window.frame->addView(new Leaver({0, 0, 50, 50}, kMouseEventHandled));
  window.user().press({10, 10});
  window.user().moveTo({20, 10});
  window.user().release();
  EXPECT_EQ(window.frame->getNbViews(), 0u);
}

TEST(Events, InvisibleAndDisabledViewsLetThePointerThrough) {
  TwoViews window;
  auto* const cover = new Probe({0, 0, 100, 100}, kMouseEventHandled);
  window.frame->addView(cover);
  cover->setVisible(false);
  window.user().click({10, 10});
  cover->setVisible(true);
  cover->setMouseEnabled(false);
  window.user().click({60, 10});
  EXPECT_EQ(cover->log, "");
  EXPECT_EQ(window.left->log, "enter move down up move down up ");
}

TEST(Events, DragsFromOutsideReachTheViewUnderThem) {
  TwoViews window;
  const auto drag = Counted<CDropSource>::adopt(new CDropSource("/a.mid", 6, IDataPackage::kFilePath));
  window.user().dragEnter(drag, {10, 10});
  window.user().dragMove({20, 10});
  window.user().dragMove({150, 10});
  EXPECT_TRUE(window.user().drop({160, 10}));
  EXPECT_EQ(window.left->log, "dragenter dragmove dragleave ");
  EXPECT_EQ(window.right->log, "dragenter dragmove drop ");
}

TEST(Events, ADragOutEndsThePressAndKeepsThePackage) {
  class Source : public Probe {
   public:
    using Probe::Probe;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override {
      if (buttons.isLeftButton()) {
        const auto drag = Counted<CDropSource>::adopt(new CDropSource("/a.mid", 6, IDataPackage::kFilePath));
        getFrame()->doDrag(drag, {0, 0});
      }
      return Probe::onMouseMoved(where, buttons);
    }
  };
  Window window;
  auto* const source = new Source({0, 0, 50, 50}, kMouseEventHandled);
  window.frame->addView(source);
  window.user().press({10, 10});
  window.user().moveTo({-5, 10});
  EXPECT_EQ(source->log, "enter move down drag up exit ");
  const void* data = nullptr;
  IDataPackage::Type type = IDataPackage::kError;
  ASSERT_NE(window.user().draggedOut(), nullptr);
  EXPECT_EQ(window.user().draggedOut()->getData(0, data, type), 6u);
  EXPECT_STREQ(static_cast<const char*>(data), "/a.mid");
  window.user().endDrag();
}

TEST(Events, KeysGoToTheFocusAndItsParents) {
  class KeyView : public CView {
   public:
    using CView::CView;
    std::int32_t onKeyDown(VstKeyCode& key) override {
      got.push_back(static_cast<char>(key.character));
      return key.character == 'y' ? kKeyHandled : kKeyNotHandled;
    }
    void looseFocus() override { got += "-"; }
    void takeFocus() override { got += "+"; }
    std::string got;
  };
  Window window;
  auto* const view = new KeyView({0, 0, 50, 50});
  window.frame->addView(view);
  EXPECT_FALSE(window.user().key('a')) << "without a focus nobody takes keys";
  window.frame->setFocusView(view);
  EXPECT_TRUE(window.user().wantsKeyboard());
  EXPECT_TRUE(window.user().key('y'));
  EXPECT_FALSE(window.user().key('n'));
  window.frame->setFocusView(nullptr);
  EXPECT_EQ(view->got, "+yn-");
  EXPECT_FALSE(window.user().wantsKeyboard());
}

TEST(Frame, DoesNotOpenWithoutADisplay) {
  HeadlessPlatform platform;
  platform.hasDisplay = false;
  const auto frame = Counted<CFrame>::adopt(new CFrame({0, 0, 10, 10}, nullptr));
  EXPECT_FALSE(frame->open(nullptr)) << "no platform at all";
  setPlatform(PlatformType::kDefaultNative, &platform);
  EXPECT_FALSE(frame->open(nullptr));
  setPlatform(PlatformType::kDefaultNative, nullptr);
  CPoint where(7, 7);
  EXPECT_FALSE(frame->getCurrentMouseLocation(where));
  EXPECT_EQ(where, CPoint(7, 7));
  frame->idle();
}

TEST(Frame, ChangesItsSizeOnlyWhenAllAgree) {
  Window window;
  CRect size;
  window.refusesSize = true;
  EXPECT_FALSE(window.frame->setSize(300, 150));
  window.refusesSize = false;
  window.user().refusesSize = true;
  EXPECT_FALSE(window.frame->setSize(300, 150));
  window.frame->getSize(size);
  EXPECT_EQ(size, CRect(0, 0, 200, 100));
  window.user().refusesSize = false;
  EXPECT_TRUE(window.frame->setSize(300, 150));
  window.frame->getSize(size);
  EXPECT_EQ(size, CRect(0, 0, 300, 150));
}

}  // namespace
