// A frame of 200 by 100 in the host's window, which a view that writes down what it is told fills.
#pragma once

#include "tests/toolkit/Window.h"
#include "tests/toolkit/x11/Desktop.h"
#include "toolkit/views/CFrame.h"

// Writes down what it is told besides what a Probe does.
class Recorder : public Probe {
 public:
  explicit Recorder(const VSTGUI::CRect& size) : Probe(size, VSTGUI::kMouseEventHandled) { setWantsFocus(true); }
  void draw(VSTGUI::CDrawContext* context) override;
  VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override {
    lastMove = where;
    return Probe::onMouseMoved(where, buttons);
  }
  bool onWheel(const VSTGUI::CPoint&, const float& distance, const VSTGUI::CButtonState&) override {
    wheel += distance;
    return true;
  }
  std::int32_t onKeyDown(VSTGUI::VstKeyCode& key) override {
    keys.push_back(key);
    return key.virt == VSTGUI::VKEY_F1 ? VSTGUI::kKeyNotHandled : VSTGUI::kKeyHandled;
  }
  bool onDrop(VSTGUI::IDataPackage* drag, const VSTGUI::CPoint& where) override;

  VSTGUI::CPoint lastMove;
  float wheel = 0;
  std::vector<VSTGUI::VstKeyCode> keys;
  std::vector<std::string> dropped;
  int draws = 0;
};

class FrameDesktop : public Desktop, public VSTGUI::VSTGUIEditorInterface {
 protected:
  ~FrameDesktop() override;

  void idle() override;
  // Opens the frame; its window is in `window`.
  void open();

  VSTGUI::Counted<VSTGUI::CFrame> frame;
  Recorder* view = nullptr;
  std::function<void()> alsoIdle;  // at each turn of `until`
};
