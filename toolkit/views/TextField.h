// SPDX-License-Identifier: MIT
// The single-line text field that a frame shows over its views. Internal to the frame. [ui]
//
// Positions are bytes of the UTF-8 text, on the borders of characters.
#pragma once

#include <string>

#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/views/PlatformTextEdit.h"

namespace VSTGUI {

class CDrawContext;
class CFrame;
class CView;

class TextField : public IPlatformTextEdit {
 public:
  // `owner` is the callback's view, null if the callback is none.
  TextField(CFrame& frame, IPlatformTextEditCallback* callback, CView* owner);
  TextField(const TextField&) = delete;
  TextField& operator=(const TextField&) = delete;
  ~TextField() override;

  bool getText(char* buffer, std::uint32_t capacity) const override;
  [[nodiscard]] const char* getText() const override { return text_.c_str(); }
  bool setText(const char* text) override;
  bool updateSize() override;
  CMessageResult notify(CBaseObject* sender, IdStringPtr message) override;

  // Points are in frame coordinates.
  [[nodiscard]] bool contains(const CPoint& where) const {
    return visible_.rectOverlap({where.x, where.y, where.x + 1, where.y + 1});
  }
  void mouseDown(const CPoint& where, CButtonState buttons);
  void mouseMoved(const CPoint& where);
  // True when the key did something here.
  bool keyDown(const VstKeyCode& key);
  void draw(CDrawContext& context) const;
  // The keyboard goes elsewhere.
  void leave();
  [[nodiscard]] IPlatformTextEditCallback* getCallback() const { return callback_; }
  [[nodiscard]] CView* getOwner() const { return owner_; }
  // The frame goes away before the field.
  void detach() { frame_ = nullptr; }

 private:
  [[nodiscard]] std::size_t before(std::size_t position) const;
  [[nodiscard]] std::size_t after(std::size_t position) const;
  [[nodiscard]] std::size_t selectionStart() const { return std::min(caret_, anchor_); }
  [[nodiscard]] std::size_t selectionEnd() const { return std::max(caret_, anchor_); }
  [[nodiscard]] double widthTo(CDrawContext& context, std::size_t position) const;
  [[nodiscard]] double textLeft(CDrawContext& context) const;
  [[nodiscard]] std::size_t positionAt(const CPoint& where) const;
  void moveCaret(std::size_t position, bool select);
  void replaceSelection(const std::string& text);
  bool moveKey(const VstKeyCode& key);
  bool editKey(const VstKeyCode& key);
  bool clipboardKey(const VstKeyCode& key);
  void changed();
  void invalidate() const;

  CFrame* frame_;
  IPlatformTextEditCallback* callback_;
  CView* owner_;
  std::string text_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0;  // the other end of the selection
  CRect size_;              // where the text is laid out
  CRect visible_;
  bool caretShown_ = true;
  Counted<CVSTGUITimer> blink_;
};

}  // namespace VSTGUI
