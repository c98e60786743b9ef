// SPDX-License-Identifier: MIT
#include "editor/controls/ResizeControl.h"

#include "editor/controls/ControlMessages.h"
#include "toolkit/views/CFrame.h"

using namespace VSTGUI;

// The listener may put a new corner in this one's place.
void ResizeControl::report(float newValue) {
  const Counted<ResizeControl> alive = this;
  value = newValue;
  if (listener) listener->valueChanged(this);
}

CMouseEventResult ResizeControl::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (checkDefaultValue(buttons)) {
    report(editor::kCornerChosenSize);
    value = editor::kCornerReleased;
    return kMouseEventHandled;
  }
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  value = editor::kCornerDragged;
  lastX = where.x;
  lastY = where.y;
  if (auto* const window = getFrame()) window->setCursor(kCursorSizeAll);
  return onMouseMoved(where, buttons);
}

CMouseEventResult ResizeControl::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton() || checkDefaultValue(buttons)) return kMouseEventNotHandled;
  if (where.x == lastX && where.y == lastY) return kMouseEventHandled;
  lastX = where.x;
  lastY = where.y;
  report(editor::kCornerDragged);
  return kMouseEventHandled;
}

CMouseEventResult ResizeControl::onMouseUp(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  report(editor::kCornerReleased);
  return kMouseEventHandled;
}
