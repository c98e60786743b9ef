// SPDX-License-Identifier: MIT
// Audio files in and out, through libsndfile.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/OfflineRunner.h"

namespace modrift::cli {

struct Audio {
  double sampleRateHz = 44100.0;
  host::Planar channels;  // equal lengths; full scale is 1

  [[nodiscard]] std::size_t frames() const { return channels.empty() ? 0 : channels.front().size(); }
  [[nodiscard]] double seconds() const { return static_cast<double>(frames()) / sampleRateHz; }
};

// Mono or stereo in any format that libsndfile knows. Throws RunError, and Interrupted.
[[nodiscard]] Audio readAudio(const std::filesystem::path& path);

// Whether an extension (".wav", in any case) names a format that writeAudio knows.
[[nodiscard]] bool isWritableExtension(const std::string& extension);
// Whether that format keeps samples beyond full scale as they are.
[[nodiscard]] bool holdsAnyLevel(const std::string& extension);
// ".wav, .flac, ..." for messages and help.
[[nodiscard]] std::string writableExtensions();

// Writes beside the target and renames into place; the format follows the extension. The same samples give the same
// bytes (Ogg streams apart, which carry a random number). Throws RunError, and Interrupted.
void writeAudio(const std::filesystem::path& target, const Audio& audio);

}  // namespace modrift::cli
