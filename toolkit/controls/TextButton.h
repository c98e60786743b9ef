// SPDX-License-Identifier: MIT
// A button with a title in a dialog: pressed when the left button goes down and up on it. [ui]
#pragma once

#include <functional>
#include <string>

#include "toolkit/views/CView.h"

namespace VSTGUI {

class TextButton : public CView {
 public:
  TextButton(const CRect& size, std::string title, std::function<void()> pressed)
      : CView(size), title_(std::move(title)), pressed_(std::move(pressed)) {}
  void setTitle(std::string title);

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons) override;

 private:
  void setLook(bool down, bool over);

  std::string title_;
  std::function<void()> pressed_;
  bool down_ = false;
  bool over_ = false;
};

}  // namespace VSTGUI
