// The graph display in a window in memory, with an effect behind it; for the tests of the editor.
#pragma once

#include <cmath>
#include <initializer_list>
#include <memory>
#include <vector>

#include "editor/graph/GraphLink.h"
#include "editor/graph/GraphScope.h"
#include "editor/graph/LFODisplay.h"
#include "effect/ParameterTable.h"
#include "tests/effect/TestHost.h"
#include "toolkit/headless/HeadlessPlatform.h"
#include "toolkit/views/CFrame.h"

// At 1 the graph is 388 by 240 pixels in a view of 400 by 244. Passes reports and notices on as the panel does.
class GraphWindow : public VSTGUI::IControlListener, public AEffEditor {
 public:
  explicit GraphWindow(double size = 1.0, double scaleFactor = 1.0) : AEffEditor(nullptr) {
    platform.scaleFactor = scaleFactor;
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform);
    const double width = std::trunc(388 * size + 0.5);
    const double height = std::trunc(240 * size + 0.5);
    const VSTGUI::CRect view(0, 0, 400 * size, 244 * size);
    frame = new VSTGUI::CFrame({0, 0, view.getWidth() + 2 * kMargin, view.getHeight() + 2 * kMargin}, nullptr);
    frame->open(nullptr);
    auto* const container = new VSTGUI::CViewContainer(VSTGUI::CRect(view).offset(kMargin, kMargin));
    frame->addView(container);
    display = new LFODisplay(view, this, 88, width, height, nullptr, {}, 1);
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
    if (index == kNoticeGraph) editor::loadGraph(*display, rig.fx(), false);
    if (index == kNoticePoint) reloads_ = true;
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
    for (const VSTGUI::CPoint* p = way.begin() + 1; p != way.end(); ++p) user().moveTo(inFrame(p->x, p->y));
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
  bool undo() { return user().key('z', 0, VSTGUI::MODIFIER_CONTROL); }
  bool redo() { return user().key('Z', 0, VSTGUI::MODIFIER_CONTROL | VSTGUI::MODIFIER_SHIFT); }

  // Gives the graph that is shown these points, in pixels at size 1; the last height becomes the first one's.
  void show(const std::vector<VSTGUI::CPoint>& points) {
    std::vector<EffectRig::Point> stored;
    for (const VSTGUI::CPoint& p : points) stored.push_back({p.x / 388 * 65536, p.y / 240});
    rig.draw(rig.fx().currentGraph, stored);
    editor::loadGraph(*display, rig.fx(), false);
    reports.clear();
  }
  void showLine(int lastPoint, double y = 120) {
    std::vector<VSTGUI::CPoint> points;
    for (int i = 0; i <= lastPoint; ++i) points.emplace_back(388.0 * i / lastPoint, y);
    show(points);
  }
  void selectGraph(int g) { rig.set(kCurrentGraph, g / 11.0); }
  // The effect plays its first block.
  void warmUp() { rig.playOnes(64); }

  VSTGUI::CPoint point(int i) const { return display->points[static_cast<std::size_t>(i)]; }
  double curve(int s) const { return display->curves[static_cast<std::size_t>(s)]; }
  float table(int g, int i) const {
    return rig.fx().graphTable[static_cast<std::size_t>(g)][static_cast<std::size_t>(i)];
  }
  // Y of the sounding graph in pixels at size 1.
  double soundingY(int g, double x) const {
    return 240.0 * (1.0 - static_cast<double>(table(g, static_cast<int>(x / 388 * 65536))));
  }

  static constexpr double kMargin = 12;

  mutable EffectRig rig;
  VSTGUI::HeadlessPlatform platform;
  VSTGUI::CFrame* frame;
  LFODisplay* display;
  std::vector<float> reports;  // values of the control

 private:
  bool reloads_ = false;
};
