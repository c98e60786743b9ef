// The corner of the window that is dragged to resize it. [ui]
//
// Reports to its listener by its value: 1 at each step of a drag, whose place is in `lastX` and `lastY`; 0.99 for a
// click with Control, which asks for the size that the user has chosen for new windows; 0 at the release.
#pragma once

#include "toolkit/controls/CButtons.h"

class ResizeControl : public VSTGUI::CKickButton {
 public:
  using CKickButton::CKickButton;

  static constexpr float kDragged = 1.0f;
  static constexpr float kChosenSize = 0.99f;
  static constexpr float kReleased = 0.0f;

  VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;

  VSTGUI_CLASS_WITH_COPY(ResizeControl, VSTGUI::CKickButton)

  // The pointer's last place in a drag.
  VSTGUI::CCoord lastX = 0;
  VSTGUI::CCoord lastY = 0;

 private:
  void report(float newValue);
};
