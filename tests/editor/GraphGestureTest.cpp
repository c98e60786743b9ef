// What the pointer does to a graph: hits, drags, selections, segments, markers.
#include <gtest/gtest.h>

#include "tests/editor/GraphWindow.h"

namespace {

using namespace editor;
using namespace VSTGUI;

constexpr double kNear = 1e-4;  // pixels that float rounding may move a point

void expectAt(const CPoint& actual, double x, double y) {
  EXPECT_NEAR(actual.x, x, kNear);
  EXPECT_NEAR(actual.y, y, kNear);
}

// A graph that no gesture may leave.
void expectSound(const GraphWindow& window) {
  const LFODisplay& display = *window.display;
  ASSERT_GE(display.lastPoint, 1);
  ASSERT_LT(display.lastPoint, kEditedPoints);
  ASSERT_LE(display.selection.size(), 64u);
  for (int i = 0; i <= display.lastPoint; ++i) {
    const CPoint p = window.point(i);
    ASSERT_TRUE(p.x >= (i > 0 ? window.point(i - 1).x - kNear : 0.0) && p.x <= display.graphWidth + kNear) << i;
    ASSERT_TRUE(p.y >= 0.0 && p.y <= display.graphHeight) << i;
    ASSERT_EQ(display.pointHandles[static_cast<std::size_t>(i)].left, p.x - display.closeEnoughDistance) << i;
    ASSERT_TRUE(i == display.lastPoint || (window.curve(i) > 0.0 && window.curve(i) < 1.0)) << i;
  }
  for (int i = 0; i < 65536; ++i) ASSERT_TRUE(display.shapeTable[static_cast<std::size_t>(i)] >= 0.0f);
}

TEST(PointDrag, FollowsThePointerAndStopsAtTheNeighbours) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {200, 60}, {388, 20}});
  window.press({103, 123});  // beside the point: it comes to the pointer at once
  expectAt(window.point(1), 103, 123);
  window.hover(300, 500);
  expectAt(window.point(1), 200, 240);
  EXPECT_EQ(window.display->curveHandles[1], CRect(-1, -1, -1, -1));
  window.hover(-40, -40);
  expectAt(window.point(1), 0, 0);
  window.release();
  window.drag({{388, 20}, {30, 90}});  // the ends keep their x and move together
  expectAt(window.point(0), 0, 90);
  expectAt(window.point(3), 388, 90);
  window.drag({{200, 60}, {150, 100}}, kAlt);  // the nearest of 8 lines each way
  expectAt(window.point(2), 145.5, 90);
  expectSound(window);
}

TEST(PointDrag, TakesTheUpperOfPointsThatOverlap) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {104, 120}, {388, 20}});
  window.hover(102, 121);
  EXPECT_EQ(window.display->hoverPoint, 2);
  EXPECT_TRUE(window.display->isPointHilighted());
  window.drag({{102, 121}, {110, 60}});
  expectAt(window.point(1), 100, 120);
  expectAt(window.point(2), 110, 60);
}

TEST(DoubleClick, AddsAPointThatTheDragTakesOrRemovesOne) {
  GraphWindow window;
  window.show({{0, 20}, {388, 20}});
  window.doubleClick(120, 200);
  EXPECT_EQ(window.display->lastPoint, 2);
  expectAt(window.point(1), 120, 200);
  window.display->curves[0] = 0.9;
  window.doubleClick(120, 200);
  EXPECT_EQ(window.display->lastPoint, 1);
  EXPECT_EQ(window.curve(0), 0.4999998);
  window.doubleClick(0, 20);
  window.doubleClick(388, 20);
  EXPECT_EQ(window.display->lastPoint, 1);
  window.user().click(GraphWindow::inFrame(200, 100));
  window.user().press(GraphWindow::inFrame(200, 100));  // and goes on as a drag
  window.hover(250, 40);
  window.release();
  expectAt(window.point(1), 250, 40);
}

TEST(DoubleClick, BesideTheGraphAddsAPointAtItsEdgeThatTheDragTakes) {
  GraphWindow window;
  window.show({{0, 20}, {388, 20}});
  window.user().click(GraphWindow::inFrame(399, 150));
  window.user().press(GraphWindow::inFrame(399, 150));
  EXPECT_EQ(window.display->pressedPoint, 1);
  window.hover(300, 100);
  window.release();
  EXPECT_TRUE(window.display->selection.empty());
  ASSERT_EQ(window.display->lastPoint, 2);
  expectAt(window.point(1), 300, 100);
}

TEST(DoubleClick, PushesTheLastPointOutOfAFullGraph) {
  GraphWindow window;
  window.showLine(63);
  window.doubleClick(200, 20);
  EXPECT_EQ(window.display->lastPoint, 63);
  EXPECT_LT(window.point(63).x, 388);
  EXPECT_EQ(window.rig.fx().envNumPoints[0], 63);
  expectSound(window);
}

TEST(CurveDrag, BendsRisingAndFallingSegmentsToOneSide) {
  GraphWindow window;
  window.show({{0, 40}, {194, 200}, {388, 40}});
  for (const double x : {97.0, 291.0}) {
    const double before = window.soundingY(0, x);
    window.drag({{x, 120}, {x, 60}});
    EXPECT_LT(window.soundingY(0, x), before - 10) << x;
  }
  EXPECT_NEAR(window.curve(0), 0.5 + 0.25, 1e-6);
  EXPECT_NEAR(window.curve(1), 0.5 - 0.25, 1e-6);
  window.drag({window.display->curveHandles[0].getCenter(), {97, -900}});
  EXPECT_EQ(window.curve(0), 0.999999999998);
}

TEST(CurveDrag, NeverLeavesAnExactHalf) {
  GraphWindow window;
  window.selectGraph(1);
  window.show({{0, 40}, {194, 200}, {388, 40}});
  window.display->curves[1] = 0.75;
  window.display->RenderShape();
  const CPoint handle = window.display->curveHandles[1].getCenter();
  window.press(handle);
  window.hover(handle.x, static_cast<int>(handle.y) - 60);
  EXPECT_EQ(window.curve(1), 0.499999999998);
  window.release();
}

TEST(CurveDrag, WithAltShapesAllSegmentsAlike) {
  GraphWindow window;
  window.show({{0, 20}, {100, 100}, {200, 180}, {300, 100}, {388, 20}});
  window.drag({{50, 60}, {50, 84}}, kAlt);
  const double k = window.curve(0);
  EXPECT_NEAR(k, 0.4, 1e-6);
  for (const auto& [segment, expected] : {std::pair{1, 1 - k}, {2, k}, {3, 1 - k}})
    EXPECT_NEAR(window.curve(segment), expected, 1e-9) << segment;
  EXPECT_NEAR(window.rig.fx().envCurve[0][3], 1 - k, 1e-6);
}

// Such a graph is the first that users see; its points come back from the effect rounded while they drag.
TEST(CurveDrag, WithAltKeepsToOneSideWhereSegmentsRunFromTopToBottom) {
  GraphWindow window;
  window.warmUp();
  window.show({{0, 0}, {194, 240}, {388, 0}});
  window.press({97, 120}, kAlt);
  for (int y = 119; y >= 84; --y) {
    window.hover(97, y);
    window.idle();
    ASSERT_NEAR(window.curve(0), 0.5 + (120 - y) / 240.0, 1e-6);
    ASSERT_NEAR(window.curve(1), 0.5 - (120 - y) / 240.0, 1e-6);
  }
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

TEST(SelectionDrag, MovesAllKeepsOrderAndMeasuresAnewEachTime) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {140, 160}, {200, 60}, {388, 20}});
  window.drag({{90, 100}, {150, 170}});
  window.drag({{100, 120}, {110, 100}});
  window.drag({{110, 100}, {130, 80}});
  expectAt(window.point(1), 130, 80);
  expectAt(window.point(2), 170, 120);
  window.drag({{170, 120}, {300, 120}});  // the neighbour stops them
  expectAt(window.point(1), 200, 80);
  expectAt(window.point(2), 200, 120);
  EXPECT_EQ(window.reports.back(), 2.5f);
  window.drag({{200, 60}, {220, 70}});  // a point outside moves alone
  EXPECT_FALSE(window.display->selectionActive);
  expectAt(window.point(1), 200, 80);
}

TEST(SelectionDrag, KeepsTheEndsOfTheCycleAtOneHeight) {
  GraphWindow window;
  window.show({{0, 100}, {100, 120}, {388, 100}});
  window.drag({{110, 130}, {-8, 80}});
  window.drag({{100, 120}, {150, 60}});
  expectAt(window.point(0), 0, 40);
  expectAt(window.point(1), 150, 60);
  expectAt(window.point(2), 388, 40);
  window.drag({{300, 150}, {395, 20}});  // the last one alone leads the first
  window.drag({{388, 40}, {200, 90}});
  expectAt(window.point(0), 0, 90);
  expectAt(window.point(2), 388, 90);
}

TEST(SelectionDrag, StretchesAboutTheMiddleWithShift) {
  GraphWindow window;
  window.show({{0, 20}, {100, 60}, {300, 180}, {388, 20}});
  window.drag({{90, 50}, {310, 190}});
  window.drag({{100, 60}, {100, 40}}, kShift);
  expectAt(window.point(1), 100, 40);
  expectAt(window.point(2), 300, 200);
  window.drag({{100, 40}, {80, 40}}, kShift | kAlt);
  expectAt(window.point(1), 80, 40);
  expectAt(window.point(2), 320, 200);
  EXPECT_EQ(window.display->lastPoint, 3);
}

TEST(SelectionDrag, GoesOnWithTheRestWhenASelectedPointIsRemoved) {
  GraphWindow window;
  window.showLine(8);
  window.drag({{70, 60}, {215, 180}});  // points 2 to 4
  window.doubleClick(97, 120);
  ASSERT_EQ(window.display->lastPoint, 7);
  window.drag({{145.5, 120}, {145.5, 80}});
  for (const int i : {2, 3}) expectAt(window.point(i), 48.5 * (i + 1), 80);
  expectAt(window.point(4), 242.5, 120);
}

TEST(ProximitySelection, WeighsByDistanceAndStaysPutWithoutReach) {
  GraphWindow window;
  window.showLine(8);
  window.drag({{194, 120}, {97, 120}}, kControl);
  ASSERT_EQ(window.display->selection.size(), 5u);
  for (const auto& [entry, weight] : {std::pair{0, 0.0}, {1, 0.5}, {2, 1.0}, {3, 0.5}, {4, 0.0}})
    EXPECT_NEAR(window.display->selection[static_cast<std::size_t>(entry)].weight, weight, 0.01) << entry;
  expectAt(window.point(4), 194, 120);
  window.drag({{194, 120}, {194, 80}});
  EXPECT_NEAR(window.point(4).y, 80, kNear);
  EXPECT_NEAR(window.point(5).y, 100, 0.3);
  expectAt(window.point(7), 388.0 * 7 / 8, 120);
  window.drag({{97, 120}, {97, 120}}, kControl);
  window.drag({{97, 120}, {150, 20}});
  expectAt(window.point(2), 97, 120);
  window.idle();
}

TEST(SegmentDrawing, MakesFlatCellsAndKeepsTheCurveAround) {
  GraphWindow window;
  window.show({{0, 240}, {194, 0}, {388, 240}});
  const double left = window.soundingY(0, 90);
  const double right = window.soundingY(0, 160);
  window.drag({{120, 200}, {125, 200}}, kShift);  // the cell from 97 to 145.5 of 8
  for (const double x : {98.0, 120.0, 144.0}) EXPECT_NEAR(window.soundingY(0, x), 200, 0.01) << x;
  EXPECT_NEAR(window.soundingY(0, 90), left, 1.0);
  EXPECT_NEAR(window.soundingY(0, 160), right, 1.5);
  expectSound(window);
  window.drag({{10, 100}, {385, 20}}, kShift | kAlt);  // cell by cell, heights on the grid; the ends are linked
  EXPECT_NEAR(window.soundingY(0, 380), 30, 0.01);
  EXPECT_NEAR(window.soundingY(0, 20), 90, 0.01);
  expectSound(window);
}

// Graphs whose last point fell out end before the right edge.
TEST(SegmentDrawing, FillsItsCellAlsoWhereAGraphEndsInside) {
  for (const int removed : {0, 1, 9}) {
    GraphWindow window;
    window.showLine(63);
    window.doubleClick(200, 20);  // the last point falls out
    for (int n = 0; n < removed; ++n) window.doubleClick(window.point(1).x, window.point(1).y);
    ASSERT_LT(window.point(window.display->lastPoint).x, 388);
    window.drag({{360, 200}, {362, 200}}, kShift);  // the last cell, to 387.5
    expectSound(window);
    for (const double x : {341.0, 365.0, 386.0}) EXPECT_NEAR(window.soundingY(0, x), 200, 0.01) << removed << ' ' << x;
  }
  GraphWindow window;
  std::vector<CPoint> points(64, {388, 120});
  for (std::size_t i = 0; i < 63; ++i) points[i].x = 330.0 * static_cast<double>(i) / 62;
  window.show(points);
  window.doubleClick(350, 100);
  window.drag({{360, 200}, {360, 200}}, kShift);  // no place is left but the last one
  EXPECT_EQ(window.point(63), CPoint(387.5, 200));
  expectSound(window);
}

TEST(Markers, AreSetByAPressAndFollowTheirPoints) {
  GraphWindow window;
  window.showLine(4);
  window.press({194, 120}, kControl | kShift);
  window.release();
  window.press({291, 120}, kControl | kShift | kAlt);
  window.release();
  window.idle();
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  EXPECT_EQ(window.display->loopPoint, 2);
  EXPECT_EQ(window.display->startPoint, 3);
  EXPECT_EQ(window.reports, (std::vector{100.0f, 100.0f}));
  window.doubleClick(40, 30);
  EXPECT_EQ(window.display->loopPoint, 3);
  window.doubleClick(40, 30);
  window.doubleClick(97, 120);
  EXPECT_EQ(window.display->loopPoint, 1);
  EXPECT_EQ(window.display->startPoint, 2);
}

TEST(Presses, OfOtherButtonsOnlyRefresh) {
  GraphWindow window;
  window.show({{0, 20}, {100, 120}, {388, 20}});
  CPoint where(100, 120);
  EXPECT_EQ(window.display->onMouseDown(where, kRButton), kMouseEventNotHandled);
  EXPECT_EQ(window.display->onMouseDown(where, kLButton | kApple), kMouseEventNotHandled);
  EXPECT_EQ(window.reports, (std::vector{0.6666f, 0.6666f}));
  EXPECT_EQ(window.display->onMouseDown(where, kMButton), kMouseEventNotHandled);
  EXPECT_EQ(window.reports.size(), 2u);
  EXPECT_FALSE(window.user().wheel(GraphWindow::inFrame(100, 120), 1));
}

TEST(Hover, ShowsHandlesCursorsAndTheHand) {
  GraphWindow window;
  window.show({{0, 40}, {194, 200}, {388, 40}});
  window.hover(97, 121);
  EXPECT_EQ(window.display->hoverPoint, kFirstCurveHandle);
  EXPECT_TRUE(window.display->renderDirty);
  window.user().holdModifiers(kShift);
  window.hover(97, 122);
  EXPECT_EQ(window.user().cursor(), kCursorHand);
  window.user().holdModifiers(0);
  window.hover(98, 122);
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  window.press({194, 200});
  window.idle();
  EXPECT_EQ(window.user().cursor(), kCursorSizeAll);
  window.release();
  window.idle();
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  window.hover(194, 200);
  window.user().leaveWindow();
  EXPECT_EQ(window.display->hoverPoint, -1);
}

TEST(Gestures, LeaveASoundGraphWhateverTheyAre) {
  GraphWindow window;
  Random random(11);
  for (int turn = 0; turn < 600; ++turn) {
    if (random.below(100) == 0) window.showLine(1 + random.below(63));
    const int modifiers = random.pick({0, 0, int{kShift}, kShift | kAlt, int{kControl}, int{kAlt}, kShift | kControl});
    const auto anywhere = [&] { return CPoint(random.unit() * 420 - 10, random.unit() * 260 - 10); };
    const CPoint from = random.below(2) ? window.point(random.below(window.display->lastPoint + 1)) : anywhere();
    if (random.below(4) == 0) window.doubleClick(from.x, from.y);
    window.drag({from, anywhere(), anywhere()}, modifiers);
    if (random.below(8) == 0) window.user().key(0, random.pick({VKEY_LEFT, VKEY_DOWN, VKEY_DELETE}));
    if (random.below(8) == 0) window.undo();
    if (random.below(8) == 0) window.idle();
    expectSound(window);
    if (HasFatalFailure()) FAIL() << "turn " << turn;
  }
}

}  // namespace
