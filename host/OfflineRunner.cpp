// SPDX-License-Identifier: MIT
#include "host/OfflineRunner.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "host/Activation.h"
#include "host/ChannelBuffers.h"

namespace modrift::host {
namespace {

// Silence to run before the settings count, in frames: at least one block of every plug-in's inner grid.
constexpr VstInt32 kWarmUpFrames = 64;

// A latency beyond this many seconds is a plug-in's mistake and not worth waiting for.
constexpr double kLongestLatencySeconds = 30.0;

class Render {
 public:
  Render(Plugin& plugin, std::span<const std::vector<float>> input, const RenderJob& job)
      : plugin_(plugin),
        input_(input),
        job_(job),
        inputFrames_(input.empty() ? 0 : static_cast<std::int64_t>(input.front().size())),
        latency_(
            std::min(plugin.latencyFrames(), static_cast<std::int64_t>(kLongestLatencySeconds * job.sampleRateHz))),
        resultFrames_(inputFrames_ + job.tailFrames),
        inputs_(plugin.inputCount(), job.blockFrames),
        outputs_(plugin.outputCount(), job.blockFrames),
        result_(outputs_.size(), std::vector<float>(static_cast<std::size_t>(resultFrames_))) {}

  void warmUp() {
    TransportSettings stopped = job_.transport;
    stopped.playing = false;
    const Transport transport(stopped, job_.sampleRateHz);
    for (VstInt32 left = kWarmUpFrames; left > 0;) {
      const VstInt32 frames = std::min(left, job_.blockFrames);
      plugin_.setTime(transport.time(), -left);  // before the stream, as the listener is told
      plugin_.process(inputs_.pointers(), outputs_.pointers(), frames);
      left -= frames;
    }
  }

  Planar run() {
    Transport transport(job_.transport, job_.sampleRateHz);
    const std::int64_t total = resultFrames_ + latency_;
    for (std::int64_t frame = 0; frame < total;) {
      makeChanges(frame);
      const std::int64_t end = blockEnd(frame, total, transport);
      runBlock(frame, static_cast<VstInt32>(end - frame), transport);
      transport.advance(end - frame);
      frame = end;
      if (job_.progress && !job_.progress(frame, total)) throw Cancelled();
    }
    return std::move(result_);
  }

 private:
  void makeChanges(std::int64_t frame) {
    for (; nextChange_ < job_.changes.size() && job_.changes[nextChange_].frame <= frame; ++nextChange_) {
      plugin_.setUnlistedParameter(job_.changes[nextChange_].parameter, job_.changes[nextChange_].value);
    }
  }

  // Blocks end at multiples of the block size, so that a change cuts one block in two and leaves the others alone.
  [[nodiscard]] std::int64_t blockEnd(std::int64_t frame, std::int64_t total, const Transport& transport) const {
    std::int64_t end = std::min(total, (frame / job_.blockFrames + 1) * job_.blockFrames);
    if (nextChange_ < job_.changes.size()) end = std::min(end, job_.changes[nextChange_].frame);
    if (const auto jump = transport.framesToJump()) end = std::min(end, frame + *jump);
    return end;
  }

  void runBlock(std::int64_t frame, VstInt32 frames, const Transport& transport) {
    plugin_.setTime(transport.time(), frame);
    plugin_.sendEvents(eventsOf(frame, frames));
    readInputs(frame, frames);
    plugin_.process(inputs_.pointers(), outputs_.pointers(), frames);
    writeOutputs(frame, frames);
  }

  std::vector<MidiEvent> eventsOf(std::int64_t frame, VstInt32 frames) {
    std::vector<MidiEvent> block;
    for (; nextEvent_ < job_.events.size() && job_.events[nextEvent_].frame < frame + frames; ++nextEvent_) {
      block.push_back(job_.events[nextEvent_]);
      block.back().frame = std::max<std::int64_t>(0, block.back().frame - frame);
    }
    return block;
  }

  void readInputs(std::int64_t frame, VstInt32 frames) {
    for (std::size_t channel = 0; channel < inputs_.size(); ++channel) {
      const std::int64_t given =
          channel < input_.size() ? std::clamp<std::int64_t>(inputFrames_ - frame, 0, frames) : 0;
      if (given > 0) std::copy_n(input_[channel].begin() + frame, given, inputs_[channel].begin());
      std::fill(inputs_[channel].begin() + given, inputs_[channel].begin() + frames, 0.0f);
    }
  }

  void writeOutputs(std::int64_t frame, VstInt32 frames) {
    const std::int64_t skipped = std::max<std::int64_t>(0, latency_ - frame);
    if (skipped >= frames) return;
    for (std::size_t channel = 0; channel < outputs_.size(); ++channel) {
      std::copy(outputs_[channel].begin() + skipped, outputs_[channel].begin() + frames,
                result_[channel].begin() + (frame + skipped - latency_));
    }
  }

  Plugin& plugin_;
  std::span<const std::vector<float>> input_;
  const RenderJob& job_;
  std::int64_t inputFrames_;
  std::int64_t latency_;
  std::int64_t resultFrames_;
  ChannelBuffers inputs_;
  ChannelBuffers outputs_;
  Planar result_;
  std::size_t nextChange_ = 0;
  std::size_t nextEvent_ = 0;
};

void makeSettings(Plugin& plugin, std::span<const ParameterChange> settings) {
  for (const ParameterChange& setting : settings) plugin.setUnlistedParameter(setting.parameter, setting.value);
}

}  // namespace

Planar renderOffline(Plugin& plugin, std::span<const std::vector<float>> input, RenderJob job) {
  const auto byFrame = [](const auto& a, const auto& b) { return a.frame < b.frame; };
  std::stable_sort(job.changes.begin(), job.changes.end(), byFrame);
  std::stable_sort(job.events.begin(), job.events.end(), byFrame);
  plugin.setProcessLevel(kVstProcessLevelOffline);
  plugin.setAutomationState(job.changes.empty() ? kVstAutomationOff : kVstAutomationRead);
  plugin.setSampleRate(job.sampleRateHz);
  plugin.setBlockSize(job.blockFrames);
  // Settings are made twice. Plug-ins that glide to a new value start at it when it is there before activation; those
  // that take a value only once audio has run need it after a first block. That block is silent and the song stands
  // still in it, so it leaves nothing behind in the sound.
  makeSettings(plugin, job.settings);
  const Activation activation(plugin);
  Render render(plugin, input, job);  // after activation, which may change the channel counts and the latency
  render.warmUp();
  makeSettings(plugin, job.settings);
  return render.run();
}

void playSilence(Plugin& plugin, double tempoBpm, double sampleRateHz, VstInt32 frames) {
  plugin.setSampleRate(sampleRateHz);
  plugin.setBlockSize(frames);
  plugin.activate();
  plugin.setTime(Transport({.tempoBpm = tempoBpm, .playing = false}, sampleRateHz).time(), 0);
  ChannelBuffers inputs(plugin.inputCount(), frames), outputs(plugin.outputCount(), frames);
  plugin.process(inputs.pointers(), outputs.pointers(), frames);
}

}  // namespace modrift::host
