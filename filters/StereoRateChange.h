// SPDX-License-Identifier: MIT
// The rate change of `rspl::Downsampler2Flt` for a left/right pair: both branches of both channels in four lanes. Gives
// what two mono objects give, to the bit down and within 1e-17 up: the mono class guards each sample against denormal
// numbers, here the owner calls `flushTraces` after each tick.
//
// Frames are interleaved: left, right, left, right. Life: construction (coefficients loaded, memories clear), then
// blocks [audio]; one object a direction.
#pragma once

#include "filters/Lanes.h"

namespace rspl {

// Lanes of all fields: branch B left, B right, branch A left, A right. The fourth section is branch A's alone; its
// B lanes have a coefficient of 0 and follow the section before.
struct StereoHalfBand {
  StereoHalfBand() noexcept;
  void clear_buffers() noexcept;
  // Clears the memories when a NaN or an infinity circulates in them. The last memory of either branch shows it, since
  // what enters the first section never leaves the last.
  void dropNonFinite() noexcept;
  // Flushes what has decayed, before it turns into denormal numbers.
  void flushTraces() noexcept;

  dsp::Quad coef[4];
  dsp::Quad mem[5] = {};  // the branches' input of the sample before, then each section's output
};

class StereoUpsampler2 {
 public:
  // n frames in, 2n out; n is at least 1; `dest` and `src` must not overlap.
  void process(float* dest, const float* src, int n) noexcept;
  StereoHalfBand halfBand;
};

class StereoDownsampler2 {
 public:
  // 2n frames in, n out; n is at least 1; `dest` may be `src`.
  void process(float* dest, const float* src, int n) noexcept;
  StereoHalfBand halfBand;
};

}  // namespace rspl
