// SPDX-License-Identifier: MIT
// A controller's moves as a Standard MIDI File: one track, 480 ticks to the quarter note, no tempo of its own, so that
// it takes on the tempo of the song that it is dropped into. Pure functions, but for what they tell on standard error.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "vst2/aeffect.h"

// Earlier events first; for sorting.
[[nodiscard]] bool MyDataSortPredicate(const VstMidiEvent& a, const VstMidiEvent& b) noexcept;

namespace effect {

inline constexpr int kTicksPerQuarter = 480;

// A message and the ticks from the one before it.
struct TickEvent {
  int delta = 0;  // 0 to 2^28 - 1
  std::uint8_t status = 0;
  std::uint8_t data1 = 0;
  std::uint8_t data2 = 0;
};

// From frames, rising, to ticks, `quarterFrames` being a quarter note's length. Frames below 0 count as 0, and an event
// before its neighbour moves to it; both are told on standard error, as are the first few hundred events.
[[nodiscard]] std::vector<TickEvent> ticksOf(std::span<const VstMidiEvent> events, double quarterFrames);

// The whole file. The track's name tells the controller's number; without events it is "empty! ", and one message that
// means nothing keeps sequencers from refusing an empty track.
[[nodiscard]] std::vector<std::uint8_t> controllerFile(std::span<const TickEvent> events, int controller);

}  // namespace effect
