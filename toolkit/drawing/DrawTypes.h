// SPDX-License-Identifier: MIT
// How lines, shapes and texts are drawn.
#pragma once

#include <cstdint>
#include <vector>

#include "toolkit/base/Geometry.h"

namespace VSTGUI {

enum CDrawStyle : std::int32_t { kDrawStroked = 0, kDrawFilled = 1, kDrawFilledAndStroked = 2 };

enum CHoriTxtAlign : std::int32_t { kLeftText = 0, kCenterText = 1, kRightText = 2 };

// Anti-aliasing, and whether coordinates are meant as whole pixels.
//
// In the integral modes coordinates are rounded, lines of an odd width run through pixel centres, and the outline of a
// rectangle or ellipse lies inside it: an outline of width 1 covers its outermost pixels. With kNonIntegralMode
// coordinates are taken as they are, and a line lies half on each side of them.
inline constexpr std::uint32_t kAliasing = 0;
inline constexpr std::uint32_t kAntiAliasing = 1;
inline constexpr std::uint32_t kNonIntegralMode = 0xF0000000u;

class CDrawMode {
 public:
  constexpr CDrawMode(std::uint32_t code = kAliasing) noexcept : code_(code) {}  // NOLINT: a code is a mode
  [[nodiscard]] constexpr std::uint32_t mode() const noexcept { return code_; }
  [[nodiscard]] constexpr bool antiAliased() const noexcept { return (code_ & ~kNonIntegralMode) == kAntiAliasing; }
  [[nodiscard]] constexpr bool integral() const noexcept { return (code_ & kNonIntegralMode) == 0; }
  friend constexpr bool operator==(const CDrawMode&, const CDrawMode&) noexcept = default;

 private:
  std::uint32_t code_;
};

// For curves and whatever moves by less than a pixel.
inline constexpr CDrawMode kSmoothMode{kAntiAliasing | kNonIntegralMode};

class CLineStyle {
 public:
  enum LineCap : std::int32_t { kLineCapButt = 0, kLineCapRound = 1, kLineCapSquare = 2 };
  enum LineJoin : std::int32_t { kLineJoinMiter = 0, kLineJoinRound = 1, kLineJoinBevel = 2 };
  using Dashes = std::vector<CCoord>;

  // Dash phase and lengths are in units of the line's width; an empty list draws a solid line.
  explicit CLineStyle(LineCap lineCap = kLineCapButt, LineJoin lineJoin = kLineJoinMiter, CCoord phase = 0,
                      Dashes lengths = {})
      : cap(lineCap), join(lineJoin), dashPhase(phase), dashes(std::move(lengths)) {}
  friend bool operator==(const CLineStyle&, const CLineStyle&) = default;

  LineCap cap;
  LineJoin join;
  CCoord dashPhase;
  Dashes dashes;
};

extern const CLineStyle kLineSolid;
extern const CLineStyle kLineOnOffDash;  // one line width on, one off

}  // namespace VSTGUI
