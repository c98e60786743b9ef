// SPDX-License-Identifier: MIT
// How edits get from the display into the effect, and back.
#include <filesystem>

#include "tests/editor/GraphWindow.h"
#include "toolkit/base/IDataPackage.h"

using namespace model;

namespace {

using namespace editor;
using namespace VSTGUI;

void expectCommitted(const GraphWindow& window, int graph) { expectSounds(*window.display, window.rig.fx(), graph); }

const std::vector<CPoint> kZigzag = {{0, 100}, {60, 20}, {120, 200}, {180, 40}, {388, 100}};

TEST(Commit, SendsAPointOfGraphOneAsAParameterGesture) {
  GraphWindow window;
  window.warmUp();
  window.show(kZigzag);
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 0);
  const std::string step = begun(xOf(2)) + begun(yOf(2));
  EXPECT_EQ(window.edits(), step + step);
  EXPECT_NEAR(window.rig.get(yOf(2)), 1 - 150.0 / 240, 1e-6);
  EXPECT_NEAR(window.rig.get(xOf(2)), 130.0 / 388, 1e-6);
  window.release();
  EXPECT_EQ(window.edits(), ended(xOf(2)) + ended(yOf(2)));
  window.idle();
  const CPoint handle = window.display->curveHandles[3].getCenter();
  window.drag({handle, {handle.x, handle.y + 20}});
  EXPECT_EQ(window.edits(), begun(curveOf(3)) + begun(curveOf(3)) + ended(curveOf(3)));
  window.drag({{0, 100}, {0, 50}});
  EXPECT_EQ(window.edits(), begun(yOf(0)) + begun(yOf(0)) + ended(yOf(0)));
  expectCommitted(window, 0);
}

TEST(Commit, EndsAGestureThatTurnedIntoAnotherOne) {
  for (const std::int32_t modifier : {kShift, kControl}) {
    GraphWindow window;
    window.warmUp();
    window.show(kZigzag);
    window.press({120, 200});
    window.edits();
    window.user().holdModifiers(modifier);  // a drawing by segments, or a selection by reach
    window.hover(150, 150);
    window.hover(160, 150);
    window.release();
    const std::string edits = window.edits();
    for (const int parameter : {xOf(2), yOf(2)})
      EXPECT_NE(edits.find("end " + std::to_string(parameter)), std::string::npos) << modifier;
    EXPECT_TRUE(window.display->openEdits.empty());
    expectCommitted(window, 0);
  }
}

TEST(Commit, CopiesOtherGraphsAndWhatParametersCantCarry) {
  GraphWindow window;
  window.warmUp();
  window.selectGraph(1);
  window.show(kZigzag);
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 1);
  window.release();
  window.drag({{40, 10}, {130, 220}});  // a selection of graph 2 doesn't touch graph 1
  window.drag({{130, 150}, {140, 140}});
  expectCommitted(window, 1);
  EXPECT_EQ(window.edits(), "");
  window.selectGraph(0);
  window.show(line(20));
  window.drag({{194, 120}, {194, 40}});  // point 10
  expectCommitted(window, 0);
  EXPECT_EQ(window.edits(), "");
  window.show({{0, 20}, {100, 100}, {200, 180}, {300, 100}, {388, 20}});
  window.drag({{50, 60}, {50, 84}}, kAlt);  // of all curves only one is what the parameter carries
  EXPECT_NEAR(window.rig.fx().envCurve[0][3], 1 - window.curve(0), 1e-6);
  window.rig.call(effMainsChanged, 0, 0);
  window.show(kZigzag);
  window.press({120, 200});  // suspended
  window.hover(130, 150);
  expectCommitted(window, 0);
  window.release();
  EXPECT_EQ(window.edits(), "");
}

TEST(Commit, LosesNothingBeforeTheFirstBlockNorWhereANoteSelectsAnotherGraph) {
  GraphWindow window;
  window.show(kZigzag);
  window.press({120, 200});
  window.hover(130, 150);
  expectCommitted(window, 0);
  EXPECT_NE(window.edits(), "");
  window.rig.fx().currentGraph = 4;  // the edit is one of the graph in view
  window.hover(140, 150);
  window.release();
  EXPECT_EQ(window.rig.fx().envNumPoints[4], 2);
  expectCommitted(window, 0);
}

TEST(Commit, MovesSelectedPointsOfGraphOneTogether) {
  GraphWindow window;
  window.warmUp();
  for (const int lastPoint : {6, 20}) {
    window.show(line(lastPoint));
    const double cell = kWidth / lastPoint;
    window.drag({{cell - 8, 100}, {cell * 4 + 8, 140}});
    window.edits();
    window.press({cell, 120});
    window.hover(cell * 2.2, 60);  // each beyond where its right neighbour was; the last one is stopped
    expectCommitted(window, 0);
    window.release();
    const std::string edits = window.edits();
    EXPECT_EQ(edits.find("begin"), std::string::npos);
    EXPECT_NE(edits.find(told(xOf(1)) + told(yOf(1))), std::string::npos);
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
}

TEST(Load, OfAutomatedPointsComesAtTheNextIdle) {
  GraphWindow window;
  window.warmUp();
  window.rig.set(yOf(1), 0.75);
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
  window.show(line(5));
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

TEST(RateStep, SkipsWhatIsSwitchedOff) {
  GraphWindow window;
  EXPECT_EQ(window.display->CalcRateTime(0.5f), 21.0f);
  const float third = 2.5f / 42;
  EXPECT_EQ(window.display->CalcRateTime(third), 2.0f);
  window.display->bTriplet = false;
  EXPECT_EQ(window.display->CalcRateTime(third), 1.0f);
  window.display->bDotted = false;
  EXPECT_EQ(window.display->CalcRateTime(third), 0.0f);
}

}  // namespace
