// SPDX-License-Identifier: MIT
// A line for typing a name in a dialog; has a text field while it has the focus. [ui]
#pragma once

#include <functional>
#include <string>

#include "toolkit/views/CView.h"
#include "toolkit/views/PlatformTextEdit.h"

namespace VSTGUI {

class NameField : public CView, public IPlatformTextEditCallback {
 public:
  // Each key is offered to `key` first; true keeps it from the text. May be empty.
  using Key = std::function<bool(const VstKeyCode& key)>;
  NameField(const CRect& size, std::string text, Key key);
  NameField(const NameField&) = delete;
  NameField& operator=(const NameField&) = delete;

  [[nodiscard]] std::string getText() const { return field_ ? field_->getText() : text_; }
  void setText(const std::string& text);

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  void takeFocus() override;
  void looseFocus() override;

  [[nodiscard]] CColor platformGetBackColor() const override;
  [[nodiscard]] CColor platformGetFontColor() const override;
  [[nodiscard]] CFontRef platformGetFont() const override { return kNormalFont; }
  [[nodiscard]] CHoriTxtAlign platformGetHoriTxtAlign() const override { return kLeftText; }
  [[nodiscard]] const char* platformGetText() const override { return text_.c_str(); }
  [[nodiscard]] CRect platformGetSize() const override;
  [[nodiscard]] CRect platformGetVisibleSize() const override { return platformGetSize(); }
  [[nodiscard]] CPoint platformGetTextInset() const override { return {5, 0}; }
  void platformLooseFocus(bool returnPressed) override;
  void platformTextDidChange() override {}
  bool platformOnKeyDown(const VstKeyCode& key) override { return key_ && key_(key); }

 private:
  std::string text_;
  Key key_;
  IPlatformTextEdit* field_ = nullptr;
};

}  // namespace VSTGUI
