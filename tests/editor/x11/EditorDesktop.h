// The whole editor in the window of a host on a real screen, reached through the effect's record as hosts do.
#pragma once

#include <functional>
#include <vector>

#include "editor/controls/ResizeControl.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"
#include "tests/effect/TestHost.h"
#include "tests/toolkit/x11/Desktop.h"
#include "toolkit/views/CFrame.h"

class EditorDesktop : public Desktop {
 protected:
  virtual AEffect* record() = 0;
  VstIntPtr call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f) {
    return record()->dispatcher(record(), opcode, index, value, ptr, opt);
  }
  void idle() override { call(effEditIdle); }

  // Makes the host's window as large as the editor wants it and opens the editor in it.
  void open();
  void close() { call(effEditClose); }
  [[nodiscard]] bool isWindowThere() const { return gui->getFrame() && gui->getFrame()->isOpen(); }
  [[nodiscard]] std::pair<int, int> rectSize();
  [[nodiscard]] std::pair<int, int> sizeOf(xcb_window_t which);

  // Places in the window, at pixels of the graph.
  [[nodiscard]] VSTGUI::CPoint inGraph(double x, double y) const;
  [[nodiscard]] VSTGUI::CPoint placeOf(int graphPoint) const;
  [[nodiscard]] VSTGUI::CPoint corner() const { return gui->resizeCorner->getViewSize().getCenter(); }
  void pointAt(const VSTGUI::CPoint& place) { point(static_cast<int>(place.x), static_cast<int>(place.y)); }

  LFOGUI* gui = nullptr;  // the effect's
};
