// The waveform behind the graph: from the effect's traces to two paths of a pixel's width. [ui]
#pragma once

#include <cstdint>
#include <span>

#include "toolkit/CGraphicsPath.h"

class LFODisplay;
class LfoDSP;

// Copies what the effect has written since the last call, up to 256 entries behind its position, where it may still be
// writing. `readIndex` is how far the copies have come, 0 at first.
void readScope(LFODisplay& display, LfoDSP& effect, std::int32_t& readIndex);

// The least and the greatest sample of each pixel column, as a path over `columns` pixels by -1 to 1. `samples` holds
// one cycle.
[[nodiscard]] VSTGUI::Counted<VSTGUI::CGraphicsPath> scopePath(std::span<const float> samples, double width);
