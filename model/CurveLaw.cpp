// SPDX-License-Identifier: MIT
#include "model/CurveLaw.h"

#include <cmath>
#include <numbers>

namespace model {
namespace {

// Keeps the law off its poles: at 0 and 1 the exponential is infinitely bent, at 0.5 infinitely long.
double offThePoles(double curve) noexcept {
  if (curve <= 0.0) return 1e-14;
  if (curve == 0.5) return 0.4999999998;
  if (curve >= 1.0) return 0.9999999998;
  return curve;
}

double bend(double curve) noexcept {
  const double t = curve > 0.5 ? 2.0 * (1.0 - curve) : 2.0 * curve;
  const double half = t * t * t / 2.0;
  const double q = curve > 0.5 ? 1.0 - half : half;
  if (q <= 0.0) return 1e-14;
  if (q >= 1.0) return 0.99999999999999;
  return q;
}

}  // namespace

CurveCoef calcCurveCoef(double curve, int length) noexcept {
  const double q = bend(offThePoles(curve));
  const double k = std::numbers::pi / std::log(1.0 / q - 1.0);
  const double end = std::exp(-2.0 * std::numbers::pi / k);
  const double ratio = length > 0 ? std::exp(-2.0 * std::numbers::pi / (length * k)) : 1.0;
  return {end, 1.0 / (1.0 - end), ratio};
}

int segmentLength(double from, double to) noexcept {
  const double length = to - from + 0.5;
  if (!(length > 0.0)) return 0;
  return static_cast<int>(std::min(length, 2.0 * kGraphTableSize));
}

}  // namespace model
