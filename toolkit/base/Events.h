// SPDX-License-Identifier: MIT
// What mouse and keyboard events carry, and what their handlers answer.
#pragma once

#include <cstdint>

namespace VSTGUI {

// The bits of the button word.
enum CButton : std::int32_t {
  kLButton = 2,
  kMButton = 4,
  kRButton = 8,
  kShift = 16,
  kControl = 32,  // Control; Command on a Mac
  kAlt = 64,
  kApple = 128,  // Super; the Mac's own Control key
  kButton4 = 256,
  kButton5 = 512,
  kDoubleClick = 1024,
};

inline constexpr std::int32_t kAnyButton = 0x30E;
inline constexpr std::int32_t kAnyModifier = 0xF0;

class CButtonState {
 public:
  constexpr CButtonState(std::int32_t word = 0) noexcept : word_(word) {}  // NOLINT: the word is the state
  constexpr operator std::int32_t() const noexcept { return word_; }       // NOLINT: the word is the state

  [[nodiscard]] constexpr std::int32_t getButtonState() const noexcept { return word_ & kAnyButton; }
  [[nodiscard]] constexpr std::int32_t getModifierState() const noexcept { return word_ & kAnyModifier; }
  [[nodiscard]] constexpr bool isLeftButton() const noexcept { return getButtonState() == kLButton; }
  [[nodiscard]] constexpr bool isRightButton() const noexcept { return getButtonState() == kRButton; }
  [[nodiscard]] constexpr bool isDoubleClick() const noexcept { return (word_ & kDoubleClick) != 0; }

 private:
  std::int32_t word_;
};

enum CMouseEventResult : std::int32_t {
  kMouseEventNotImplemented = 0,
  kMouseEventHandled = 1,
  kMouseEventNotHandled = 2,
  kMouseDownEventHandledButDontNeedMovedOrUpEvents = 3,
};

// A key as the VST 2 interface describes it; same fields and layout.
struct VstKeyCode {
  std::int32_t character = 0;  // Unicode, 0 for a key without one
  std::uint8_t virt = 0;       // a VstVirtualKey, 0 for a plain character
  std::uint8_t modifier = 0;   // VstModifierKey bits
};

enum VstVirtualKey : std::uint8_t {
  VKEY_BACK = 1,
  VKEY_TAB = 2,
  VKEY_RETURN = 4,
  VKEY_ESCAPE = 6,
  VKEY_SPACE = 7,
  VKEY_END = 9,
  VKEY_HOME = 10,
  VKEY_LEFT = 11,
  VKEY_UP = 12,
  VKEY_RIGHT = 13,
  VKEY_DOWN = 14,
  VKEY_PAGEUP = 15,
  VKEY_PAGEDOWN = 16,
  VKEY_ENTER = 19,
  VKEY_INSERT = 21,
  VKEY_DELETE = 22,
  VKEY_F1 = 40,  // to F12 = 51
  VKEY_SHIFT = 54,
  VKEY_CONTROL = 55,
  VKEY_ALT = 56,
};

enum VstModifierKey : std::uint8_t {
  MODIFIER_SHIFT = 1,
  MODIFIER_ALTERNATE = 2,
  MODIFIER_COMMAND = 4,  // Super
  MODIFIER_CONTROL = 8,
};

// What onKeyDown and onKeyUp answer.
inline constexpr std::int32_t kKeyHandled = 1;
inline constexpr std::int32_t kKeyNotHandled = -1;

enum CCursorType : std::int32_t {
  kCursorDefault = 0,
  kCursorVSize = 3,
  kCursorSizeAll = 4,
  kCursorCopy = 7,
  kCursorNotAllowed = 8,
  kCursorHand = 9,
};

}  // namespace VSTGUI
