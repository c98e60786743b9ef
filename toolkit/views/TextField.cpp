// SPDX-License-Identifier: MIT
#include "toolkit/views/TextField.h"

#include <algorithm>

#include "toolkit/base/Utf8.h"
#include "toolkit/views/CFrame.h"
#include "toolkit/views/COffscreenContext.h"

namespace VSTGUI {

namespace {

constexpr std::uint32_t kBlinkMs = 530;
constexpr std::size_t kMaxBytes = 4096;
constexpr CColor kSelectionColor{0, 114, 179};

bool isText(std::int32_t code) {
  return code >= 0x20 && code != 0x7f && code <= 0x10ffff && !(code >= 0xd800 && code <= 0xdfff);
}

}  // namespace

TextField::TextField(CFrame& frame, IPlatformTextEditCallback* callback, CView* owner)
    : frame_(&frame),
      callback_(callback),
      owner_(owner),
      text_(callback->platformGetText() ? callback->platformGetText() : ""),
      caret_(text_.size()),
      anchor_(caret_),
      blink_(Counted<CVSTGUITimer>::adopt(new CVSTGUITimer(this, kBlinkMs, true))) {
  TextField::updateSize();
}

TextField::~TextField() {
  blink_->stop();
  invalidate();
  if (frame_) frame_->textFieldClosed(this);
}

bool TextField::getText(char* buffer, std::uint32_t capacity) const {
  if (!buffer || capacity == 0) return false;
  std::size_t length = std::min<std::size_t>(text_.size(), capacity - 1);
  while (length < text_.size() && length > 0 && continuesCharacter(text_[length])) --length;  // no half characters
  std::copy_n(text_.begin(), length, buffer);
  buffer[length] = 0;
  return true;
}

bool TextField::setText(const char* text) {
  text_ = text ? text : "";
  caret_ = anchor_ = text_.size();
  invalidate();
  return true;
}

bool TextField::updateSize() {
  invalidate();
  size_ = callback_->platformGetSize();
  visible_ = callback_->platformGetVisibleSize();
  visible_.bound(size_);
  invalidate();
  return true;
}

CMessageResult TextField::notify(CBaseObject* /*sender*/, IdStringPtr /*message*/) {
  caretShown_ = !caretShown_;
  invalidate();
  return kMessageNotified;
}

void TextField::invalidate() const {
  if (frame_) frame_->invalidRect(visible_);
}

std::size_t TextField::before(std::size_t position) const {
  while (position > 0 && continuesCharacter(text_[--position])) {
  }
  return position;
}

std::size_t TextField::after(std::size_t position) const {
  if (position < text_.size()) ++position;
  while (position < text_.size() && continuesCharacter(text_[position])) ++position;
  return position;
}

double TextField::widthTo(CDrawContext& context, std::size_t position) const {
  return context.getStringWidth(text_.substr(0, position).c_str());
}

// Scrolled so far that the caret can be seen.
double TextField::textLeft(CDrawContext& context) const {
  const double inset = callback_->platformGetTextInset().x + 1;
  const double room = visible_.getWidth() - 2 * inset;
  const double width = widthTo(context, text_.size());
  if (width > room) return visible_.left + inset - std::max(0.0, widthTo(context, caret_) - room);
  const CHoriTxtAlign align = callback_->platformGetHoriTxtAlign();
  return visible_.left + inset + (align == kLeftText ? 0 : align == kRightText ? room - width : (room - width) / 2);
}

std::size_t TextField::positionAt(const CPoint& where) const {
  const auto context = Counted<COffscreenContext>::adopt(COffscreenContext::create(frame_, 1, 1));
  if (!context) return caret_;
  context->setFont(callback_->platformGetFont());
  const double x = where.x - textLeft(*context);
  std::size_t position = 0;
  double left = 0;
  while (position < text_.size()) {
    const std::size_t next = after(position);
    const double right = widthTo(*context, next);
    if (x < (left + right) / 2) break;
    position = next;
    left = right;
  }
  return position;
}

void TextField::moveCaret(std::size_t position, bool select) {
  caret_ = position;
  if (!select) anchor_ = position;
  caretShown_ = true;
  invalidate();
}

void TextField::mouseDown(const CPoint& where, CButtonState buttons) {
  if (buttons.isDoubleClick()) {
    anchor_ = 0;
    moveCaret(text_.size(), true);
  } else {
    moveCaret(positionAt(where), (buttons & kShift) != 0);
  }
}

void TextField::mouseMoved(const CPoint& where) { moveCaret(positionAt(where), true); }

void TextField::replaceSelection(const std::string& text) {
  const std::size_t start = selectionStart();
  if (text_.size() - (selectionEnd() - start) + text.size() > kMaxBytes) return;
  text_.replace(start, selectionEnd() - start, text);
  moveCaret(start + text.size(), false);
  changed();
}

void TextField::changed() {
  invalidate();
  callback_->platformTextDidChange();
}

bool TextField::keyDown(const VstKeyCode& key) { return moveKey(key) || clipboardKey(key) || editKey(key); }

bool TextField::moveKey(const VstKeyCode& key) {
  const bool select = (key.modifier & MODIFIER_SHIFT) != 0;
  const bool selected = caret_ != anchor_ && !select;
  switch (key.virt) {
    case VKEY_LEFT:
      moveCaret(selected ? selectionStart() : before(caret_), select);
      return true;
    case VKEY_RIGHT:
      moveCaret(selected ? selectionEnd() : after(caret_), select);
      return true;
    case VKEY_HOME:
      moveCaret(0, select);
      return true;
    case VKEY_END:
      moveCaret(text_.size(), select);
      return true;
    default:
      return false;
  }
}

bool TextField::clipboardKey(const VstKeyCode& key) {
  if ((key.modifier & MODIFIER_CONTROL) == 0 || !frame_ || !frame_->getPlatformFrame()) return false;
  IPlatformFrame& window = *frame_->getPlatformFrame();
  switch (key.character) {
    case 'a':
      anchor_ = 0;
      moveCaret(text_.size(), true);
      return true;
    case 'c':
    case 'x':
      if (caret_ == anchor_) return true;
      window.setClipboardText(text_.substr(selectionStart(), selectionEnd() - selectionStart()));
      if (key.character == 'x') replaceSelection("");
      return true;
    case 'v': {
      std::string pasted = window.getClipboardText();
      std::erase_if(pasted, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
      replaceSelection(pasted);
      return true;
    }
    default:
      return false;
  }
}

bool TextField::editKey(const VstKeyCode& key) {
  if (key.virt == VKEY_BACK || key.virt == VKEY_DELETE) {
    if (caret_ == anchor_) anchor_ = key.virt == VKEY_BACK ? before(caret_) : after(caret_);
    if (caret_ != anchor_) replaceSelection("");
    return true;
  }
  const std::int32_t code = key.virt == VKEY_SPACE ? ' ' : key.virt == 0 ? key.character : 0;
  if (!isText(code) || (key.modifier & (MODIFIER_CONTROL | MODIFIER_COMMAND)) != 0) return false;
  std::string typed;
  appendUtf8(typed, code);
  replaceSelection(typed);
  return true;
}

void TextField::leave() { callback_->platformLooseFocus(false); }

void TextField::draw(CDrawContext& context) const {
  context.saveGlobalState();
  context.setClipRect(visible_);
  context.setDrawMode(kAliasing);
  context.setLineWidth(1);
  context.setFillColor(callback_->platformGetBackColor());
  context.drawRect(visible_, kDrawFilled);
  context.setFont(callback_->platformGetFont());
  const double left = textLeft(context);
  const double middle = visible_.getCenter().y;
  const double half = context.getFontHeight() / 2;
  const double caretX = left + widthTo(context, caret_);
  if (caret_ != anchor_) {
    context.setFillColor(kSelectionColor);
    context.drawRect({left + widthTo(context, selectionStart()), middle - half, left + widthTo(context, selectionEnd()),
                      middle + half},
                     kDrawFilled);
  }
  context.setFontColor(callback_->platformGetFontColor());
  context.drawString(text_.c_str(), CRect(left, visible_.top, left, visible_.bottom), kLeftText);
  if (caretShown_) {
    context.setFrameColor(callback_->platformGetFontColor());
    context.drawLine({caretX, middle - half}, {caretX, middle + half});
  }
  context.restoreGlobalState();
}

}  // namespace VSTGUI
