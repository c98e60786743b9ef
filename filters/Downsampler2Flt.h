// SPDX-License-Identifier: MIT
// The two-times rate change round the filter: a polyphase all-pass half-band filter, for one channel.
//
// Two branches of first-order all-pass sections t = (u - t') c + u', primes marking the sample before: branch A with
// four sections on the even coefficients, branch B with three on the odd ones. Life: constructor, `set_coefs`,
// `clear_buffers`, then blocks of one direction; an up- and a downsampler are one object each.
#pragma once

namespace rspl {

inline constexpr int kHalfBandCoefs = 7;

// Pass-band to a fifth of the doubled rate; loaded into every rate change of the effect.
inline constexpr double Mydwnspl_coef_arr[kHalfBandCoefs] = {0.0457281, 0.168088, 0.332501, 0.504486,
                                                             0.663202,  0.803781, 0.933856};

class Downsampler2Flt {
 public:
  virtual ~Downsampler2Flt() = default;

  void set_coefs(const double* coefs) noexcept;
  void clear_buffers() noexcept;

  // [audio] Reads 2n samples, writes n; n is at least 1. Doubles both branches, which makes good for the zeros that the
  // way up puts in between. `dest` may be `src`.
  void downsample_block(float* dest, const float* src, long n) noexcept;
  // [audio] Reads n samples, writes 2n; n is at least 1. `dest` and `src` must not overlap.
  void tarnel_upsampleblock(float* dest, const float* src, long n) noexcept;

  float coef[kHalfBandCoefs] = {12345.0f};  // the mark of coefficients that were never set
  float memA0 = 0.0f;
  float memB0 = 0.0f;
  float memA1 = 0.0f;
  float memB1 = 0.0f;
  float memA2 = 0.0f;
  float memB2 = 0.0f;
  float memA3 = 0.0f;
  float memB3 = 0.0f;
  float memA4 = 0.0f;

 private:
  float branchA(float in) noexcept;
  float branchB(float in) noexcept;
};

}  // namespace rspl
