// SPDX-License-Identifier: MIT
#include "editor/graph/GraphTooltip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>

using namespace VSTGUI;

namespace editor {

namespace {

// Beats are halved or cut in three; both go down to where a pixel of the graph is longer.
constexpr std::array<int, 2> kParts = {64, 48};
constexpr double kOnFraction = 1e-3;  // of a part

std::string fraction(long parts, long part) {
  const long divisor = std::gcd(parts, part);
  const long whole = parts / part;
  const long top = parts % part / divisor;
  std::array<char, 64> text{};
  if (top == 0) {
    std::snprintf(text.data(), text.size(), "%ld", whole);
  } else if (whole == 0) {
    std::snprintf(text.data(), text.size(), "%ld/%ld", top, part / divisor);
  } else {
    std::snprintf(text.data(), text.size(), "%ld %ld/%ld", whole, top, part / divisor);
  }
  return text.data();
}

std::string amount(double beats) {
  for (const int part : kParts) {
    const double parts = beats * part;
    if (std::abs(parts - std::round(parts)) < kOnFraction) return fraction(std::lround(parts), part);
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.3f", beats);
  return text.data();
}

}  // namespace

std::string pointText(double position, double value, double cycleBeats) {
  const bool onBeat = cycleBeats > 0.0;
  const double place = position * (onBeat ? cycleBeats : 1.0);
  std::array<char, 32> percent{};
  std::snprintf(percent.data(), percent.size(), "%.1f %%", value * 100.0);
  // No plural up to a whole one.
  const char* const unit = !onBeat ? " cycle" : place > 1.0 ? " beats" : " beat";
  return amount(place) + unit + "  \u00b7  " + percent.data();
}

CRect besidePoint(const CPoint& point, double width, double height, double distance, const CRect& area) {
  double left = point.x + distance;
  if (left + width > area.right) left = point.x - distance - width;
  double top = point.y - distance - height;
  if (top < area.top) top = point.y + distance;
  left = std::max(area.left, std::min(left, area.right - width));
  top = std::max(area.top, std::min(top, area.bottom - height));
  return {left, top, left + width, top + height};
}

}  // namespace editor
