// SPDX-License-Identifier: MIT
// The editor in the window of a host on a real screen: opened, resized and closed as hosts and users do it, also at the
// worst moments.
#include <algorithm>
#include <memory>
#include <set>
#include <sstream>

#include "editor/controls/ResizeControl.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"
#include "tests/effect/TestHost.h"
#include "tests/toolkit/x11/Desktop.h"
#include "toolkit/views/CFrame.h"

using namespace model;

namespace {

using editor::kReferenceHeight;
using editor::kReferenceWidth;
using VSTGUI::CPoint;

class EditorWindow : public Desktop {
 protected:
  using Size = std::pair<int, int>;

  void SetUp() override {
    Desktop::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    rig_ = std::make_unique<EffectRig>();
    gui_ = static_cast<LFOGUI*>(createEditor(&rig_->fx()));
    rig_->playOnes(64);  // points are parameters once audio has run
    resetGraph();
  }
  void idle() override { rig_->call(effEditIdle); }

  // Makes the host's window as large as the editor wants it and opens the editor in it.
  void open() {
    const auto [width, height] = rectSize();
    const std::array<std::uint32_t, 2> size{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    xcb_configure_window(*user, host, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    ASSERT_EQ(sizeOf(host), rectSize());
    ASSERT_EQ(openIn(host), 1);
    const auto windows = childrenOf(host);
    ASSERT_FALSE(windows.empty());
    window = windows.back();
    ASSERT_EQ(sizeOf(window), rectSize());
  }
  VstIntPtr openIn(xcb_window_t parent) { return rig_->call(effEditOpen, 0, 0, asParent(parent)); }
  void close() { rig_->call(effEditClose); }
  bool isWindowThere() const { return gui_->getFrame() && gui_->getFrame()->isOpen(); }
  Size rectSize() {
    ERect* rect = nullptr;
    EXPECT_EQ(rig_->call(effEditGetRect, 0, 0, &rect), 1);
    return {rect->right - rect->left, rect->bottom - rect->top};
  }
  Size sizeOf(xcb_window_t which) {
    const auto place = geometry(which);
    return {place.width, place.height};
  }

  LFODisplay& display() const { return *gui_->display; }
  // Places in the window, at pixels of the graph.
  CPoint inGraph(const CPoint& p) const { return gui_->graphContainer->getViewSize().getTopLeft() + p; }
  CPoint firstPoint() const { return inGraph(display().points[1]); }
  void pointAt(const CPoint& place) { point(static_cast<int>(place.x), static_cast<int>(place.y)); }
  void pressCorner() {
    pointAt(gui_->resizeCorner->getViewSize().getCenter());
    press();
  }
  void resetGraph() { rig_->draw(0, {{0, 0.5}, {32768, kStartY}, {65536, 0.5}}); }
  bool isGraphAsReset() {
    const model::GraphPoints now = rig_->fx().pointsOf(0);
    return std::abs(now.y[1] - kStartY) < 1e-6 && std::abs(now.curve[0] - 0.5) < 1e-6;
  }
  double effectY() { return rig_->fx().envY[0][1]; }
  bool hasSelection() const { return display().selectionActive || display().marqueeActive; }

  // Drags point 1 to pixels of the graph, up to the release.
  void hold(const CPoint& to) {
    const double before = effectY();
    pointAt(firstPoint());
    press();
    pointAt(inGraph(to));
    ASSERT_TRUE(until([&] { return effectY() != before; }));
  }
  void expectDragWorks(const CPoint& to) {
    const double width = display().graphWidth, height = display().graphHeight;
    const int points = rig_->fx().envNumPoints[0];
    pointAt(firstPoint());
    press();
    pointAt(inGraph(to));
    EXPECT_TRUE(until([&] { return std::abs(effectY() - to.y / height) < 0.01; })) << effectY();
    EXPECT_NEAR(rig_->fx().envX[0][1] / model::kGraphWidth, to.x / width, 0.01);
    const auto middle = static_cast<std::size_t>(65535 * std::trunc(to.x) / width);
    EXPECT_NEAR(static_cast<float>(rig_->fx().graphTable[0][middle]), 1 - to.y / height, 0.02) << "before any block";
    release();
    EXPECT_TRUE(until([&] { return display().pressedPoint < 0; }));
    EXPECT_EQ(rig_->fx().envNumPoints[0], points);
    EXPECT_FALSE(hasSelection());
    EXPECT_EQ(openGestures(), "");
  }
  // The parameters whose gestures the host still waits for the end of.
  std::string openGestures() {
    std::istringstream words(rig_->host.edits);
    std::set<std::string> open;
    for (std::string word, index; words >> word >> index;) {
      if (word == "begin") open.insert(index);
      if (word == "end") open.erase(index);
    }
    std::string text;
    for (const std::string& index : open) text += index + ' ';
    return text;
  }

  void openMarquee() {
    pointAt(inGraph({20, 20}));
    press();
    pointAt(inGraph({300, 100}));
    ASSERT_TRUE(until([&] { return display().marqueeActive; }));
  }
  void bendCurve() {
    const CPoint handle = inGraph(display().curveHandles[0].getCenter());
    pointAt(handle);
    press();
    pointAt(handle + CPoint(0, 30));
    ASSERT_TRUE(until([&] { return !isGraphAsReset(); }));
  }
  void moveSelection() {
    openMarquee();
    release();
    ASSERT_TRUE(until([&] { return display().selectionActive; }));
    hold({150, 80});
  }
  void dragCorner() {
    pressCorner();
    point(640, 300);
    ASSERT_TRUE(until([&] { return sizeOf(window) == Size(640, 310); }));
  }
  // Opens the window again and again, with something in hand each time, the button held; then `happens` what ends it.
  void inTheMiddleOf(const std::function<void()>& happens) {
    using Doing = std::pair<const char*, std::function<void()>>;
    for (const auto& [name, begin] : {Doing{"moving a point",
                                            [&] {
                                              hold({150, 200});
                                            }},
                                      {"bending a curve", [&] { bendCurve(); }},
                                      {"opening a marquee", [&] { openMarquee(); }},
                                      {"moving a selection", [&] { moveSelection(); }},
                                      {"dragging the corner", [&] { dragCorner(); }},
                                      {"nothing", [] {}}}) {
      SCOPED_TRACE(name);
      resetGraph();
      rig_->host.edits.clear();
      open();
      begin();
      ASSERT_FALSE(HasFatalFailure());
      happens();
      ASSERT_FALSE(HasFatalFailure());
    }
  }

  static constexpr double kStartY = 0.25;
  std::unique_ptr<EffectRig> rig_;
  LFOGUI* gui_ = nullptr;  // the effect's
};

TEST_F(EditorWindow, OpensTwoHundredTimesAndLeavesNothingBehind) {
  const int serversFiles = serverFiles();
  open();
  expectDragWorks({100, 60});
  EXPECT_NE(screenPixel(kLeft + 5, kTop + 5), 0xffffffu) << "the host's background";
  close();
  const int files = openFiles();
  for (int n = 0; n < 200; ++n) {
    open();
    ASSERT_FALSE(HasFatalFailure()) << n;
    if (n % 25 == 0) expectDragWorks({80.0 + n, 40 + n / 2.0});
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
    const int width = 590 + n * 37 % 140;
    const Size size(width, static_cast<int>(width * editor::kReferenceAspect));
    if (n % 2 == 0) {
      pressCorner();
      point(width, 200);
    } else {
      gui_->resizeTo(size.first, size.second);
    }
    ASSERT_TRUE(until([&] { return sizeOf(window) == size; })) << n;
    if (n % 2 == 0) release();
    ASSERT_TRUE(until([&] { return sizeOf(host) == size; })) << n;
    ASSERT_TRUE(until([&] { return gui_->controlsReady && gui_->resizeCorner->getViewSize().right == width; })) << n;
    ASSERT_EQ(rectSize(), size);
    ASSERT_EQ(rig_->host.windowSizes.back(), size);
  }
  expectDragWorks({100, 60});
}

TEST_F(EditorWindow, ClosesInTheMiddleOfAGesture) {
  inTheMiddleOf([&] {
    close();
    EXPECT_EQ(openGestures(), "");
    open();  // under the pointer, with the button still held
    const Size size = rectSize();
    const double y = effectY();
    point(300, 150);
    point(310, 160);
    EXPECT_TRUE(until([&] { return display().hoverPoint == -1; }));
    release();
    pointAt(firstPoint());
    EXPECT_TRUE(until([&] { return display().hoverPoint == 1; }));
    EXPECT_FALSE(hasSelection());
    EXPECT_NEAR(effectY(), y, 1e-6);
    EXPECT_TRUE(isGraphAsReset() || display().undo());
    EXPECT_TRUE(isGraphAsReset());
    EXPECT_EQ(sizeOf(window), size);
    expectDragWorks({200, 100});
    close();
  });
}

TEST_F(EditorWindow, SurvivesTheEndOfTheHostsWindow) {
  for (const bool killed : {false, true}) {
    SCOPED_TRACE(killed ? "the connection is killed" : "the window is destroyed");
    auto music = Connection::open();
    host = newHostWindow(*music, kLeft, kTop);
    inTheMiddleOf([&] {
      killed ? xcb_kill_client(*user, host) : xcb_destroy_window(*music, host);
      music->flush();
      point(200, 150);
      EXPECT_TRUE(until([&] { return !isWindowThere(); }));
      release();
      gui_->resizeTo(600, 300);
      for (int turn = 0; turn < 3; ++turn) idle();
      close();
      EXPECT_EQ(openGestures(), "");
      EXPECT_EQ(openIn(host), 0) << "the window is gone";
      host = newHostWindow(kLeft, kTop);
      open();
      ASSERT_FALSE(HasFatalFailure());
      expectDragWorks({120, 40});
      gui_->resizeTo(kReferenceWidth, kReferenceHeight);
      EXPECT_TRUE(until([&] { return sizeOf(host) == Size(kReferenceWidth, kReferenceHeight); }));
      close();
      xcb_destroy_window(*user, host);
      music = Connection::open();
      host = newHostWindow(*music, kLeft, kTop);
    });
    xcb_destroy_window(*music, host);
    music->flush();
    host = newHostWindow(kLeft, kTop);
  }
}

TEST_F(EditorWindow, SurvivesTheEndOfTheServer) {
  open();
  hold({150, 200});
  server.stop();
  gui_->resizeTo(600, 300);
  rig_->set(kPoint1, 0.2);
  for (int turn = 0; turn < 3; ++turn) idle();
  EXPECT_FALSE(isWindowThere());
  close();
  EXPECT_EQ(openGestures(), "");
  EXPECT_EQ(openIn(host), 0);
  idle();
  EXPECT_EQ(rectSize(), Size(600, 300));
}

}  // namespace
