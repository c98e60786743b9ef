// SPDX-License-Identifier: MIT
#include "filters/Biquad.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <numbers>

namespace dsp {
namespace {

constexpr double kPi = std::numbers::pi;

bool isDenormal(float x) noexcept {
  constexpr std::uint32_t kExponent = 0x7F800000u;
  const auto bits = std::bit_cast<std::uint32_t>(x);
  return (bits & kExponent) == 0 && bits != 0;
}

double tangentOf(float f, float sampleFreq) noexcept {
  return std::tan(kPi * static_cast<double>(f) / static_cast<double>(sampleFreq));
}

// The first three terms of the tangent's series: x + x^3 / 3 + 2 x^5 / 15.
float tangentFast(float f, float sampleFreq) noexcept {
  const float x = std::numbers::pi_v<float> * f / sampleFreq;
  return ((0.13333334f * (x * x) + 0.33333334f) * (x * x) + 1.0f) * x;
}

// The bilinear transform with k = 1 / tan(pi f0 / fs).
template <class Real>
void bilinear(BiquadS& section, Real k) noexcept {
  const auto real = [](float x) { return static_cast<Real>(x); };
  const Real b0 = real(section.sB[0]), b1 = real(section.sB[1]) * k, b2 = real(section.sB[2]) * (k * k);
  const Real a0 = real(section.sA[0]), a1 = real(section.sA[1]) * k, a2 = real(section.sA[2]) * (k * k);
  const Real n = Real(1) / (a1 + a2 + a0);
  section.zB[0] = static_cast<float>((b1 + b2 + b0) * n);
  section.zB[1] = static_cast<float>(Real(2) * (b0 - b2) * n);
  section.zB[2] = static_cast<float>((b2 + b0 - b1) * n);
  section.zA[0] = 1.0f;
  section.zA[1] = static_cast<float>(Real(2) * (a0 - a2) * n);
  section.zA[2] = static_cast<float>((a2 + a0 - a1) * n);
}

constexpr auto kPlain = [](float y, bool) noexcept { return y; };
constexpr auto kStore = [](float& dest, float y) noexcept { dest = y; };

}  // namespace

// `shape` gets the sum and whether the sample opens a whole pair; what it gives circulates.
template <class Shape, class Store>
void Biquad::run(float* dest, const float* src, long n, Shape shape, Store store) noexcept {
  float x1 = memX[memPos], x2 = memX[1 - memPos];
  float y1 = memY[memPos], y2 = memY[1 - memPos];
  bool isFirst = memPos == 0;
  for (long i = 0; i < n; ++i) {
    const float x = src[i];
    const float y = shape(zB[0] * x + zB[1] * x1 + zB[2] * x2 - (zA[1] * y1 + zA[2] * y2), isFirst && i + 1 < n);
    isFirst = !isFirst;
    x2 = x1;
    x1 = x;
    y2 = y1;
    y1 = y;
    store(dest[i], y);
  }
  memPos = isFirst ? 0 : 1;
  memX[memPos] = x1;
  memX[1 - memPos] = x2;
  memY[memPos] = y1;
  memY[1 - memPos] = y2;
}

void Biquad::process_block(float* dest, const float* src, long n) noexcept { run(dest, src, n, kPlain, kStore); }

void Biquad::process_block_mix(float* dest, const float* src, long n) noexcept {
  run(dest, src, n, kPlain, [](float& d, float y) noexcept { d += y; });
}

void Biquad::process_block_nd(float* dest, const float* src, long n) noexcept {
  const auto shape = [](float y, bool isFirst) noexcept { return isFirst ? y + 1e-20f : y; };
  run(dest, src, n, shape, kStore);
}

void Biquad::process_block_clip(float* dest, const float* src, long n, float clip) noexcept {
  const float scale = 6.0f * (clip * clip);
  const auto shape = [scale](float y, bool) noexcept { return y * (1.0f - y * y / scale); };
  run(dest, src, n, shape, kStore);
}

void Biquad::process_block_limit(float* dest, const float* src, long n, EnvFollowerBase& env, float k) noexcept {
  const auto shape = [&env, k](float y, bool) noexcept {
    const float e = std::fabs(y * k) - env.env;
    env.env += e * (e > 0.0f ? env.attackCoef : env.releaseCoef);
    return env.env > 1.0f ? y / env.env : y;
  };
  run(dest, src, n, shape, kStore);
}

void Biquad::bq_clear_buffers() noexcept {
  std::fill(std::begin(memX), std::end(memX), 0.0f);
  std::fill(std::begin(memY), std::end(memY), 0.0f);
  memPos = 0;
}

void Biquad::set_mem_dc(float value) noexcept { std::fill(std::begin(memX), std::end(memX), value); }

void Biquad::clip_memory(float limit) noexcept {
  for (float& y : memY) y = std::clamp(y, -limit, limit);
}

bool Biquad::check_denormal() const noexcept { return !isDenormal(memY[0]) && !isDenormal(memY[1]); }

void Biquad::kill_denormal() noexcept {
  for (float& y : memY) {
    if (isDenormal(y)) y = 0.0f;
  }
}

void BiquadS::transform_s_to_z() noexcept { bilinear(*this, 1.0 / tangentOf(f0, sampleFreq)); }

void BiquadS::transform_s_to_z_fast() noexcept { bilinear(*this, 1.0f / tangentFast(f0, sampleFreq)); }

float BiquadS::wrap_freq_blt(float f) const noexcept {
  return static_cast<float>(tangentOf(f, sampleFreq) / tangentOf(f0, sampleFreq));
}

float BiquadS::wrap_freq_blt_fast(float f) const noexcept {
  return tangentFast(f, sampleFreq) / tangentFast(f0, sampleFreq);
}

const char* const Filter2p::TYPE_NAME_0[kTypes] = {"Low-pass", "High-pass", "Resonator", "Band-pass"};

Filter2p::Filter2p(int shape) noexcept : type(shape) {
  std::fill(std::begin(sB), std::end(sB), 1.0f);
  std::fill(std::begin(sA), std::end(sA), 1.0f);
  transform_s_to_z();
}

void Filter2p::update_eq() noexcept {
  sA[0] = 1.0f;
  sA[2] = 1.0f;
  if (type >= 0 && type < kTypes) {
    const float numerator[kTypes][3] = {
        {1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}, {1.0f, gain / q, 1.0f}, {0.0f, gain / q, 0.0f}};
    std::copy_n(numerator[type], 3, sB);
    sA[1] = 1.0f / (type < 2 ? gain : q);
  }
  transform_s_to_z();
}

}  // namespace dsp
