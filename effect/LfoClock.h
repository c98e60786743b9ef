// SPDX-License-Identifier: MIT
// The clock that reads the graphs: one read position from 0 to 1, moved on once per sample.
//
// `ClockSettings` is read off the parameters once a block, `ClockState` lives from sample to sample; both are
// plain values, so the sample loop keeps them in registers.
#pragma once

#include <cmath>
#include <cstddef>

#include "effect/Helpers.h"

namespace effect {

inline constexpr double kSongWrapBeats = 64.0;    // the longest cycle
inline constexpr double kDottedFactor = 1.33333;  // not 4/3: rounding it moves every dotted cycle
inline constexpr double kTripletFactor = 1.5;
inline constexpr double kDividerScale = 0.00390625;  // 1/256: the divider that makes a quarter beat's cycle
inline constexpr double kFastestFreeHz = 440.0;      // of the free clock, at a rate of 1
inline constexpr double kSlowestIncrement = 1e-11;   // cycles per sample; the free clock never stops for good
inline constexpr double kFastestIncrement = 1e12;    // far beyond hearing; keeps wild rates finite
inline constexpr double kOneShotEnd = 0.9999999999999;

// `rate` 0 to 1 has 43 steps, three to an octave: straight, dotted, triplet. What is switched off falls to the step
// below: a triplet to the dotted one, that to the straight one.
inline constexpr float kRateSteps = 42.0f;
[[nodiscard]] inline int rateStep(float rate, bool triplet, bool dotted) noexcept {
  int step = model::integerPart(static_cast<double>(rate * kRateSteps));
  if (!triplet && step % 3 == 2) --step;
  if (!dotted && step % 3 == 1) --step;
  return step;
}

// The rate in the middle of a step, so that no rounding moves it to its neighbour.
[[nodiscard]] constexpr float middleOfRateStep(std::size_t step) noexcept {
  return (static_cast<float>(step) + 0.5f) / kRateSteps;
}

// A cycle takes 64 / divider beats.
[[nodiscard]] inline double rateDivider(float rate, bool triplet, bool dotted) noexcept {
  const int step = rateStep(rate, triplet, dotted);
  const int octave = step / 3;
  if (octave < 0) return 0.0;  // a whole number: below one there is none
  constexpr int kHighestOctave = 62;
  const double straight = static_cast<double>(1ULL << (octave < kHighestOctave ? octave : kHighestOctave));
  if (step % 3 == 2) return straight * kTripletFactor;
  return step % 3 == 1 ? straight * kDottedFactor : straight;
}

struct ClockSettings {
  bool onBeat = true;          // read the song's beats; else run freely
  bool oneShotOnBeat = false;  // a trigger plays one cycle and then holds
  bool oneShot = false;        // the free clock rests at the end of its cycle
  double cyclesPerBeat = 0.0;
  double beatsPerSample = 0.0;
  double oneShotLength = 0.0;                // beats
  double freeIncrement = kSlowestIncrement;  // cycles per sample
  double phase = 0.0;
  double swing = 0.5;        // share of a pair of cycles that the first one takes
  double swingFirst = 2.0;   // 1 / swing, a float's value
  double swingSecond = 2.0;  // 1 / (1 - swing), a float's value
  double pwmAmount = 0.0;    // 0 for none, to 0.996
  bool hasSwing = false;
  bool hasPwm = false;
  bool pwmLate = false;  // bends towards the cycle's end
};

// Of the PWM parameter, 0 to 1: none in the middle, never quite all at its ends.
inline void setPwm(ClockSettings& s, float pwm) noexcept {
  s.hasPwm = pwm != 0.5f;
  const double bend = (static_cast<double>(pwm) - 0.5) * 1.992;
  s.pwmAmount = std::abs(bend);
  s.pwmLate = bend >= 0.0;
}

struct ClockState {
  double beatPos = 0.0;    // beats since the reference point
  double freePhase = 0.0;  // 0 to below 1
  double lfoPhase = 0.0;   // the read position after phase and PWM
  float cyclePos = 0.0f;   // the position before them
  bool oneShotDone = false;
};

// 1 / x as a float; that of a denormal number is infinite and would make 0 x infinity.
[[nodiscard]] inline double floatReciprocal(double x) noexcept {
  const auto r = static_cast<float>(1.0 / x);
  return std::isfinite(r) ? static_cast<double>(r) : 0.0;
}

// Bends a pair of cycles so that the first takes the share `swing` of the time.
[[nodiscard]] inline double swungPosition(double cycles, const ClockSettings& s) noexcept {
  const double pair = model::fraction(cycles * 0.5);
  return pair >= s.swing ? (pair - s.swing) * s.swingSecond : pair * s.swingFirst;
}

// Leaves 0 and 1 in place and pushes the body of the cycle towards one end.
[[nodiscard]] inline double pwmPosition(double x, const ClockSettings& s) noexcept {
  const double bent = s.pwmLate ? static_cast<double>(sixteenthPower(static_cast<float>(x)))
                                : 1.0 - static_cast<double>(sixteenthPower(static_cast<float>(1.0 - x)));
  return model::limit01(s.pwmAmount * bent + x * (1.0 - s.pwmAmount));
}

inline double freePosition(ClockState& state, const ClockSettings& s) noexcept {
  double position = state.freePhase + s.freeIncrement;
  if (position >= 1.0) position = s.oneShot ? kOneShotEnd : model::fraction(position);
  state.freePhase = position;
  return position;
}

// Moves the position on by one sample; `beatPos` is the caller's to move. False: a finished one-shot holds everything.
inline bool advanceClock(ClockState& state, const ClockSettings& s) noexcept {
  double position;
  if (s.onBeat) {
    if (s.oneShotOnBeat && (state.oneShotDone || state.beatPos >= s.oneShotLength)) {
      state.oneShotDone = true;
      return false;
    }
    const double cycles = std::abs(state.beatPos) * s.cyclesPerBeat;
    position = s.hasSwing ? swungPosition(cycles, s) : model::fraction(cycles);
  } else {
    position = freePosition(state, s);
  }
  state.cyclePos = static_cast<float>(position);
  double x = s.phase + position;
  if (x < 0.0 || x > 1.0) x = model::fraction(x);
  state.lfoPhase = s.hasPwm ? pwmPosition(x, s) : x;
  return true;
}

// Moves the time on by one sample whose position nobody asks for; not for a one-shot on the beat.
inline void skipSample(ClockState& state, const ClockSettings& s) noexcept {
  if (!s.onBeat) freePosition(state, s);
  state.beatPos += s.beatsPerSample;
}

}  // namespace effect
