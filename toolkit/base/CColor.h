// SPDX-License-Identifier: MIT
// A colour of four bytes, not premultiplied.
#pragma once

#include <cstdint>

namespace VSTGUI {

struct CColor {
  std::uint8_t red = 255;
  std::uint8_t green = 255;
  std::uint8_t blue = 255;
  std::uint8_t alpha = 255;

  constexpr CColor() noexcept = default;
  constexpr CColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a = 255) noexcept
      : red(r), green(g), blue(b), alpha(a) {}
  friend constexpr bool operator==(const CColor&, const CColor&) noexcept = default;
};

inline constexpr CColor kTransparentCColor{255, 255, 255, 0};
inline constexpr CColor kBlackCColor{0, 0, 0};
inline constexpr CColor kWhiteCColor{255, 255, 255};
inline constexpr CColor kGreyCColor{127, 127, 127};
inline constexpr CColor kRedCColor{255, 0, 0};
inline constexpr CColor kGreenCColor{0, 255, 0};
inline constexpr CColor kBlueCColor{0, 0, 255};
inline constexpr CColor kYellowCColor{255, 255, 0};

}  // namespace VSTGUI
