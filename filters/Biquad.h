// SPDX-License-Identifier: MIT
// Second-order sections: a z-plane recursion, its description in the s-plane with the bilinear transform, and four
// named shapes. An object belongs to one thread at a time; nothing allocates.
#pragma once

namespace dsp {

// What the limiting sections need of an envelope.
struct EnvFollowerBase {
  float env = 0.0f;
  float attackCoef = 1.0f;  // share of a rise that a sample follows, 0 to 1
  float releaseCoef = 1.0f;
};

// y = zB[0] x + zB[1] x1 + zB[2] x2 - (zA[1] y1 + zA[2] y2). All blocks of n >= 0 samples may run in place, and a block
// split in two gives the same output as one.
class Biquad {
 public:
  void process_block(float* dest, const float* src, long n) noexcept;
  void process_block(float* data, long n) noexcept { process_block(data, data, n); }
  // Adds to `dest` instead of storing.
  void process_block_mix(float* dest, const float* src, long n) noexcept;
  void process_block_mix(float* data, long n) noexcept { process_block_mix(data, data, n); }
  // With an offset of 1e-20 in every other sample against denormal numbers.
  void process_block_nd(float* dest, const float* src, long n) noexcept;
  void process_block_nd(float* data, long n) noexcept { process_block_nd(data, data, n); }
  // Inside the recursion: y (1 - y^2 / (6 clip^2)); clip is above 0.
  void process_block_clip(float* dest, const float* src, long n, float clip) noexcept;
  void process_block_clip(float* data, long n, float clip) noexcept { process_block_clip(data, data, n, clip); }
  // Inside the recursion: divided by the envelope of |y k| where that is above 1; n is at least 1.
  void process_block_limit(float* dest, const float* src, long n, EnvFollowerBase& env, float k) noexcept;
  void process_block_limit(float* data, long n, EnvFollowerBase& env, float k) noexcept {
    process_block_limit(data, data, n, env, k);
  }

  void bq_clear_buffers() noexcept;
  void set_mem_dc(float value) noexcept;
  void clip_memory(float limit) noexcept;
  // False if an output in memory is denormal; -0 counts as denormal, +0 does not.
  [[nodiscard]] bool check_denormal() const noexcept;
  void kill_denormal() noexcept;

  float zB[3] = {1.0f, 0.0f, 0.0f};
  float zA[3] = {1.0f, 0.0f, 0.0f};  // zA[0] is 1 and not used
  float memX[2] = {};                // the last two inputs and outputs; memPos tells which is the newer
  float memY[2] = {};
  int memPos = 0;

 private:
  template <class Shape, class Store>
  void run(float* dest, const float* src, long n, Shape shape, Store store) noexcept;
};

class BiquadS : public Biquad {
 public:
  // Sets zB and zA, in double precision, for 0 < f0 < sampleFreq / 2.
  void transform_s_to_z() noexcept;
  // The same with a polynomial for the tangent, in single precision; off toward sampleFreq / 2.
  void transform_s_to_z_fast() noexcept;
  // A frequency in hertz on the s-axis on which f0 is 1, pre-warped.
  [[nodiscard]] float wrap_freq_blt(float f) const noexcept;
  [[nodiscard]] float wrap_freq_blt_fast(float f) const noexcept;

  float sB[3] = {1.0f, 2.0f, 1.0f};  // coefficients of s^0, s^1, s^2
  float sA[3] = {1.0f, 2.0f, 1.0f};
  float sampleFreq = 44100.0f;  // hertz
  float f0 = 1000.0f;           // hertz
};

class Filter2p : public BiquadS {
 public:
  static constexpr int kTypes = 4;
  static const char* const TYPE_NAME_0[kTypes];
  static constexpr int kBandPass = 3;

  Filter2p(int shape = 2) noexcept;
  // Applies type, f0, gain and q; keeps the memories, so it may run between blocks.
  void update_eq() noexcept;

  int type = 2;
  float gain = 1.0f;  // the Q of the first two types; the gain at f0 of the last
  float q = 1.0f;
};

}  // namespace dsp
