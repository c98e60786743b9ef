// SPDX-License-Identifier: MIT
// Plays a recording again and again, or what the sound device hears, through a plug-in.
#pragma once

#include "devices/SoundDevice.h"
#include "host/LiveStream.h"
#include "host/OfflineRunner.h"

namespace modrift::devices {

class LoopPlayer : public BlockPlayer {
 public:
  // `loop` has one or two channels at the stream's rate; without one, or an empty one, the device's inputs are played.
  LoopPlayer(host::LiveStream& stream, host::Planar loop);

  void play(const host::LiveInputs& inputs, const host::LiveOutputs& outputs,
            std::int64_t frames) noexcept override;  // [audio]

 private:
  host::LiveStream& stream_;
  host::Planar loop_;
  std::int64_t loopFrames_ = 0;
  std::int64_t position_ = 0;  // in the loop
};

}  // namespace modrift::devices
