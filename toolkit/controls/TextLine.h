// SPDX-License-Identifier: MIT
// One line of text in a dialog. [ui]
#pragma once

#include <string>

#include "toolkit/base/CColor.h"
#include "toolkit/views/CView.h"

namespace VSTGUI {

class TextLine : public CView {
 public:
  TextLine(const CRect& size, const CColor& color) : CView(size), color_(color) {}
  void setText(std::string text);
  void draw(CDrawContext* context) override;

 private:
  CColor color_;
  std::string text_;
};

}  // namespace VSTGUI
