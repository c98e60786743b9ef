// SPDX-License-Identifier: MIT
// One MIDI message and when it sounds, as both directions of the host library carry it.
#pragma once

#include <cstdint>
#include <vector>

namespace modrift::host {

struct MidiEvent {
  std::int64_t frame = 0;           // in the stream; in a block where a function says so
  std::vector<std::uint8_t> bytes;  // a whole message: one to three bytes, or F0 ... F7

  bool operator==(const MidiEvent&) const = default;
};

}  // namespace modrift::host
