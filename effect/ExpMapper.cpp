// SPDX-License-Identifier: MIT
#include "effect/ExpMapper.h"

#include <algorithm>
#include <cmath>

namespace Lumbrix::Utility {

CExpMapper::CExpMapper(float min, float max, float start) noexcept {
  setRange(min <= 0.0f ? 1.0f : min, max);
  setValue(start);
}

void CExpMapper::setRange(float min, float max) noexcept {
  minimum = min;
  maximum = max;
  range = max - min;
  logMinimum = static_cast<float>(std::log(static_cast<double>(min)));
  logMaximum = static_cast<float>(std::log(static_cast<double>(max)));
  logRange = logMaximum - logMinimum;
}

void CExpMapper::setValue(float normalised) noexcept {
  lastLog = static_cast<float>(static_cast<double>(logRange) * static_cast<double>(normalised) +
                               static_cast<double>(logMinimum));
  lastRaw = static_cast<float>(std::exp(static_cast<double>(lastLog)));
  current = std::clamp(lastRaw, minimum, maximum);
}

float CExpMapper::setAndGetValue(float normalised) noexcept {
  setValue(normalised);
  return current;
}

}  // namespace Lumbrix::Utility
