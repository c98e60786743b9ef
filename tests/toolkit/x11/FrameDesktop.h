// SPDX-License-Identifier: MIT
// A frame of 200 by 100 in the host's window, filled by a view that writes down its events.
#pragma once

#include "tests/toolkit/Window.h"
#include "tests/toolkit/x11/Desktop.h"
#include "toolkit/drawing/CDrawContext.h"

namespace VSTGUI {

// Red with a blue corner; writes down more than a Probe does.
class Recorder : public Probe {
 public:
  explicit Recorder(const CRect& size) : Probe(size, kMouseEventHandled) { setWantsFocus(true); }
  void draw(CDrawContext* context) override {
    ++draws;
    context->setFillColor(kRedCColor);
    context->drawRect(getViewSize(), kDrawFilled);
    context->setFillColor(kBlueCColor);
    context->drawRect({0, 0, 10, 10}, kDrawFilled);
  }
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override {
    lastMove = where;
    return Probe::onMouseMoved(where, buttons);
  }
  bool onWheel(const CPoint&, const float& distance, const CButtonState&) override {
    wheel += distance;
    return true;
  }
  std::int32_t onKeyDown(VstKeyCode& key) override {
    keys.push_back(key);
    return key.virt == VKEY_F1 ? kKeyNotHandled : kKeyHandled;
  }
  bool onDrop(IDataPackage* drag, const CPoint& where) override {
    for (std::uint32_t i = 0; i < drag->getCount(); ++i) {
      const void* data = nullptr;
      IDataPackage::Type type = IDataPackage::kError;
      const std::uint32_t size = drag->getData(i, data, type);
      dropped.emplace_back(static_cast<const char*>(data), size);
    }
    return Probe::onDrop(drag, where);
  }

  CPoint lastMove;
  float wheel = 0;
  std::vector<VstKeyCode> keys;
  std::vector<std::string> dropped;
  int draws = 0;
};

class FrameDesktop : public Desktop {
 protected:
  ~FrameDesktop() override {
    if (frame) frame->close();
  }

  void idle() override {
    if (frame) frame->idle();
    if (alsoIdle) alsoIdle();
  }
  // Opens the frame; its window is in `window`.
  void open() {
    frame = Counted<CFrame>::adopt(new CFrame({0, 0, 200, 100}, nullptr));
    view = new Recorder({0, 0, 200, 100});
    frame->addView(view);
    ASSERT_TRUE(frame->open(asParent(host)));
    window = childrenOf(host).at(0);
    ASSERT_TRUE(until([&] { return view->draws > 0; }));
  }

  Counted<CFrame> frame;
  Recorder* view = nullptr;
  std::function<void()> alsoIdle;  // at each turn of `until`
};

}  // namespace VSTGUI
