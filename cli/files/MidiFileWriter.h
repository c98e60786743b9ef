// SPDX-License-Identifier: MIT
// Writes MIDI messages as a Standard MIDI File of format 0.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/MidiEvent.h"

namespace modrift::cli {

// The whole file, with the tempo as its first event and frame 0 at its start, where messages from before it stand too.
// A beat has 960 ticks or as many times the double of that as make a tick shorter than a frame, up to 30720: then every
// message can be read back to its exact frame, at 44100 Hz from 87 BPM on. Messages without a status byte are left out.
// Pure.
[[nodiscard]] std::vector<std::uint8_t> midiFileBytes(std::span<const host::MidiEvent> events, double tempoBpm,
                                                      double sampleRateHz);

}  // namespace modrift::cli
