// SPDX-License-Identifier: MIT
// `modrift wave`: an audio file as a picture of its waveform and spectrogram.
#pragma once

#include <string>

namespace modrift::cli {

struct WaveOptions {
  std::string input;
  std::string output;
};

// Throws UsageError, RunError and Interrupted.
void runWave(const WaveOptions& options);

}  // namespace modrift::cli
