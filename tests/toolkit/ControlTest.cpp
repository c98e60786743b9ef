// What controls hold and report.

#include <cmath>
#include <gtest/gtest.h>
#include <thread>

#include "tests/toolkit/Window.h"
#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/controls/CButtons.h"
#include "toolkit/controls/CKnob.h"
#include "toolkit/controls/CSwitches.h"

namespace {

using namespace VSTGUI;
using Values = std::vector<float>;

struct Watched : CView {
  explicit Watched(bool& gone) : CView({0, 0, 1, 1}), gone_(gone) {}
  ~Watched() override { gone_ = true; }
  bool& gone_;
};

TEST(References, CountOwnersAndDeleteWithTheLast) {
  bool gone = false;
  auto* const view = new Watched(gone);
  EXPECT_EQ(view->getNbReference(), 1);
  auto* const box = new CViewContainer({0, 0, 10, 10});
  box->addView(view);
  EXPECT_EQ(view->getNbReference(), 1) << "the container took the reference over";
  EXPECT_FALSE(box->addView(view)) << "it is in a container already";
  EXPECT_TRUE(view->isAttached());
  box->removeView(view, false);
  EXPECT_FALSE(view->isAttached());
  EXPECT_FALSE(gone);
  box->addView(view);
  view->remember();
  box->forget();
  EXPECT_FALSE(gone);
  view->forget();
  EXPECT_TRUE(gone);
}

TEST(References, CopiesAreNewObjectsOfTheSameClass) {
  COnOffButton button({0, 0, 10, 10}, nullptr, 9);
  button.remember();
  button.setValue(1.0f);
  const auto copy = Counted<CBaseObject>::adopt(button.newCopy());
  EXPECT_TRUE(copy->isTypeOf("COnOffButton") && copy->isTypeOf("CControl") && copy->isTypeOf("CView"));
  EXPECT_FALSE(copy->isTypeOf("CKickButton"));
  EXPECT_EQ(copy->getNbReference(), 1);
  EXPECT_EQ(dynamic_cast<COnOffButton&>(*copy).getValue(), 1.0f);
}

TEST(Controls, TellTheListenerWhereThePointerIs) {
  Window window;
  Listener listener;
  window.frame->addView(new COnOffButton({0, 0, 20, 20}, &listener, 1));
  window.user().moveTo({5, 5});
  window.user().moveTo({50, 5});
  EXPECT_EQ(listener.told, "over exit ");
}

TEST(Controls, AKickButtonReportsOnceAtTheRelease) {
  Window window;
  Listener listener;
  auto* const button = new CKickButton({0, 0, 20, 20}, &listener, 1, nullptr);
  window.frame->addView(button);
  window.user().press({5, 5});
  EXPECT_EQ(button->getValue(), 1.0f);
  EXPECT_EQ(listener.values, Values());
  window.user().moveTo({50, 5});
  EXPECT_EQ(button->getValue(), 0.0f);
  window.user().moveTo({5, 5});
  window.user().release();
  EXPECT_EQ(listener.values, (Values{1.0f, 0.0f}));
  window.user().press({5, 5});
  window.user().moveTo({50, 5});
  window.user().release();
  EXPECT_EQ(listener.values, (Values{1.0f, 0.0f, 0.0f})) << "released outside it was not pressed";
  EXPECT_EQ(window.user().press({5, 5}, kRButton), kMouseEventNotHandled);
}

TEST(Controls, ARockerSwitchHoldsItsHalfAndFallsBack) {
  Window window;
  Listener listener;
  window.frame->addView(new CRockerSwitch({0, 0, 20, 10}, &listener, 98, 10, nullptr));
  window.user().press({4, 5});
  window.user().release();
  window.user().press({16, 5});
  for (const double x : {60, 16, 60}) window.user().moveTo({x, 5});
  window.user().release();
  EXPECT_EQ(listener.values, (Values{-1.0f, 0.0f, 1.0f, 0.0f})) << "nothing on the way out and back";
  EXPECT_EQ(listener.told, "over begin end begin end exit ");
}

TEST(Controls, SwitchesFlipAndStep) {
  Window window;
  Listener listener;
  auto* const button = new COnOffButton({0, 0, 20, 20}, &listener, 1);
  const auto images = Counted<CBitmap>::adopt(new CBitmap(80, 60));  // three images, each as high as the switch
  auto* const cells = new CHorizontalSwitch({100, 0, 180, 20}, &listener, 2, images);
  window.frame->addView(button);
  window.frame->addView(cells);
  window.user().click({5, 5});
  window.user().click({5, 5});
  window.user().press({105, 5});
  window.user().moveTo({130, 5});
  window.user().moveTo({140, 5});
  window.user().moveTo({199, 5});
  window.user().release();
  EXPECT_EQ(listener.values, (Values{1.0f, 0.0f, 0.5f, 1.0f}));
}

TEST(Controls, ControlClickBringsTheDefault) {
  Window window;
  Listener listener;
  auto* const knob = new CKnob({0, 0, 20, 20}, &listener, 1, nullptr, nullptr);
  window.frame->addView(knob);
  knob->setDefaultValue(0.25f);
  window.user().holdModifiers(kControl);
  EXPECT_EQ(window.user().press({5, 5}), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
  window.user().release();
  window.user().click({5, 5});
  EXPECT_EQ(listener.values, Values{0.25f}) << "at the default already there is nothing to report";
  EXPECT_EQ(listener.told, "over begin end ");
  EXPECT_FALSE(knob->checkDefaultValue(kLButton | kControl | kShift));
  EXPECT_FALSE(knob->checkDefaultValue(kLButton | kRButton | kControl));
}

TEST(Controls, AKnobFollowsTheDragInItsRange) {
  Window window;
  Listener listener;
  auto* const knob = new CKnob({0, 0, 20, 20}, &listener, 1, nullptr, nullptr);
  window.frame->addView(knob);
  window.user().press({5, 50 - 45});
  window.user().moveTo({55, -45});  // 50 to the right and 50 up, half of the 200 for the whole range
  EXPECT_NEAR(knob->getValue(), 0.5f, 1e-6f);
  window.user().moveTo({500, -500});
  EXPECT_EQ(knob->getValue(), 1.0f);
  window.user().release();
  for (float value : {0.0f, 0.3f, 1.0f}) {
    CPoint at;
    knob->setValue(value);
    knob->valueToPoint(at);
    EXPECT_NEAR(knob->valueFromPoint(at), value, 1e-5f);
  }
}

TEST(Controls, AValueOfAnotherThreadIsDrawnByTheNextIdle) {
  Window window;
  auto* const control = new CControl({10, 10, 20, 20});
  window.frame->addView(control);
  window.frame->idle();
  EXPECT_TRUE(window.user().dirtyRect().isEmpty());
  std::thread([&] { control->setValue(0.7f); }).join();
  EXPECT_TRUE(control->isDirty());
  EXPECT_TRUE(window.user().dirtyRect().isEmpty()) << "no call of the window system";
  window.frame->idle();
  EXPECT_FALSE(control->isDirty());
  EXPECT_EQ(control->getOldValue(), 0.7f);
  std::thread([&] { control->setDirty(); }).join();
  EXPECT_TRUE(control->isDirty());
}

TEST(Controls, AChangeInTheMidstOfDrawingIsDrawnAgain) {
  class Late : public CControl {
   public:
    using CControl::CControl;
    void draw(CDrawContext* context) override {
      if (++drawings == 1) setValue(0.9f);  // as from another thread, after the value was drawn
      CControl::draw(context);
    }
    int drawings = 0;
  };
  Window window;
  auto* const control = new Late({10, 10, 20, 20});
  window.frame->addView(control);
  window.frame->idle();
  window.frame->idle();
  window.frame->idle();
  EXPECT_EQ(control->drawings, 2);
}

TEST(Timers, FireAtTheirPeriodInVirtualTime) {
  struct Target : CBaseObject {
    CMessageResult notify(CBaseObject*, IdStringPtr message) override {
      fired += message == kMsgTimer;
      return kMessageNotified;
    }
    int fired = 0;
  };
  Window window;
  Target target;
  const auto timer = Counted<CVSTGUITimer>::adopt(new CVSTGUITimer(&target, 30, true));
  window.platform.advance(29);
  EXPECT_EQ(target.fired, 0);
  window.platform.advance(61);
  EXPECT_EQ(target.fired, 3);
  timer->setFireTime(10);
  window.platform.advance(30);
  EXPECT_EQ(target.fired, 6);
  timer->stop();
  window.platform.advance(1000);
  EXPECT_EQ(target.fired, 6);
}

}  // namespace
