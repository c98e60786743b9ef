// SPDX-License-Identifier: MIT
// What a frame knows of those who use its window for a while: a popup that gets all of its events, and guests that must
// hear when the window goes. Both are made further up; the frame only speaks to them through these. [ui]
#pragma once

#include <functional>

#include "toolkit/base/PlatformFrame.h"

namespace VSTGUI {

class CView;

// Shown by `CFrame::openPopup`, which then owns it. After each event the frame asks whether it is finished, takes the
// report, destroys it, and only then runs the report, so that this may do anything, say open the next popup or close
// the frame. Points are in frame coordinates.
class FramePopup {
 public:
  virtual ~FramePopup() = default;

  // Once, when the frame has taken it: the time to open popup windows. The destructor closes these.
  virtual void open() = 0;
  virtual void mouseDown(const CPoint& where) = 0;
  virtual void mouseUp(const CPoint& where) = 0;
  virtual void mouseMoved(const CPoint& where) = 0;
  virtual void keyDown(const VstKeyCode& key) = 0;
  virtual void draw(PopupId popup, CDrawContext& context) const = 0;
  // The user went elsewhere, or the window goes: it is finished from now on.
  virtual void dismiss() = 0;
  [[nodiscard]] virtual bool isFinished() const = 0;
  // The view that it belongs to and without which it can't stay.
  [[nodiscard]] virtual const CView* getOwner() const = 0;
  // Tells whoever opened it how it ended; asked for once.
  [[nodiscard]] virtual std::function<void()> takeReport() = 0;
};

// Enters itself with `CFrame::addGuest` and leaves with `removeGuest`.
class FrameGuest {
 public:
  virtual ~FrameGuest() = default;

  // The window is about to close; the frame stays and may open again.
  virtual void frameCloses() = 0;
  // The frame itself goes and has let go of its guests.
  virtual void frameGoes() = 0;
};

}  // namespace VSTGUI
