// SPDX-License-Identifier: MIT
// The tables from which every filter type takes its coefficients: 64 steps per semitone for pitch, the same index for
// resonance. One set serves all channels; it is read-only after `init`.
#pragma once

#include <atomic>
#include <vector>

namespace filters {

inline constexpr float kTuningHz = 440.0f;  // of A4, the pitch that cutoffs count from

}  // namespace filters

struct VGlobalCoeffs {
  static constexpr int kEntries = 24576;
  static constexpr int kNoteZero = 8192;  // the entry of MIDI note 0
  static constexpr double kTopResonance = 1.2;

  struct Moog {
    float k, c1, c2, c3;  // loop gain; one pole's feedback, input and previous input
  };
  struct Svf {
    float f, damp, qMax, gainComp;  // 2 sin(pi f / 2); damping; its stability limit; input gain at a resonance
  };
  struct Pitch {
    float f;  // cycles per sample, at most 0.5
  };
  struct Hold {
    float levels, step;  // quantiser levels at a resonance; phase increment at a pitch
  };
  struct Delay {
    float samples, base, inv, tan;  // period; resonance 0 to 1.2; 1 / (base + 1); tan(pi f), at most pi / 2
  };

  // `tune` is the pitch of A4 in hertz, `sampleRate` the host's rate in hertz. Allocates at the first call.
  void init(float tune, float sampleRate);

  // Makes `tune` and `sampleRate` the values that all filters of the process read, without building tables.
  static void announce(float tune, float sampleRate) noexcept;
  // What `pitch` holds at an entry, in cycles per sample.
  [[nodiscard]] static double cyclesPerSample(int entry, float tune, float sampleRate) noexcept;

  std::vector<Moog> moog;
  std::vector<Svf> svf;
  std::vector<Pitch> pitch;
  std::vector<Hold> hold;
  std::vector<Delay> delay;

  // The values of the last `init` or `announce` in this process. Relaxed: each stands for itself.
  static std::atomic<float> g_sampleRate, g_sampleRate1, g_tune;
  static std::atomic<float> svf10Hz, svf1Hz;

 private:
  void fillEntry(int i, double f, double period0);

  float tune_ = 0.0f;
  float sampleRate_ = 0.0f;
};
