// SPDX-License-Identifier: MIT
// Reads Standard MIDI Files of format 0 and 1. The reader is our own because files come from anywhere: libsmf, the one
// that Debian has, writes beyond its buffers on files with wrong lengths.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "host/MidiEvent.h"

namespace modrift::cli {

// A file beyond this is something else. It also bounds the memory that the messages take, about twelve times as much.
inline constexpr std::size_t kMostMidiFileBytes = std::size_t{16} << 20;

// A message to a channel: notes, controllers, programs, pitch bend, pressure.
struct MidiFileMessage {
  std::int64_t tick = 0;                // from the file's start
  std::array<std::uint8_t, 3> bytes{};  // status with its channel, then data
  std::uint8_t length = 0;              // 2 or 3
};

struct MidiSong {
  double ticksPerUnit = 0.0;              // above 0
  bool inSeconds = false;                 // the unit is a second (SMPTE time), else a beat
  std::vector<MidiFileMessage> messages;  // of all tracks, rising in time; those of one tick in the file's order
};

struct MidiFileFault {
  std::size_t offset = 0;  // of the byte in the file
  std::string expected;    // what was expected there
};

// Pure: reads any bytes, throws nothing but std::bad_alloc, and stops at the first fault. The file's own tempo, its
// other meta events and system-exclusive messages are passed over; so is what stands behind the last track.
[[nodiscard]] std::variant<MidiSong, MidiFileFault> parseMidiFile(std::span<const std::uint8_t> bytes);

// The messages at their nearest frames, the file's start being frame 0 and its beats lasting as long as the tempo says.
[[nodiscard]] std::vector<host::MidiEvent> eventsOf(const MidiSong& song, double tempoBpm, double sampleRateHz);

}  // namespace modrift::cli
