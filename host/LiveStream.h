// SPDX-License-Identifier: MIT
// A plug-in that plays live: blocks of any length, in real time, while its editor is used.
//
//   LiveStream stream(plugin, {.tempoBpm = 120.0}, 48000.0, 512);   // activates
//   stream.process(inputs, outputs, frames);                        // [audio] again and again
//
// The destructor deactivates; the audio thread must have ended by then. Everything is allocated in the constructor.
#pragma once

#include <array>
#include <cstdint>

#include "host/Activation.h"
#include "host/ChannelBuffers.h"
#include "host/Plugin.h"
#include "host/Transport.h"

namespace modrift::host {

inline constexpr int kLiveChannels = 2;
using LiveInputs = std::array<const float*, kLiveChannels>;
using LiveOutputs = std::array<float*, kLiveChannels>;

class LiveStream {
 public:
  // Blocks go to the plug-in in pieces of at most `mostFrames`. Throws Error, also for a plug-in without outputs.
  LiveStream(Plugin& plugin, const TransportSettings& transport, double sampleRateHz, VstInt32 mostFrames);

  // [audio] Further inputs of the plug-in get silence, and further outputs are dropped; a single output goes to both
  // sides. Outputs may be inputs.
  void process(const LiveInputs& inputs, const LiveOutputs& outputs, std::int64_t frames) noexcept;

 private:
  void processPiece(const LiveInputs& inputs, const LiveOutputs& outputs, std::int64_t start, VstInt32 frames) noexcept;

  Plugin& plugin_;
  Transport transport_;
  VstInt32 mostFrames_;
  std::int64_t frame_ = 0;  // of the stream
  Activation activation_;
  ChannelBuffers inputs_, outputs_;  // made after it, since activation may change the channel counts
};

}  // namespace modrift::host
