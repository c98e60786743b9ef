// SPDX-License-Identifier: MIT
// What the set-up hands to the kernels: one block's constants, the same for both channels.
#pragma once

#include "filters/Biquad.h"

namespace filters {

// Entries of the parameter block that a filter reads, 0 to 1 (drive: -1 to 1).
enum FilterParam : int { kDrive, kPower, kMode, kFreq, kRes, kVar, kDryWet, kFilterParams };

// The cutoff range of the clean types, by equal ratios. All others take the cutoff as a note, 0 to 128.
inline constexpr float kLowestCleanHz = 21.533201f;
inline constexpr float kHighestCleanHz = 14700.0f;

// The gain of a drive: 1 to 16 for 0 to 1, and down to 0 for -1; what is outside, or a NaN, is limited.
[[nodiscard]] constexpr float driveGainOf(float drive) noexcept {
  const double limited = drive > -1.0f ? (drive < 1.0f ? static_cast<double>(drive) : 1.0) : -1.0;
  const double square = (1.0 + limited) * (1.0 + limited);
  return static_cast<float>(square * square);
}

inline constexpr int kLadderPoles = 4;
inline constexpr int kCombs = 8;
inline constexpr int kAllPasses = 4;
inline constexpr int kFrenchDelays = 2;  // of the low-pass with delay feedback; they take all-pass lines
inline constexpr int kMorphTaps = 3;
inline constexpr int kResonators = 5;

// A state-variable stage; one of 6 dB, a DC blocker too, takes f alone.
struct StageCoefs {
  float f = 0.0f;      // 2 sin(pi cutoff / rate of the steps): how far a step moves
  float cubic = 0.0f;  // of what bends the band back
  float q = 0.0f;      // damping: 2 without resonance, 0 for endless ringing, below that oscillation
};

// One pole is y = input x + previous x1 - decay y1; feedback goes round all four.
struct LadderCoefs {
  float input = 0.0f, previous = 0.0f, decay = 0.0f, feedback = 0.0f;
};

struct ZeroDelayCoefs {
  float g = 0.0f;  // of one integrator: tan(pi cutoff / rate)
  float feedback = 0.0f;
};

struct PhaserCoefs {
  float allPass = 0.0f;   // of each section
  float feedback = 0.0f;  // round the chain
};

struct DelayCoefs {
  float samples = 0.0f;  // what the delay glides to
  float feedback = 0.0f;
};

struct NetworkCoefs {
  long combSamples[kCombs] = {};
  long allPassSamples[kAllPasses] = {};
  float input = 1.0f;         // 0 while the network holds what it has
  float combFeedback = 0.0f;  // round each comb
  float allPass = 0.0f;       // of each all-pass
  float damping = 0.0f;       // low-pass in each loop; 1 is none
  float comesBack = 0.0f;     // share of the delayed signal at a low-pass's input
};

struct HoldCoefs {
  double step = 0.0;  // periods per sample
  float levels = 1.0f;
};

struct FilterCoefs {
  static constexpr int kBandPassShape = dsp::Filter2p::kBandPass;

  StageCoefs a, b;
  LadderCoefs ladder;
  ZeroDelayCoefs zeroDelay;
  PhaserCoefs phaser;
  DelayCoefs delay;
  NetworkCoefs network;
  HoldCoefs hold;
  float morphTarget[kMorphTaps] = {};        // weights of the three responses
  float morphRate = 0.0f, morphKeep = 0.0f;  // their glide: share of the target and of the weight before
  float bandGain = 0.0f;                     // of an equaliser: -1 cancels the band, 0 leaves it, 8 boosts
  float through = 0.0f;                      // share of the plain signal in "Add Bass"
  float inGain = 1.0f;                       // behind the drive
  float driveGain = 1.0f;                    // 0 to 16, in front of everything
  float driveRaw = 0.0f;                     // the drive as it came; strength of the cubic in the clean types
  float wet = 0.0f, dry = 0.0f;
  dsp::Filter2p resonator[kResonators] = {kBandPassShape, kBandPassShape, kBandPassShape, kBandPassShape,
                                          kBandPassShape};

  // A change of type starts from here: a stage that a type never sets stands almost still.
  void seedStages(float seed) noexcept { a = b = {seed, seed, seed}; }
};

}  // namespace filters
