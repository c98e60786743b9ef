// SPDX-License-Identifier: MIT
#include "effect/ControllerFile.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "effect/Helpers.h"
#include "messages/Messages.h"
#include "model/MidiBytes.h"

using namespace model;

bool MyDataSortPredicate(const VstMidiEvent& a, const VstMidiEvent& b) noexcept {
  return a.deltaFrames < b.deltaFrames;
}

namespace effect {
namespace {

constexpr std::string_view kEmptyName = "empty! ";
constexpr TickEvent kNothing{0, 0xb0, 0, 0};

constexpr int kMostToldEvents = 490;  // on standard error
constexpr std::size_t kMostEventBytes = 7;

// Seven letters, as sequencers show them.
std::string nameOf(std::span<const TickEvent> events, int controller) {
  if (events.empty()) return std::string(kEmptyName);
  const auto digit = [controller](int unit) { return static_cast<char>('0' + controller / unit % 10); };
  return {'c', 'c', ' ', digit(100), digit(10), digit(1), ' '};
}

void appendEvent(model::MidiBytes& track, const TickEvent& event) {
  model::appendDelta(track, event.delta);
  model::append(track, std::array{event.status, event.data1, event.data2});
}

model::MidiBytes trackOf(std::span<const TickEvent> events, int controller) {
  model::MidiBytes track;
  track.reserve(events.size() * kMostEventBytes + 64);
  const std::string name = nameOf(events, controller);
  model::appendDelta(track, 0);
  model::appendMeta(track, model::kMetaTrackName, {reinterpret_cast<const std::uint8_t*>(name.data()), name.size()});
  if (events.empty()) appendEvent(track, kNothing);
  for (const TickEvent& event : events) appendEvent(track, event);
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
  return model::midiFile(kTicksPerQuarter, trackOf(events, controller));
}

}  // namespace effect
