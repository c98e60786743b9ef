// SPDX-License-Identifier: MIT
// Renders a stream of audio through a plug-in, faster than time, with parameter changes and MIDI at exact frames.
//
// Runs on the caller's thread and allocates; nothing here is meant for live audio. One runner takes one instance
// through its whole life: give it a fresh one for every stream, so that no stream hears the end of another.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "host/MidiEvent.h"
#include "host/Plugin.h"
#include "host/Transport.h"

namespace modrift::host {

// Channels of equal length, one vector each.
using Planar = std::vector<std::vector<float>>;

struct ParameterChange {
  std::int64_t frame = 0;  // of the input; below 0: before the first frame
  VstInt32 parameter = 0;  // handed on as it is, also beyond the plug-in's count
  float value = 0.0f;
};

struct RenderJob {
  double sampleRateHz = 44100.0;
  VstInt32 blockFrames = 512;  // at least 1
  TransportSettings transport{};
  std::vector<ParameterChange> settings{};  // in place before the first frame; their `frame` has no meaning
  std::vector<ParameterChange> changes{};   // those of one frame are made in this order
  std::vector<MidiEvent> events{};          // to the plug-in
  std::int64_t tailFrames = 0;              // of silence after the input
  // Told after every block; false ends the render, which then throws Cancelled.
  std::function<bool(std::int64_t doneFrames, std::int64_t totalFrames)> progress{};
};

class Cancelled : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "cancelled"; }
};

// Channel n of `input` feeds the plug-in's input n; inputs without a channel get silence. Answers every output of the
// plug-in, as long as input and tail together, with the plug-in's reported latency taken off the front.
// Throws Error and Cancelled.
[[nodiscard]] Planar renderOffline(Plugin& plugin, std::span<const std::vector<float>> input, RenderJob job);

// Activates the plug-in and lets it hear one block of silence while the song stands still: then it knows the tempo, and
// parameters that count only once audio has run count. Throws Error.
void playSilence(Plugin& plugin, double tempoBpm, double sampleRateHz, VstInt32 frames);

}  // namespace modrift::host
