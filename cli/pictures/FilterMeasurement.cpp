// SPDX-License-Identifier: MIT
#include "cli/pictures/FilterMeasurement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "filters/FilterTypes.h"

namespace modrift::cli {
namespace {

constexpr double kRunningRateHz = 2.0 * static_cast<double>(FilterMeasurement::kHostRateHz);
constexpr std::size_t kTick = 24;                // samples between two settings of the filter
constexpr std::size_t kSettling = 3000 * kTick;  // 0.8 s: the slowest glide of a control is over
constexpr std::size_t kMeasured = 131072;        // 1.5 s

WaveTrack track(std::vector<float> samples) {
  std::vector<std::vector<float>> channels;
  channels.push_back(std::move(samples));
  return {"", kRunningRateHz, std::move(channels)};
}

void analyse(PowerSpectrum& spectrum, std::vector<float> samples) {
  constexpr double kMiddle = static_cast<double>(kMeasured) / 2.0;
  spectrum.analyse(track(std::move(samples)), kMiddle, kMiddle);
}

}  // namespace

FilterMeasurement::FilterMeasurement()
    : impulseSpectrum_(kMeasured, kRunningRateHz, Window::level), toneSpectrum_(kMeasured, kRunningRateHz) {
  tables_.init(filters::kTuningHz, kHostRateHz);
}

bool FilterMeasurement::makesNewTones(int type) noexcept {
  return filters::typeAt(type).trait == filters::Trait::newTones;
}

// The last kMeasured samples of the signal, filtered.
std::vector<float> FilterMeasurement::play(const FilterSettings& settings, std::vector<float> signal) const {
  VFilter filter(&tables_);
  filter.setSampleRate(static_cast<float>(kRunningRateHz), static_cast<float>(1.0 / kRunningRateHz));
  filter.clear();
  const float type = filters::normalisedType(settings.type);
  const std::array<float, filters::kFilterParams> params = {settings.drive,     1.0f,         type, settings.cutoff,
                                                            settings.resonance, settings.var, 1.0f};
  for (std::size_t start = 0; start < signal.size(); start += kTick) {
    const std::size_t count = std::min(kTick, signal.size() - start);
    filter.processBuffer(params.data(), &signal[start], &signal[start], static_cast<long>(count));
  }
  signal.erase(signal.begin(), signal.end() - kMeasured);
  return signal;
}

std::vector<float> FilterMeasurement::response(const FilterSettings& settings, std::span<const double> hz) {
  std::vector<float> impulse(kSettling + kMeasured);
  const std::vector<float> alone = play(settings, impulse);
  impulse[kSettling] = kImpulse;
  std::vector<float> answer = play(settings, impulse);
  for (std::size_t i = 0; i < kMeasured; ++i) answer[i] -= alone[i];
  analyse(impulseSpectrum_, std::move(answer));
  constexpr double kImpulsePower = 4.0 * static_cast<double>(kImpulse) * static_cast<double>(kImpulse) /
                                   (static_cast<double>(kMeasured) * static_cast<double>(kMeasured));
  std::vector<float> db;
  db.reserve(hz.size());
  for (const double f : hz) {
    const double gain = static_cast<double>(impulseSpectrum_.power(f, f)) / kImpulsePower;
    db.push_back(std::max(static_cast<float>(10.0 * std::log10(gain)), kQuietestGainDb));
  }
  return db;
}

std::vector<float> FilterMeasurement::spectrumOfTone(const FilterSettings& settings, std::span<const double> hz) {
  std::vector<float> tone(kSettling + kMeasured);
  for (std::size_t i = 0; i < tone.size(); ++i) {
    const double turns = kToneHz / kRunningRateHz * static_cast<double>(i);
    tone[i] = kToneLevel * static_cast<float>(std::sin(2.0 * std::numbers::pi * turns));
  }
  analyse(toneSpectrum_, play(settings, std::move(tone)));
  std::vector<float> db;
  db.reserve(hz.size());
  for (std::size_t i = 0; i < hz.size(); ++i)
    db.push_back(toneSpectrum_.levelDb(hz[i], i + 1 < hz.size() ? hz[i + 1] : hz[i]));
  return db;
}

}  // namespace modrift::cli
