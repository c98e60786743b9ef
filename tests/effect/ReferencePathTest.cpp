// Random settings, transports and block cuts through the effect and through the plain model: the same bits.
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>

#include "tests/effect/ReferencePath.h"
#include "tests/effect/TestHost.h"

namespace {

struct Setting {
  const char* name;
  bool anchor = true, freeRun = false, playing = true, givesTime = true;
  bool crossover = false, inverted = false, mono = false;
  bool mixed = false;  // all of these change on the way

  friend std::ostream& operator<<(std::ostream& out, const Setting& s) { return out << s.name; }
};

// An effect and a model that get the same settings, drawn from one seed.
class Duel {
 public:
  Duel(std::uint32_t seed, const Setting& setting, float hertz)
      : random(seed), rig(hertz), model(hertz), setting_(setting), input_(noise(kFrames, seed)) {
    resume();
    rig.fx().bScopeOn = model.scopeOn = true;
    // Silence makes the crossover's tails end where its guard against denormals says.
    std::fill(input_.left.begin() + 9000, input_.left.begin() + 12000, 0.0f);
  }

  void set(int index, float value) {
    rig.set(index, value);
    model.set(index, value);
  }

  void drawGraphs() {
    for (int g = 0; g < 12; ++g) drawGraph(g);
    rig.fx().RenderEnvsInCaseGUIClosed(false);
    model.renderAll();
  }

  void changeSettings() {
    for (const int index : {kSwing, kPhase, kDepthCut, kDepthRes, kDepthVol, kDepthPan, kDepthVar, kFilterCutoff,
                            kFilterReso, kDepthKnob, kFilterVar, kTiming, kXoverFrequency})
      set(index, value());
    for (int index = kRouteCut; index < kDepthKnob; ++index) set(index, value());
    for (const int index : {kDotted, kTriplet}) set(index, random.pick({0.0f, 1.0f}));
    set(kSmooth, random.pick({0.0f, 0.0f, 1.0f, random.unit()}));
    set(kRetrigger, random.pick({0.0f, 0.0f, 0.0f, 0.5f, 1.0f}));
    set(kGateMode, random.pick({0.0f, 0.0f, 0.0f, 1.0f}));
    set(kCurrentGraph, value());
    set(kXoverOn, flag(setting_.crossover));
    set(kXoverInvert, flag(setting_.inverted));
    set(kAnchor, flag(setting_.anchor));
    set(kBpmSync, flag(!setting_.freeRun));
    // Steps whose fourth power a float holds exactly, so that the free clock's rate leaves nothing to the rounding.
    set(kRate, static_cast<float>(random.below(65)) / 64.0f);
    rig.host.givesTime = setting_.mixed ? random.below(4) != 0 : setting_.givesTime;
    rig.at(random.pick({-100.3, -0.01, 0.0, 13.37, 100000.25}), random.pick({120.0, 87.3, 0.5, 240.0, 999.0}),
           flag(setting_.playing) != 0.0f);
  }

  void resume() {
    rig.call(effMainsChanged, 0, 1);
    model.resume();
    if (setting_.mono)
      rig.call(effVendorSpecific, model::kCallSetIoCount, 1);  // such a set-up lasts until the next resume
  }

  void movePoints() {
    for (int n = 0; n < 6; ++n) set(kPoint1 + random.below(kAutomatedPoints), value());
  }

  // Plays all of the input; empty when the two agree, else where they part.
  std::string play(const std::function<void()>& betweenBlocks) {
    Stereo expected(kFrames), actual(kFrames);
    std::string fault;
    for (std::size_t start = 0; start < kFrames && fault.empty();) {
      // Calls beyond 16384 frames are worked off in slices, which must keep to the grid of ticks of 12.
      const std::size_t size = random.pick<std::size_t>({1, 12, 13, 64, 511, 512, 512, 16384, 20000});
      const std::size_t frames = std::min(size, kFrames - start);
      betweenBlocks();
      const float* const left = &input_.left[start];
      const float* const right = setting_.mono ? nullptr : &input_.right[start];
      model.play(left, right, &expected.left[start], &expected.right[start], static_cast<int>(frames),
                 rig.host.timeNow());
      rig.block(left, right, &actual.left[start], &actual.right[start], frames);
      rig.advance(frames);
      start += frames;
      fault = disagreement(expected, actual);
      if (!fault.empty())
        fault += "in the block of " + std::to_string(frames) + " that ends at " + std::to_string(start);
    }
    if (!fault.empty()) return fault;
    const auto trace = [](const ScopeTrace& t) { return std::vector<float>(&t.samples[0], &t.samples[0] + 65536); };
    return difference(model.scopeIn, trace(rig.fx().scopeIn)) + difference(model.scopeOut, trace(rig.fx().scopeOut));
  }

  static constexpr std::size_t kFrames = 60000;
  Random random;
  EffectRig rig;
  ReferencePath model;

 private:
  float value() { return random.pick({0.0f, 0.5f, 1.0f, random.unit(), random.unit(), random.unit()}); }
  float flag(bool fixed) { return (setting_.mixed ? random.below(2) != 0 : fixed) ? 1.0f : 0.0f; }

  void drawGraph(int g) {
    const auto graph = static_cast<std::size_t>(g);
    const int last = random.pick({1, 2, 5, 8, 20, 63, 64});
    std::array<double, 65> x{};
    const auto end = static_cast<std::size_t>(last);
    for (std::size_t i = 1; i < end; ++i) x[i] = 65536.0 * static_cast<double>(random.unit());
    x[end] = 65536.0;
    std::sort(x.begin(), x.begin() + last);
    if (last > 4) x[2] = x[1];  // a jump
    auto& other = model.graphs[graph];
    rig.fx().envNumPoints[graph] = static_cast<std::int8_t>(other.lastPoint = last);
    for (std::size_t i = 0; i <= end; ++i) {
      rig.fx().envX[graph][i] = other.x[i] = x[i];
      rig.fx().envY[graph][i] = other.y[i] = static_cast<double>(value());
      rig.fx().envCurve[graph][i] = other.curve[i] = static_cast<double>(value());
    }
  }

  std::string disagreement(const Stereo& expected, const Stereo& actual) {
    auto& fx = rig.fx();
    const auto shared = [](const auto& field) { return std::vector<float>(std::begin(field), std::end(field)); };
    std::vector<float> tick = {
        model.cutMod,      model.varMod,      model.resoMod,  model.cutSmoothed,
        model.panSmoothed, model.volSmoothed, model.cyclePos, static_cast<float>(model.displayIndex)};
    const std::vector<float> itsTick = {
        fx.cutMod,      fx.varMod,      fx.resoMod,         fx.cutSmoothed,
        fx.panSmoothed, fx.volSmoothed, fx.padLFO.cyclePos, static_cast<float>(fx.displayIndex)};
    const std::pair<const char*, std::string> parts[] = {
        {"left: ", difference(expected.left, actual.left)},
        {"right: ", difference(expected.right, actual.right)},
        {"graph values: ", difference(shared(model.graphOut), shared(fx.padLFO.graphOut))},
        {"cut, var, reso, smoothed cut, pan, vol, clock, display: ", difference(tick, itsTick)}};
    for (const auto& [name, fault] : parts) {
      if (!fault.empty()) return name + fault;
    }
    return {};
  }

  Setting setting_;
  Stereo input_;
};

class EveryTransport : public ::testing::TestWithParam<Setting> {};

TEST_P(EveryTransport, GivesTheSamplesOfThePlainModelBitForBit) {
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Duel duel(seed, GetParam(), std::array{44100.0f, 48000.0f, 96000.0f, 32000.0f}[seed % 4]);
    duel.drawGraphs();
    bool first = true;
    ASSERT_EQ(duel.play([&] {
      const int turn = duel.random.below(4);
      if (first || turn == 0) duel.changeSettings();
      if (!first && turn == 1) duel.movePoints();
      if (duel.random.below(8) == 0) duel.resume();
      first = false;
    }),
              "");
  }
}

INSTANTIATE_TEST_SUITE_P(, EveryTransport,
                         ::testing::Values(Setting{.name = "Playing"}, Setting{.name = "Stopped", .playing = false},
                                           Setting{.name = "WithoutTime", .givesTime = false},
                                           Setting{.name = "Loose", .anchor = false},
                                           Setting{.name = "LooseAndStopped", .anchor = false, .playing = false},
                                           Setting{.name = "Free", .freeRun = true},
                                           Setting{.name = "FreeAndLoose", .anchor = false, .freeRun = true},
                                           Setting{.name = "LowBand", .crossover = true},
                                           Setting{.name = "HighBand", .crossover = true, .inverted = true},
                                           Setting{.name = "Mono", .mono = true},
                                           Setting{.name = "MonoLowBand", .crossover = true, .mono = true},
                                           Setting{.name = "Mixed", .mixed = true},
                                           Setting{.name = "MixedMono", .mono = true, .mixed = true}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
