// SPDX-License-Identifier: MIT
#include "filters/VGlobalCoeffs.h"

#include <algorithm>
#include <cmath>
#include <numbers>

std::atomic<float> VGlobalCoeffs::g_sampleRate = 44100.0f;
std::atomic<float> VGlobalCoeffs::g_sampleRate1 = 1.0f / 44100.0f;
std::atomic<float> VGlobalCoeffs::g_tune = filters::kTuningHz;
std::atomic<float> VGlobalCoeffs::svf10Hz = 0.0f;
std::atomic<float> VGlobalCoeffs::svf1Hz = 0.0f;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kNoteZeroRatio = 0.018581361171917516;  // 2^(-69/12): MIDI note 0 over A4
constexpr int kStepsPerSemitone = 64;
constexpr double kNoteOfA4 = 69.0;
constexpr double kNotesAnOctave = 12.0;
constexpr double kLevelBits = 22.0;  // of the quantiser without resonance

float asFloat(double x) { return static_cast<float>(x); }

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// The pole of a ladder stage at a frequency: a polynomial that keeps the tuning of the four poles under feedback.
double ladderPole(double f) {
  const double p =
      (((-1.608432026158994 * f + 7.348410539666077) * f + 1.263955430638294) * f + 2.4467465842116107) * f;
  return static_cast<double>(asFloat(p));
}

// A pole with a zero, y = c2 x + c3 x1 - c1 y1, whose gain at DC is 1. The zero takes a part of the delay
// out of the loop. Four poles oscillate at a loop gain of 4, which is reached at a resonance of 1.
VGlobalCoeffs::Moog moogEntry(double f, double base) {
  constexpr double kZero = 0.29;
  const double p = ladderPole(f);
  return {asFloat(4.0 * base), asFloat((kZero * p - 1.0) / (p + 1.0)), asFloat(p / (p + 1.0)),
          asFloat(kZero * p / (p + 1.0))};
}

// Damping falls by the fourth root, from 2 without resonance to 0 at 1, and is limited to what keeps a stage stable.
VGlobalCoeffs::Svf svfEntry(double f, double base) {
  const double s = 2.0 * std::sin(kPi * f / 2.0);
  return {asFloat(s), asFloat(2.0 * (1.0 - std::pow(base, 0.25))), asFloat(std::clamp(2.0 / s - s / 2.0, 0.0, 2.0)),
          asFloat(1.0 / (1.0 + 4.0 * base))};
}

}  // namespace

// The constants are pi and its tenfold as single precision holds them.
void VGlobalCoeffs::announce(float tune, float sampleRate) noexcept {
  constexpr double kPiFloat = 3.1415927410125732;
  constexpr double kTenPiFloat = 31.415927410125732;
  const double rate = static_cast<double>(sampleRate);
  const auto relaxed = std::memory_order_relaxed;
  g_tune.store(tune, relaxed);
  g_sampleRate.store(sampleRate, relaxed);
  g_sampleRate1.store(asFloat(1.0 / rate), relaxed);
  svf10Hz.store(asFloat(2.0 * std::sin(kTenPiFloat / rate)), relaxed);
  svf1Hz.store(asFloat(2.0 * std::sin(kPiFloat / rate)), relaxed);
}

double VGlobalCoeffs::cyclesPerSample(int entry, float tune, float sampleRate) noexcept {
  const double note = static_cast<double>(entry - kNoteZero) / kStepsPerSemitone;
  const double hertz = static_cast<double>(tune) * std::exp2((note - kNoteOfA4) / kNotesAnOctave);
  return std::min(hertz / static_cast<double>(sampleRate), 0.5);
}

void VGlobalCoeffs::init(float tune, float sampleRate) {
  announce(tune, sampleRate);
  if (tune == tune_ && sampleRate == sampleRate_) return;
  tune_ = tune;
  sampleRate_ = sampleRate;
  moog.resize(kEntries);
  svf.resize(kEntries);
  pitch.resize(kEntries);
  hold.resize(kEntries);
  delay.resize(kEntries);
  const double period0 = static_cast<double>(sampleRate) / (kNoteZeroRatio * static_cast<double>(tune));
  for (int i = 0; i < kEntries; ++i) fillEntry(i, cyclesPerSample(i, tune, sampleRate), period0);
}

void VGlobalCoeffs::fillEntry(int i, double f, double period0) {
  constexpr double kLast = kEntries - 1;
  const double base = i * kTopResonance / kLast;
  const double fall = (kLast - i) / kLast;
  moog[at(i)] = moogEntry(f, base);
  svf[at(i)] = svfEntry(f, base);
  pitch[at(i)] = {asFloat(f)};
  hold[at(i)] = {asFloat(std::exp2(kLevelBits * fall * fall)), asFloat(2.0 * f)};
  delay[at(i)] = {asFloat(std::min(period0, 1.0 / f + 1.0)), asFloat(base), asFloat(1.0 / (base + 1.0)),
                  asFloat(std::min(std::tan(kPi * f), kPi / 2.0))};
}
