// SPDX-License-Identifier: MIT
// What controls hold and report.

#include <gtest/gtest.h>
#include <thread>

#include "tests/toolkit/Window.h"
#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/controls/CButtons.h"
#include "toolkit/controls/CKnob.h"
#include "toolkit/controls/CSwitches.h"

namespace {

using namespace VSTGUI;

TEST(References, CountOwners) {
  auto* const view = new CView({0, 0, 1, 1});
  auto* const box = new CViewContainer({0, 0, 10, 10});
  box->addView(view);
  EXPECT_EQ(view->getNbReference(), 1) << "the container took the reference over";
  EXPECT_FALSE(box->addView(view)) << "it is in a container already";
  EXPECT_TRUE(view->isAttached());
  box->removeView(view, false);
  EXPECT_FALSE(view->isAttached());
  box->addView(view);
  view->remember();
  box->forget();
  EXPECT_EQ(view->getNbReference(), 1) << "the container has let go of it";
  view->forget();
}

TEST(References, CopiesAreNewObjectsOfTheSameClassAndValues) {
  COnOffButton button({0, 0, 10, 10}, nullptr, 9);
  button.remember();
  button.setMin(-2.0f);
  button.setMax(3.0f);
  button.setDefaultValue(0.5f);
  button.setOldValue(0.25f);
  button.setValue(1.0f);
  const auto copy = Counted<CBaseObject>::adopt(button.newCopy());
  EXPECT_TRUE(copy->isTypeOf("COnOffButton") && copy->isTypeOf("CControl") && copy->isTypeOf("CView"));
  EXPECT_FALSE(copy->isTypeOf("CKickButton"));
  EXPECT_EQ(copy->getNbReference(), 1);
  const auto& same = dynamic_cast<COnOffButton&>(*copy);
  EXPECT_EQ((std::vector{same.getValue(), same.getMin(), same.getMax(), same.getDefaultValue(), same.getOldValue(),
                         same.getValueNormalized()}),
            (std::vector{1.0f, -2.0f, 3.0f, 0.5f, 0.25f, 0.6f}));
  EXPECT_EQ(same.getTag(), 9);
}

TEST(Controls, ReportTheUsersDoings) {
  const auto images = Counted<CBitmap>::adopt(new CBitmap(80, 60));  // three images, each as high as the switch
  struct Case {
    const char* what;
    std::function<CControl*(Listener*)> make;
    const char* doings;
    const char* told;
    float value;  // at the end
  };
  const auto kick = [](Listener* l) { return new CKickButton({0, 0, 20, 20}, l, 1, nullptr); };
  const auto rocker = [](Listener* l) { return new CRockerSwitch({0, 0, 20, 10}, l, 98, 10, nullptr); };
  const auto onOff = [](Listener* l) { return new COnOffButton({0, 0, 20, 20}, l, 1); };
  const auto steps = [&](Listener* l) { return new CHorizontalSwitch({0, 0, 80, 20}, l, 2, images); };
  const auto knob = [](Listener* l) {
    auto* const made = new CKnob({0, 0, 20, 20}, l, 1, nullptr, nullptr);
    made->setDefaultValue(0.25f);
    return made;
  };
  for (const auto& [what, make, doings, told, value] : {
           Case{"follows the pointer", kick, "press 5 5", "over begin ", 1},
           {"also outside", kick, "press 5 5 move 50 5", "over begin ", 0},
           {"is reported once", kick, "press 5 5 move 50 5 move 5 5 release 0 0", "over begin 1 0 end ", 0},
           {"isn't pressed", kick, "press 5 5 move 50 5 release 0 0", "over begin 0 end exit ", 0},
           {"falls back", rocker, "press 4 5 release 0 0", "over begin -1 0 end ", 0},
           {"says nothing on the way", rocker, "press 16 5 move 60 5 move 16 5 move 60 5 release 0 0",
            "over begin 1 0 end exit ", 0},
           {"flips", onOff, "click 5 5 click 5 5 move 50 5", "over begin 1 end begin 0 end exit ", 0},
           {"goes by images", steps, "press 5 5 move 30 5 move 40 5 move 99 5 release 0 0",
            "over begin 0.5 1 end exit ", 1},
           {"is reset by Control", knob, "hold 32 0 click 5 5 click 5 5", "over begin 0.25 end ", 0.25f},
           {"has 200 units of way", knob, "press 5 5 move 55 -45", "over begin 0.5 ", 0.5f},
           {"stays in its range", knob, "press 5 5 move 500 -500 release 0 0", "over begin 1 end exit ", 1},
       }) {
    Window window;
    Listener listener;
    CControl* const control = make(&listener);
    window.frame->addView(control);
    window.play(doings);
    EXPECT_EQ(listener.told, told) << what;
    EXPECT_NEAR(control->getValue(), value, 1e-6f) << what;
  }
}

TEST(Controls, AnswerPressesThatAreTheirs) {
  Window window;
  auto* const knob = new CKnob({0, 0, 20, 20}, nullptr, 1, nullptr, nullptr);
  window.frame->addView(new CKickButton({50, 0, 70, 20}, nullptr, 1, nullptr));
  window.frame->addView(knob);
  EXPECT_EQ(window.user().press({55, 5}, kRButton), kMouseEventNotHandled);
  window.user().release(kRButton);
  window.user().holdModifiers(kControl);
  EXPECT_EQ(window.user().press({5, 5}), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
  EXPECT_FALSE(knob->checkDefaultValue(kLButton | kControl | kShift));
  EXPECT_FALSE(knob->checkDefaultValue(kLButton | kRButton | kControl));
  for (float value : {0.0f, 0.3f, 1.0f}) {
    CPoint at;
    knob->setValue(value);
    knob->valueToPoint(at);
    EXPECT_NEAR(knob->valueFromPoint(at), value, 1e-5f);
  }
}

TEST(Controls, AValueOfAnotherThreadIsDrawnByTheNextIdleAndAlsoIfItCameInTheMidstOfDrawing) {
  struct Late : CControl {
    using CControl::CControl;
    void draw(CDrawContext* context) override {
      if (++drawings == 1) setValue(0.9f);  // after the value was drawn
      CControl::draw(context);
    }
    int drawings = 0;
  };
  Window window;
  auto* const control = new Late({10, 10, 20, 20});
  window.frame->addView(control);
  for (int i = 0; i < 3; ++i) window.frame->idle();
  EXPECT_EQ(control->drawings, 2);
  std::thread([&] { control->setValue(0.7f); }).join();
  EXPECT_TRUE(control->isDirty());
  EXPECT_TRUE(window.user().dirtyRect().isEmpty()) << "no call of the window system";
  window.frame->idle();
  EXPECT_EQ(std::pair(control->drawings, control->getOldValue()), std::pair(3, 0.7f));
  EXPECT_FALSE(control->isDirty());
  std::thread([&] { control->setDirty(); }).join();
  EXPECT_TRUE(control->isDirty());
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
  const auto firedIn = [&](std::uint32_t milliseconds) {
    window.platform.advance(milliseconds);
    return std::exchange(target.fired, 0);
  };
  EXPECT_EQ(firedIn(29), 0);
  EXPECT_EQ(firedIn(61), 3);
  timer->setFireTime(10);
  EXPECT_EQ(firedIn(30), 3);
  timer->stop();
  EXPECT_EQ(firedIn(1000), 0);
}

}  // namespace
