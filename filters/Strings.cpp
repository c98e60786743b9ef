// SPDX-License-Identifier: MIT
#include "filters/Strings.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace strings {
namespace {

constexpr int kWidth = 8;
constexpr float kTextRate = 44100.0f;  // of the texts that speak of samples, in hertz

}  // namespace

void float2string(float value, char* text) noexcept {
  const double exact = static_cast<double>(value);  // no float lies on the upper limit
  if (!(exact >= -9999999.0 && exact <= 99999999.0)) {
    std::strcpy(text, "Huge!");
    return;
  }
  char digits[32];
  const double magnitude = std::fabs(exact);
  std::snprintf(digits, sizeof digits, "%s%.0f.", value < 0.0f ? "-" : "", std::floor(magnitude));
  double fraction = magnitude - std::floor(magnitude);
  std::size_t length = std::strlen(digits);
  for (; length < kWidth; ++length) {
    fraction *= 10.0;
    const double digit = std::floor(fraction);
    digits[length] = static_cast<char>('0' + static_cast<int>(digit));
    fraction -= digit;
  }
  digits[kWidth] = '\0';
  std::strcpy(text, digits);
}

void dB2string(float value, char* text) noexcept {
  if (value <= 0.0f) {
    std::strcpy(text, "-oo");
  } else {
    float2string(static_cast<float>(20.0 * std::log10(static_cast<double>(value))), text);
  }
}

void Hz2string(float samples, char* text) noexcept { float2string(samples == 0.0f ? 0.0f : kTextRate / samples, text); }

void ms2string(float samples, char* text) noexcept { float2string(samples * 1000.0f / kTextRate, text); }

void long2string(long value, char* text) noexcept {
  if (value >= 100000000) {
    std::strcpy(text, "Huge!");
    return;
  }
  char whole[32];
  std::snprintf(whole, sizeof whole, "%7ld", value);
  whole[8] = '\0';
  std::strcpy(text, whole);
}

}  // namespace strings
