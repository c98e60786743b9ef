// SPDX-License-Identifier: MIT
// What a kernel may compute with: one channel (`float`) or a left/right pair (`Quad`), through the same operations.
//
// A pair lives in the two low lanes of a `Quad`; the two high lanes hold exact zeros, which every kernel keeps, so they
// cost nothing and never turn into denormal numbers. Each lane rounds as a `float` does: both types give the same bits.
#pragma once

#include <bit>
#include <cmath>

#include "filters/Lanes.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace dsp {

template <class S>
inline constexpr int kLanes = 2;
template <>
inline constexpr int kLanes<float> = 1;

template <class S>
[[nodiscard]] inline S loadFrame(const float* from) noexcept;
template <>
inline float loadFrame<float>(const float* from) noexcept {
  return *from;
}

inline void storeFrame(float* to, float x) noexcept { *to = x; }
inline void storeFrame(float* to, Quad x) noexcept { storePair(to, lowPair(x)); }

// The same number in all lanes that are live.
template <class S>
[[nodiscard]] inline S both(float x) noexcept;
template <>
inline float both<float>(float x) noexcept {
  return x;
}
template <>
inline Quad both<Quad>(float x) noexcept {
  return Quad{x, x, 0.0f, 0.0f};
}

[[nodiscard]] inline float laneOf(float x, int) noexcept { return x; }
[[nodiscard]] inline float laneOf(Quad x, int lane) noexcept { return x[lane]; }
inline void setLane(float& x, int, float value) noexcept { x = value; }
inline void setLane(Quad& x, int lane, float value) noexcept { x[lane] = value; }

[[nodiscard]] inline float magnitude(float x) noexcept { return std::fabs(x); }

// Traces, of a magnitude below kTrace, become zero; larger numbers stay as they are.
[[nodiscard]] inline float flushed(float x) noexcept { return std::fabs(x) < kTrace ? 0.0f : x; }

// low to high with low < high; a NaN stays one.
[[nodiscard]] inline float limited(float x, float low, float high) noexcept {
  const float raised = low > x ? low : x;
  return high < raised ? high : raised;
}

#if defined(__SSE2__)

template <>
inline Quad loadFrame<Quad>(const float* from) noexcept {
  double bits;
  std::memcpy(&bits, from, sizeof bits);
  return _mm_castpd_ps(_mm_set_sd(bits));
}

// Either comparison returns its second operand when one is a NaN.
[[nodiscard]] inline Quad limited(Quad x, float low, float high) noexcept {
  return _mm_min_ps(quadOf(high), _mm_max_ps(quadOf(low), x));
}

[[nodiscard]] inline Quad magnitude(Quad x) noexcept { return _mm_andnot_ps(quadOf(-0.0f), x); }

// Whether a lane's magnitude is above the limit; a NaN is not.
[[nodiscard]] inline bool anyAbove(Quad x, float limit) noexcept {
  return _mm_movemask_ps(_mm_cmpgt_ps(magnitude(x), quadOf(limit))) != 0;
}

[[nodiscard]] inline Quad flushed(Quad x) noexcept {
  return _mm_andnot_ps(_mm_cmplt_ps(magnitude(x), quadOf(kTrace)), x);
}

// Toward zero; what does not fit an int, a NaN too, becomes the lowest one.
[[nodiscard]] inline Quad truncated(Quad x) noexcept { return _mm_cvtepi32_ps(_mm_cvttps_epi32(x)); }
[[nodiscard]] inline float truncated(float x) noexcept { return static_cast<float>(_mm_cvttss_si32(_mm_set_ss(x))); }

#else

template <>
inline Quad loadFrame<Quad>(const float* from) noexcept {
  return Quad{from[0], from[1], 0.0f, 0.0f};
}

template <class F>
[[nodiscard]] inline Quad laneByLane(Quad x, F f) noexcept {
  return Quad{f(x[0]), f(x[1]), f(x[2]), f(x[3])};
}

[[nodiscard]] inline Quad limited(Quad x, float low, float high) noexcept {
  return laneByLane(x, [=](float lane) { return limited(lane, low, high); });
}

[[nodiscard]] inline Quad magnitude(Quad x) noexcept {
  return laneByLane(x, [](float lane) { return std::fabs(lane); });
}

[[nodiscard]] inline bool anyAbove(Quad x, float limit) noexcept {
  const Quad m = magnitude(x);
  return m[0] > limit || m[1] > limit;
}

[[nodiscard]] inline Quad flushed(Quad x) noexcept {
  return laneByLane(x, [](float lane) { return flushed(lane); });
}

[[nodiscard]] inline float truncated(float x) noexcept {
  constexpr float kLowest = -2147483648.0f;
  return std::fabs(x) < -kLowest ? static_cast<float>(static_cast<int>(x)) : kLowest;
}

[[nodiscard]] inline Quad truncated(Quad x) noexcept {
  return laneByLane(x, [](float lane) { return truncated(lane); });
}

#endif

[[nodiscard]] inline bool anyAbove(float x, float limit) noexcept { return std::fabs(x) > limit; }

// The bits of a sample, lane by lane.
namespace detail {
template <class S>
struct BitsOf {
  using Type = int __attribute__((vector_size(16)));
};
template <>
struct BitsOf<float> {
  using Type = int;
};
}  // namespace detail
template <class S>
using Bits = typename detail::BitsOf<S>::Type;

[[nodiscard]] inline Bits<float> bitsOf(float x) noexcept { return std::bit_cast<int>(x); }
[[nodiscard]] inline Bits<Quad> bitsOf(Quad x) noexcept { return std::bit_cast<Bits<Quad>>(x); }
[[nodiscard]] inline bool anyBit(Bits<float> bits, int bit) noexcept { return (bits & bit) != 0; }
[[nodiscard]] inline bool anyBit(Bits<Quad> bits, int bit) noexcept { return ((bits[0] | bits[1]) & bit) != 0; }

// The double counterpart of a sample type, for the few formulas that need it.
namespace detail {
template <class S>
struct WideOf {
  using Type = DoublePair;
};
template <>
struct WideOf<float> {
  using Type = double;
};
}  // namespace detail
template <class S>
using Wide = typename detail::WideOf<S>::Type;

[[nodiscard]] inline double widened(float x) noexcept { return static_cast<double>(x); }
[[nodiscard]] inline DoublePair widened(Quad x) noexcept { return __builtin_convertvector(lowPair(x), DoublePair); }
[[nodiscard]] inline double magnitude(double x) noexcept { return std::fabs(x); }
[[nodiscard]] inline double smaller(double a, double b) noexcept { return a < b ? a : b; }
[[nodiscard]] inline double withSignOf(double magnitude, double sign) noexcept {
  return std::copysign(magnitude, sign);
}

#if defined(__SSE2__)
[[nodiscard]] inline DoublePair magnitude(DoublePair x) noexcept { return _mm_andnot_pd(_mm_set1_pd(-0.0), x); }
[[nodiscard]] inline DoublePair smaller(DoublePair a, DoublePair b) noexcept { return _mm_min_pd(a, b); }
[[nodiscard]] inline DoublePair withSignOf(DoublePair magnitude, DoublePair sign) noexcept {
  const __m128d bit = _mm_set1_pd(-0.0);
  return _mm_or_pd(_mm_andnot_pd(bit, magnitude), _mm_and_pd(bit, sign));
}
#else
[[nodiscard]] inline DoublePair magnitude(DoublePair x) noexcept {
  return DoublePair{std::fabs(x[0]), std::fabs(x[1])};
}
[[nodiscard]] inline DoublePair smaller(DoublePair a, DoublePair b) noexcept {
  return DoublePair{smaller(a[0], b[0]), smaller(a[1], b[1])};
}
[[nodiscard]] inline DoublePair withSignOf(DoublePair magnitude, DoublePair sign) noexcept {
  return DoublePair{std::copysign(magnitude[0], sign[0]), std::copysign(magnitude[1], sign[1])};
}
#endif

[[nodiscard]] inline float narrowed(double x) noexcept { return static_cast<float>(x); }
[[nodiscard]] inline Quad narrowed(DoublePair x) noexcept {
  return quadOf(__builtin_convertvector(x, Pair), Pair{0.0f, 0.0f});
}

}  // namespace dsp
