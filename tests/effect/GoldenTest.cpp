// SPDX-License-Identifier: MIT
// The whole effect, held bit for bit on every build: random settings, graphs, notes, song positions and block cuts. The
// lines were written down by code that agreed, bit for bit, with a second and plain implementation of graphs, clock,
// routing and audio path; where these tests differ, the other tests of this folder tell what is meant.
// `Golden.txt` has a line a performance: its name, a checksum of all that came out, and a share of the samples, so that
// a difference shows where it begins. After a wanted change of sound:
// MODRIFT_WRITE_GOLDEN=tests/effect/Golden.txt effect_tests --gtest_filter='Golden*'
#include <algorithm>
#include <bit>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>
#include <unistd.h>

#include "model/ParameterIndex.h"
#include "model/PrivateCalls.h"
#include "tests/TemporaryFolder.h"
#include "tests/effect/TestHost.h"

using namespace model;

namespace {

struct Setting {
  const char* name;
  bool anchor = true, freeRun = false, playing = true, givesTime = true;
  bool crossover = false, inverted = false, mono = false, notes = false, filter = false;
  bool mixed = false;  // all of these change on the way
};

constexpr Setting kSettings[] = {{.name = "Playing"},
                                 {.name = "Stopped", .playing = false},
                                 {.name = "WithoutTime", .givesTime = false},
                                 {.name = "Loose", .anchor = false},
                                 {.name = "LooseAndStopped", .anchor = false, .playing = false},
                                 {.name = "Free", .freeRun = true},
                                 {.name = "FreeAndLoose", .anchor = false, .freeRun = true},
                                 {.name = "LowBand", .crossover = true},
                                 {.name = "HighBand", .crossover = true, .inverted = true},
                                 {.name = "Mono", .mono = true},
                                 {.name = "MonoLowBand", .crossover = true, .mono = true},
                                 {.name = "Notes", .notes = true},
                                 {.name = "FreeNotes", .freeRun = true, .notes = true},
                                 {.name = "Filter", .crossover = true, .filter = true},
                                 {.name = "Mixed", .notes = true, .mixed = true},
                                 {.name = "MixedMono", .mono = true, .notes = true, .filter = true, .mixed = true}};

constexpr int kTurns = 4;  // performances of each

class Checksum {
 public:
  void add(float x) { hash_ = (hash_ ^ std::bit_cast<std::uint32_t>(x)) * 1099511628211u; }  // FNV-1a
  void add(std::initializer_list<float> all) {
    std::ranges::for_each(all, [this](float x) { add(x); });
  }
  std::uint64_t value() const { return hash_; }

 private:
  std::uint64_t hash_ = 14695981039346656037u;
};

// One effect that plays under settings drawn from a seed.
class Performance {
 public:
  Performance(std::uint32_t seed, const Setting& setting)
      : random_(seed),
        rig_(std::array{44100.0f, 48000.0f, 96000.0f, 32000.0f}[seed % 4]),
        setting_(setting),
        input_(noise(kFrames, seed)) {
    resume();
    rig_.fx().bScopeOn = true;
    // Silence lets the tails end where the flushing of denormals says.
    std::fill(input_.left.begin() + 9000, input_.left.begin() + 12000, 0.0f);
    if (seed % kTurns > 0) drawGraphs();
  }

  std::string line() {
    Stereo out(kFrames);
    for (std::size_t start = 0; start < kFrames;) {
      if (setting_.notes && start > kFrames / 2) exportOnce();
      // Calls beyond 16384 frames are worked off in slices, which must keep to the grid of ticks of 12.
      const std::size_t size = random_.below(20) ? random_.pick<std::size_t>({1, 12, 13, 64, 511, 512, 1024}) : 20000;
      const std::size_t frames = std::min(size, kFrames - start);
      betweenBlocks(start == 0, static_cast<int>(frames));
      rig_.block(&input_.left[start], setting_.mono ? nullptr : &input_.right[start], &out.left[start],
                 &out.right[start], frames);
      rig_.advance(frames);
      start += frames;
      addState();
    }
    for (std::size_t i = 0; i < kFrames; ++i) sum_.add({out.left[i], out.right[i]});
    for (int i = 0; i < 65536; ++i) sum_.add({rig_.fx().scopeIn[i], rig_.fx().scopeOut[i]});
    std::ostringstream line;
    line << setting_.name << ';' << std::hex << std::setfill('0') << std::setw(16) << sum_.value() << ';';
    for (std::size_t i = 0; i < kFrames; i += 2003)
      line << std::setw(8) << std::bit_cast<std::uint32_t>(out.left[i] + 0.5f * out.right[i]) << ' ';
    return line.str();
  }

 private:
  static constexpr std::size_t kFrames = 40000;

  float value() { return random_.pick({0.0f, 0.5f, 1.0f, random_.unit(), random_.unit(), random_.unit()}); }
  float flag(bool fixed) { return (setting_.mixed ? random_.below(2) != 0 : fixed) ? 1.0f : 0.0f; }
  void set(int index, float v) { rig_.set(index, static_cast<double>(v)); }

  void resume() {
    rig_.call(effMainsChanged, 0, 1);
    if (setting_.mono) rig_.call(effVendorSpecific, model::kCallSetIoCount, 1);  // lasts until the next resume
  }

  void drawGraphs() {
    for (int g = 0; g < 12; ++g) {
      const int last = random_.pick({1, 2, 5, 8, 20, 63, 64});
      std::vector<EffectRig::Point> points(static_cast<std::size_t>(last) + 1);
      std::vector<double> x(points.size());
      for (double& each : x) each = 65536.0 * static_cast<double>(random_.unit());
      std::ranges::sort(x);
      x.front() = 0.0;
      x.back() = 65536.0;
      if (last > 4) x[2] = x[1];  // a jump
      for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {x[i], static_cast<double>(value()), static_cast<double>(value())};
      rig_.draw(g, points);
    }
  }

  void changeSettings() {
    for (const int index : {kSwing, kPhase, kPwm, kDepthCut, kDepthRes, kDepthVol, kDepthPan, kDepthVar, kFilterCutoff,
                            kFilterReso, kDepthKnob, kFilterVar, kTiming, kXoverFrequency, kCurrentGraph})
      set(index, value());
    for (int index = kRouteCut; index < kDepthKnob; ++index) set(index, value());
    for (const int index : {kDotted, kTriplet}) set(index, random_.pick({0.0f, 1.0f}));
    set(kSmooth, random_.pick({0.0f, 0.0f, 1.0f, random_.unit()}));
    set(kRetrigger, random_.pick({0.0f, 0.0f, 0.0f, 0.5f, 1.0f}));
    set(kGateMode, random_.pick({0.0f, 0.0f, 0.0f, 1.0f}));
    set(kXoverOn, flag(setting_.crossover));
    set(kXoverInvert, flag(setting_.inverted));
    set(kAnchor, flag(setting_.anchor));
    set(kBpmSync, flag(!setting_.freeRun));
    set(kRate, random_.pick({value(), static_cast<float>(random_.below(43)) / 42.0f}));
    if (setting_.notes) changeNoteSettings();
    if (setting_.filter) changeFilter();
    rig_.host.givesTime = setting_.mixed ? random_.below(4) != 0 : setting_.givesTime;
    rig_.at(random_.pick({-100.3, -0.01, 0.0, 13.37, 100000.25}), random_.pick({120.0, 87.3, 0.5, 240.0, 999.0}),
            flag(setting_.playing) != 0.0f);
  }

  void changeNoteSettings() {
    for (const int index : {kVelToPwm, kNoteToRate, kNoteToCutoff}) set(index, random_.pick({0.0f, 0.0f, 1.0f}));
    set(kCcNumber, random_.pick({0.0f, 0.25f, 0.58f, 1.0f}));
    rig_.fx().bNoteSelectsGraphs = random_.below(4) == 0;
    rig_.fx().midiThinning = random_.pick({0, 1, 24, 64});
  }

  // Types that stay calm under settings that jump; the others have a file of their own.
  void changeFilter() {
    set(kFilterType, random_.pick({0.0f, 8.0f / 92.0f, 12.0f / 92.0f}));
    set(kFilterOn, random_.pick({0.0f, 1.0f, 1.0f}));
    set(kFilterMix, value());
    set(kFilterDrive, 0.3f * random_.unit());
  }

  void sendNotes(int frames) {
    std::vector<Midi> messages;
    for (int n = random_.below(12); n > 0; --n)
      messages.push_back({random_.below(frames + 2) - 1, random_.pick({0x90, 0x90, 0x80, 0xb0, 0xe3}),
                          random_.pick({random_.below(128), random_.below(128), 123}), random_.below(3) * 50});
    rig_.send(messages);
  }

  // In the middle of a performance, so that what it leaves behind is heard.
  void exportOnce() {
    if (std::exchange(exported_, true)) return;
    const std::string path = testing::TempDir() + "modrift-golden-" + std::to_string(getpid()) + ".mid";
    rig_.at(3.0, 240.0);
    rig_.playOnes(12);
    rig_.fx().bDontInsertMIDIEachPPQ_OnRender = random_.below(2) != 0;
    rig_.fx().setLoadPath(path.c_str());
    set(kExportMidi, random_.pick({0.0f, 1.0f}));
    for (const char byte : readText(path)) sum_.add(static_cast<float>(byte));
    std::filesystem::remove(path);
  }

  // A host that goes back to a state that it has kept.
  void reloadState() {
    void* data = nullptr;
    const VstIntPtr size = rig_.call(effGetChunk, 0, 0, &data);
    std::vector<char> kept(static_cast<char*>(data), static_cast<char*>(data) + size);
    changeSettings();
    rig_.call(effSetChunk, 0, size, kept.data());
  }

  void betweenBlocks(bool first, int frames) {
    const int turn = random_.below(4);
    if (first || turn == 0) changeSettings();
    for (int n = 0; !first && turn == 1 && n < 6; ++n) set(kPoint1 + random_.below(kPointParameters), value());
    if (random_.below(8) == 0) resume();
    if (random_.below(12) == 0) reloadState();
    if (setting_.notes) sendNotes(frames);
  }

  void addState() {
    const auto& fx = rig_.fx();
    sum_.add({fx.cutMod, fx.varMod, fx.resoMod, fx.cutSmoothed, fx.panSmoothed, fx.volSmoothed, fx.padLFO.cyclePos,
              static_cast<float>(fx.displayIndex), fx.displayPos, static_cast<float>(fx.heldNotes),
              static_cast<float>(rig_.host.timeFilter), static_cast<float>(fx.lfoPhase),
              static_cast<float>(fx.freePhase), static_cast<float>(fx.beatPos)});
    for (const auto& value : fx.padLFO.graphOut) sum_.add(value);
    for (const VstMidiEvent& event : rig_.host.sent)
      sum_.add({static_cast<float>(event.deltaFrames), static_cast<float>(event.midiData[0]),
                static_cast<float>(event.midiData[1]), static_cast<float>(event.midiData[2])});
    for (const auto& [index, value] : rig_.host.automated) sum_.add({static_cast<float>(index), value});
    rig_.host.sent.clear();
    rig_.host.automated.clear();
  }

  Random random_;
  EffectRig rig_;
  Setting setting_;
  Stereo input_;
  bool exported_ = false;
  Checksum sum_;
};

TEST(Golden, TheEffectSoundsAsItDid) {
  std::ostringstream actual;
  std::uint32_t seed = 0;
  for (const Setting& setting : kSettings)
    for (int turn = 0; turn < kTurns; ++turn) actual << Performance(seed++, setting).line() << '\n';
  if (const char* const path = std::getenv("MODRIFT_WRITE_GOLDEN")) {
    std::ofstream(path) << actual.str();
    GTEST_SKIP() << "wrote " << path;
  }
  std::ifstream file(MODRIFT_GOLDEN_FILE);
  ASSERT_TRUE(file) << MODRIFT_GOLDEN_FILE;
  std::istringstream lines(actual.str());
  for (std::string expected, got; std::getline(lines, got);) {
    ASSERT_TRUE(std::getline(file, expected));
    const auto difference = std::ranges::mismatch(got, expected);
    EXPECT_EQ(got, expected) << "from character " << difference.in1 - got.begin();
  }
  if (HasFailure()) std::ofstream("EffectGolden.actual.txt") << actual.str();
}

}  // namespace
