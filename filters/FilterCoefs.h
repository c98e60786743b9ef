// What the set-up hands to the kernels: one block's constants, the same for both channels.
#pragma once

#include "filters/Biquad.h"

namespace filters {

// Entries of the parameter block that a filter reads, 0 to 1 (drive: -1 to 1).
enum FilterParam : int { kDrive, kPower, kMode, kFreq, kRes, kVar, kDryWet, kFilterParams };

// The gain of a drive: 1 to 16 for 0 to 1, and down to 0 for -1; what is outside, or not a number, is limited.
[[nodiscard]] constexpr float driveGainOf(float drive) noexcept {
  const double limited = drive > -1.0f ? (drive < 1.0f ? static_cast<double>(drive) : 1.0) : -1.0;
  const double square = (1.0 + limited) * (1.0 + limited);
  return static_cast<float>(square * square);
}

inline constexpr int kCombs = 8;
inline constexpr int kAllPasses = 4;
inline constexpr int kMorphTaps = 3;
inline constexpr int kResonators = 5;

struct FilterCoefs {
  static constexpr int kBandPassShape = dsp::Filter2p::kBandPass;

  // State-variable stages; fA also serves as DC blocker and as damping of the reverberators.
  float fA = 0.0f, cubicA = 0.0f, qA = 0.0f;
  float fB = 0.0f, cubicB = 0.0f, qB = 0.0f;
  float wet = 0.0f, dry = 0.0f;
  float morphTarget[kMorphTaps] = {};
  float morphRate = 0.0f, morphKeep = 0.0f;
  float chainCoef = 0.0f;   // an all-pass section's coefficient; the ladder's c2; "Thru" of Add Bass
  float ladderPrev = 0.0f;  // the ladder's c3
  float ladderFb = 0.0f;    // the ladder's c1
  float feedback = 0.0f;
  float eqGain = 0.0f;
  double holdStep = 0.0;
  float holdLevels = 1.0f;
  float delayTarget = 0.0f;  // samples; what the delay kernels glide to
  float delayFeedback = 0.0f;
  float inGain = 1.0f;
  float driveGain = 1.0f;  // 1 to 16
  float driveRaw = 0.0f;
  long combDelay[kCombs] = {};  // samples
  long apDelay[kAllPasses] = {};
  float verbIn = 1.0f;
  float combScale = 1.0f, apScale = 1.0f;
  float verbFeedback = 0.0f, apCoef = 0.0f;
  dsp::Filter2p resonator[kResonators] = {kBandPassShape, kBandPassShape, kBandPassShape, kBandPassShape,
                                          kBandPassShape};

  // A change of type starts from here: stages that a type never sets stand almost still.
  void seedStages(float seed) noexcept { fA = cubicA = qA = fB = cubicB = qB = seed; }
};

}  // namespace filters
