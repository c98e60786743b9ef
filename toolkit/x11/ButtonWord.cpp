// SPDX-License-Identifier: MIT
#include "toolkit/x11/ButtonWord.h"

#include <array>

#include "toolkit/base/Events.h"

namespace VSTGUI::X11 {

namespace {

struct Bit {
  std::uint16_t state;  // in an event's state
  std::int32_t word;    // in the button word
};
constexpr auto kModifiers = std::to_array<Bit>(
    {{XCB_MOD_MASK_SHIFT, kShift}, {XCB_MOD_MASK_CONTROL, kControl}, {XCB_MOD_MASK_1, kAlt}, {XCB_MOD_MASK_4, kApple}});

// The server keeps no state of buttons eight and nine, which are the word's four and five.
struct Button {
  xcb_button_t detail;
  std::uint16_t state;
  std::int32_t word;
};
constexpr auto kButtons = std::to_array<Button>({{XCB_BUTTON_INDEX_1, XCB_BUTTON_MASK_1, kLButton},
                                                 {XCB_BUTTON_INDEX_2, XCB_BUTTON_MASK_2, kMButton},
                                                 {XCB_BUTTON_INDEX_3, XCB_BUTTON_MASK_3, kRButton},
                                                 {8, 0, kButton4},
                                                 {9, 0, kButton5}});

template <class Rows>
std::int32_t wordOfState(const Rows& rows, std::uint16_t state) {
  std::int32_t word = 0;
  for (const auto& row : rows)
    if (state & row.state) word |= row.word;
  return word;
}

}  // namespace

std::int32_t modifiersOf(std::uint16_t state) { return wordOfState(kModifiers, state); }

std::int32_t buttonsOf(std::uint16_t state) { return wordOfState(kButtons, state); }

std::int32_t buttonOf(xcb_button_t detail) {
  for (const Button& row : kButtons)
    if (row.detail == detail) return row.word;
  return 0;
}

}  // namespace VSTGUI::X11
