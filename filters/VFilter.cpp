#include "filters/VFilter.h"

#include <algorithm>

float softClip(float x) noexcept {
  const float t = std::clamp(x, -1.5f, 1.5f);
  return t - 0.14814815f * (t * t * t);
}

void VFilter::setSampleRate(float rate, float invRate) noexcept {
  sampleRate = rate;
  invSampleRate = invRate;
}

void VFilter::processBuffer(const float* params, const float* in, float* out, long count) noexcept {
  const float drive = 1.0f + std::clamp(params[kDrive], -1.0f, 1.0f);
  driveGain = (drive * drive) * (drive * drive);
  for (long i = 0; i < count; ++i) out[i] = softClip(in[i] * driveGain);
}
