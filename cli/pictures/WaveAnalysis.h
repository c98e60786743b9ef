// SPDX-License-Identifier: MIT
// What the pictures of audio show, as numbers: the waveform column by column, and the spectrogram. A column is one
// pixel of the time axis, a row one pixel of the frequency axis.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace modrift::cli {

struct WaveTrack {
  std::string title;                         // UTF-8; what is not is shown as a replacement character
  double sampleRateHz = 0.0;                 // 1 kHz to 768 kHz
  std::vector<std::vector<float>> channels;  // planar, equal lengths; full scale is 1
};

[[nodiscard]] std::size_t frameCount(const WaveTrack& track);
[[nodiscard]] double durationSeconds(const WaveTrack& track);

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

}  // namespace modrift::cli
