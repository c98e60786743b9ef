// SPDX-License-Identifier: MIT
#include "filters/Downsampler2Flt.h"

#include "filters/AllPass.h"
#include "filters/Lanes.h"

namespace rspl {

using dsp::allPass;

void Downsampler2Flt::set_coefs(const double* coefs) noexcept {
  for (int i = 0; i < kHalfBandCoefs; ++i) coef[i] = static_cast<float>(coefs[i]);
}

void Downsampler2Flt::clear_buffers() noexcept {
  memA0 = memB0 = memA1 = memB1 = memA2 = memB2 = memA3 = memB3 = memA4 = 0.0f;
}

float Downsampler2Flt::branchA(float in) noexcept {
  const float t1 = allPass(in, memA1, coef[0], memA0);
  const float t2 = allPass(t1, memA2, coef[2], memA1);
  const float t3 = allPass(t2, memA3, coef[4], memA2);
  const float t4 = allPass(t3, memA4, coef[6], memA3);
  memA0 = in;
  memA1 = t1;
  memA2 = t2;
  memA3 = t3;
  memA4 = t4;
  return t4;
}

float Downsampler2Flt::branchB(float in) noexcept {
  const float s1 = allPass(in, memB1, coef[1], memB0);
  const float s2 = allPass(s1, memB2, coef[3], memB1);
  const float s3 = allPass(s2, memB3, coef[5], memB2);
  memB0 = in;
  memB1 = s1;
  memB2 = s2;
  memB3 = s3;
  return s3;
}

void Downsampler2Flt::downsample_block(float* dest, const float* src, long n) noexcept {
  for (long i = 0; i < n; ++i) {
    const float even = src[2 * i];
    const float odd = src[2 * i + 1];
    const float a = branchA(2.0f * odd);
    dest[i] = a + branchB(2.0f * even);
  }
}

void Downsampler2Flt::tarnel_upsampleblock(float* dest, const float* src, long n) noexcept {
  for (long i = 0; i < n; ++i) {
    memA0 = dsp::flushedBySum(memA0, -dsp::kFlushOffset);
    memB0 = dsp::flushedBySum(memB0, -dsp::kFlushOffset);
    const float a = branchA(0.0f);
    dest[2 * i] = branchB(0.5f * src[i]);
    dest[2 * i + 1] = a;
  }
}

}  // namespace rspl
