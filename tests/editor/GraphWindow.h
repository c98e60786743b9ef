// SPDX-License-Identifier: MIT
// The graph display in a window in memory, with an effect behind it; for the tests of the editor.
#pragma once

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "editor/controls/ControlMessages.h"
#include "editor/graph/GraphLink.h"
#include "editor/graph/GraphReports.h"
#include "editor/graph/LFODisplay.h"
#include "editor/panel/ReferenceSize.h"
#include "effect/ParameterTable.h"
#include "tests/editor/Graphs.h"
#include "tests/effect/TestHost.h"
#include "toolkit/headless/HeadlessPlatform.h"
#include "toolkit/views/CFrame.h"

// Parameters of graph 1.
constexpr int yOf(int point) { return model::kPoint1 + model::kNumbersOfPoint * point; }
constexpr int xOf(int point) { return yOf(point) + 1; }
constexpr int curveOf(int segment) { return yOf(segment) + 2; }

// What the host writes down of a parameter that goes out.
inline std::string told(int parameter) { return "set " + std::to_string(parameter) + ' '; }
inline std::string begun(int parameter) { return "begin " + std::to_string(parameter) + ' ' + told(parameter); }
inline std::string ended(int parameter) { return "end " + std::to_string(parameter) + ' ' + told(parameter); }

// The points and the table of the effect's graph are those that are shown.
inline void expectSounds(const LFODisplay& display, const LfoDSP& effect, int graph) {
  ASSERT_EQ(effect.envNumPoints[editor::at(graph)], display.lastPoint);
  const model::GraphPoints sounding = effect.pointsOf(graph), shown = display.storedPoints(editor::Rounding::none);
  for (std::size_t i = 0; i <= editor::at(display.lastPoint); ++i) {
    EXPECT_NEAR(sounding.x[i], shown.x[i], 0.05) << i;
    EXPECT_NEAR(sounding.y[i], shown.y[i], 1e-6) << i;
    EXPECT_NEAR(sounding.curve[i], shown.curve[i], 1e-6) << i;
  }
  int apart = 0;  // entries beside a jump may differ
  for (std::size_t i = 0; i < 65536; ++i)
    apart += std::abs(static_cast<float>(effect.graphTable[editor::at(graph)][i]) - display.shapeTable[i]) > 1e-4f;
  EXPECT_LE(apart, 2 * display.lastPoint);
}

// Passes reports and notices on as the panel does.
class GraphWindow : public VSTGUI::IControlListener, public AEffEditor {
 public:
  // `size` 1 is the reference size.
  explicit GraphWindow(double size = 1.0, double scaleFactor = 1.0) : AEffEditor(nullptr) {
    platform.scaleFactor = scaleFactor;
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform);
    const VSTGUI::CRect view(0, 0, editor::kGraphPlace.getWidth() * size, editor::kGraphPlace.getHeight() * size);
    frame = new VSTGUI::CFrame({0, 0, view.getWidth() + 2 * kMargin, view.getHeight() + 2 * kMargin}, nullptr);
    frame->open(nullptr);
    auto* const container = new VSTGUI::CViewContainer(VSTGUI::CRect(view).offset(kMargin, kMargin));
    frame->addView(container);
    display = new LFODisplay(view, this, editor::kGraphTag, std::trunc(kWidth * size + 0.5),
                             std::trunc(kHeight * size + 0.5), nullptr, {}, 1);
    display->effect = &rig.fx();
    container->addView(display);
    rig.fx().setEditor(this);
    editor::loadGraph(*display, rig.fx(), false);
  }
  GraphWindow(const GraphWindow&) = delete;
  GraphWindow& operator=(const GraphWindow&) = delete;
  ~GraphWindow() override {
    rig.fx().setEditor(nullptr);
    frame->close();
    frame->forget();
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, nullptr);
  }

  void valueChanged(VSTGUI::CControl* control) override {
    reports.push_back(control->getValue());
    editor::commitGraphEdit(*display, rig.fx());
  }
  void setParameter(VstInt32 index, float) override {
    if (index == model::kNoticeGraph) editor::loadGraph(*display, rig.fx(), false);
    if (index == model::kNoticePoint) reloads_ = true;
  }
  void idle() override {
    if (reloads_) editor::loadGraph(*display, rig.fx(), true);
    reloads_ = false;
    frame->idle();
  }

  VSTGUI::HeadlessFrame& user() { return *platform.frames().front(); }
  static VSTGUI::CPoint inFrame(double x, double y) { return {x + kMargin, y + kMargin}; }
  // Pointer gestures at positions of the graph, with modifier keys that are let go at the end.
  void drag(std::initializer_list<VSTGUI::CPoint> way, int modifiers = 0) {
    press(*way.begin(), modifiers);
    for (const VSTGUI::CPoint* p = way.begin() + 1; p != way.end(); ++p) hover(p->x, p->y);
    release();
  }
  void press(const VSTGUI::CPoint& p, int modifiers = 0) {
    platform.advance(1000);  // no double-click
    user().holdModifiers(modifiers);
    user().press(inFrame(p.x, p.y));
  }
  void release() {
    user().release();
    user().holdModifiers(0);
  }
  void hover(double x, double y) { user().moveTo(inFrame(x, y)); }
  void doubleClick(double x, double y) {
    platform.advance(1000);
    user().doubleClick(inFrame(x, y));
  }
  // Whose second press is not let go yet.
  void doublePress(double x, double y) {
    platform.advance(1000);
    user().click(inFrame(x, y));
    user().press(inFrame(x, y));
  }
  bool undo() { return user().key('z', 0, VSTGUI::MODIFIER_CONTROL); }
  bool redo() { return user().key('Z', 0, VSTGUI::MODIFIER_CONTROL | VSTGUI::MODIFIER_SHIFT); }

  // Gives the graph that is shown these points, in pixels at size 1; the last height becomes the first one's.
  void show(const std::vector<VSTGUI::CPoint>& points) {
    std::vector<EffectRig::Point> stored;
    for (const VSTGUI::CPoint& p : points) stored.push_back({p.x / kWidth * model::kGraphWidth, p.y / kHeight});
    rig.draw(rig.fx().currentGraph, stored);
    editor::loadGraph(*display, rig.fx(), false);
    reports.clear();
    rig.host.edits.clear();
  }
  void selectGraph(int g) { rig.set(model::kCurrentGraph, g / 11.0); }
  // The effect plays its first block.
  void warmUp() { rig.playOnes(64); }
  // What the host was told since the last call.
  std::string edits() { return std::exchange(rig.host.edits, {}); }

  VSTGUI::CPoint point(int i) const { return display->points[editor::at(i)]; }
  double curve(int s) const { return display->curves[editor::at(s)]; }
  float table(int g, int i) const { return rig.fx().graphTable[editor::at(g)][editor::at(i)]; }

  static constexpr double kMargin = 12;

  mutable EffectRig rig;
  VSTGUI::HeadlessPlatform platform;
  VSTGUI::CFrame* frame;
  LFODisplay* display;
  std::vector<float> reports;  // values of the control

 private:
  bool reloads_ = false;
};
