// SPDX-License-Identifier: MIT
// Four floats that are worked on at once: the left and right channel of two branches, or of two bands.
//
// Arithmetic on `Quad` is lane by lane with the same rounding as on `float`, so a kernel written over its sample type
// gives the same bits in both. Unused lanes must hold copies of live ones: a lane that decays by itself ends in
// denormal numbers, which cost a hundred times as much as others.
#pragma once

#include <cstring>

namespace dsp {

using Quad = float __attribute__((vector_size(16)));
using Pair = float __attribute__((vector_size(8)));
using DoublePair = double __attribute__((vector_size(16)));

// Reads and writes of unaligned memory.
inline Quad loadQuad(const float* from) noexcept {
  Quad q;
  std::memcpy(&q, from, sizeof q);
  return q;
}

inline void storeQuad(float* to, Quad q) noexcept { std::memcpy(to, &q, sizeof q); }

inline Pair loadPair(const float* from) noexcept {
  Pair p;
  std::memcpy(&p, from, sizeof p);
  return p;
}

inline void storePair(float* to, Pair p) noexcept { std::memcpy(to, &p, sizeof p); }

inline Quad quadOf(float all) noexcept { return Quad{all, all, all, all}; }
inline Quad quadOf(Pair low, Pair high) noexcept { return __builtin_shufflevector(low, high, 0, 1, 2, 3); }
inline Pair lowPair(Quad q) noexcept { return __builtin_shufflevector(q, q, 0, 1); }
inline Pair highPair(Quad q) noexcept { return __builtin_shufflevector(q, q, 2, 3); }

// The vocabulary of small numbers: a denormal number lies below 1e-38 and is slow to compute with; a trace, below
// kTrace, is not heard any more, but left to itself it decays into denormal numbers; to flush is to take traces away.
inline constexpr float kTrace = 1e-18f;

// Flushes by a sum: x + offset, then - offset, the offset a double and each sum rounded to float. Numbers far below the
// offset end on a residue of a few 1e-26, which keeps whatever circulates from there on out of the denormal range.
inline constexpr double kFlushOffset = 1e-18;
inline float flushedBySum(float x, double offset) noexcept {
  const auto raised = static_cast<float>(static_cast<double>(x) + offset);
  return static_cast<float>(static_cast<double>(raised) - offset);
}

inline Pair flushedBySum(Pair x, double offset) noexcept {
  const DoublePair o = {offset, offset};
  const Pair raised = __builtin_convertvector(__builtin_convertvector(x, DoublePair) + o, Pair);
  return __builtin_convertvector(__builtin_convertvector(raised, DoublePair) - o, Pair);
}

inline Quad flushedBySum(Quad x, double offset) noexcept {
  return quadOf(flushedBySum(lowPair(x), offset), flushedBySum(highPair(x), offset));
}

}  // namespace dsp
