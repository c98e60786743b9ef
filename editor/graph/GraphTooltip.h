// SPDX-License-Identifier: MIT
// The text beside a dragged point: where in the cycle it lies and how high. Pure functions.
#pragma once

#include <string>

#include "toolkit/base/Geometry.h"

namespace editor {

// `position` and `value` are 0 to 1. With the cycle's length in beats, the place is in beats: as a fraction where it
// lies on one of a 48th or a 64th of a beat, else with three decimals. A length of 0 stands for a free-running clock:
// the place is a share of the cycle.
[[nodiscard]] std::string pointText(double position, double value, double cycleBeats);

// Where a box of this size stands beside a point: above it to the right, on another side where the area ends.
[[nodiscard]] VSTGUI::CRect besidePoint(const VSTGUI::CPoint& point, double width, double height, double distance,
                                        const VSTGUI::CRect& area);

}  // namespace editor
