// SPDX-License-Identifier: MIT
#include "tests/presets/Motion.h"

#include <algorithm>
#include <cmath>
#include <fmt/core.h>
#include <numbers>
#include <span>
#include <vector>

#include "effect/ModulationLaws.h"
#include "effect/ParameterTable.h"
#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "tests/effect/TestHost.h"

using namespace model;
using namespace effect;

namespace {

using namespace modrift::factory;
using Track = std::vector<double>;

constexpr double kSettleSeconds = 0.5;  // for smoothers and for the filter
constexpr double kSilenceDb = 40.0;     // volumes that differ by more count as sound and silence

float valueOf(const Preset& preset, int index) {
  const auto setting = std::ranges::find(preset.settings, index, &Setting::index);
  return setting == preset.settings.end() ? 0.0f : setting->value;
}

double rms(std::span<const float> samples) {
  double sum = 0.0;
  for (const float s : samples) sum += static_cast<double>(s) * static_cast<double>(s);
  return std::sqrt(sum / static_cast<double>(samples.size()));
}

// The pan that gives these levels: the share of the right side grows with it.
double panOf(double left, double right) {
  double low = 0.0;
  double high = 1.0;
  for (int i = 0; i < 30; ++i) {
    const double middle = (low + high) / 2.0;
    const dsp::Pair gains = panGains(static_cast<float>(middle));
    const double share = static_cast<double>(gains[1]) / static_cast<double>(gains[0] + gains[1]);
    (share < right / (left + right) ? low : high) = middle;
  }
  return low;
}

// An effect with a preset and a steady tone of whole periods a block, so that a block's level is the gain alone.
class Player {
 public:
  Player(const Preset& preset, const Movement& movement)
      : movement_(movement),
        frames_(static_cast<std::size_t>(std::lround(kTestRateHz / std::min(movement.toneHz, 1000.0)))) {
    rig_.at(0.0, kTestTempo);
    std::vector<std::byte> chunk = builtChunk(preset);
    rig_.fx().setChunk(chunk.data(), static_cast<VstInt32>(chunk.size()), true);
    const bool movesLevel = movement.of == Movement::Of::volume || movement.of == Movement::Of::pan;
    if (movesLevel) rig_.fx().setParameter(kFilterOn, 0.0f);  // whose own changes of level would count as volume
    for (std::size_t i = 0; i < frames_; ++i) {
      const double turn = static_cast<double>(i) * movement.toneHz / static_cast<double>(kTestRateHz);
      tone_.push_back(static_cast<float>(0.25 * std::sin(2.0 * std::numbers::pi * turn)));
    }
  }

  void note() { rig_.send({{0, 0x90, 60, 100}}); }
  [[nodiscard]] double blocksIn(double seconds) const {
    return seconds * static_cast<double>(kTestRateHz) / static_cast<double>(frames_);
  }

  // What moves, block by block.
  Track play(double seconds) {
    Track track(static_cast<std::size_t>(std::ceil(blocksIn(seconds))));
    std::vector<float> left(frames_), right(frames_);
    for (double& value : track) {
      rig_.block(tone_.data(), tone_.data(), left.data(), right.data(), frames_);
      rig_.advance(frames_);
      value = present(rms(left), rms(right));
    }
    return track;
  }

 private:
  double present(double left, double right) {
    constexpr double kSilence = 1e-6;
    switch (movement_.of) {
      case Movement::Of::volume:
        return std::hypot(left, right);  // which no pan changes by more than a tenth of a decibel
      case Movement::Of::pan:
        if (left + right > kSilence) pan_ = panOf(left, right);
        return pan_ * 100.0;
      case Movement::Of::cutoff:
        return static_cast<double>(rig_.fx().cutSmoothed) * 100.0;
      case Movement::Of::resonance:
        return static_cast<double>(rig_.fx().resoMod) * 100.0;
      case Movement::Of::var:
        return static_cast<double>(rig_.fx().varMod) * 100.0;
      case Movement::Of::controller:
        break;
    }
    return rig_.host.eventLists > 0 ? static_cast<double>(rig_.fx().lastCCValue) : 0.0;
  }

  const Movement& movement_;
  std::size_t frames_;
  EffectRig rig_{kTestRateHz};
  std::vector<float> tone_;
  double pan_ = 0.5;
};

double spread(std::span<const double> track) {
  const auto [least, most] = std::ranges::minmax(track);
  return most - least;
}

double depthOf(std::span<const double> track, Movement::Of of) {
  if (of != Movement::Of::volume) return spread(track);
  const auto [least, most] = std::ranges::minmax(track);
  return 20.0 * std::log10(most / std::max(least, most * 1e-4));
}

double at(std::span<const double> track, double place) {
  const auto i = static_cast<std::size_t>(place);
  const double part = place - static_cast<double>(i);
  return track[i] * (1.0 - part) + track[i + 1] * part;
}

// How much a track differs from itself `lag` later, seen over `length` blocks: 0 not at all, 1 like another track.
double unlikeness(std::span<const double> track, double lag, double length) {
  const auto count = static_cast<std::size_t>(length);
  double mean = 0.0;
  double square = 0.0;
  double difference = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    const double later = at(track, static_cast<double>(i) + lag) - track[i];
    mean += track[i] / static_cast<double>(count);
    square += track[i] * track[i] / static_cast<double>(count);
    difference += later * later / static_cast<double>(count);
  }
  return std::sqrt(difference / (2.0 * (square - mean * mean)));
}

std::string depthFault(std::span<const double> track, const Movement& movement) {
  const double measured = depthOf(track, movement.of);
  const bool isVolume = movement.of == Movement::Of::volume;
  if (isVolume && movement.depth >= kSilenceDb && measured >= kSilenceDb) return {};
  const double tolerance = isVolume ? 0.06 * movement.depth : std::max(1.0, 0.03 * movement.depth);
  if (std::abs(measured - movement.depth) <= tolerance) return {};
  return fmt::format("depth {} expected, {} measured", movement.depth, measured);
}

std::string periodicFault(Player& player, const Movement& movement) {
  const double period = movement.period.secondsAt(kTestTempo);
  player.play(kSettleSeconds);
  const Track track = player.play(2.1 * period);
  const double blocks = player.blocksIn(period);
  if (std::string fault = depthFault(std::span(track).first(static_cast<std::size_t>(blocks)), movement);
      !fault.empty())
    return fault;
  constexpr double kSame = 0.1;
  constexpr double kOther = 0.2;
  const double after = unlikeness(track, blocks, blocks);
  if (after > kSame) return fmt::format("no repetition after {} s: differs by {}", period, after);
  for (const double part : {2.0, 3.0}) {
    const double sooner = unlikeness(track, blocks / part, blocks);
    if (sooner < kOther) return fmt::format("repeats already after {} s: differs by {}", period / part, sooner);
  }
  return {};
}

// At rest, then a note, its way, and rest again.
std::string onceFault(Player& player, const Movement& movement) {
  constexpr double kRest = 0.01;  // of the whole way
  const double length = movement.period.secondsAt(kTestTempo);
  player.play(kSettleSeconds);
  const Track before = player.play(kSettleSeconds);
  player.note();
  const Track way = player.play(length);
  player.play(kSettleSeconds);
  const Track rest = player.play(kSettleSeconds);
  if (std::string fault = depthFault(way, movement); !fault.empty()) return fault;
  const double still = kRest * spread(way);
  if (spread(before) > still) return fmt::format("moves by {} before any note", spread(before));
  if (spread(rest) > still) return fmt::format("moves by {} after its end", spread(rest));
  const auto tail = std::span(way).last(way.size() / 2);
  if (spread(tail) <= still) return fmt::format("is over after half of {} s", length);
  return {};
}

}  // namespace

const FactorySet& factorySet() {
  static const FactorySet set = readFactorySet(MODRIFT_DEFINITIONS);
  return set;
}

std::vector<std::byte> builtChunk(const Preset& preset) {
  const std::filesystem::path path = MODRIFT_PRESETS;
  const auto file = model::readFile(path / preset.folder / (preset.name + ".fxp"), model::kLargestPresetFile);
  const auto chunk = model::chunkOfPreset(file.value()).value();
  return {chunk.begin(), chunk.end()};
}

bool takesNotes(const Preset& preset) { return valueOf(preset, kRetrigger) > 0.0f; }

std::string faultOf(const Preset& preset, const Movement& movement) {
  Player player(preset, movement);
  if (movement.once) return onceFault(player, movement);
  if (takesNotes(preset)) player.note();
  return periodicFault(player, movement);
}
