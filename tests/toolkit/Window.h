// A frame in memory with what its views report; for the tests of the toolkit.
#pragma once

#include <string>
#include <vector>

#include "toolkit/base/IControlListener.h"
#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/controls/CControl.h"
#include "toolkit/headless/HeadlessPlatform.h"
#include "toolkit/views/CFrame.h"

// One open frame of 200 by 100 on a platform of its own.
class Window : public VSTGUI::VSTGUIEditorInterface {
 public:
  explicit Window(double scaleFactor = 1.0) {
    platform.scaleFactor = scaleFactor;
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform);
    frame = new VSTGUI::CFrame({0, 0, 200, 100}, this);
    frame->open(nullptr);
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() override {
    frame->close();
    frame->forget();
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, nullptr);
  }
  VSTGUI::HeadlessFrame& user() { return *platform.frames().front(); }
  bool beforeSizeChange(const VSTGUI::CRect&, const VSTGUI::CRect&) override { return !refusesSize; }
  std::int32_t getKnobMode() const override { return VSTGUI::kLinearMode; }

  VSTGUI::HeadlessPlatform platform;
  VSTGUI::CFrame* frame;
  bool refusesSize = false;
};

// Writes down what it is told, one word an event.
class Listener : public VSTGUI::IControlListener {
 public:
  void valueChanged(VSTGUI::CControl* control) override { values.push_back(control->getValue()); }
  void controlBeginEdit(VSTGUI::CControl*) override { told += "begin "; }
  void controlEndEdit(VSTGUI::CControl*) override { told += "end "; }
  void MouseOver(VSTGUI::CControl*) override { told += "over "; }
  void MouseExit(VSTGUI::CControl*) override { told += "exit "; }

  std::vector<float> values;
  std::string told;
};

// Writes down its events and answers presses as told.
class Probe : public VSTGUI::CView {
 public:
  Probe(const VSTGUI::CRect& size, VSTGUI::CMouseEventResult answer) : CView(size), answer_(answer) {}
  VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override {
    lastPress = where;
    pressWord = buttons;
    log += "down ";
    return answer_;
  }
  VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint&, const VSTGUI::CButtonState&) override {
    log += "up ";
    return VSTGUI::kMouseEventHandled;
  }
  VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint&, const VSTGUI::CButtonState& buttons) override {
    log += buttons.getButtonState() ? "drag " : "move ";
    return VSTGUI::kMouseEventHandled;
  }
  VSTGUI::CMouseEventResult onMouseEntered(VSTGUI::CPoint&, const VSTGUI::CButtonState&) override {
    log += "enter ";
    return VSTGUI::kMouseEventHandled;
  }
  VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint&, const VSTGUI::CButtonState&) override {
    log += "exit ";
    return VSTGUI::kMouseEventHandled;
  }
  bool onDrop(VSTGUI::IDataPackage*, const VSTGUI::CPoint&) override {
    log += "drop ";
    return true;
  }
  void onDragEnter(VSTGUI::IDataPackage*, const VSTGUI::CPoint&) override { log += "dragenter "; }
  void onDragMove(VSTGUI::IDataPackage*, const VSTGUI::CPoint&) override { log += "dragmove "; }
  void onDragLeave(VSTGUI::IDataPackage*, const VSTGUI::CPoint&) override { log += "dragleave "; }

  std::string log;
  VSTGUI::CPoint lastPress;
  std::int32_t pressWord = 0;

 private:
  VSTGUI::CMouseEventResult answer_;
};
