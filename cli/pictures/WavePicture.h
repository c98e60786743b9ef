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

namespace modrift::cli {

struct WaveTrack {
  std::string title;                         // UTF-8; what is not is shown as a replacement character
  double sampleRateHz = 0.0;                 // 1 kHz to 768 kHz
  std::vector<std::vector<float>> channels;  // planar, equal lengths; full scale is 1
};

struct BeatGrid {
  double tempoBpm = 120.0;
  double startBeat = 0.0;  // the beat at time 0; every fourth beat from 0 starts a bar, beat 0 is bar 1
};

// Writes straight to `png`, so callers pass the path of a PendingFile. Throws a RunError (a std::runtime_error) with
// one sentence. Samples that are not finite are gaps.
void writeWavePicture(const std::filesystem::path& png, std::span<const WaveTrack> tracks,
                      std::optional<BeatGrid> beats);

// The pieces below the drawing. A column is one pixel of the time axis, a row one pixel of the frequency axis.

struct WaveColumn {
  float low = 0.0f;  // extremes of the line that joins the samples
  float high = 0.0f;
  float rms = 0.0f;
  bool gap = false;  // holds a sample that is not finite
};

// As many columns as the samples fill, at most `maxColumns`.
[[nodiscard]] std::vector<WaveColumn> waveColumns(std::span<const float> samples, double samplesPerColumn,
                                                  std::size_t maxColumns);

// Logarithmic from kLowestHz at the bottom edge (row == rows) to Nyquist at the top edge (row 0).
struct FrequencyAxis {
  static constexpr double kLowestHz = 30.0;
  double nyquistHz = 0.0;
  std::size_t rows = 0;
  [[nodiscard]] double hzAt(double row) const noexcept;
  [[nodiscard]] double rowAt(double hz) const noexcept;
};

inline constexpr float kQuietestDb = -90.0f;

struct LevelMap {
  std::size_t columns = 0;
  std::size_t rows = 0;
  std::vector<float> db;  // kQuietestDb to 0, the level of a full-scale sine; rows of `columns` values, top first
  [[nodiscard]] float at(std::size_t column, std::size_t row) const { return db[row * columns + column]; }
};

// Of the mean of all channels; samples that are not finite count as silence.
[[nodiscard]] LevelMap spectrogram(const WaveTrack& track, const FrequencyAxis& axis, double samplesPerColumn,
                                   std::size_t maxColumns);

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
