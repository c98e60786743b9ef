// Every preset of the factory set: moves as its definition says, is heard, and does not clip.
#include <cctype>
#include <gtest/gtest.h>
#include <sndfile.h>

#include "effect/ParameterTable.h"
#include "presets/generator/Definitions.h"
#include "tests/presets/Motion.h"

namespace modrift::factory {

void PrintTo(const Preset& preset, std::ostream* stream) { *stream << preset.folder << "/" << preset.name; }

}  // namespace modrift::factory

namespace {

using namespace modrift::factory;

const FactorySet& factorySet() {
  static const FactorySet set = readFactorySet(MODRIFT_DEFINITIONS);
  return set;
}

const Preset& presetCalled(std::string_view name) {
  const auto preset = std::ranges::find(factorySet().presets, name, &Preset::name);
  if (preset == factorySet().presets.end()) throw std::runtime_error("no such preset");
  return *preset;
}

Stereo exampleLoop() {
  SF_INFO format{};
  SNDFILE* const file = sf_open(MODRIFT_EXAMPLE_LOOP, SFM_READ, &format);
  if (!file || format.channels != 2) throw std::runtime_error(MODRIFT_EXAMPLE_LOOP);
  std::vector<float> frames(2 * static_cast<std::size_t>(format.frames));
  sf_readf_float(file, frames.data(), format.frames);
  sf_close(file);
  Stereo loop(frames.size() / 2);
  for (std::size_t i = 0; i < loop.size(); ++i) {
    loop.left[i] = frames[2 * i];
    loop.right[i] = frames[2 * i + 1];
  }
  return loop;
}

// The loop through a preset; those that wait for notes get one a bar, two beats long.
Stereo render(const Preset& preset, const Stereo& in) {
  constexpr std::size_t kBlock = 500;
  constexpr std::size_t kTwoBeats = 48000;
  EffectRig rig(kTestRateHz);
  rig.at(0.0, kTestTempo);
  load(preset, rig);
  Stereo out(in.size());
  for (std::size_t start = 0; start < in.size(); start += kBlock) {
    if (takesNotes(preset) && start % kTwoBeats == 0) rig.send({{0, 0x90, 60, start % (2 * kTwoBeats) == 0 ? 100 : 0}});
    rig.block(&in.left[start], &in.right[start], &out.left[start], &out.right[start], kBlock);
    rig.advance(kBlock);
  }
  return out;
}

double decibels(double ratio) { return 20.0 * std::log10(std::max(ratio, 1e-12)); }

// Level of what a preset changed, against the level of what it got.
double changeDb(const Stereo& in, const Stereo& out) {
  double change = 0.0;
  double level = 0.0;
  for (std::size_t i = 0; i < in.size(); ++i) {
    for (const auto& side : {&Stereo::left, &Stereo::right}) {
      const double before = static_cast<double>((in.*side)[i]);
      const double after = static_cast<double>((out.*side)[i]);
      change += (after - before) * (after - before);
      level += before * before;
    }
  }
  return decibels(std::sqrt(change / level));
}

double peakDb(const Stereo& audio) {
  float peak = 0.0f;
  for (const auto& side : {&Stereo::left, &Stereo::right})
    for (const float sample : audio.*side) peak = std::max(peak, std::isfinite(sample) ? std::abs(sample) : 1e9f);
  return decibels(static_cast<double>(peak));
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
  const Stereo in = exampleLoop();
  const Stereo out = render(GetParam(), in);
  EXPECT_LE(peakDb(out), kLoudestDb);
  EXPECT_GE(changeDb(in, out), kLeastChangeDb);
  EXPECT_GE(peakDb(out), -30.0) << "hardly anything is left";
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
  EXPECT_NE(faultWith("Classic Pump", [](Movement& m) { m.bOnce = true; }), "");
  EXPECT_NE(faultWith("Classic Pump", [](Movement& m) { m.of = Movement::Of::pan; }), "");
  EXPECT_NE(faultWith("Pluck on Note", [](Movement& m) { m.period.beats = 0.5; }), "");
}

TEST(PresetMeasurement, FindsPresetsThatDoNothing) {
  const Stereo in = exampleLoop();
  EXPECT_LT(changeDb(in, render(Preset{}, in)), -60.0);
}

}  // namespace
