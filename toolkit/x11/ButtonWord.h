// SPDX-License-Identifier: MIT
// What the state and the button of an X event mean in the button word. [ui]
#pragma once

#include <cstdint>
#include <xcb/xproto.h>

namespace VSTGUI::X11 {

// Modifier bits.
[[nodiscard]] std::int32_t modifiersOf(std::uint16_t state);
// Buttons that are down: of the five that a state has, two are the wheel's.
[[nodiscard]] std::int32_t buttonsOf(std::uint16_t state);
// Both.
[[nodiscard]] inline std::int32_t wordOf(std::uint16_t state) { return modifiersOf(state) | buttonsOf(state); }
// The bit of a button that is pressed or released; 0 for the wheel's.
[[nodiscard]] std::int32_t buttonOf(xcb_button_t detail);

}  // namespace VSTGUI::X11
