// SPDX-License-Identifier: MIT
// The yardstick: a fixed piece of work whose cost is the unit of all figures here, so that figures taken on different
// days or machines can be compared.
//
// One stereo low-pass voice of 24 dB per octave in plain scalar C++, written channel after channel the way one writes
// it first. A host sample and channel takes: half-band up, two samples at the doubled rate (clip, non-linear stage
// twice, three-point average, clip, linear stage twice, three-point average), half-band down. The coefficients change
// once in 12 host samples. It stands alone on purpose: a change of the effect's own filters must not move the unit, and
// a change here makes all older figures worthless.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace bench {

// N first-order all-pass sections y = (u - y') c + u', primes marking the sample before: one branch of a half-band.
template <std::size_t N>
struct AllPassBranch {
  float step(float u) noexcept {
    float lastIn = last[0];
    last[0] = u;
    for (std::size_t i = 0; i < N; ++i) {
      const float y = (u - last[i + 1]) * coef[i] + lastIn;
      lastIn = last[i + 1];
      last[i + 1] = y;
      u = y;
    }
    return u;
  }

  std::array<float, N> coef;
  std::array<float, N + 1> last{};  // the input of the sample before, then each section's output
};

// A rate change by two in one direction.
struct HalfBand {
  // n samples in, 2n out.
  void up(float* out, const float* in, int n) noexcept {
    for (int i = 0; i < n; ++i) {
      out[2 * i] = b.step(0.5f * in[i]);
      out[2 * i + 1] = a.step(0.0f);
    }
  }

  // 2n samples in, n out.
  void down(float* out, const float* in, int n) noexcept {
    for (int i = 0; i < n; ++i) out[i] = a.step(2.0f * in[2 * i + 1]) + b.step(2.0f * in[2 * i]);
  }

  AllPassBranch<4> a{{0.0457281f, 0.332501f, 0.663202f, 0.933856f}};
  AllPassBranch<3> b{{0.168088f, 0.504486f, 0.803781f}};
};

// Shared by both stages.
struct LowPassCoefs {
  float frequency = 0.1f;
  float cubic = 0.05f;
  float damping = 0.5f;
  float drive = 1.0f;
  float inGain = 1.0f;
};

// Cubic limiter with zero slope at the clamp.
inline float limited(float x) noexcept {
  const float t = std::clamp(x, -1.5f, 1.5f);
  return t - 0.14814815f * (t * t * t);
}

// One channel; the states start above zero, so that they are never denormal.
struct LowPass {
  void nonLinearStep(float u, const LowPassCoefs& k) noexcept {
    const float notch = u - k.damping * bandA;
    lowA += k.frequency * bandA;
    const float high = notch - lowA;
    const float band = bandA + std::clamp(k.frequency * high, -0.8333333f, 0.8333333f);
    bandA = band - k.cubic * (band * band * band);
  }

  void linearStep(float u, const LowPassCoefs& k) noexcept {
    const float notch = u - k.damping * bandB;
    lowB += k.frequency * bandB;
    const float high = notch - lowB;
    bandB += k.frequency * high;
  }

  void process(float* samples, int n, const LowPassCoefs& k) noexcept {
    for (int i = 0; i < n; ++i) {
      const float g = k.inGain * limited(samples[i] * k.drive);
      float sum = 0.25f * lowA;
      nonLinearStep(g, k);
      sum += 0.5f * lowA;
      nonLinearStep(g, k);
      const float u = limited(sum + 0.25f * lowA);
      sum = 0.25f * lowB;
      linearStep(u, k);
      sum += 0.5f * lowB;
      linearStep(u, k);
      samples[i] = sum + 0.25f * lowB;
    }
  }

  float lowA = 1e-7f;
  float bandA = 1e-7f;
  float lowB = 1e-7f;
  float bandB = 1e-7f;
};

class YardstickVoice {
 public:
  YardstickVoice() {
    const auto steps = static_cast<double>(sweep_.size());
    for (std::size_t i = 0; i < sweep_.size(); ++i) {
      const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / steps;
      const auto f = static_cast<float>(0.12 + 0.1 * std::sin(turn));
      sweep_[i] = {f, 0.5f * f, 0.6f, 1.2f, 1.0f};
    }
  }

  void process(const float* const in[2], float* const out[2], int frames) noexcept {
    std::array<float, 2 * kTick> twice;
    for (int start = 0; start < frames; start += kTick) {
      const int n = std::min(kTick, frames - start);
      const LowPassCoefs k = sweep_[tick_++ % sweep_.size()];
      for (std::size_t c = 0; c < 2; ++c) {
        up_[c].up(twice.data(), in[c] + start, n);
        filter_[c].process(twice.data(), 2 * n, k);
        down_[c].down(out[c] + start, twice.data(), n);
      }
    }
  }

 private:
  static constexpr int kTick = 12;  // host samples between two coefficients

  std::array<LowPassCoefs, 4096> sweep_;  // a slow one of the cutoff
  std::size_t tick_ = 0;
  std::array<HalfBand, 2> up_, down_;
  std::array<LowPass, 2> filter_;
};

}  // namespace bench
