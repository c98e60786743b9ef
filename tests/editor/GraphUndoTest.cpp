// Undo, redo and the keys that edit the selection.
#include <gtest/gtest.h>

#include "tests/editor/GraphWindow.h"

namespace {

using namespace editor;
using namespace VSTGUI;

constexpr double kNear = 1e-4;

TEST(Undo, TakesOneGestureAtATimeBackAndForth) {
  GraphWindow window;
  window.warmUp();
  window.show({{0, 20}, {100, 120}, {388, 20}});
  EXPECT_TRUE(window.display->undo());  // the graph that came in
  EXPECT_NEAR(window.point(1).x, 194, kNear);
  EXPECT_TRUE(window.display->redo());
  window.drag({{100, 120}, {120, 100}, {140, 80}, {160, 60}});
  window.idle();
  window.doubleClick(300, 200);
  window.user().click(GraphWindow::inFrame(250, 220));  // changes nothing, is no step
  EXPECT_TRUE(window.undo());
  EXPECT_EQ(window.display->lastPoint, 2);
  EXPECT_TRUE(window.undo());
  EXPECT_NEAR(window.point(1).x, 100, kNear);
  EXPECT_NEAR(window.soundingY(0, 100), 120, 0.5);
  EXPECT_TRUE(window.redo());
  EXPECT_NEAR(window.point(1).x, 160, kNear);
  EXPECT_TRUE(window.redo());
  EXPECT_EQ(window.display->lastPoint, 3);
  EXPECT_EQ(window.rig.fx().envNumPoints[0], 3);
  window.undo();
  window.drag({{160, 60}, {100, 30}});  // another way: nothing to redo
  EXPECT_FALSE(window.display->redo());
  EXPECT_NEAR(window.point(1).y, 30, kNear);
}

TEST(Undo, KeepsAHundredStepsOfEachGraph) {
  GraphWindow window;
  for (const int graph : {0, 3}) {
    window.selectGraph(graph);
    window.doubleClick(194, 10);
    for (int i = 0; i < 110; ++i) window.drag({window.point(1), {194, 20.0 + i}});
  }
  for (const int graph : {3, 0}) {
    window.selectGraph(graph);
    for (int i = 0; i < 100; ++i) EXPECT_TRUE(window.display->undo()) << i;
    EXPECT_NEAR(window.point(1).y, 29, kNear);
  }
}

TEST(Undo, OutlivesTheWindowAndItsSize) {
  GraphHistory history;
  EffectRig rig;
  {
    LFODisplay display({0, 0, 400, 244}, nullptr, 88, 388, 240, nullptr, {}, 1);
    display.history = &history;
    loadGraph(display, rig.fx(), false);
    CPoint where(194, 238);
    display.onMouseDown(where, kLButton);
    where = {97, 60};
    display.onMouseMoved(where, kLButton);
    display.onMouseUp(where, 0);
    commitGraphEdit(display, rig.fx());
  }
  LFODisplay display({0, 0, 800, 488}, nullptr, 88, 776, 480, nullptr, {}, 1);
  display.history = &history;
  loadGraph(display, rig.fx(), false);
  EXPECT_TRUE(display.undo());
  EXPECT_NEAR(display.points[1].x, 388, kNear);
  EXPECT_NEAR(display.points[1].y, 480, kNear);
  EXPECT_TRUE(display.redo());
  EXPECT_NEAR(display.points[1].x, 194, kNear);
}

TEST(Undo, RestsWhileThePointerDrags) {
  GraphWindow window;
  window.drag({{194, 238}, {150, 200}});
  window.press({150, 200});
  EXPECT_FALSE(window.display->undo());
  window.release();
  EXPECT_TRUE(window.display->undo());
}

TEST(Keys, NudgeAndDeleteTheSelection) {
  GraphWindow window;
  window.showLine(8);
  EXPECT_FALSE(window.user().key(0, VKEY_LEFT));
  window.drag({{40, 110}, {110, 130}});  // points 1 and 2
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(window.user().key(0, VKEY_RIGHT));
  EXPECT_TRUE(window.user().key(0, VKEY_UP));
  EXPECT_NEAR(window.point(1).x, 51.5, kNear);
  EXPECT_NEAR(window.point(2).y, 119, kNear);
  EXPECT_NEAR(window.rig.fx().envY[0][2], 119.0 / 240, 1e-6);
  EXPECT_TRUE(window.user().key(0, VKEY_DOWN, MODIFIER_SHIFT));
  EXPECT_NEAR(window.point(2).y, 149, kNear);
  EXPECT_FALSE(window.user().key(0, VKEY_SPACE));
  window.user().key(0, VKEY_DELETE);
  EXPECT_EQ(window.display->lastPoint, 6);
  EXPECT_EQ(window.rig.fx().envNumPoints[0], 6);
  EXPECT_FALSE(window.display->selectionActive);
  window.undo();  // the deletion, then the nudges as one
  EXPECT_EQ(window.display->lastPoint, 8);
  EXPECT_NEAR(window.point(2).y, 149, kNear);
  window.undo();
  EXPECT_NEAR(window.point(2).x, 97, kNear);
  EXPECT_NEAR(window.point(2).y, 120, kNear);
}

TEST(Keys, DeleteKeepsTheEndsOfTheGraph) {
  GraphWindow window;
  window.showLine(8);
  window.drag({{395, 60}, {-9, 150}});
  EXPECT_EQ(window.display->selection.size(), 9u);
  window.user().key(0, VKEY_DELETE);
  EXPECT_EQ(window.display->lastPoint, 1);
  EXPECT_EQ(window.point(1), CPoint(388, 120));
}

}  // namespace
