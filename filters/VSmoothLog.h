// SPDX-License-Identifier: MIT
// A value that glides to its target by a one-pole step, with a tiny alternating offset against denormal numbers.
#pragma once

class VSmoothLog {
 public:
  explicit VSmoothLog(float smoothingHz = 50.0f) noexcept : freq(smoothingHz) {}

  [[nodiscard]] virtual const char* name() const noexcept { return "VSmoothLog"; }
  [[nodiscard]] virtual const char* nameShort() const noexcept { return "SmoothLog"; }
  virtual ~VSmoothLog() = default;

  // One step per block: in[0] is the target, out[0] the value after the step. The two unnamed buffers are not used.
  virtual void processBuffer(float* in, float* out, float*, float*, long count) noexcept;
  // One step per sample toward `target`: out = in * value; `in` may be `out`.
  virtual void multiplyBuffer(float target, float* in, float* out, long count) noexcept;

  // `inverseRate` is the inverse of the rate at which samples are stepped.
  void setRate(float inverseRate) noexcept;

  // The offset of the step after one with `bias`: 1e-18 and next to nothing in turn.
  [[nodiscard]] static float turned(float bias) noexcept {
    return static_cast<float>(1e-18 - static_cast<double>(bias));
  }

  // One step with the share `amount` of the way to `target`, 0 to 1.
  float step(float amount) noexcept {
    denormalBias = turned(denormalBias);
    current += (target - current) * amount + denormalBias;
    return current;
  }

  float invRate = 0.0f;
  float denormalBias = 1e-18f;
  float target = 0.0f;
  float current = 0.0f;
  float freq;         // of the smoothing, in hertz
  float coef = 1.0f;  // share of the way that a sample goes
};
