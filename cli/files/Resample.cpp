// SPDX-License-Identifier: MIT
#include "cli/files/Resample.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fmt/core.h>
#include <memory>
#include <samplerate.h>
#include <vector>

#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"

namespace modrift::cli {
namespace {

constexpr long kSliceFrames = 1 << 16;  // input between two looks at the interrupt flag

struct DeleteConverter {
  void operator()(SRC_STATE* state) const noexcept { src_delete(state); }
};

void check(int error) {
  if (error != 0)
    throw RunError(fmt::format("--rate: a convertible sample rate was expected ({})", src_strerror(error)));
}

std::vector<float> resampleChannel(const std::vector<float>& channel, double ratio) {
  int error = 0;
  const std::unique_ptr<SRC_STATE, DeleteConverter> converter(src_new(SRC_SINC_BEST_QUALITY, 1, &error));
  check(error);
  std::vector<float> result(static_cast<std::size_t>(std::llround(static_cast<double>(channel.size()) * ratio)));
  std::size_t read = 0;
  std::size_t written = 0;
  while (written < result.size()) {
    throwIfInterrupted();
    SRC_DATA data{};
    data.src_ratio = ratio;
    data.data_in = channel.data() + read;
    data.input_frames = std::min(kSliceFrames, static_cast<long>(channel.size() - read));
    data.end_of_input = read + static_cast<std::size_t>(data.input_frames) == channel.size() ? 1 : 0;
    data.data_out = result.data() + written;
    data.output_frames = static_cast<long>(result.size() - written);
    check(src_process(converter.get(), &data));
    if (data.input_frames_used == 0 && data.output_frames_gen == 0) break;  // a last frame short: it stays silent
    read += static_cast<std::size_t>(data.input_frames_used);
    written += static_cast<std::size_t>(data.output_frames_gen);
  }
  return result;
}

}  // namespace

host::Planar resample(host::Planar channels, double fromHz, double toHz) {
  const double ratio = toHz / fromHz;
  if (src_is_valid_ratio(ratio) == 0) {
    throw RunError(fmt::format("--rate: a rate within 1 : 256 of the file's {} Hz was expected", fromHz));
  }
  for (std::vector<float>& channel : channels) channel = resampleChannel(channel, ratio);
  return channels;
}

}  // namespace modrift::cli
