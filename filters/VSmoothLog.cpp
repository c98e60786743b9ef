// SPDX-License-Identifier: MIT
#include "filters/VSmoothLog.h"

#include <algorithm>

void VSmoothLog::setRate(float inverseRate) noexcept {
  constexpr double kHalfPi = 1.5707964;  // as single precision holds it
  invRate = inverseRate;
  coef = static_cast<float>(std::min(static_cast<double>(freq) * kHalfPi * static_cast<double>(invRate), 1.0));
}

void VSmoothLog::processBuffer(float* in, float* out, float*, float*, long count) noexcept {
  target = in[0];
  out[0] = step(std::min(static_cast<float>(count) * coef, 1.0f));
}

void VSmoothLog::multiplyBuffer(float newTarget, float* in, float* out, long count) noexcept {
  target = newTarget;
  for (long i = 0; i < count; ++i) out[i] = in[i] * step(coef);
}
