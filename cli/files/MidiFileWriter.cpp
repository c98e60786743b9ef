#include "cli/files/MidiFileWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace modrift::cli {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kLeastTicks = 960;   // a beat
constexpr std::uint32_t kMostTicks = 30720;  // the last doubling that the file's 15 bits hold
constexpr std::uint32_t kLongestDelta = 0x0FFFFFFF;
constexpr double kSlowestTempo = 16777215.0;  // microseconds a beat, 24 bits

constexpr auto kNoText = std::to_array<std::uint8_t>({0xFF, 0x01, 0x00});
constexpr auto kEndOfTrack = std::to_array<std::uint8_t>({0x00, 0xFF, 0x2F, 0x00});

template <class Range>
void append(Bytes& bytes, const Range& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

void appendBigEndian(Bytes& bytes, std::uint32_t number, int byteCount) {
  for (int shift = 8 * (byteCount - 1); shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<std::uint8_t>(number >> shift));
  }
}

void appendVariable(Bytes& bytes, std::uint32_t number) {
  for (int shift = 21; shift > 0; shift -= 7) {
    if (number >> shift != 0) bytes.push_back(static_cast<std::uint8_t>(0x80 | (number >> shift & 0x7F)));
  }
  bytes.push_back(number & 0x7F);
}

std::uint32_t ticksPerBeat(double framesPerBeat) {
  std::uint32_t ticks = kLeastTicks;
  while (ticks < kMostTicks && ticks <= framesPerBeat) ticks *= 2;
  return ticks;
}

// A delta's number is limited, so longer rests are made of events that mean nothing.
void appendDelta(Bytes& track, std::int64_t ticks) {
  for (; ticks > kLongestDelta; ticks -= kLongestDelta) {
    appendVariable(track, kLongestDelta);
    append(track, kNoText);
  }
  appendVariable(track, static_cast<std::uint32_t>(ticks));
}

// Messages to a channel as they are; a dump and what else has no channel in the forms that the file has for them.
void appendMessage(Bytes& track, std::span<const std::uint8_t> message) {
  constexpr std::uint8_t kSystem = 0xF0, kSysex = 0xF0, kEscape = 0xF7;
  if (message.front() >= kSystem) {
    const bool isSysex = message.front() == kSysex;
    if (isSysex) message = message.subspan(1);
    track.push_back(isSysex ? kSysex : kEscape);
    appendVariable(track, static_cast<std::uint32_t>(message.size()));
  }
  append(track, message);
}

Bytes trackOf(std::span<const host::MidiEvent> events, double tempoBpm, double ticksPerFrame) {
  Bytes track = {0x00, 0xFF, 0x51, 0x03};
  appendBigEndian(track, static_cast<std::uint32_t>(std::min(std::round(60e6 / tempoBpm), kSlowestTempo)), 3);
  std::int64_t last = 0;
  for (const host::MidiEvent& event : events) {
    if (event.bytes.empty() || event.bytes.front() < 0x80) continue;
    const std::int64_t tick =
        std::max<std::int64_t>(last, std::llround(static_cast<double>(event.frame) * ticksPerFrame));
    appendDelta(track, tick - last);
    appendMessage(track, event.bytes);
    last = tick;
  }
  append(track, kEndOfTrack);
  return track;
}

}  // namespace

std::vector<std::uint8_t> midiFileBytes(std::span<const host::MidiEvent> events, double tempoBpm, double sampleRateHz) {
  const double framesPerBeat = sampleRateHz * 60.0 / tempoBpm;
  const std::uint32_t ticks = ticksPerBeat(framesPerBeat);
  std::vector<host::MidiEvent> sorted(events.begin(), events.end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const host::MidiEvent& a, const host::MidiEvent& b) { return a.frame < b.frame; });
  const Bytes track = trackOf(sorted, tempoBpm, ticks / framesPerBeat);
  Bytes file;
  append(file, std::string_view("MThd"));
  appendBigEndian(file, 6, 4);
  appendBigEndian(file, 0, 2);  // format
  appendBigEndian(file, 1, 2);  // tracks
  appendBigEndian(file, ticks, 2);
  append(file, std::string_view("MTrk"));
  appendBigEndian(file, static_cast<std::uint32_t>(track.size()), 4);
  append(file, track);
  return file;
}

}  // namespace modrift::cli
