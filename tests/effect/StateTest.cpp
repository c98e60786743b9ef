// SPDX-License-Identifier: MIT
// Saving and loading through the effect: what changes, who hears of it in which order, what a lock keeps, which files
// load.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "effect/ParameterTable.h"
#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/PrivateCalls.h"
#include "model/ShapeFile.h"
#include "tests/effect/TestHost.h"
#include "tests/model/ChunkBuilder.h"

using namespace model;

namespace {

namespace fs = std::filesystem;
using model::State;

struct RecordingEditor final : AEffEditor {
  std::string heard;
  void setParameter(VstInt32 index, float) override { heard += std::to_string(index) + ' '; }
};

State stateOf(EffectRig& rig) {
  void* data = nullptr;
  const auto size = static_cast<std::size_t>(rig.call(effGetChunk, 0, 0, &data));
  return std::get<model::LoadedState>(model::readChunk(std::span(static_cast<const std::byte*>(data), size))).state;
}

VstIntPtr load(EffectRig& rig, ChunkBuilder chunk, bool isPreset = false) {
  return rig.call(effSetChunk, isPreset, static_cast<VstIntPtr>(chunk.bytes().size()), chunk.bytes().data());
}

// What the effect gives back of a loaded state: it always starts with the first graph on show, and a one-shot rests.
State shownFirst(State state) {
  state.currentGraph = 0;
  if (state.bOneShot) state.graphOut = {};
  return state;
}

// Where the state of an effect parts from the one that was loaded.
std::string lostBy(EffectRig& rig, const State& loaded) {
  return firstDifference(shownFirst(stateOf(rig)), shownFirst(loaded));
}

TEST(EffectState, OfAFreshEffectIsTheFreshState) {
  EffectRig rig;
  void* data = nullptr;
  ASSERT_EQ(rig.call(effGetChunk, 0, 0, &data), 18824);
  const auto expected = model::writeChunk({});
  EXPECT_EQ(std::memcmp(data, expected.data(), expected.size()), 0) << firstDifference(stateOf(rig), State());
}

TEST(EffectState, ComesBackFromItsChunkWholeBeforeAndAfterTheFirstBlock) {
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    const State state = randomState(seed);
    EffectRig rig;
    if (seed % 2) rig.playOnes(20);
    EXPECT_EQ(load(rig, ChunkBuilder::current(state)), 0);
    EXPECT_EQ(lostBy(rig, state), "") << "seed " << seed;
  }
}

std::string list(std::initializer_list<int> indices) {
  std::string words;
  for (const int index : indices) words += std::to_string(index) + ' ';
  return words;
}

TEST(EffectState, IsToldToEditorAndHostInOrder) {
  EffectRig rig;
  auto* const editor = new RecordingEditor;
  rig.fx().setEditor(editor);
  const auto heardOf = [&](const ChunkBuilder& chunk) {
    editor->heard.clear();
    rig.host.automated.clear();
    load(rig, chunk);
    return editor->heard;
  };
  State state = randomState(4);
  state.currentGraph = 5;
  std::string all = heardOf(ChunkBuilder::current(state));
  EXPECT_TRUE(all.starts_with(
      list({kNoticeScope, kFilterOn,         kXoverFrequency, kXoverInvert, kXoverOn,     kNoteToCutoff, kCcNumber,
            kRouteCut,    kRouteRes,         kRouteVol,       kRoutePan,    kRouteVar,    kGridSize,     kAnchor,
            kFilterType,  kNoticeFilterType, kFilterMix,      kFilterVar,   kNoticeClock, kRate})))
      << all;
  EXPECT_TRUE(all.ends_with(list({kFilterMix, kTiming, kNoticeGraph, kNoticeGraph, kCurrentGraph, kRetrigger,
                                  kNoticeEditorSize, kNoticePresetTitle})))
      << all;  // another graph comes to show
  ASSERT_EQ(rig.host.automated.size(), std::size_t{kPoint1});
  for (int i = 0; i < kPoint1; ++i) EXPECT_EQ(rig.host.automated[static_cast<std::size_t>(i)].index, i);
  EXPECT_EQ(rig.host.automated[kWarp1 + 5].value, state.graphWarp[5]);

  all = heardOf(ChunkBuilder::current({}, 0.97f));  // older: the type came with the switch, no window size
  EXPECT_TRUE(all.starts_with(
      list({kFilterType, kNoticeScope, kFilterOn, kXoverFrequency, kXoverInvert, kXoverOn, kNoteToCutoff, kCcNumber,
            kRouteCut, kRouteRes, kRouteVol, kRoutePan, kRouteVar, kGridSize, kAnchor, kNoticeClock, kRate})))
      << all;
  EXPECT_EQ(all.find(' ' + list({kNoticeEditorSize})), std::string::npos) << all;

  all = heardOf(ChunkBuilder::old(state));
  EXPECT_TRUE(all.starts_with(list({kCcNumber, kRouteCut, kRouteRes, kRouteVol, kRoutePan, kGridSize, kAnchor,
                                    kFilterType, kNoticeFilterType, kNoticeClock, kRate})))
      << all;
  EXPECT_TRUE(all.ends_with(list({kXoverFrequency, kNoticeGraph, kNoticeGraph, kCurrentGraph}))) << all;
  EXPECT_EQ(rig.host.automated.size(), std::size_t{kHostParameters});
}

TEST(EffectState, OfTheOldLayoutKeepsWhatThatHasNot) {
  const State present = randomState(1), stored = randomState(2);
  EffectRig rig;
  load(rig, ChunkBuilder::current(present));
  EXPECT_EQ(load(rig, ChunkBuilder::old(stored)), 0);
  EXPECT_EQ(lostBy(rig, ChunkBuilder::old(stored).state(present)), "");
}

TEST(EffectState, IsRefusedWithoutAChange) {
  const State present = randomState(6);
  EffectRig rig;
  load(rig, ChunkBuilder::current(present));
  rig.host.automated.clear();
  EXPECT_EQ(load(rig, ChunkBuilder::old({}, 1.0f, 9)), 0);
  EXPECT_EQ(load(rig, ChunkBuilder::old({}, 1.0f, 18812)), -1);
  EXPECT_EQ(rig.fx().setChunk(nullptr, 18824, false), 0);
  EXPECT_EQ(rig.fx().setChunk(&rig, -5, false), 0);
  EXPECT_EQ(lostBy(rig, present), "");
  EXPECT_EQ(load(rig, ChunkBuilder::old({}, 0.0f)), -1);  // this one resets the graphs, and nothing else
  State reset = present;
  for (int g = 0; g < kGraphs; ++g) model::setPoints(reset, g, freshGraph());
  EXPECT_EQ(lostBy(rig, reset), "");
  EXPECT_NEAR(rig.fx().graphTable[7][32768], 0.0f, 1e-5f);
  EXPECT_TRUE(rig.host.automated.empty());
}

TEST(EffectState, KeepsControllerAndTimingUnderTheLock) {
  State stored;
  stored.ccNumber = 11;
  stored.timing = 0.25f;
  for (const auto& [lock, isPreset, ccNumber, timing] :
       {std::tuple{1.0, true, 7, 0.75f}, {1.0, false, 11, 0.75f}, {0.0, true, 11, 0.25f}}) {
    EffectRig rig;
    rig.set(kCcNumber, 7.0 / 128);
    rig.set(kTiming, 0.75);
    rig.set(kCcLock, lock);
    load(rig, ChunkBuilder::current(stored), isPreset);
    EXPECT_EQ(rig.fx().ccNumber, ccNumber);
    EXPECT_EQ(rig.get(kTiming), timing);
    EXPECT_EQ(rig.get(kCcLock), static_cast<float>(lock));
  }
  EffectRig rig;
  for (const int raw : {-128, -1, 127}) {  // a number out of range comes back as it was
    stored.ccNumber = static_cast<std::int8_t>(raw);
    load(rig, ChunkBuilder::current(stored));
    EXPECT_EQ(rig.fx().ccNumber, raw);
  }
}

TEST(EffectState, LeavesTheHostsBufferAloneUntilTheNextChunk) {
  EffectRig rig;
  void* data = nullptr;
  rig.call(effGetChunk, 0, 0, &data);
  const std::vector<char> before(static_cast<char*>(data), static_cast<char*>(data) + 18824);
  rig.set(kRate, 0.9);
  rig.fx().SavePreset("/dev/null/nowhere");
  EXPECT_EQ(std::memcmp(data, before.data(), before.size()), 0);
  void* next = nullptr;
  rig.call(effGetChunk, 0, 0, &next);
  EXPECT_NE(std::memcmp(next, before.data(), before.size()), 0);
}

// --- Against blocks in flight

State flatVolume(double height) {
  State state;
  state.depthVol = 1.0f;
  state.routeVol = height > 0.5 ? 1 : 2;
  state.depthPan = 0.5f;
  GraphPoints points = freshGraph();
  points.y.fill(1.0 - height);
  model::setPoints(state, state.routeVol, points);
  return state;
}

// Two states alternate while blocks run; each block is left alone or plays one of them from its first sample to its
// last. Some hosts take automation only between their blocks, so they wait for one while a load reports its parameters.
TEST(EffectState, IsPlayedWholeOrNotAtAllAlsoUnderAHostThatWaitsForABlock) {
  EffectRig rig;
  const auto low = ChunkBuilder::current(flatVolume(0.25)), high = ChunkBuilder::current(flatVolume(0.75));
  load(rig, low);
  std::atomic<int> blocks = 0;
  std::jthread loader([&](const std::stop_token& stop) {
    rig.host.onAutomate = [&] {
      for (const int now = blocks; blocks == now && !stop.stop_requested();) std::this_thread::yield();
    };
    for (int turn = 0; !stop.stop_requested(); ++turn) {
      load(rig, turn % 2 ? low : high);
      rig.host.onAutomate = nullptr;  // so that loads and blocks meet at all places
      std::this_thread::yield();
    }
  });
  int lowBlocks = 0, highBlocks = 0;
  for (int b = 0; b < 1000000 && std::min(lowBlocks, highBlocks) < 200; ++b) {
    constexpr float kUntouched = 9.0f;
    std::vector<float> in(256, 1.0f), left(256, kUntouched), right(256, kUntouched);
    rig.block(in.data(), in.data(), left.data(), right.data(), left.size());
    ++blocks;
    for (const float x : left) ASSERT_EQ(x, left[0]) << "block " << b;
    const bool isLow = std::abs(left[0] - 0.25f) < 0.001f, isHigh = std::abs(left[0] - 0.75f) < 0.001f;
    ASSERT_TRUE(isLow || isHigh || left[0] == kUntouched) << left[0];
    lowBlocks += isLow;
    highBlocks += isHigh;
    std::this_thread::yield();
  }
  EXPECT_EQ(std::min(lowBlocks, highBlocks), 200);
}

// --- Files

class EffectFiles : public testing::Test {
 protected:
  EffectFiles() : folder(fs::temp_directory_path() / ("modrift-effect-" + std::to_string(getpid()))) {
    fs::create_directories(folder);
  }
  ~EffectFiles() override { fs::remove_all(folder); }

  std::string at(const char* name) { return (folder / name).string(); }
  void write(const char* name, std::span<const std::byte> bytes) {
    std::ofstream(at(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
  // Loads as the editor does.
  void command(int index, const std::string& path, double value = 1.0) {
    rig.fx().setLoadPath(path.c_str());
    rig.set(index, value);
  }

  fs::path folder;
  EffectRig rig;
};

TEST_F(EffectFiles, PresetsComeBackAndKeepALockedController) {
  const State state = randomState(3);
  load(rig, ChunkBuilder::current(state));
  rig.fx().SavePreset(at("a.fxp").c_str());
  EXPECT_EQ(fs::file_size(at("a.fxp")), 18884u);
  load(rig, ChunkBuilder::current({}));
  command(kLoadPreset, at("a.fxp"), 0.49);
  EXPECT_EQ(firstDifference(stateOf(rig), State()), "");
  rig.set(kCcNumber, 99.0 / 128);
  rig.set(kCcLock, 1.0);
  command(kLoadPreset, at("a.fxp"));
  State expected = state;
  expected.ccNumber = 99;
  expected.timing = 0.5f;
  EXPECT_EQ(lostBy(rig, expected), "");
}

TEST_F(EffectFiles, RefusedPresetsChangeNothing) {
  auto file = model::writePreset(model::writeChunk(randomState(3)));
  write("torn.fxp", std::span(file).first(18883));
  file.resize(model::kLargestPresetFile + 1);
  write("long.fxp", file);
  for (const char* name : {"torn.fxp", "long.fxp", "missing.fxp", "."}) {
    command(kLoadPreset, at(name));
    EXPECT_EQ(firstDifference(stateOf(rig), State()), "") << name;
  }
  file.pop_back();
  write("other.fxp", file);  // bytes behind the chunk
  command(kLoadPreset, at("other.fxp"));
  EXPECT_NE(firstDifference(stateOf(rig), State()), "");
}

TEST_F(EffectFiles, ShapesReplaceTheCurrentGraphAndNothingElse) {
  rig.set(kCurrentGraph, 4.0 / 11);
  rig.set(kWarp1 + 4, 0.9);
  State expected = stateOf(rig);
  const GraphPoints points = model::pointsOf(randomState(2), 0);
  write("a.shp", model::writeShape(points));
  write("short.shp", std::vector<std::byte>(1543));
  command(kLoadShape, at("a.shp"), 0.4);
  for (const char* name : {"short.shp", "missing.shp"}) command(kLoadShape, at(name));
  EXPECT_EQ(lostBy(rig, expected), "");
  command(kLoadShape, at("a.shp"));
  model::setPoints(expected, 4, points);
  EXPECT_EQ(lostBy(rig, expected), "");
  std::vector<float> table(kGraphTableSize);
  renderGraph(points, std::span<float, kGraphTableSize>(table));
  EXPECT_TRUE(std::equal(table.begin(), table.end(), rig.fx().graphTable[4].get()));
  rig.fx().SaveShape(at("b.shp").c_str());
  EXPECT_EQ(model::readFile(at("a.shp"), 9999), model::readFile(at("b.shp"), 9999));
}

TEST_F(EffectFiles, PathsOfUpTo511BytesAreTaken) {
  rig.fx().SaveShape(at("a.shp").c_str());
  rig.draw(0, {{0, 0.5}, {65536, 0.5}});
  const auto give = [&](std::string path) { return rig.call(effVendorSpecific, model::kCallSetPath, 0, path.data()); };
  std::string path = at("a.shp");
  while (path.size() < 511) path.insert(path.find('/', 1), "/");
  EXPECT_EQ(give(path), 1);
  EXPECT_EQ(give("/" + path), 0);
  EXPECT_EQ(rig.fx().loadPath[0], 0) << "what does not fit must not lead to another file";
  EXPECT_EQ(rig.call(effVendorSpecific, model::kCallSetPath), 0);
  rig.fx().loadPath.fill('x');  // no end
  for (const int command : {kLoadShape, kLoadPreset}) rig.set(command, 1.0);
  EXPECT_EQ(rig.fx().envNumPoints[0], 1);
  EXPECT_EQ(give(path), 1);
  rig.set(kLoadShape, 1.0);
  EXPECT_EQ(rig.fx().envNumPoints[0], 2);
}

}  // namespace
