// One channel of the filter, at twice the host's rate.
//
// This version holds the bypass state alone: the drive stage, which every type has in front of it.
//
// Life: construction on a table set that outlives the filter; `setSampleRate`; `clear`; then blocks [audio]. The owner
// keeps `setSampleRate` and `clear` [host, not during a block] apart from `processBuffer`.
#pragma once

#include "filters/VGlobalCoeffs.h"

// Entries of the parameter block that `processBuffer` reads, all 0 to 1.
enum FilterParam : int { kDrive, kPower, kMode, kFreq, kRes, kVar, kDryWet, kFilterParams };

// Cubic limiter: +-1 at an input of +-1.5, with zero slope there, and constant beyond.
[[nodiscard]] float softClip(float x) noexcept;

class VFilter {
 public:
  explicit VFilter(const VGlobalCoeffs* tables) noexcept : coeffs(tables) {}

  // The rate at which this filter runs, in hertz, and its inverse.
  void setSampleRate(float rate, float invRate) noexcept;
  // Forgets the signal. The drive stage has no memory, so there is nothing to forget in the bypass state.
  void clear() noexcept {}
  // [audio] `params` holds kFilterParams entries; `in` may be `out`; a count below 1 changes nothing.
  void processBuffer(const float* params, const float* in, float* out, long count) noexcept;

  const VGlobalCoeffs* coeffs;  // not owned
  float sampleRate = 0.0f;
  float invSampleRate = 0.0f;
  float driveGain = 1.0f;  // 1 to 16
};
