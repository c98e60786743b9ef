// SPDX-License-Identifier: MIT
// The corner of the window that is dragged to resize it. [ui]
//
// Reports to its listener by its value, which editor/controls/ControlMessages.h names: at each step of a drag, whose
// place is in `lastX` and `lastY`; for a click with Control; at the release.
#pragma once

#include "toolkit/controls/CButtons.h"

class ResizeControl : public VSTGUI::CKickButton {
 public:
  using CKickButton::CKickButton;

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
