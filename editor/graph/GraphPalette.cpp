// SPDX-License-Identifier: MIT
#include "editor/graph/GraphPalette.h"

#include <cmath>

namespace editor {

namespace {

struct Stop {
  double position;
  VSTGUI::CColor color;
};

// The pale middle keeps the ramp from greying where blue turns into its warm opposite.
constexpr std::array<Stop, 3> kStops = {{{0.0, LFOPoints}, {0.55, {196, 222, 250}}, {1.0, {255, 240, 212}}}};

std::uint8_t mixed(std::uint8_t a, std::uint8_t b, double share) {
  return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
}

VSTGUI::CColor rampColor(double weight) {
  const std::size_t upper = weight > kStops[1].position ? 2 : 1;
  const Stop& a = kStops[upper - 1];
  const Stop& b = kStops[upper];
  const double share = (weight - a.position) / (b.position - a.position);
  return {mixed(a.color.red, b.color.red, share), mixed(a.color.green, b.color.green, share),
          mixed(a.color.blue, b.color.blue, share)};
}

}  // namespace

std::array<VSTGUI::CColor, kWeightColors> weightRamp() noexcept {
  std::array<VSTGUI::CColor, kWeightColors> ramp;
  for (std::size_t i = 0; i < ramp.size(); ++i)
    ramp[i] = rampColor(static_cast<double>(i) / static_cast<double>(ramp.size() - 1));
  return ramp;
}

}  // namespace editor
