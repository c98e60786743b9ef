// SPDX-License-Identifier: MIT
#include "cli/commands/WaveCommand.h"

#include <array>
#include <filesystem>
#include <fmt/core.h>
#include <optional>
#include <utility>

#include "cli/files/AudioFile.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/pictures/Levels.h"
#include "cli/pictures/WavePicture.h"
#include "cli/terminal/Errors.h"

namespace modrift::cli {

void runWave(const WaveOptions& options) {
  const std::filesystem::path target = pictureTarget(options.input, options.output);
  makeFolder(options.output);
  Audio audio = readAudio(options.input);
  const Levels levels = measureLevels(audio.channels);
  const std::string facts = fmt::format("{:.2f} s at {:.0f} Hz, peak {}, RMS {}", audio.seconds(), audio.sampleRateHz,
                                        decibelText(levels.peak), decibelText(levels.rms));
  const std::array tracks = {WaveTrack{std::filesystem::path(options.input).filename().string(), audio.sampleRateHz,
                                       std::move(audio.channels)}};
  PendingFile pending(target);
  writeWavePicture(pending.path(), tracks, std::nullopt);
  pending.commit();
  fmt::print("{} -> {}: {}\n", options.input, target.string(), facts);
}

}  // namespace modrift::cli
