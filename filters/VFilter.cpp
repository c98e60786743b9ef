// SPDX-License-Identifier: MIT
#include "filters/VFilter.h"

#include <cstring>

#include "filters/Strings.h"

using namespace filters;

namespace {

constexpr long kIn = kDryWet + 1;  // the input level slot, which only has a text

const FilterType& typeOf(float normalised) noexcept { return typeAt(typeIndexOf(normalised)); }

}  // namespace

void VFilter::processBuffer(const float* params, const float* in, float* out, long count) noexcept {
  core_.processBuffer(params, in, out, count);
}

void VFilter::setSampleRate(float rate, float invRate) { core_.setSampleRate(rate, invRate); }

void VFilter::getParamInInfo(long index, float value, char* text) const noexcept {
  switch (index) {
    case kDrive:
      return strings::dB2string(driveGainOf(value), text);
    case kPower:
      std::strcpy(text, value > 0.5f ? "on" : "off");
      return;
    case kMode:
      std::strcpy(text, typeOf(value).name);
      return;
    case kFreq: {
      const auto entry = static_cast<std::size_t>(pitchEntry(static_cast<double>(value)));
      std::strcat(text, "  ");
      return strings::float2string(coeffs->pitch[entry].f * VGlobalCoeffs::g_sampleRate, text + std::strlen(text));
    }
    case kVar:
      std::strcpy(text, typeOf(value).varText);
      return;
    case kDryWet:
      std::strcpy(text, "dry/wet");
      return;
    case kRes:
    case kIn:
      return strings::float2string(value, text);
    default:
      return;
  }
}

long VFilter::getNumEntries(long index) const noexcept { return index == kMode ? kFilterTypes : 0; }
