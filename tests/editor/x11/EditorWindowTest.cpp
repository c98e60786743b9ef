// The editor on a real screen: opened, resized and closed as hosts and users do it, also at the worst moments.
#include <algorithm>
#include <memory>
#include <set>
#include <sstream>

#include "tests/editor/x11/EditorDesktop.h"

namespace {

using VSTGUI::CPoint;

class EditorWindow : public EditorDesktop {
 protected:
  void SetUp() override {
    EditorDesktop::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    rig_ = std::make_unique<EffectRig>();
    gui = static_cast<LFOGUI*>(createEditor(&rig_->fx()));
    rig_->playOnes(64);  // points are parameters once audio has run
    resetGraph();
  }
  AEffect* record() override { return rig_->record(); }
  void resetGraph() { rig_->draw(0, {{0, 0.5}, {32768, kStartY}, {65536, 0.5}}); }
  bool isGraphAsReset() {
    const GraphPoints now = rig_->fx().pointsOf(0);
    return std::abs(now.y[1] - kStartY) < 1e-6 && std::abs(now.curve[0] - 0.5) < 1e-6;
  }

  double effectY(int i) { return rig_->fx().envY[0][i]; }
  double effectX(int i) { return rig_->fx().envX[0][i]; }
  // Drags point 1 to pixels of the graph, up to the release.
  void hold(double x, double y) {
    const double before = effectY(1);
    pointAt(placeOf(1));
    press();
    pointAt(inGraph(x, y));
    ASSERT_TRUE(until([&] { return effectY(1) != before; }));
  }
  void expectDragWorks(double x, double y) {
    const double width = gui->display->graphWidth, height = gui->display->graphHeight;
    const int points = rig_->fx().envNumPoints[0];
    pointAt(placeOf(1));
    press();
    pointAt(inGraph(x, y));
    EXPECT_TRUE(until([&] { return std::abs(effectY(1) - y / height) < 0.01; })) << effectY(1);
    EXPECT_NEAR(effectX(1) / 65536, x / width, 0.01);
    const auto middle = static_cast<std::size_t>(65535 * std::trunc(x) / width);
    EXPECT_NEAR(static_cast<float>(rig_->fx().graphTable[0][middle]), 1 - y / height, 0.02) << "before any block";
    release();
    EXPECT_TRUE(until([&] { return gui->display->pressedPoint < 0; }));
    EXPECT_EQ(rig_->fx().envNumPoints[0], points);
    EXPECT_FALSE(gui->display->selectionActive || gui->display->marqueeActive);
    EXPECT_EQ(openGestures(), "");
  }
  // The parameters whose gestures the host still waits for the end of.
  std::string openGestures() {
    std::istringstream words(rig_->host.edits);
    std::set<int> open;
    int index = 0;
    for (std::string word; words >> word >> index;) {
      if (word == "begin") open.insert(index);
      if (word == "end") open.erase(index);
    }
    std::string text;
    for (const int i : open) text += std::to_string(i) + ' ';
    return text;
  }

  // What the user may be doing when the window goes, all with the button held.
  struct Doing {
    const char* name;
    std::function<void()> begin;
  };
  std::vector<Doing> gestures() {
    return {{"moving a point", [&] { hold(150, 200); }},
            {"bending a curve",
             [&] {
               const CPoint handle = gui->display->curveHandles[0].getCenter();
               const double before = rig_->fx().envCurve[0][0];
               pointAt(inGraph(handle.x, handle.y));
               press();
               pointAt(inGraph(handle.x, handle.y + 30));
               ASSERT_TRUE(until([&] { return rig_->fx().envCurve[0][0] != before; }));
             }},
            {"opening a marquee",
             [&] {
               pointAt(inGraph(20, 20));
               press();
               pointAt(inGraph(300, 100));
               ASSERT_TRUE(until([&] { return gui->display->marqueeActive; }));
             }},
            {"moving a selection",
             [&] {
               pointAt(inGraph(20, 20));
               press();
               pointAt(inGraph(300, 100));
               ASSERT_TRUE(until([&] { return gui->display->marqueeActive; }));
               release();
               ASSERT_TRUE(until([&] { return gui->display->selectionActive; }));
               hold(150, 80);
             }},
            {"dragging the corner", [&] {
               pointAt(corner());
               press();
               point(640, 300);
               ASSERT_TRUE(until([&] { return sizeOf(window) == std::pair(640, 310); }));
             }}};
  }
  void start() {
    resetGraph();
    rig_->host.edits.clear();
    open();
  }
  // A new window of a host with the editor in it, where all works.
  void expectOpensAnew() {
    host = newHostWindow(kLeft, kTop);
    open();
    ASSERT_FALSE(HasFatalFailure());
    expectDragWorks(120, 40);
  }

  static constexpr double kStartY = 0.25;
  std::unique_ptr<EffectRig> rig_;
};

TEST_F(EditorWindow, OpensTwoHundredTimesAndLeavesNothingBehind) {
  const int serversFiles = serverFiles();
  open();
  expectDragWorks(100, 60);
  EXPECT_NE(screenPixel(kLeft + 5, kTop + 5), 0xffffffu) << "the host's background";
  close();
  const int files = openFiles();
  for (int n = 0; n < 200; ++n) {
    open();
    ASSERT_FALSE(HasFatalFailure()) << n;
    if (n % 25 == 0) expectDragWorks(80 + n, 40 + n / 2.0);
    idle();
    close();
  }
  EXPECT_EQ(openFiles(), files);
  EXPECT_TRUE(until([&] { return serverFiles() == serversFiles; })) << serverFiles() << ", before " << serversFiles;
  EXPECT_TRUE(childrenOf(host).empty());
}

TEST_F(EditorWindow, ResizesWithTheHostsWindow) {
  open();
  for (int n = 0; n < 50; ++n) {
    const int width = 590 + n * 37 % 140, height = static_cast<int>(width * editor::kReferenceAspect);
    if (n % 2 == 0) {
      pointAt(corner());
      press();
      point(width, 200);
    } else {
      gui->resizeTo(width, height);
    }
    ASSERT_TRUE(until([&] { return sizeOf(window) == std::pair(width, height); })) << n;
    if (n % 2 == 0) release();
    ASSERT_TRUE(until([&] { return sizeOf(host) == std::pair(width, height); })) << n;
    ASSERT_TRUE(until([&] { return gui->controlsReady && gui->resizeCorner->getViewSize().right == width; })) << n;
    ASSERT_EQ(rectSize(), std::pair(width, height));
    ASSERT_EQ(rig_->host.windowSizes.back(), std::pair(width, height));
  }
  expectDragWorks(100, 60);
}

TEST_F(EditorWindow, ClosesInTheMiddleOfAGesture) {
  for (const auto& [name, begin] : gestures()) {
    SCOPED_TRACE(name);
    start();
    begin();
    ASSERT_FALSE(HasFatalFailure());
    close();
    EXPECT_EQ(openGestures(), "");
    open();  // under the pointer, with the button still held
    const auto size = rectSize();
    const double y = effectY(1);
    point(300, 150);
    point(310, 160);
    EXPECT_TRUE(until([&] { return gui->display->hoverPoint == -1; }));
    release();
    pointAt(placeOf(1));
    EXPECT_TRUE(until([&] { return gui->display->hoverPoint == 1; }));
    EXPECT_FALSE(gui->display->selectionActive || gui->display->marqueeActive);
    EXPECT_NEAR(effectY(1), y, 1e-6);
    EXPECT_TRUE(isGraphAsReset() || gui->display->undo());
    EXPECT_TRUE(isGraphAsReset());
    EXPECT_EQ(sizeOf(window), size);
    expectDragWorks(200, 100);
    close();
  }
}

TEST_F(EditorWindow, SurvivesTheEndOfTheHostsWindow) {
  auto all = gestures();
  all.push_back({"nothing", [] {}});
  for (const bool killed : {false, true}) {
    for (const auto& [name, begin] : all) {
      SCOPED_TRACE(std::string(name) + (killed ? ", the host's connection is killed" : ", the window is destroyed"));
      const auto music = Connection::open();
      host = newHostWindow(*music, kLeft, kTop);
      start();
      begin();
      ASSERT_FALSE(HasFatalFailure());
      if (killed) {
        xcb_kill_client(*user, host);
      } else {
        xcb_destroy_window(*music, host);
        music->flush();
      }
      point(200, 150);
      EXPECT_TRUE(until([&] { return !isWindowThere(); }));
      release();
      gui->resizeTo(600, 300);
      for (int turn = 0; turn < 3; ++turn) idle();
      close();
      EXPECT_EQ(openGestures(), "");
      EXPECT_EQ(call(effEditOpen, 0, 0, asParent(host)), 0) << "the window is gone";
      expectOpensAnew();
      gui->resizeTo(708, 343);
      EXPECT_TRUE(until([&] { return sizeOf(host) == std::pair(708, 343); }));
      close();
      xcb_destroy_window(*user, host);
    }
  }
}

TEST_F(EditorWindow, SurvivesTheEndOfTheServer) {
  open();
  hold(150, 200);
  server.stop();
  gui->resizeTo(600, 300);
  rig_->set(kPoint1, 0.2);
  for (int turn = 0; turn < 3; ++turn) idle();
  EXPECT_FALSE(isWindowThere());
  close();
  EXPECT_EQ(openGestures(), "");
  EXPECT_EQ(call(effEditOpen, 0, 0, asParent(host)), 0);
  idle();
  EXPECT_EQ(rectSize(), std::pair(600, 300));
}

}  // namespace
