// SPDX-License-Identifier: MIT
// One block's channels, silent at first, and the pointers to them that process calls take.
#pragma once

#include <cstddef>
#include <vector>

#include "vst2/aeffect.h"

namespace modrift::host {

class ChannelBuffers {
 public:
  ChannelBuffers(int channels, VstInt32 frames)
      : samples_(static_cast<std::size_t>(channels), std::vector<float>(static_cast<std::size_t>(frames))) {
    pointers_.reserve(samples_.size());
    for (std::vector<float>& channel : samples_) pointers_.push_back(channel.data());
  }
  ChannelBuffers(const ChannelBuffers&) = delete;  // the pointers would be the other's
  ChannelBuffers& operator=(const ChannelBuffers&) = delete;

  [[nodiscard]] std::vector<float>& operator[](std::size_t channel) noexcept { return samples_[channel]; }
  [[nodiscard]] std::size_t size() const noexcept { return samples_.size(); }
  [[nodiscard]] float** pointers() noexcept { return pointers_.data(); }

 private:
  std::vector<std::vector<float>> samples_;
  std::vector<float*> pointers_;
};

}  // namespace modrift::host
