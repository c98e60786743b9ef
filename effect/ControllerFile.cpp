#include "effect/ControllerFile.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "effect/Helpers.h"

#include "messages/Messages.h"

using namespace model;
bool MyDataSortPredicate(const VstMidiEvent& a, const VstMidiEvent& b) noexcept {
  return a.deltaFrames < b.deltaFrames;
}

namespace effect {
namespace {

using Bytes = std::vector<std::uint8_t>;

// "MThd", six bytes to come, format 0, one track, 480 ticks to the quarter note.
constexpr auto kFileHead = std::to_array<std::uint8_t>({'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1, 0x01, 0xe0});
constexpr auto kTrackMark = std::to_array<std::uint8_t>({'M', 'T', 'r', 'k'});
constexpr auto kNameHead = std::to_array<std::uint8_t>({0, 0xff, 0x03, 7});  // a track name of seven letters at delta 0
constexpr auto kEndOfTrack = std::to_array<std::uint8_t>({0, 0xff, 0x2f, 0});
constexpr std::string_view kEmptyName = "empty! ";
constexpr TickEvent kNothing{0, 0xb0, 0, 0};

constexpr int kMostToldEvents = 490;  // on standard error
constexpr std::size_t kMostEventBytes = 7;

template <class Range>
void append(Bytes& bytes, const Range& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

void appendNumber(Bytes& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

// Seven bits a byte, highest first; all but the last byte have the top bit set.
void appendDelta(Bytes& bytes, int delta) {
  const auto ticks = static_cast<std::uint32_t>(delta);
  for (int shift = 21; shift > 0; shift -= 7) {
    if (ticks >> shift) bytes.push_back(static_cast<std::uint8_t>(0x80 | (ticks >> shift & 0x7f)));
  }
  bytes.push_back(ticks & 0x7f);
}

void appendEvent(Bytes& bytes, const TickEvent& event) {
  appendDelta(bytes, event.delta);
  append(bytes, std::array{event.status, event.data1, event.data2});
}

std::array<char, 7> controllerName(int controller) {
  const auto digit = [controller](int unit) { return static_cast<char>('0' + controller / unit % 10); };
  return {'c', 'c', ' ', digit(100), digit(10), digit(1), ' '};
}

Bytes trackOf(std::span<const TickEvent> events, int controller) {
  Bytes track;
  track.reserve(events.size() * kMostEventBytes + 64);
  append(track, kNameHead);
  if (events.empty()) {
    append(track, kEmptyName);
    appendEvent(track, kNothing);
  } else {
    append(track, controllerName(controller));
    for (const TickEvent& event : events) appendEvent(track, event);
  }
  append(track, kEndOfTrack);
  return track;
}

}  // namespace

std::vector<TickEvent> ticksOf(std::span<const VstMidiEvent> events, double quarterFrames) {
  const double ticksPerFrame = kTicksPerQuarter / quarterFrames;
  std::vector<TickEvent> converted;
  converted.reserve(events.size());
  int last = 0;
  for (const VstMidiEvent& event : events) {
    const int number = static_cast<int>(converted.size());
    const int frame = event.deltaFrames;
    if (frame < 0) messages::exportFrameBelowZero(number, frame, last);
    const int tick = integerPart(std::max(frame, 0) * ticksPerFrame + 0.5);
    int delta = tick - last;
    if (number < kMostToldEvents) messages::exportEvent(number, event.midiData[2], delta, frame, last);
    if (delta < 0) {
      messages::exportOutOfOrder(delta, number, frame, last);
      delta = 0;
    }
    last = tick;
    converted.push_back({delta, static_cast<std::uint8_t>(event.midiData[0]),
                         static_cast<std::uint8_t>(event.midiData[1]), static_cast<std::uint8_t>(event.midiData[2])});
  }
  return converted;
}

std::vector<std::uint8_t> controllerFile(std::span<const TickEvent> events, int controller) {
  const Bytes track = trackOf(events, controller);
  Bytes file;
  file.reserve(kFileHead.size() + kTrackMark.size() + 4 + track.size());
  append(file, kFileHead);
  append(file, kTrackMark);
  appendNumber(file, static_cast<std::uint32_t>(track.size()));
  append(file, track);
  return file;
}

}  // namespace effect
