// SPDX-License-Identifier: MIT
// The waveform and the spectrogram of audio as a PNG, so that people can look at what a render did.
//
// One column, tracks stacked ("before" over "after"), all on one time axis, one amplitude scale and one colour scale,
// so that tracks can be compared by eye. Called by the program's commands, on one thread at a time (the FFT planner is
// shared). Time and memory beside the audio are bounded: a long file is sampled, not read window by window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/pictures/WaveAnalysis.h"

namespace modrift::cli {

struct BeatGrid {
  double tempoBpm = 120.0;
  double startBeat = 0.0;  // the beat at time 0; every fourth beat from 0 starts a bar, beat 0 is bar 1
};

// Writes straight to `png`, so callers pass the path of a PendingFile. Throws a RunError (a std::runtime_error) with
// one sentence. Samples that are not finite are gaps.
void writeWavePicture(const std::filesystem::path& png, std::span<const WaveTrack> tracks,
                      std::optional<BeatGrid> beats);

// Its scales. A column is one pixel of the time axis.

[[nodiscard]] std::uint32_t heatColour(float db) noexcept;  // 0xRRGGBB; outside of the scale the nearest end

struct GridLine {
  double column = 0.0;
  bool strong = false;
  std::string label;  // may be empty
};

// Thinned out (bars, then every second bar, and so on) until neighbours can be told apart.
[[nodiscard]] std::vector<GridLine> beatLines(const BeatGrid& beats, double seconds, std::size_t columns);
[[nodiscard]] std::vector<GridLine> secondLines(double seconds, std::size_t columns);

}  // namespace modrift::cli
