// What all filters share: the tuning and the sample rate that coefficients are made for. Read-only after `init`.
#pragma once

struct VGlobalCoeffs {
  // `tune` is the pitch of A4 in hertz, `sampleRate` the host's rate in hertz.
  void init(float tune, float sampleRate) noexcept {
    tuneHz = tune;
    sampleRateHz = sampleRate;
  }

  float tuneHz = 440.0f;
  float sampleRateHz = 44100.0f;
};
