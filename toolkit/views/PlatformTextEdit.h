// SPDX-License-Identifier: MIT
// A single-line text field over a view, and what it asks of the view's owner. [ui]
//
// `CFrame::createPlatformTextEdit` opens one and gives it the keyboard; it closes when it is forgotten.
#pragma once

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CColor.h"
#include "toolkit/base/Events.h"
#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/CFont.h"
#include "toolkit/drawing/DrawTypes.h"

namespace VSTGUI {

class IPlatformTextEditCallback {
 public:
  virtual ~IPlatformTextEditCallback() = default;

  [[nodiscard]] virtual CColor platformGetBackColor() const = 0;
  [[nodiscard]] virtual CColor platformGetFontColor() const = 0;
  [[nodiscard]] virtual CFontRef platformGetFont() const = 0;
  [[nodiscard]] virtual CHoriTxtAlign platformGetHoriTxtAlign() const = 0;
  [[nodiscard]] virtual const char* platformGetText() const = 0;
  // Both in frame coordinates: the field, and the part of it that may be seen.
  [[nodiscard]] virtual CRect platformGetSize() const = 0;
  [[nodiscard]] virtual CRect platformGetVisibleSize() const = 0;
  [[nodiscard]] virtual CPoint platformGetTextInset() const = 0;
  // The field lost the keyboard: a press elsewhere, or another window.
  virtual void platformLooseFocus(bool returnPressed) = 0;
  virtual void platformTextDidChange() = 0;
  // Each key comes here first; true keeps it from the field.
  virtual bool platformOnKeyDown(const VstKeyCode& key) = 0;
};

class IPlatformTextEdit : public CBaseObject {
 public:
  // At most `capacity` - 1 bytes and a zero; false for no room at all.
  virtual bool getText(char* buffer, std::uint32_t capacity) const = 0;
  [[nodiscard]] virtual const char* getText() const = 0;
  virtual bool setText(const char* text) = 0;
  // Asks the callback for the rectangles again.
  virtual bool updateSize() = 0;
};

}  // namespace VSTGUI
