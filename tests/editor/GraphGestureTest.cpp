// SPDX-License-Identifier: MIT
// Which edits the pointer and the keys make of a graph, and how they can be undone. What an edit does is in
// EditedGraphTest.cpp.
#include "tests/editor/GraphWindow.h"

namespace {

using namespace editor;
using namespace VSTGUI;

const std::vector<CPoint> kValley = {{0, 40}, {194, 200}, {388, 40}};

TEST(PointDrag, TakesThePointToThePointerAtOnceAndWithAltToTheGrid) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {200, 60}, {388, 20}});
  window.press({103, 123});
  expectAt(window.point(1), 103, 123);
  window.hover(300, 500);
  expectAt(window.point(1), 200, 240);
  EXPECT_EQ(window.display->curveHandles[1], kNoHandle);
  window.release();
  window.drag({{200, 60}, {150, 100}}, kAlt);
  window.drag({{388, 20}, {30, 65}}, kAlt);
  expectAt(window.point(2), 200, 90);
  expectAt(window.point(0), 0, 60);
}

TEST(DoubleClick, AddsAPointThatTheDragTakesOrRemovesOne) {
  GraphWindow window;
  window.show({{0, 20}, {388, 20}});
  window.doubleClick(120, 200);
  EXPECT_EQ(window.display->lastPoint, 2);
  expectAt(window.point(1), 120, 200);
  for (const CPoint& place : {CPoint(120, 200), {0, 20}, {388, 20}}) {  // the ends stay
    window.doubleClick(place.x, place.y);
    EXPECT_EQ(window.display->lastPoint, 1);
  }
  for (const CPoint& place : {CPoint(200, 100), {399, 150}}) {  // also from beside the graph
    window.doublePress(place.x, place.y);
    EXPECT_EQ(window.display->pressedPoint, 1);
    window.hover(250, 40);
    window.release();
    expectAt(window.point(1), 250, 40);
    EXPECT_TRUE(window.display->selection.empty());
    window.doubleClick(250, 40);
  }
}

TEST(CurveDrag, BendsFromWhereItWasAndWithAltAllSegments) {
  GraphWindow window;
  window.warmUp();
  window.show(kValley);
  window.drag({{291, 120}, {291, 60}});
  EXPECT_NEAR(window.curve(0), 0.5, 1e-6);
  EXPECT_NEAR(window.curve(1), 0.25, 1e-6);
  const double y = std::trunc(window.display->curveHandles[1].getCenter().y);
  window.drag({{291, y}, {311, y - 24}});
  EXPECT_NEAR(window.curve(1), 0.15, 1e-6);
  window.show({{0, 0}, {194, 240}, {388, 0}});
  window.press({97, 120}, kAlt);
  for (int down = 119; down >= 84; down -= 5) {
    window.hover(97, down);
    window.idle();  // the points come back from the effect rounded
    ASSERT_NEAR(window.curve(0), 0.5 + (120 - down) / 240.0, 1e-6);
    ASSERT_NEAR(window.rig.fx().envCurve[0][1], 0.5 - (120 - down) / 240.0, 1e-6);
  }
  window.release();
}

TEST(Marquee, SelectsAtTheReleaseAndShowsCandidatesWithoutTheLastPoint) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {200, 120}, {388, 20}});
  window.press({150, 200});
  window.hover(160, 200);
  EXPECT_FALSE(window.display->marqueeActive);
  window.hover(390, 5);
  EXPECT_TRUE(window.display->marqueeActive);
  EXPECT_EQ(window.display->selection.size(), 1u);
  window.release();
  ASSERT_EQ(window.display->selection.size(), 2u);
  EXPECT_EQ(window.display->selection[1].index, 3);
  EXPECT_TRUE(window.display->selectionActive);
  window.drag({{150, 200}, {150, 200}});  // a press on nothing drops it
  EXPECT_FALSE(window.display->selectionActive);
  window.drag({{150, 200}, {170, 220}});
  EXPECT_FALSE(window.display->selectionActive);
}

TEST(SelectionDrag, MovesTheRestStretchesAndMeasuresAnewEachTime) {
  GraphWindow window;
  const std::vector<CPoint> points = {{0, 20}, {100, 60}, {300, 180}, {388, 20}};
  window.show(points);
  const auto select = [&] { window.drag({{90, 50}, {310, 190}}); };
  select();
  window.drag({{100, 60}, {110, 50}});
  window.drag({{110, 50}, {120, 55}});
  expectAt(window.point(1), 120, 55);
  expectAt(window.point(2), 320, 175);
  EXPECT_EQ(window.reports.back(), kReportSelectionEnd);
  window.drag({{0, 20}, {0, 30}});  // a point outside moves alone
  EXPECT_FALSE(window.display->selectionActive);
  window.show(points);
  select();
  window.drag({{100, 60}, {100, 40}}, kShift);
  expectAt(window.point(2), 300, 200);
  window.drag({{100, 40}, {80, 40}}, kShift | kAlt);
  expectAt(window.point(1), 80, 40);
  expectAt(window.point(2), 320, 200);
  EXPECT_EQ(window.display->lastPoint, 3) << "nothing was drawn by segments";
  window.doubleClick(80, 40);
  EXPECT_TRUE(window.display->selectionActive) << "one is left";
  window.drag({{320, 200}, {194, 120}}, kControl);  // by reach: nothing moves yet
  expectAt(window.point(1), 320, 200);
  EXPECT_NEAR(window.display->selection.front().weight, 1.0, 1e-6);
  window.drag({{320, 200}, {320, 200}}, kControl);
  window.drag({{320, 200}, {300, 20}});  // a reach of nothing holds it
  expectAt(window.point(1), 320, 200);
}

TEST(SegmentDrawing, GoesFromCellToCellWithTheHeightsSnappedByAlt) {
  GraphWindow window;
  window.show({{0, 240}, {194, 0}, {388, 240}});
  const auto soundingY = [&](double x) {
    return kHeight * (1.0 - static_cast<double>(window.table(0, static_cast<int>(x / kWidth * 65536))));
  };
  window.drag({{75, 200}, {125, 190}}, kShift);
  for (const auto& [x, y] : {std::pair{60.0, 200.0}, {96.0, 200.0}, {98.0, 190.0}, {144.0, 190.0}})
    EXPECT_NEAR(soundingY(x), y, 0.01) << x;
  window.drag({{385, 20}, {385, 20}}, kShift | kAlt);
  EXPECT_NEAR(soundingY(380), 30, 0.01);
}

TEST(Presses, OfOtherButtonsOnlyRefreshAndWithModifiersSetMarkers) {
  GraphWindow window;
  window.show(line(4));
  CPoint where(194, 120);
  EXPECT_EQ(window.display->onMouseDown(where, kRButton), kMouseEventNotHandled);
  EXPECT_EQ(window.display->onMouseDown(where, kLButton | kApple), kMouseEventNotHandled);
  EXPECT_EQ(window.display->onMouseDown(where, kMButton), kMouseEventNotHandled);
  EXPECT_EQ(window.reports, (std::vector{kReportRefresh, kReportRefresh}));
  EXPECT_FALSE(window.user().wheel(GraphWindow::inFrame(100, 120), 1));
  window.drag({{194, 120}}, kControl | kShift);
  window.drag({{291, 120}}, kControl | kShift | kAlt);
  window.idle();
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  EXPECT_EQ(window.display->loopPoint, 2);
  EXPECT_EQ(window.display->startPoint, 3);
  EXPECT_EQ(window.reports, (std::vector{kReportRefresh, kReportRefresh, kReportGraph, kReportGraph}));
}

TEST(Hover, ShowsHandlesCursorsAndTheHand) {
  GraphWindow window;
  window.show(kValley);
  window.hover(97, 121);
  EXPECT_EQ(window.display->hoverPoint, kFirstCurveHandle);
  EXPECT_TRUE(window.display->renderDirty);
  EXPECT_FALSE(window.display->isPointHilighted());
  window.user().holdModifiers(kShift);
  window.hover(97, 122);
  EXPECT_EQ(window.user().cursor(), kCursorHand);
  window.user().holdModifiers(0);
  window.hover(98, 122);
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  for (const auto& [place, cursor] :
       {std::pair{CPoint(194, 200), kCursorSizeAll}, {{0, 40}, kCursorVSize}, {{97, 120}, kCursorVSize}}) {
    window.press(place);
    window.idle();
    EXPECT_EQ(window.user().cursor(), cursor);
    window.release();
    window.idle();
    EXPECT_EQ(window.user().cursor(), kCursorDefault);
  }
  window.hover(194, 200);
  EXPECT_EQ(window.display->hoverPoint, 1);
  EXPECT_TRUE(window.display->isPointHilighted());
  window.user().leaveWindow();
  EXPECT_EQ(window.display->hoverPoint, -1);
}

// --- Undo and keys

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
  window.press({160, 60});
  EXPECT_FALSE(window.display->undo()) << "not while the pointer drags";
  window.release();
  EXPECT_TRUE(window.undo());
  EXPECT_NEAR(window.point(1).x, 100, kNear);
  EXPECT_NEAR(window.rig.fx().envY[0][1], 0.5, 1e-6);
  EXPECT_NEAR(window.table(0, static_cast<int>(100 / kWidth * 65536)), 0.5f, 1e-3f);
  EXPECT_TRUE(window.redo());
  EXPECT_NEAR(window.point(1).x, 160, kNear);
  EXPECT_TRUE(window.redo());
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
  GraphWindow window;
  window.display->history = &history;
  window.drag({{194, 238}, {97, 60}});
  LFODisplay larger({0, 0, 800, 488}, nullptr, kGraphTag, 776, 480, nullptr, {}, 1);
  larger.history = &history;
  loadGraph(larger, window.rig.fx(), false);
  expectAt(larger.points[1], 194, 120);
  EXPECT_TRUE(larger.undo());
  expectAt(larger.points[1], 388, 480);
  EXPECT_TRUE(larger.redo());
  expectAt(larger.points[1], 194, 120);
}

TEST(Keys, NudgeAndDeleteTheSelection) {
  GraphWindow window;
  window.show(line(8));
  EXPECT_FALSE(window.user().key(0, VKEY_LEFT));
  window.drag({{40, 110}, {110, 130}});  // points 1 and 2
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(window.user().key(0, VKEY_RIGHT));
  EXPECT_TRUE(window.user().key(0, VKEY_UP));
  expectAt(window.point(1), 51.5, 119);
  EXPECT_NEAR(window.rig.fx().envY[0][2], 119.0 / 240, 1e-6);
  EXPECT_TRUE(window.user().key(0, VKEY_DOWN, MODIFIER_SHIFT));  // a cell
  EXPECT_NEAR(window.point(2).y, 149, kNear);
  EXPECT_FALSE(window.user().key(0, VKEY_SPACE));
  window.user().key(0, VKEY_DELETE);
  EXPECT_EQ(window.rig.fx().envNumPoints[0], 6);
  EXPECT_FALSE(window.display->selectionActive);
  window.undo();  // the deletion, then the nudges as one
  EXPECT_EQ(window.display->lastPoint, 8);
  EXPECT_NEAR(window.point(2).y, 149, kNear);
  window.undo();
  expectAt(window.point(2), 97, 120);
}

TEST(Gestures, LeaveASoundGraphWhateverTheyAre) {
  GraphWindow window;
  Random random(11);
  for (int turn = 0; turn < 600; ++turn) {
    if (random.below(100) == 0) window.show(line(1 + random.below(63)));
    const int modifiers = random.pick({0, 0, int{kShift}, kShift | kAlt, int{kControl}, int{kAlt}, kShift | kControl});
    const auto anywhere = [&] { return CPoint(random.unit() * 420 - 10, random.unit() * 260 - 10); };
    const CPoint from = random.below(2) ? window.point(random.below(window.display->lastPoint + 1)) : anywhere();
    if (random.below(4) == 0) window.doubleClick(from.x, from.y);
    window.drag({from, anywhere(), anywhere()}, modifiers);
    if (random.below(8) == 0) window.user().key(0, random.pick({VKEY_LEFT, VKEY_DOWN, VKEY_DELETE}));
    if (random.below(8) == 0) window.undo();
    if (random.below(8) == 0) window.idle();
    expectSound(*window.display);
    if (HasFatalFailure()) FAIL() << "turn " << turn;
  }
}

}  // namespace
