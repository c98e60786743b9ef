// SPDX-License-Identifier: MIT
#include "devices/LoopPlayer.h"

#include <algorithm>
#include <utility>

namespace modrift::devices {

LoopPlayer::LoopPlayer(host::LiveStream& stream, host::Planar loop) : stream_(stream), loop_(std::move(loop)) {
  if (!loop_.empty()) loopFrames_ = static_cast<std::int64_t>(loop_.front().size());
}

void LoopPlayer::play(const host::LiveInputs& inputs, const host::LiveOutputs& outputs, std::int64_t frames) noexcept {
  if (loopFrames_ == 0) return stream_.process(inputs, outputs, frames);
  for (std::int64_t done = 0; done < frames;) {
    const std::int64_t part = std::min(frames - done, loopFrames_ - position_);
    stream_.process({loop_.front().data() + position_, loop_.back().data() + position_},
                    {outputs[0] + done, outputs[1] + done}, part);
    position_ = (position_ + part) % loopFrames_;
    done += part;
  }
}

}  // namespace modrift::devices
