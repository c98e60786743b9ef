#include "host/LiveStream.h"

#include <algorithm>

#include "host/Error.h"

namespace modrift::host {
namespace {

std::vector<std::vector<float>> buffers(int channels, VstInt32 frames) {
  return {static_cast<std::size_t>(channels), std::vector<float>(static_cast<std::size_t>(frames))};
}

std::vector<float*> pointersTo(std::vector<std::vector<float>>& channels) {
  std::vector<float*> pointers;
  pointers.reserve(channels.size());
  for (std::vector<float>& channel : channels) pointers.push_back(channel.data());
  return pointers;
}

}  // namespace

LiveStream::LiveStream(Plugin& plugin, const TransportSettings& transport, double sampleRateHz, VstInt32 mostFrames)
    : plugin_(plugin), transport_(transport, sampleRateHz), mostFrames_(std::max(mostFrames, 1)) {
  plugin_.setProcessLevel(kVstProcessLevelRealtime);
  plugin_.setSampleRate(sampleRateHz);
  plugin_.setBlockSize(mostFrames_);
  plugin_.activate();
  inputs_ = buffers(plugin_.inputCount(), mostFrames_);
  outputs_ = buffers(plugin_.outputCount(), mostFrames_);
  inputPointers_ = pointersTo(inputs_);
  outputPointers_ = pointersTo(outputs_);
  if (!outputs_.empty()) return;
  plugin_.deactivate();
  throw Error(plugin_.path().string() + ": a plug-in with audio outputs was expected");
}

LiveStream::~LiveStream() {
  try {
    plugin_.deactivate();
  } catch (...) {
    return;  // the stream has ended, whatever the plug-in makes of it
  }
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
  plugin_.process(inputPointers_.data(), outputPointers_.data(), frames);
  for (std::size_t channel = 0; channel < outputs.size(); ++channel)
    std::copy_n(outputs_[std::min(channel, outputs_.size() - 1)].begin(), frames, outputs[channel] + start);
  transport_.advance(frames);
  frame_ += frames;
}

}  // namespace modrift::host
