// SPDX-License-Identifier: MIT
#include "cli/files/MidiFileWriter.h"

#include <algorithm>
#include <cmath>

#include "model/MidiBytes.h"

namespace modrift::cli {
namespace {

using model::MidiBytes;

constexpr std::uint32_t kLeastTicks = 960;    // a beat
constexpr std::uint32_t kMostTicks = 30720;   // the last doubling that the file's 15 bits hold
constexpr double kSlowestTempo = 16777215.0;  // microseconds a beat, 24 bits

std::uint32_t ticksPerBeat(double framesPerBeat) {
  std::uint32_t ticks = kLeastTicks;
  while (ticks < kMostTicks && ticks <= framesPerBeat) ticks *= 2;
  return ticks;
}

void appendTempo(MidiBytes& track, double tempoBpm) {
  MidiBytes microseconds;
  model::appendBigEndian(microseconds, static_cast<std::uint32_t>(std::min(std::round(60e6 / tempoBpm), kSlowestTempo)),
                         3);
  model::appendMeta(track, model::kMetaTempo, microseconds);
}

// Messages to a channel as they are; a dump and what else has no channel in the forms that the file has for them.
void appendMessage(MidiBytes& track, std::span<const std::uint8_t> message) {
  if (message.front() >= model::kMidiSystem) {
    const bool isSysex = message.front() == model::kMidiSysex;
    if (isSysex) message = message.subspan(1);
    track.push_back(isSysex ? model::kMidiSysex : model::kMidiEscape);
    model::appendVariable(track, static_cast<std::uint32_t>(message.size()));
  }
  model::append(track, message);
}

MidiBytes trackOf(std::span<const host::MidiEvent> events, double tempoBpm, double ticksPerFrame) {
  MidiBytes track;
  model::appendDelta(track, 0);
  appendTempo(track, tempoBpm);
  std::int64_t last = 0;
  for (const host::MidiEvent& event : events) {
    if (event.bytes.empty() || event.bytes.front() < 0x80) continue;
    const std::int64_t tick =
        std::max<std::int64_t>(last, std::llround(static_cast<double>(event.frame) * ticksPerFrame));
    model::appendDelta(track, tick - last);
    appendMessage(track, event.bytes);
    last = tick;
  }
  return track;
}

}  // namespace

std::vector<std::uint8_t> midiFileBytes(std::span<const host::MidiEvent> events, double tempoBpm, double sampleRateHz) {
  const double framesPerBeat = sampleRateHz * 60.0 / tempoBpm;
  const std::uint32_t ticks = ticksPerBeat(framesPerBeat);
  std::vector<host::MidiEvent> sorted(events.begin(), events.end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const host::MidiEvent& a, const host::MidiEvent& b) { return a.frame < b.frame; });
  return model::midiFile(ticks, trackOf(sorted, tempoBpm, ticks / framesPerBeat));
}

}  // namespace modrift::cli
