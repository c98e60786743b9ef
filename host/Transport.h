// SPDX-License-Identifier: MIT
// The song position of a host: constant tempo, 4/4, playing or stopped, with an optional loop.
//
// Counts whole frames and computes every other quantity from that count, so that nothing drifts however the blocks are
// cut. Owned by whoever runs the blocks, on that thread only: before a block ask time(), after it advance().
#pragma once

#include <cstdint>
#include <optional>

#include "vst2/aeffect.h"

namespace modrift::host {

// A loop in beats; the position jumps from the end back to the start. `endBeat` must lie above `startBeat`.
struct CycleRange {
  double startBeat = 0.0;
  double endBeat = 0.0;
};

struct TransportSettings {
  double tempoBpm = 120.0;  // quarter notes a minute, positive
  double startBeat = 0.0;   // quarter notes since the song's start; may be negative, as in a count-in
  bool playing = true;
  bool recording = false;
  bool givesTime = true;  // false: the host answers time requests with nothing, as some do
  std::optional<CycleRange> cycle{};
};

class Transport {
 public:
  Transport(const TransportSettings& settings, double sampleRateHz);

  void setPlaying(bool playing);
  void advance(std::int64_t frames);  // frames of audio that have gone by; the position moves only while playing

  [[nodiscard]] double beat() const;
  // Frames until the position jumps back to the start of the loop, at least 1; nothing if it never does.
  [[nodiscard]] std::optional<std::int64_t> framesToJump() const;
  // What a plug-in is told about the first frame of the next block; nothing if the host gives no time.
  [[nodiscard]] std::optional<VstTimeInfo> time() const;

 private:
  TransportSettings settings_;
  double sampleRateHz_;
  double framesPerBeat_;
  std::int64_t playedFrames_ = 0;   // since startBeat
  std::int64_t elapsedFrames_ = 0;  // since construction, stopped or not
  bool changed_ = true;             // playing started or stopped since the last block
};

}  // namespace modrift::host
