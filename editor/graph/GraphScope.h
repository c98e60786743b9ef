// SPDX-License-Identifier: MIT
// The scope behind the graph: from the effect's traces to one path each. [ui]
#pragma once

#include <cstdint>
#include <span>

#include "toolkit/drawing/CGraphicsPath.h"

class LFODisplay;
class LfoDSP;

namespace editor {

// Copies what the effect has written since the last call, up to 256 entries behind its position, where it may still be
// writing. `readIndex` is how far the copies have come, 0 at first.
void readScope(LFODisplay& display, LfoDSP& effect, std::int32_t& readIndex);

// How a trace of one cycle is drawn, over `width` by -1 to 1.
struct ScopeOutline {
  VSTGUI::Counted<VSTGUI::CGraphicsPath> path;
  bool filled;  // else a line
};

// Of each pixel column the least and the greatest sample. A calm trace is a line through these extremes. In a dense one
// that line would cover its columns as good as whole and take long to draw: there each column is a bar, on whole device
// pixels, one of which is `pixel` high.
[[nodiscard]] ScopeOutline scopeOutline(std::span<const float> samples, double width, double pixel);

}  // namespace editor
