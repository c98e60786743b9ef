// SPDX-License-Identifier: MIT
#include "host/Transport.h"

#include <algorithm>
#include <cmath>

namespace modrift::host {
namespace {

constexpr double kBeatsPerBar = 4.0;
constexpr double kClocksPerBeat = 24.0;  // of the MIDI clock

}  // namespace

Transport::Transport(const TransportSettings& settings, double sampleRateHz)
    : settings_(settings), sampleRateHz_(sampleRateHz), framesPerBeat_(sampleRateHz * 60.0 / settings.tempoBpm) {}

void Transport::setPlaying(bool playing) {
  changed_ = changed_ || playing != settings_.playing;
  settings_.playing = playing;
}

void Transport::advance(std::int64_t frames) {
  elapsedFrames_ += frames;
  if (settings_.playing) playedFrames_ += frames;
  changed_ = false;
}

double Transport::beat() const {
  const double straight = settings_.startBeat + static_cast<double>(playedFrames_) / framesPerBeat_;
  // A song that starts behind the loop never meets its end.
  if (!settings_.cycle || settings_.startBeat >= settings_.cycle->endBeat || straight < settings_.cycle->endBeat) {
    return straight;
  }
  const auto [start, end] = *settings_.cycle;
  return start + std::fmod(straight - end, end - start);
}

std::optional<std::int64_t> Transport::framesToJump() const {
  if (!settings_.playing || !settings_.cycle || beat() >= settings_.cycle->endBeat) return std::nullopt;
  const double frames = std::ceil((settings_.cycle->endBeat - beat()) * framesPerBeat_);
  if (frames > 1e15) return std::nullopt;  // centuries away, and too large to count exactly
  return std::max<std::int64_t>(1, static_cast<std::int64_t>(frames));
}

std::optional<VstTimeInfo> Transport::time() const {
  if (!settings_.givesTime) return std::nullopt;
  VstTimeInfo info;
  const double position = beat();
  info.ppqPos = position;
  info.samplePos = std::round(position * framesPerBeat_);
  info.sampleRate = sampleRateHz_;
  // The stream's own time and not the wall clock's, so that two renders tell a plug-in the same.
  info.nanoSeconds = static_cast<double>(elapsedFrames_) * 1e9 / sampleRateHz_;
  info.tempo = settings_.tempoBpm;
  info.barStartPos = std::floor(position / kBeatsPerBar) * kBeatsPerBar;
  info.timeSigNumerator = 4;
  info.timeSigDenominator = 4;
  const double clocks = position * kClocksPerBeat;
  const double framesToClock = (std::ceil(clocks) - clocks) * framesPerBeat_ / kClocksPerBeat;
  info.samplesToNextClock = static_cast<VstInt32>(std::lround(std::min(framesToClock, 2e9)));
  info.flags = kVstNanosValid | kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstTimeSigValid | kVstClockValid;
  if (changed_) info.flags |= kVstTransportChanged;
  if (settings_.playing) info.flags |= kVstTransportPlaying;
  if (settings_.recording) info.flags |= kVstTransportRecording;
  if (settings_.cycle) {
    info.cycleStartPos = settings_.cycle->startBeat;
    info.cycleEndPos = settings_.cycle->endBeat;
    info.flags |= kVstTransportCycleActive | kVstCyclePosValid;
  }
  return info;
}

}  // namespace modrift::host
