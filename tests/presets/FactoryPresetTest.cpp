// SPDX-License-Identifier: MIT
// Every preset of the factory set: moves as its definition says, is heard, and does not clip.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

#include "cli/files/AudioFile.h"
#include "cli/pictures/Levels.h"
#include "effect/KorvelInDSPEdit.h"
#include "host/OfflineRunner.h"
#include "presets/generator/Application.h"
#include "tests/presets/Motion.h"

namespace modrift::factory {

void PrintTo(const Preset& preset, std::ostream* stream) { *stream << preset.folder << "/" << preset.name; }

}  // namespace modrift::factory

namespace {

using namespace modrift::factory;
using modrift::cli::Audio;
using modrift::cli::measureLevels;
using modrift::host::Module;
using modrift::host::Planar;
using modrift::host::Plugin;
using modrift::host::RenderJob;

const Preset& presetCalled(std::string_view name) {
  const auto preset = std::ranges::find(factorySet().presets, name, &Preset::name);
  if (preset == factorySet().presets.end()) throw std::runtime_error("no such preset");
  return *preset;
}

const Audio& exampleLoop() {
  static const Audio loop = modrift::cli::readAudio(MODRIFT_EXAMPLE_LOOP);
  return loop;
}

AEffect* VSTCALLBACK makeEffect(audioMasterCallback host) { return (new KorvelInDSPEdit(host))->getAeffect(); }

// The loop through a state, as a program plays it that the effect is linked with; the notes come once a bar and are two
// beats long.
Planar render(const std::vector<std::byte>& chunk, bool withNotes) {
  constexpr std::int64_t kTwoBeats = 48000;
  Plugin plugin(std::make_shared<Module>(makeEffect, "Modrift"));
  EXPECT_TRUE(plugin.setChunk(modrift::host::ChunkKind::program, chunk));
  RenderJob job{.sampleRateHz = kTestRateHz, .blockFrames = 500, .transport = {.tempoBpm = kTestTempo}};
  for (std::int64_t frame = 0; withNotes && frame < std::ssize(exampleLoop().channels[0]); frame += kTwoBeats)
    job.events.push_back({frame, {0x90, 60, static_cast<std::uint8_t>(frame % (2 * kTwoBeats) == 0 ? 100 : 0)}});
  return renderOffline(plugin, exampleLoop().channels, job);
}

double decibels(double ratio) { return 20.0 * std::log10(std::max(ratio, 1e-12)); }

// Level of what a preset changed in the loop, against the loop's own.
double changeDb(Planar out) {
  const Planar& in = exampleLoop().channels;
  for (std::size_t side = 0; side < 2; ++side)
    std::ranges::transform(out[side], in[side], out[side].begin(), std::minus());
  return decibels(measureLevels(out).rms / measureLevels(in).rms);
}

std::string testNameOf(const testing::TestParamInfo<Preset>& info) {
  std::string name;
  for (const char c : info.param.folder + " " + info.param.name)
    if (std::isalnum(static_cast<unsigned char>(c))) name += c;
  return name;
}

class FactoryPreset : public testing::TestWithParam<Preset> {};

TEST_P(FactoryPreset, MovesAsItsDefinitionSays) {
  for (const Movement& movement : GetParam().movements)
    EXPECT_EQ(faultOf(GetParam(), movement), "") << "period " << movement.periodText;
}

TEST_P(FactoryPreset, IsHeardOnTheExampleLoopAndDoesNotClip) {
  constexpr double kLoudestDb = 6.0;
  constexpr double kLeastChangeDb = -25.0;
  const Planar out = render(builtChunk(GetParam()), takesNotes(GetParam()));
  const auto [peak, rms, notFinite] = measureLevels(out);
  EXPECT_EQ(notFinite, 0);
  EXPECT_LE(decibels(peak), kLoudestDb);
  EXPECT_GE(decibels(peak), -30.0) << "hardly anything is left";
  EXPECT_GE(changeDb(out), kLeastChangeDb);
}

INSTANTIATE_TEST_SUITE_P(All, FactoryPreset, testing::ValuesIn(factorySet().presets), testNameOf);

TEST(PresetMeasurement, FindsWrongPromises) {
  const auto faultWith = [](std::string_view name, const auto& change) {
    const Preset& preset = presetCalled(name);
    Movement movement = preset.movements.front();
    change(movement);
    return faultOf(preset, movement);
  };
  for (const double beats : {0.75, 2.0, 3.0})
    EXPECT_NE(faultWith("Classic Pump", [&](Movement& m) { m.period.beats = beats; }), "") << beats;
  EXPECT_NE(faultWith("Classic Pump", [](Movement& m) { m.depth = 12.0; }), "");
  EXPECT_NE(faultWith("Classic Pump", [](Movement& m) { m.once = true; }), "");
  EXPECT_NE(faultWith("Classic Pump", [](Movement& m) { m.of = Movement::Of::pan; }), "");
  EXPECT_NE(faultWith("Pluck on Note", [](Movement& m) { m.period.beats = 0.5; }), "");
}

TEST(PresetMeasurement, FindsPresetsThatDoNothing) { EXPECT_LT(changeDb(render(chunkOf({}), false)), -60.0); }

}  // namespace
