// SPDX-License-Identifier: MIT
// The power spectrum of a stretch of audio for one window length: what a spectrogram's columns are made of. Internal to
// the files that measure for pictures. Make one for each window length, then for each column analyse() once and ask
// levelDb() for each row.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <fftw3.h>
#include <memory>
#include <numbers>
#include <vector>

#include "cli/pictures/WaveAnalysis.h"

namespace modrift::cli {

// Hann for sounds that go on; level for those that begin and end within the window, as the answer to an impulse does.
enum class Window { hann, level };

// Power spectra of one window length, collected window by window, padded with zeros to twice its length and more, so
// that neighbouring bins join to a smooth curve.
class PowerSpectrum {
 public:
  PowerSpectrum(std::size_t windowLength, double sampleRateHz, Window window = Window::hann)
      : window_(windowLength),
        transformLength_(std::bit_ceil(2 * windowLength)),
        binsPerHz_(static_cast<double>(transformLength_) / sampleRateHz),
        power_(transformLength_ / 2 + 1),
        input_(fftwf_alloc_real(transformLength_)),
        output_(fftwf_alloc_complex(power_.size())),
        plan_(fftwf_plan_dft_r2c_1d(static_cast<int>(transformLength_), input_.get(), output_.get(), FFTW_ESTIMATE)) {
    double sum = 0.0;
    for (std::size_t i = 0; i < windowLength; ++i) {
      const double phase = (static_cast<double>(i) + 0.5) / static_cast<double>(windowLength);
      const double hann = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * phase);
      window_[i] = window == Window::hann ? static_cast<float>(hann) : 1.0f;
      sum += static_cast<double>(window_[i]);
    }
    for (float& weight : window_) weight *= static_cast<float>(2.0 / sum);  // a full-scale sine has power 1
    std::fill_n(input_.get(), transformLength_, 0.0f);
  }

  // The mean over windows spread evenly between two positions in the track.
  void analyse(const WaveTrack& track, double firstFrame, double lastFrame) {
    const double hop = static_cast<double>(window_.size()) / 2.0;
    const double count = std::clamp(std::ceil((lastFrame - firstFrame) / hop), 1.0, kMostWindowsPerColumn);
    std::fill(power_.begin(), power_.end(), 0.0f);
    for (double i = 0.5; i < count; i += 1.0)
      addWindow(track, std::lerp(firstFrame, lastFrame, i / count), static_cast<float>(1.0 / count));
  }

  // The power of the loudest bin of the range, or of the curve between the bins when the range holds none; that of a
  // full-scale sine is 1.
  [[nodiscard]] float power(double fromHz, double toHz) const {
    const double lastBin = static_cast<double>(power_.size() - 1);
    const auto first = static_cast<std::size_t>(std::clamp(std::ceil(fromHz * binsPerHz_), 0.0, lastBin));
    const auto last = static_cast<std::size_t>(std::clamp(std::floor(toHz * binsPerHz_), 0.0, lastBin));
    if (first <= last) return *std::max_element(&power_[first], &power_[last] + 1);
    const double place = 0.5 * (fromHz + toHz) * binsPerHz_ - static_cast<double>(last);
    return std::lerp(power_[last], power_[first], static_cast<float>(place));
  }

  // The same in decibels, kQuietestDb to 0.
  [[nodiscard]] float levelDb(double fromHz, double toHz) const {
    const float db = 10.0f * std::log10(power(fromHz, toHz));
    return db > kQuietestDb ? std::min(db, 0.0f) : kQuietestDb;
  }

 private:
  static constexpr double kMostWindowsPerColumn = 8.0;  // what bounds the time for long files

  struct FftwFree {
    void operator()(void* memory) const { fftwf_free(memory); }
    void operator()(fftwf_plan_s* plan) const { fftwf_destroy_plan(plan); }
  };

  static float mixedSample(const WaveTrack& track, std::size_t frame) {
    float sum = 0.0f;
    for (const auto& channel : track.channels) sum += channel[frame];
    return std::isfinite(sum) ? sum / static_cast<float>(track.channels.size()) : 0.0f;
  }

  void addWindow(const WaveTrack& track, double centreFrame, float weight) {
    const auto frames = static_cast<std::ptrdiff_t>(track.channels.front().size());
    const auto start = std::llround(centreFrame) - static_cast<std::ptrdiff_t>(window_.size() / 2);
    for (std::size_t i = 0; i < window_.size(); ++i) {
      const std::ptrdiff_t frame = start + static_cast<std::ptrdiff_t>(i);
      const bool inside = frame >= 0 && frame < frames;
      input_[i] = inside ? window_[i] * mixedSample(track, static_cast<std::size_t>(frame)) : 0.0f;
    }
    fftwf_execute(plan_.get());
    for (std::size_t bin = 0; bin < power_.size(); ++bin) {
      const auto& [real, imaginary] = output_[bin];
      power_[bin] += weight * (real * real + imaginary * imaginary);
    }
  }

  std::vector<float> window_;
  std::size_t transformLength_;
  double binsPerHz_;
  std::vector<float> power_;
  std::unique_ptr<float[], FftwFree> input_;
  std::unique_ptr<fftwf_complex[], FftwFree> output_;
  std::unique_ptr<fftwf_plan_s, FftwFree> plan_;
};

}  // namespace modrift::cli
