// SPDX-License-Identifier: MIT
// The crossover: splits the signal into a low and a high band that sum to an all-pass, the high one inverted.
//
// A second-order Linkwitz-Riley pair, built on 3.142857 and 6.285714 in place of pi and two pi: the numbers that
// projects were mixed with. One record a channel; the audio path runs both bands of both channels in four lanes.
#pragma once

#include <span>

// One channel's coefficients and state, all floats.
struct CrossoverState {
  float lowB0 = 0.0f, lowB1 = 0.0f, lowB2 = 0.0f;     // numerator of the low-pass
  float highB0 = 0.0f, highB1 = 0.0f, highB2 = 0.0f;  // numerator of the high-pass
  float a1 = 0.0f, a2 = 0.0f;                         // denominator of both
  float twoPi = 6.285714f, piSquared4 = 39.5102f, piSquared8 = 79.0204f;
  float k = 0.0f, kk = 0.0f, twoKk = 0.0f, fourPiK = 0.0f;
  float invA0 = 0.0f;
  float piFrequency = 0.0f;  // hertz times 3.142857
  float sampleRate = 44100.0f;
  float lowS1 = 0.0f, lowS2 = 0.0f, highS1 = 0.0f, highS2 = 0.0f;
  float lastLow = 0.0f, lastHigh = 0.0f;

  // Coefficients for `frequencyHz` at `sampleRate`; the signal state stays.
  void setFrequency(float frequencyHz) noexcept;
  void clear() noexcept;
  // [audio] Clears the signal state when a NaN or an infinity is in it.
  void dropNonFinite() noexcept;
};

static_assert(sizeof(CrossoverState) == 24 * sizeof(float));

namespace effect {

// One band of both channels; `processed` goes on through the effect, `aside` comes back at the end of the block.
struct Bands {
  std::span<float> processedLeft, processedRight, asideLeft, asideRight;
};

// [audio] Splits `left` and `right` (equal lengths; the processed spans may be the inputs). `highProcessed` chooses
// the band that is processed.
void splitStereo(CrossoverState& stateLeft, CrossoverState& stateRight, std::span<const float> left,
                 std::span<const float> right, bool highProcessed, const Bands& out) noexcept;

// [audio] The same for a single channel: the right spans get the left one's aside band and are otherwise left alone.
void splitMono(CrossoverState& state, std::span<const float> in, bool highProcessed, const Bands& out) noexcept;

}  // namespace effect
