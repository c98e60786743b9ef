// How edits get from the display into the effect, and back.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "editor/graph/GraphTooltip.h"
#include "tests/editor/GraphWindow.h"
#include "toolkit/base/IDataPackage.h"

namespace {

using namespace editor;
using namespace VSTGUI;

// The table and the points that sound are those that are shown.
void expectCommitted(const GraphWindow& window, int graph) {
  const LFODisplay& display = *window.display;
  LfoDSP& effect = window.rig.fx();
  ASSERT_EQ(effect.envNumPoints[static_cast<std::size_t>(graph)], display.lastPoint);
  for (int i = 0; i <= display.lastPoint; ++i) {
    EXPECT_NEAR(effect.envX[graph][i], window.point(i).x / display.graphWidth * 65536, 0.01) << i;
    EXPECT_NEAR(effect.envY[graph][i], window.point(i).y / display.graphHeight, 1e-6) << i;
  }
  std::vector<float> sounding(65536), rendered(65536);
  for (int i = 0; i < 65536; ++i) sounding[static_cast<std::size_t>(i)] = window.table(graph, i);
  effect.renderEnv(graph);
  for (int i = 0; i < 65536; ++i) rendered[static_cast<std::size_t>(i)] = window.table(graph, i);
  int apart = 0;  // entries beside a jump may differ
  for (std::size_t i = 0; i < 65536; ++i) apart += std::abs(sounding[i] - rendered[i]) > 1e-4f;
  EXPECT_LE(apart, 8);
}

const std::vector<CPoint> kZigzag = {{0, 100}, {60, 20}, {120, 200}, {180, 40}, {388, 100}};

TEST(Commit, SendsAPointOfGraphOneAsAParameterGesture) {
  GraphWindow window;
  window.warmUp();
  window.show(kZigzag);
  window.rig.host.edits.clear();
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 0);
  EXPECT_EQ(window.rig.host.edits, "begin 49 set 49 begin 48 set 48 begin 49 set 49 begin 48 set 48 ");
  EXPECT_NEAR(window.rig.get(48), 1 - 150.0 / 240, 1e-6);
  EXPECT_NEAR(window.rig.get(49), 130.0 / 388, 1e-6);
  window.rig.host.edits.clear();
  window.release();
  EXPECT_EQ(window.rig.host.edits, "end 49 set 49 end 48 set 48 ");
  window.rig.host.edits.clear();
  window.idle();
  const CPoint handle = window.display->curveHandles[3].getCenter();
  window.drag({handle, {handle.x, handle.y + 20}});
  EXPECT_EQ(window.rig.host.edits, "begin 53 set 53 begin 53 set 53 end 53 set 53 ");
  window.rig.host.edits.clear();
  window.drag({{0, 100}, {0, 50}});
  EXPECT_EQ(window.rig.host.edits, "begin 42 set 42 begin 42 set 42 end 42 set 42 ");
  expectCommitted(window, 0);
}

TEST(Commit, EndsAGestureThatTurnedIntoAnotherOne) {
  for (const std::int32_t modifier : {kShift, kControl}) {
    GraphWindow window;
    window.warmUp();
    window.show(kZigzag);
    window.press({120, 200});
    window.rig.host.edits.clear();
    window.user().holdModifiers(modifier);  // a drawing by segments, or a selection by reach
    window.hover(150, 150);
    window.hover(160, 150);
    window.release();
    EXPECT_NE(window.rig.host.edits.find("end 48"), std::string::npos) << modifier;
    EXPECT_NE(window.rig.host.edits.find("end 49"), std::string::npos) << modifier;
    EXPECT_TRUE(window.display->openEdits.empty());
    expectCommitted(window, 0);
  }
}

TEST(Commit, CopiesOtherGraphsAndWhatParametersCantCarry) {
  GraphWindow window;
  window.warmUp();
  window.selectGraph(1);
  window.show(kZigzag);
  window.rig.host.edits.clear();
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 1);
  window.release();
  window.drag({{40, 10}, {130, 220}});  // a selection of graph 2 doesn't touch graph 1
  window.drag({{130, 150}, {140, 140}});
  expectCommitted(window, 1);
  window.selectGraph(0);
  window.showLine(20);
  window.drag({{194, 120}, {194, 40}});  // point 10
  expectCommitted(window, 0);
  window.rig.call(effMainsChanged, 0, 0);
  window.show(kZigzag);
  window.press({120, 200});  // suspended
  window.hover(130, 150);
  expectCommitted(window, 0);
  window.release();
  EXPECT_EQ(window.rig.host.edits, "");
}

TEST(Commit, GoesToTheGraphInViewAlsoWhenANoteJustSelectedAnother) {
  GraphWindow window;
  window.show(kZigzag);
  window.press({120, 200});
  window.rig.fx().currentGraph = 4;
  window.hover(130, 150);
  window.release();
  EXPECT_EQ(window.rig.fx().envNumPoints[4], 2);
  expectCommitted(window, 0);
}

TEST(Commit, LosesNothingBeforeTheFirstBlock) {
  GraphWindow window;
  window.show(kZigzag);
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 0);
  EXPECT_NE(window.rig.host.edits, "");
  window.release();
}

TEST(Commit, MovesSelectedPointsOfGraphOneTogether) {
  GraphWindow window;
  window.warmUp();
  for (const int lastPoint : {6, 20}) {
    window.showLine(lastPoint);
    const double cell = 388.0 / lastPoint;
    window.drag({{cell - 8, 100}, {cell * 4 + 8, 140}});
    window.rig.host.edits.clear();
    window.press({cell, 120});
    window.hover(cell * 1.9, 60);  // each beyond where its right neighbour was
    expectCommitted(window, 0);
    window.release();
    EXPECT_EQ(window.rig.host.edits.find("begin"), std::string::npos);
    EXPECT_NE(window.rig.host.edits.find("set 46 set 45"), std::string::npos);
  }
}

TEST(Load, TakesTheGraphPinsItsEndsAndEndsGestures) {
  GraphWindow window(1.5);
  window.rig.draw(0, {{0, 0.25}, {30000, 0.5, 0.9}, {65536, 0.75}});
  window.display->selectionActive = true;
  window.display->pressedPoint = 40;
  loadGraph(*window.display, window.rig.fx(), false);
  EXPECT_FALSE(window.display->selectionActive);
  EXPECT_EQ(window.display->pressedPoint, -1);
  EXPECT_EQ(window.point(2), CPoint(582, 90));
  EXPECT_NEAR(window.point(1).x, 30000.0 / 65536 * 582, 1e-4);
  EXPECT_EQ(window.curve(1), 0.9);
  EXPECT_NEAR(window.table(0, 65535), 0.75f, 1e-3f);  // the table went back
  for (int turn = 0; turn < 50; ++turn) {
    commitGraphEdit(*window.display, window.rig.fx());
    loadGraph(*window.display, window.rig.fx(), false);
  }
  EXPECT_EQ(window.rig.fx().envX[0][2], 65536.0);
  EXPECT_NEAR(window.rig.fx().envX[0][1], 30000.0, 0.1);
}

TEST(Load, OfAutomatedPointsComesAtTheNextIdle) {
  GraphWindow window;
  window.warmUp();
  window.rig.set(kPoint1 + 3, 0.75);
  EXPECT_NEAR(window.point(1).y, 240, 1e-3);
  window.idle();
  EXPECT_NEAR(window.point(1).y, 60, 1e-3);
  EXPECT_NEAR(window.display->shapeTable[32768], 0.75f, 1e-3f);
}

TEST(Drop, LoadsShapesAndPresetsAndRefusesTheRest) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(testing::TempDir()) / "graph-drop";
  fs::create_directories(folder);
  const std::string shape = folder / "Two steps.SHP", preset = folder / "Slow.fxp", text = folder / "notes.txt";
  GraphWindow window;
  window.show({{0, 50}, {100, 200}, {388, 50}});
  window.rig.fx().SaveShape(shape.c_str());
  window.rig.set(kSwing, 0.75);
  window.rig.fx().SavePreset(preset.c_str());
  window.rig.set(kSwing, 0.25);
  window.showLine(5);
  const auto drop = [&](const std::string& path) {
    const auto package = Counted<CDropSource>::adopt(
        new CDropSource(path.data(), static_cast<std::uint32_t>(path.size()), IDataPackage::kFilePath));
    window.user().dragEnter(package, GraphWindow::inFrame(200, 100));
    const CCursorType cursor = window.user().cursor();
    EXPECT_TRUE(window.user().drop(GraphWindow::inFrame(200, 100)));
    return cursor;
  };
  EXPECT_EQ(drop(text), kCursorNotAllowed);
  EXPECT_EQ(window.display->lastPoint, 5);
  EXPECT_EQ(drop(shape), kCursorCopy);
  EXPECT_EQ(window.display->lastPoint, 2);
  EXPECT_STREQ(window.display->overlayText.data(), "Two steps");
  EXPECT_EQ(window.display->overlayTimer, 500);
  EXPECT_TRUE(window.undo());  // a dropped shape can be taken back
  EXPECT_EQ(window.display->lastPoint, 5);
  EXPECT_EQ(drop(preset), kCursorCopy);
  EXPECT_FLOAT_EQ(window.rig.get(kSwing), 0.75f);
  const auto empty = Counted<CDropSource>::adopt(new CDropSource);
  EXPECT_FALSE(window.display->onDrop(empty, {10, 10}));
  window.user().dragEnter(empty, GraphWindow::inFrame(200, 100));
  window.user().dragLeave();
  EXPECT_EQ(window.user().cursor(), kCursorNotAllowed);
  window.hover(100, 30);
  EXPECT_EQ(window.user().cursor(), kCursorDefault);
  fs::remove_all(folder);
}

TEST(Scope, IsCopiedBehindTheWritePositionAlsoOverItsWrap) {
  GraphWindow window;
  LfoDSP& effect = window.rig.fx();
  std::int32_t readIndex = 0;
  const auto readAt = [&](int position, float sample) {
    for (int i = 0; i < 65536; ++i) effect.scopeOut[i] = sample;
    effect.displayIndex = position;
    readScope(*window.display, effect, readIndex);
  };
  readAt(60000, 0.25f);
  EXPECT_EQ(window.display->scopeOutCopy[59743], 0.25f);
  EXPECT_EQ(window.display->scopeOutCopy[59744], 0.0f);
  readAt(1256, 0.5f);  // the tail, then the head
  EXPECT_EQ(window.display->scopeOutCopy[65535], 0.5f);
  EXPECT_EQ(window.display->scopeOutCopy[999], 0.5f);
  EXPECT_EQ(window.display->scopeOutCopy[1000], 0.25f);
  EXPECT_EQ(readIndex, 1000);
}

TEST(Scope, ShowsTheExtremesOfEachPixelColumn) {
  std::vector<float> samples(kDisplayTable, 0.0f);
  samples[168 * 5 + 3] = 0.5f;
  samples[168 * 5 + 167] = -0.75f;
  const ScopeOutline calm = scopeOutline(samples, 388, 0.01);
  EXPECT_FALSE(calm.filled);
  const auto& line = calm.path->getElements();
  ASSERT_EQ(line.size(), 1u + 2 * 388 + 1);
  EXPECT_EQ(line[1 + 2 * 5].points[0], CPoint(5, -0.75));
  EXPECT_EQ(line[2 + 2 * 5].points[0], CPoint(5, 0.5));
  EXPECT_EQ(line[1 + 2 * 6].points[0], CPoint(6, 0.0));
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = i < 32768 ? (i % 2 ? 0.25f : -0.5f) : 1.0f;
  const ScopeOutline dense = scopeOutline(samples, 388, 0.125);
  EXPECT_TRUE(dense.filled);
  const auto bar = [&](std::size_t x) { return &dense.path->getElements()[5 * x]; };  // top left, and two lines on
  EXPECT_EQ(bar(7)[0].points[0], CPoint(7, -0.5));
  EXPECT_EQ(bar(7)[2].points[0], CPoint(8, 0.25));
  EXPECT_EQ(bar(196)[0].points[0], CPoint(196, 1.0));  // a pixel high, from one that met the last wave
  EXPECT_EQ(bar(196)[2].points[0], CPoint(197, 1.125));
  EXPECT_EQ(scopeOutline(samples, 70000, 0.1).path->getElements()[0].points[0].y, -1);  // no samples: all of it
}

TEST(PointText, NamesBeatsCyclesAndPercent) {
  EXPECT_EQ(pointText(0.375, 0.625, 0.5), "3/16 beat  \u00b7  62.5 %");
  EXPECT_EQ(pointText(1.0 / 3, 0, 1), "1/3 beat  \u00b7  0.0 %");
  EXPECT_EQ(pointText(0.75, 1, 2), "1 1/2 beats  \u00b7  100.0 %");
  EXPECT_EQ(pointText(1, 1, 16), "16 beats  \u00b7  100.0 %");
  EXPECT_EQ(pointText(0.4381, 0.5, 1), "0.438 beat  \u00b7  50.0 %");
  EXPECT_EQ(pointText(0.25, 0.5, 0), "1/4 cycle  \u00b7  50.0 %");
  const CRect area(0, 0, 388, 240);
  EXPECT_EQ(besidePoint({100, 100}, 80, 16, 10, area), CRect(110, 74, 190, 90));
  EXPECT_EQ(besidePoint({380, 3}, 80, 16, 10, area), CRect(290, 13, 370, 29));
}

TEST(RateStep, SkipsWhatIsSwitchedOff) {
  GraphWindow window;
  EXPECT_EQ(window.display->CalcRateTime(0.5f), 21.0f);
  EXPECT_EQ(window.display->CalcRateTime(2.5f / 42), 2.0f);
  window.display->bTriplet = false;
  EXPECT_EQ(window.display->CalcRateTime(2.5f / 42), 1.0f);
  window.display->bDotted = false;
  EXPECT_EQ(window.display->CalcRateTime(2.5f / 42), 0.0f);
}

}  // namespace
