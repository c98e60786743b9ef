// SPDX-License-Identifier: MIT
#include "cli/pictures/WaveAnalysis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/pictures/PowerSpectrum.h"

namespace modrift::cli {
namespace {

// Low tones need long windows to be told apart, drum hits short ones to stay sharp. Each row blends the two entries
// whose frequencies enclose it.
struct Resolution {
  double windowSeconds;
  double bestHz;
};
constexpr auto kResolutions = std::to_array<Resolution>({{0.160, 80.0}, {0.060, 600.0}, {0.022, 4000.0}});
constexpr double kWindowsPerShortFile = 6.0;  // a file shorter than this many windows gets shorter windows
constexpr std::size_t kShortestWindow = 16;   // samples

struct Blend {
  std::size_t first;  // of two neighbours in kResolutions
  float second;       // share of the latter, 0 to 1
};

Blend blendAt(double hz) {
  std::size_t first = 0;
  while (first + 2 < kResolutions.size() && hz > kResolutions[first + 1].bestHz) ++first;
  const double low = kResolutions[first].bestHz;
  const double high = kResolutions[first + 1].bestHz;
  return {first, static_cast<float>(std::clamp(std::log(hz / low) / std::log(high / low), 0.0, 1.0))};
}

double lineAt(std::span<const float> samples, double position) {
  const auto left = std::min(static_cast<std::size_t>(position), samples.size() - 1);
  const auto right = std::min(left + 1, samples.size() - 1);
  return std::lerp(static_cast<double>(samples[left]), static_cast<double>(samples[right]),
                   position - std::floor(position));
}

std::size_t filledColumns(std::size_t frames, double samplesPerColumn, std::size_t maxColumns) {
  const double columns = std::ceil(static_cast<double>(frames) / samplesPerColumn);
  return static_cast<std::size_t>(std::min(columns, static_cast<double>(maxColumns)));
}

WaveColumn waveColumn(std::span<const float> samples, double begin, double end) {
  const double lineBegin = lineAt(samples, begin);
  const double lineEnd = lineAt(samples, end);
  const auto first = std::min(static_cast<std::size_t>(std::ceil(begin)), samples.size());
  const auto last = std::min(static_cast<std::size_t>(std::ceil(end)), samples.size());
  float low = static_cast<float>(std::min(lineBegin, lineEnd));
  float high = static_cast<float>(std::max(lineBegin, lineEnd));
  double squares = 0.0;  // of floats, so it is finite exactly when all of them are
  for (std::size_t i = first; i < last; ++i) {
    low = std::min(low, samples[i]);
    high = std::max(high, samples[i]);
    squares += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
  }
  if (!std::isfinite(squares + lineBegin + lineEnd)) return {.gap = true};
  const double meanSquare = first < last ? squares / static_cast<double>(last - first) : lineBegin * lineBegin;
  return {low, high, static_cast<float>(std::sqrt(meanSquare)), false};
}

}  // namespace

std::size_t frameCount(const WaveTrack& track) { return track.channels.empty() ? 0 : track.channels.front().size(); }

double durationSeconds(const WaveTrack& track) { return static_cast<double>(frameCount(track)) / track.sampleRateHz; }

std::vector<WaveColumn> waveColumns(std::span<const float> samples, double samplesPerColumn, std::size_t maxColumns) {
  std::vector<WaveColumn> columns(filledColumns(samples.size(), samplesPerColumn, maxColumns));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const double begin = static_cast<double>(i) * samplesPerColumn;
    columns[i] = waveColumn(samples, begin, begin + samplesPerColumn);
  }
  return columns;
}

double FrequencyAxis::hzAt(double row) const noexcept {
  return nyquistHz * std::pow(kLowestHz / nyquistHz, row / static_cast<double>(rows));
}

double FrequencyAxis::rowAt(double hz) const noexcept {
  return static_cast<double>(rows) * std::log(hz / nyquistHz) / std::log(kLowestHz / nyquistHz);
}

LevelMap spectrogram(const WaveTrack& track, const FrequencyAxis& axis, double samplesPerColumn,
                     std::size_t maxColumns) {
  const std::size_t columns = filledColumns(frameCount(track), samplesPerColumn, maxColumns);
  LevelMap map{columns, axis.rows, std::vector<float>(columns * axis.rows, kQuietestDb)};
  std::vector<PowerSpectrum> spectra;
  for (const Resolution& resolution : kResolutions) {
    const double seconds = std::min(resolution.windowSeconds, durationSeconds(track) / kWindowsPerShortFile);
    const auto length = static_cast<std::size_t>(seconds * track.sampleRateHz);
    spectra.emplace_back(std::max(length, kShortestWindow), track.sampleRateHz);
  }
  for (std::size_t column = 0; column < columns; ++column) {
    const double begin = static_cast<double>(column) * samplesPerColumn;
    for (PowerSpectrum& spectrum : spectra) spectrum.analyse(track, begin, begin + samplesPerColumn);
    for (std::size_t row = 0; row < axis.rows; ++row) {
      const double toHz = axis.hzAt(static_cast<double>(row));
      const double fromHz = axis.hzAt(static_cast<double>(row + 1));
      const auto [first, second] = blendAt(fromHz);
      map.db[row * columns + column] =
          std::lerp(spectra[first].levelDb(fromHz, toHz), spectra[first + 1].levelDb(fromHz, toHz), second);
    }
  }
  return map;
}

}  // namespace modrift::cli
