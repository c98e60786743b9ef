// SPDX-License-Identifier: MIT
// The editor as a host opens, resizes and closes it, on the platform in memory.
#include <atomic>
#include <cairo.h>
#include <gtest/gtest.h>
#include <span>
#include <thread>

#include "editor/controls/ResizeControl.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"
#include "tests/effect/TestHost.h"
#include "toolkit/headless/HeadlessPlatform.h"

using namespace model;

namespace {

using VSTGUI::HeadlessFrame;
using VSTGUI::HeadlessPlatform;

const std::pair<int, int> kFreshSize(editor::kReferenceWidth, editor::kReferenceHeight);

class Shell : public testing::Test {
 protected:
  Shell() {
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform_);
    gui_ = static_cast<LFOGUI*>(createEditor(&rig_->fx()));
    rig_->playOnes(64);  // points are parameters once audio has run
  }
  ~Shell() override {
    rig_.reset();
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, nullptr);
  }

  bool open() { return rig_->call(effEditOpen) != 0; }
  void idle() { rig_->call(effEditIdle); }
  void close() { rig_->call(effEditClose); }
  HeadlessFrame& window() { return *platform_.frames().front(); }

  // The size that hosts are told, and that of the open window.
  std::pair<int, int> rectSize() {
    ERect* rect = nullptr;
    EXPECT_EQ(rig_->call(effEditGetRect, 0, 0, &rect), 1);
    return {rect->right - rect->left, rect->bottom - rect->top};
  }
  std::pair<int, int> windowSize() {
    _cairo_surface* const surface = window().picture();
    return {cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)};
  }

  std::vector<unsigned char> picture() {
    idle();
    _cairo_surface* const surface = window().picture();
    const auto size = static_cast<std::size_t>(cairo_image_surface_get_height(surface)) *
                      static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    const auto pixels = std::span(cairo_image_surface_get_data(surface), size);
    return {pixels.begin(), pixels.end()};
  }

  void resize(double width, double height) {
    gui_->resizeTo(width, height);
    platform_.advance(static_cast<std::uint32_t>(rig_->fx().timerInterval));
  }

  HeadlessPlatform platform_;
  std::unique_ptr<EffectRig> rig_ = std::make_unique<EffectRig>();
  LFOGUI* gui_ = nullptr;  // the effect's
};

TEST_F(Shell, OpensAndClosesAsOftenAsTheHostWishesWhileItIsAutomated) {
  EXPECT_TRUE(rig_->record()->flags & effFlagsHasEditor);
  platform_.hasDisplay = false;
  EXPECT_FALSE(open());
  idle();
  close();
  EXPECT_EQ(rectSize(), kFreshSize);
  platform_.hasDisplay = true;
  std::atomic<bool> ended = false;
  std::thread host([&] {  // all that hosts set, and the notice of a new window size
    for (int n = 0; !ended; ++n) {
      rig_->set(n % kHostParameters, 0.01 * (n % 100));
      if (n % 1000 == 0) gui_->setParameter(kNoticeEditorSize, kNoticeEditorSizeValue);
    }
  });
  for (int n = 0; n < 200; ++n) {
    ASSERT_TRUE(open()) << n;
    idle();
    if (n % 4 == 0) resize(600 + n, 300 + n);
    platform_.advance(100);
    close();
    ASSERT_TRUE(platform_.frames().empty());
    platform_.advance(100);  // no timer is left that would run on a closed window
  }
  ended = true;
  host.join();
  EXPECT_TRUE(open());
  EXPECT_TRUE(open()) << "an open one opens anew";
  EXPECT_EQ(platform_.frames().size(), 1u);
  rig_.reset();  // a host may forget to close
  EXPECT_TRUE(platform_.frames().empty());
}

TEST_F(Shell, IsBuiltAnewForEachSize) {
  open();
  std::vector<std::pair<int, int>>& asked = rig_->host.windowSizes;
  for (int n = 1; n <= 50; ++n) {
    resize(700 + 7 * n, 350 + 3 * n);
    ASSERT_EQ(windowSize(), std::pair(700 + 7 * n, 350 + 3 * n));
    ASSERT_EQ(rectSize(), windowSize());
    ASSERT_EQ(asked.back(), windowSize());
  }
  EXPECT_EQ(asked.size(), 100u) << "before the frame changes, and once it is built";
  EXPECT_EQ(gui_->display->graphWidth, 575.0);   // 0.548 of 1050
  EXPECT_EQ(gui_->display->graphHeight, 350.0);  // 0.6997 of 500
  EXPECT_EQ(rig_->fx().editorWidth, 1050);
  resize(1, 1);
  EXPECT_EQ(windowSize(), std::pair(576, 284));
  asked.clear();
  resize(576.9, 284.9);  // the same in whole pixels
  EXPECT_TRUE(asked.empty());
  rig_->host.canSizeWindow = -1;
  resize(900, 500);
  EXPECT_EQ(asked.size(), 1u) << "only told in the end";
  EXPECT_EQ(windowSize(), std::pair(900, 500));
  window().refusesSize = true;
  resize(800, 400);
  EXPECT_EQ(gui_->panel, nullptr);  // torn down, and nothing in its place
  idle();
  close();
  EXPECT_TRUE(open());
  EXPECT_EQ(windowSize(), std::pair(800, 400));
}

TEST_F(Shell, FollowsTheDraggedCorner) {
  open();
  const auto drag = [&](double x, double y) {
    const VSTGUI::CRect corner = gui_->resizeCorner->getViewSize();
    window().press(corner.getCenter());
    window().moveTo({x, y});
    platform_.advance(100);
    window().release();
  };
  drag(900, 350);
  EXPECT_EQ(windowSize(), std::pair(900, 436));  // by the reference aspect
  EXPECT_EQ(gui_->resizeCorner->getViewSize().right, 900.0);
  drag(300, 100);
  EXPECT_EQ(windowSize(), std::pair(576, 279));  // the narrowest, in the same shape
  window().holdModifiers(VSTGUI::kShift);
  drag(800, 600);
  EXPECT_EQ(windowSize(), std::pair(800, 600));
  window().holdModifiers(VSTGUI::kControl);
  drag(790, 590);  // a click: the size for new windows
  EXPECT_EQ(windowSize(), kFreshSize);
}

TEST_F(Shell, TakesTheWindowSizeOfAStateWhenItOpensNext) {
  open();
  resize(900, 500);
  void* data = nullptr;
  const VstIntPtr bytes = rig_->call(effGetChunk, 0, 0, &data);
  const std::vector<char> stored(static_cast<char*>(data), static_cast<char*>(data) + bytes);
  resize(600, 300);
  rig_->call(effSetChunk, 0, bytes, const_cast<char*>(stored.data()));
  EXPECT_EQ(rectSize(), std::pair(900, 500));
  EXPECT_EQ(windowSize(), std::pair(600, 300));
  close();
  open();
  EXPECT_EQ(windowSize(), std::pair(900, 500));
  rig_->fx().editorWidth = -700;  // as a damaged state might say
  rig_->fx().editorHeight = 3;
  gui_->setParameter(kNoticeEditorSize, kNoticeEditorSizeValue);
  EXPECT_EQ(rectSize(), std::pair(700, 284));
}

TEST_F(Shell, CountsInDevicePixelsForHostsAndInUnitsForProjects) {
  platform_.scaleFactor = 1.5;
  EXPECT_EQ(rectSize(), std::pair(1062, 515)) << "before the window is there; 514.5 rounded up";
  open();
  platform_.scaleFactor = 3.0;  // of the next window
  EXPECT_EQ(rectSize(), windowSize());
  resize(800, 400);
  EXPECT_EQ(windowSize(), std::pair(1200, 600));
  EXPECT_EQ(rectSize(), windowSize());
  EXPECT_EQ(rig_->host.windowSizes.back(), windowSize());
  EXPECT_EQ(rig_->fx().editorWidth, 800);
  EXPECT_EQ(gui_->display->graphWidth, 438.0);
  close();
  EXPECT_EQ(rectSize(), std::pair(2400, 1200));
}

TEST_F(Shell, GivesTheHostATurnAtMostEveryHundredTicks) {
  open();
  int turns = 0;
  rig_->host.onIdle = [&] {
    ++turns;
    platform_.advance(100);
    gui_->doIdleStuff();  // no turn inside of a turn
    idle();
  };
  const auto turnsAfter = [&](std::uint32_t ticks) {
    platform_.advance(ticks);
    gui_->doIdleStuff();
    return turns;
  };
  EXPECT_EQ(turnsAfter(99), 0);
  EXPECT_EQ(turnsAfter(1), 1);
  rig_->host.onIdle = [&] { ++turns; };
  EXPECT_EQ(turnsAfter(0), 2) << "counted from the start of the last one";
  EXPECT_EQ(turnsAfter(99), 2);
  EXPECT_EQ(turnsAfter(1), 3);
}

TEST_F(Shell, ShowsWhatIsAutomatedAtItsNextIdle) {
  open();
  auto shown = picture();
  EXPECT_EQ(picture(), shown);
  const auto changesPicture = [&](int index, double value) {
    rig_->set(index, value);
    const auto now = picture();
    const bool changed = now != shown;
    shown = now;
    return changed;
  };
  EXPECT_TRUE(changesPicture(kPhase, 0.25));
  EXPECT_TRUE(changesPicture(kPwm, 0.8));
  EXPECT_TRUE(changesPicture(kGridSize, 1.0));
  EXPECT_TRUE(changesPicture(kPoint1, 0.3));
  EXPECT_TRUE(changesPicture(kPoint1 + 5, 0.9));  // the curve behind the second point
  rig_->drawFlat(1, 0.5);
  EXPECT_TRUE(changesPicture(kCurrentGraph, 1.0 / 11.0));
  EXPECT_FALSE(changesPicture(kPoint1, 0.6)) << "graph 1 is not on show";
  close();
  open();
  EXPECT_EQ(picture(), shown) << "a fresh window shows the same";
}

}  // namespace
