// SPDX-License-Identifier: MIT
#include "host/LiveStream.h"

#include <algorithm>

#include "host/Error.h"

namespace modrift::host {
namespace {

// What must be known before the plug-in is activated.
Plugin& prepared(Plugin& plugin, double sampleRateHz, VstInt32 mostFrames) {
  plugin.setProcessLevel(kVstProcessLevelRealtime);
  plugin.setSampleRate(sampleRateHz);
  plugin.setBlockSize(mostFrames);
  return plugin;
}

}  // namespace

LiveStream::LiveStream(Plugin& plugin, const TransportSettings& transport, double sampleRateHz, VstInt32 mostFrames)
    : plugin_(plugin),
      transport_(transport, sampleRateHz),
      mostFrames_(std::max(mostFrames, 1)),
      activation_(prepared(plugin, sampleRateHz, mostFrames_)),
      inputs_(plugin.inputCount(), mostFrames_),
      outputs_(plugin.outputCount(), mostFrames_) {
  if (outputs_.size() == 0) throw Error(plugin_.path().string() + ": a plug-in with audio outputs was expected");
}

void LiveStream::process(const LiveInputs& inputs, const LiveOutputs& outputs, std::int64_t frames) noexcept {
  for (std::int64_t start = 0; start < frames; start += mostFrames_) {
    const auto piece = static_cast<VstInt32>(std::min<std::int64_t>(frames - start, mostFrames_));
    processPiece(inputs, outputs, start, piece);
  }
}

void LiveStream::processPiece(const LiveInputs& inputs, const LiveOutputs& outputs, std::int64_t start,
                              VstInt32 frames) noexcept {
  for (std::size_t channel = 0; channel < std::min(inputs.size(), inputs_.size()); ++channel)
    std::copy_n(inputs[channel] + start, frames, inputs_[channel].begin());
  plugin_.setTime(transport_.time(), frame_);
  plugin_.process(inputs_.pointers(), outputs_.pointers(), frames);
  for (std::size_t channel = 0; channel < outputs.size(); ++channel)
    std::copy_n(outputs_[std::min(channel, outputs_.size() - 1)].begin(), frames, outputs[channel] + start);
  transport_.advance(frames);
  frame_ += frames;
}

}  // namespace modrift::host
