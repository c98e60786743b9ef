// SPDX-License-Identifier: MIT
// Edits of a graph, and its way to stored units; without a window.
#include "tests/editor/Graphs.h"

namespace {

using namespace editor;
using VSTGUI::CPoint;
using VSTGUI::CRect;

TEST(EditedGraph, MovesAPointAsFarAsItsNeighboursAndItsEndsTogether) {
  DrawnGraph graph({{0, 20}, {100, 120}, {200, 60}, {388, 20}});
  graph.move(1, {103, 123});
  expectAt(graph.point(1), 103, 123);
  expectAt(graph.move(1, {300, 500}), 300, 240);
  expectAt(graph.point(1), 200, 240);
  graph.RenderShape();
  EXPECT_EQ(graph.curveHandles[1], kNoHandle);
  graph.move(1, {-40, -40});
  expectAt(graph.point(1), 0, 0);
  graph.move(3, {30, 90});
  expectAt(graph.point(0), 0, 90);
  expectAt(graph.point(3), 388, 90);
  graph.move(0, {5, 65}, true);
  expectAt(graph.point(3), 388, 60);
  expectAt(graph.move(2, {150, 100}, true), 145.5, 90);  // the nearest of 8 lines each way
  expectAt(graph.point(2), 145.5, 90);
  graph.linkedEnds = false;
  graph.move(3, {388, 10});
  expectAt(graph.point(0), 0, 60);
  expectSound(graph);
}

TEST(EditedGraph, FindsTheUpperOfHandlesThatOverlap) {
  DrawnGraph graph({{0, 20}, {100, 120}, {104, 120}, {388, 20}});
  EXPECT_EQ(graph.pointAt({102, 121}), 2);
  EXPECT_EQ(graph.pointAt({92, 120}), 1);  // half a handle and its margin
  EXPECT_EQ(graph.pointAt({91, 120}), -1);
  EXPECT_EQ(graph.curveHandleAt(graph.curveHandles[2].getCenter()), 2);
  EXPECT_EQ(graph.curveHandleAt({-1, -1}), -1) << "what has no handle has none there";
  EXPECT_TRUE(graph.CloseEnough(100, 102.9f));  // whole pixels
  EXPECT_FALSE(graph.CloseEnough(100, 103));
}

TEST(EditedGraph, AddsAndDropsInnerPointsWithTheirMarkers) {
  DrawnGraph graph(line(4));
  graph.loopPoint = 2;
  graph.startPoint = 3;
  graph.curves[0] = 0.9;
  const GraphState before = graph.graphState();
  EXPECT_EQ(graph.addPoint({40, 30}), 1);
  EXPECT_EQ(graph.loopPoint, 3);
  EXPECT_EQ(graph.startPoint, 4);
  graph.curves[1] = 0.8;
  EXPECT_TRUE(graph.dropPoint(1));
  EXPECT_EQ(graph.curve(0), kEditedStraight);
  EXPECT_TRUE(graph.dropPoint(1));
  EXPECT_EQ(graph.loopPoint, 1);
  EXPECT_EQ(graph.startPoint, 2);
  EXPECT_FALSE(graph.dropPoint(0));
  EXPECT_FALSE(graph.dropPoint(3));
  EXPECT_EQ(graph.lastPoint, 3);
  graph.setGraphState(before);
  EXPECT_TRUE(sameGraph(graph.graphState(), before));
  DrawnGraph full(line(63));
  EXPECT_EQ(full.loopPoint, kNoLoopPoint);
  full.addPoint({200, 20});
  full.RenderShape();
  EXPECT_EQ(full.lastPoint, 63);
  EXPECT_LT(full.point(63).x, 388) << "the last one fell out";
  EXPECT_EQ(full.loopPoint, kNoLoopPoint);
  expectSound(full);
}

TEST(EditedGraph, BendsRisingAndFallingSegmentsToOneSide) {
  DrawnGraph graph({{0, 40}, {194, 200}, {388, 40}});
  const double before[] = {graph.shownY(97), graph.shownY(291)};
  graph.bendCurve(0, 0.5, -60);
  graph.bendCurve(1, 0.5, -60);
  graph.RenderShape();
  EXPECT_NEAR(graph.curve(0), 0.75, 1e-9);
  EXPECT_NEAR(graph.curve(1), 0.25, 1e-9);
  EXPECT_LT(graph.shownY(97), before[0] - 10);
  EXPECT_LT(graph.shownY(291), before[1] - 10);
  graph.bendCurve(0, 0.5, -900);
  EXPECT_EQ(graph.curve(0), 0.999999999998);
  graph.bendCurve(0, 0.5, 900);
  EXPECT_EQ(graph.curve(0), 1e-13);
  graph.bendCurve(1, 0.75, -60);
  EXPECT_EQ(graph.curve(1), 0.499999999998) << "never the pole";
}

// The fresh graph runs from top to bottom; its points come back from the effect rounded while they are dragged.
TEST(EditedGraph, BendsAllSegmentsToOneLook) {
  DrawnGraph graph({{0, 20}, {100, 100}, {200, 180}, {300, 100}, {388, 20}});
  graph.bendAllCurves(0, 0.5, 24);
  const double k = graph.curve(0);
  EXPECT_NEAR(k, 0.4, 1e-9);
  for (const auto& [segment, expected] : {std::pair{1, 1 - k}, {2, k}, {3, 1 - k}})
    EXPECT_NEAR(graph.curve(segment), expected, 1e-9) << segment;
  DrawnGraph fresh({{0, 0}, {194, 240}, {388, 0}});
  fresh.takePoints(fresh.storedPoints(Rounding::factor), model::kStoredSlots, Rounding::factor);
  fresh.bendAllCurves(0, 0.5, -36);
  EXPECT_NEAR(fresh.curve(0), 0.65, 1e-9);
  EXPECT_NEAR(fresh.curve(1), 0.35, 1e-9);
}

// --- Selection

TEST(Selection, MovesTogetherKeepsTheOrderAndMeasuresFromItsOrigins) {
  DrawnGraph graph({{0, 20}, {100, 120}, {140, 160}, {200, 60}, {388, 20}});
  graph.select({1, 2});
  graph.shift(30, -40);
  graph.shift(10, -20);  // from where they were
  graph.renewOrigins();
  graph.shift(20, -20);
  expectAt(graph.point(1), 130, 80);
  expectAt(graph.point(2), 170, 120);
  graph.shift(300, 0);  // the neighbour stops them
  expectAt(graph.point(1), 200, 100);
  expectAt(graph.point(2), 200, 140);
  graph.select({3});
  graph.shift(-200, 300);
  expectAt(graph.point(3), 200, 240);
  expectSound(graph);
}

TEST(Selection, KeepsTheEndsOfTheCycleAtOneHeight) {
  DrawnGraph graph({{0, 100}, {100, 120}, {388, 100}});
  graph.select({0, 1});
  graph.shift(50, -60);
  expectAt(graph.point(0), 0, 40);
  expectAt(graph.point(1), 150, 60);
  expectAt(graph.point(2), 388, 40);
  graph.select({2});  // the last one alone leads the first
  graph.shift(-100, 50);
  expectAt(graph.point(0), 0, 90);
  expectAt(graph.point(2), 388, 90);
  expectSound(graph);
}

TEST(Selection, StretchesAboutTheMiddle) {
  DrawnGraph graph({{0, 20}, {100, 60}, {300, 180}, {388, 20}});
  graph.select({1, 2});
  graph.shift(0, -20, Stretch::height);
  expectAt(graph.point(1), 100, 40);
  expectAt(graph.point(2), 300, 200);
  graph.renewOrigins();
  graph.shift(-20, 0, Stretch::width);
  expectAt(graph.point(1), 80, 40);
  expectAt(graph.point(2), 320, 200);
}

TEST(Selection, ByReachWeighsByDistanceAndStaysPutWithoutReach) {
  DrawnGraph graph(line(8));
  graph.selectByReach(4, {97, 120});
  ASSERT_EQ(graph.selection.size(), 5u);
  for (const auto& [entry, weight] : {std::pair{0, 0.0}, {1, 0.5}, {2, 1.0}, {3, 0.5}, {4, 0.0}})
    EXPECT_NEAR(graph.selection[at(entry)].weight, weight, 0.01) << entry;
  EXPECT_TRUE(graph.shift(0, -40));
  expectAt(graph.point(4), 194, 80);
  EXPECT_NEAR(graph.point(5).y, 100, 0.3);
  expectAt(graph.point(7), 388.0 * 7 / 8, 120);
  graph.selectByReach(2, {97, 40});
  EXPECT_FALSE(graph.shift(50, -100));
  EXPECT_NEAR(graph.point(2).x, 97, kNear);
}

TEST(Selection, GoesOnWithTheRestAndIsRemovedButForTheEnds) {
  DrawnGraph graph(line(8));
  graph.selectionRect = {70, 60, 215, 180};
  graph.selectInRect(8);
  graph.selectionActive = true;
  ASSERT_EQ(graph.selection.size(), 3u);
  graph.dropPoint(2);
  graph.shift(0, -40);
  for (const int i : {2, 3}) expectAt(graph.point(i), 48.5 * (i + 1), 80);
  expectAt(graph.point(4), 242.5, 120);
  graph.selectionRect = {-9, 60, 395, 150};
  graph.selectInRect(7);
  EXPECT_EQ(graph.selection.size(), 8u);
  EXPECT_EQ(graph.AllocateSelPoint(1, 7.0f), 9u);
  EXPECT_EQ(graph.selection.back().weight, 1.0f);
  while (graph.selection.size() < 64) graph.AllocateSelPoint(0, 1.0f);
  EXPECT_EQ(graph.AllocateSelPoint(0, 1.0f), ~std::uint32_t{0});
  graph.selectInRect(7);
  graph.removeSelected();
  EXPECT_EQ(graph.lastPoint, 1);
  expectAt(graph.point(1), 388, 120);
  EXPECT_TRUE(graph.selection.empty());
}

// --- Drawing by segments

TEST(Steps, AreFlatAndKeepTheCurveAround) {
  DrawnGraph graph({{0, 240}, {194, 0}, {388, 240}});
  const double left = graph.shownY(90), right = graph.shownY(160);
  for (const double x : {120.0, 125.0}) graph.step({x, 200});  // the cell from 97 to 145.5 of 8, as a drag does
  for (const double x : {98.0, 120.0, 144.0}) EXPECT_NEAR(graph.shownY(x), 200, 0.01) << x;
  EXPECT_NEAR(graph.shownY(90), left, 1.0);
  EXPECT_NEAR(graph.shownY(160), right, 1.5);
  expectSound(graph);
  graph.step({10, 100}, true);  // heights on the grid; the ends are linked
  EXPECT_NEAR(graph.shownY(20), 90, 0.01);
  expectAt(graph.point(graph.lastPoint), 388, 90);
  graph.step({385, 20}, true);
  EXPECT_NEAR(graph.shownY(380), 30, 0.01);
  expectSound(graph);
}

// Graphs whose last point fell out end before the right edge.
TEST(Steps, FillTheirCellAlsoWhereAGraphEndsInside) {
  for (const int removed : {0, 1, 9}) {
    DrawnGraph graph(line(63));
    graph.addPoint({200, 20});
    for (int n = 0; n < removed; ++n) graph.dropPoint(1);
    graph.RenderShape();
    ASSERT_LT(graph.point(graph.lastPoint).x, 388);
    graph.step({360, 200});  // the last cell, to 387.5
    graph.step({362, 200});
    expectSound(graph);
    for (const double x : {341.0, 365.0, 386.0}) EXPECT_NEAR(graph.shownY(x), 200, 0.01) << removed << ' ' << x;
  }
  std::vector<CPoint> points(64, {388, 120});
  for (std::size_t i = 0; i < 63; ++i) points[i].x = 330.0 * static_cast<double>(i) / 62;
  DrawnGraph graph(points);
  graph.addPoint({350, 100});
  graph.RenderShape();
  graph.step({360, 200});  // no place is left but the last one
  EXPECT_EQ(graph.point(63), CPoint(387.5, 200));
  expectSound(graph);
}

// --- Grid, stored units

TEST(Grid, HasSixteenStepsAndItsBrightLinesAtTheMajorOnes) {
  EXPECT_EQ(cellsOf(0.0f), 2);
  EXPECT_EQ(cellsOf(0.45f), 8);
  EXPECT_EQ(cellsOf(1.0f), 16);
  EXPECT_EQ(cellsOf(9.0f), 32);
  for (const auto& [cells, major] : {std::pair{8, 4}, {6, 3}, {12, 3}, {16, 4}, {5, 2}, {2, 1}, {32, 8}})
    EXPECT_EQ((GraphGrid{kWidth, kHeight, cells}).majorStep(), major) << cells;
}

TEST(StoredUnits, MeetAtTheRightEndAndStayWhereTheyAreOverManyTurns) {
  for (const double size : {1.0, 1.37, 1.5}) {
    EditedGraph graph(kWidth * size, kHeight * size, true);
    model::GraphPoints stored = model::freshGraph();
    stored.x[1] = 30000.0;
    stored.y[1] = 0.3;
    for (int turn = 0; turn < 50; ++turn) {
      graph.takePoints(stored, model::kStoredSlots, Rounding::factor);
      EXPECT_EQ(graph.points[2].x, graph.graphWidth);
      stored = graph.storedPoints(Rounding::factor);
    }
    EXPECT_EQ(stored.x[2], model::kGraphWidth);
    EXPECT_NEAR(stored.x[1], 30000.0, 0.1);
    EXPECT_NEAR(graph.points[1].x, 30000.0 / model::kGraphWidth * kWidth * size, 1e-3);
    EXPECT_NEAR(graph.points[1].y, 0.3 * kHeight * size, 1e-3);
    EXPECT_NEAR(graph.storedPoints(Rounding::none).y[1], 0.3, 1e-6);
  }
}

}  // namespace
