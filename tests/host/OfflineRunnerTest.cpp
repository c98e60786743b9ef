// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

#include "host/OfflineRunner.h"
#include "tests/host/HostFixtures.h"

namespace modrift::host {
namespace {

constexpr VstInt32 kGain = 0;

// What becomes of ones in both channels.
Planar render(Plugin& plugin, std::size_t frames, const RenderJob& job) {
  return renderOffline(plugin, Planar(2, std::vector<float>(frames, 1.0f)), job);
}

// Blocks after the silent one that comes before the settings.
std::vector<ForeignPlugin::Block> blocksOf(const Plugin& plugin) {
  std::vector<ForeignPlugin::Block> blocks = foreign(plugin).blocks;
  VstInt32 warmUp = 64;
  while (warmUp > 0) {
    warmUp -= blocks.front().frames;
    EXPECT_FALSE(blocks.front().time.flags & kVstTransportPlaying);
    blocks.erase(blocks.begin());
  }
  return blocks;
}

TEST(OfflineRunner, MakesChangesAtTheirExactFramesWhateverTheBlockSize) {
  for (const VstInt32 blockFrames : {1, 64, 511, 1000, 1000000}) {
    Plugin plugin(linked());
    RenderJob job{.blockFrames = blockFrames, .settings = {{0, kGain, 0.5f}}};
    job.changes = {{700, kGain, 4.0f}, {-5, kGain, 2.0f}, {123, kGain, 3.0f}, {5000, kGain, 9.0f}};
    const Planar output = render(plugin, 1000, job);
    std::vector<float> expected(1000, 2.0f);
    std::fill(expected.begin() + 123, expected.end(), 3.0f);
    std::fill(expected.begin() + 700, expected.end(), 4.0f);
    EXPECT_EQ(output, Planar(2, expected)) << blockFrames;
  }
}

TEST(OfflineRunner, GivesTheTimeOfEveryBlockAndKeepsTheGridAroundChangesAndLoops) {
  Plugin plugin(linked());
  RenderJob job{.sampleRateHz = 48000.0, .blockFrames = 400, .transport = {.startBeat = 8.0}};
  job.transport.cycle = CycleRange{0.0, 8.0 + 900.0 / 24000.0};
  job.changes = {{500, kGain, 0.0f}};
  render(plugin, 1000, job);
  const std::vector<ForeignPlugin::Block> blocks = blocksOf(plugin);
  const std::vector<double> beats = {8.0, 8.0 + 400.0 / 24000.0, 8.0 + 500.0 / 24000.0, 8.0 + 800.0 / 24000.0, 0.0};
  ASSERT_EQ(blocks.size(), beats.size());
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_DOUBLE_EQ(blocks[i].time.ppqPos, beats[i]);
    EXPECT_EQ((blocks[i].time.flags & kVstTransportChanged) != 0, i == 0);
    EXPECT_EQ(blocks[i].processLevel, kVstProcessLevelOffline);
  }
}

TEST(OfflineRunner, HasSettingsInPlaceBeforeActivationAndAfterTheFirstAudio) {
  Plugin plugin(linked());
  const RenderJob job{.blockFrames = 16, .settings = {{0, kGain, 0.25f}}};
  const Planar output = render(plugin, 10, job);
  EXPECT_EQ(foreign(plugin).blocks.front().gain, 0.25f);
  EXPECT_EQ(output[0], std::vector<float>(10, 0.25f));
}

TEST(OfflineRunner, TakesTheReportedLatencyOffAndRendersTheTail) {
  Plugin plugin(load(FOREIGN_DELAY_PLUGIN));
  std::vector<float> expected(300);
  std::iota(expected.begin(), expected.end(), 1.0f);
  const Planar output = renderOffline(plugin, Planar{expected}, {.blockFrames = 64, .tailFrames = 50});
  expected.resize(350);
  EXPECT_EQ(output[0], expected);
  EXPECT_EQ(output[1], std::vector<float>(350));  // nothing was fed there
}

TEST(OfflineRunner, DeliversNotesAtTheirFramesAndCollectsThePluginsOwn) {
  RecordingListener listener;
  Plugin plugin(linked(), &listener);
  RenderJob job{.blockFrames = 100};
  job.events = {{250, {0x90, 60, 100}}, {99, {0x80, 60, 0}}};
  job.progress = [&](std::int64_t done, std::int64_t) {
    if (done != 200) return true;
    static EventBlock answer{std::vector<MidiEvent>{{7, {0xB0, 74, 64}}}};
    foreign(plugin).toSend = answer.list();
    return true;
  };
  render(plugin, 300, job);
  const std::vector<ForeignPlugin::Block> blocks = blocksOf(plugin);
  ASSERT_EQ(blocks.size(), 3U);
  for (const auto& [block, frame] : {std::pair{0U, 99}, {2U, 50}}) {
    ASSERT_EQ(blocks[block].notes.size(), 1U);
    EXPECT_EQ(blocks[block].notes[0].deltaFrames, frame);
  }
  EXPECT_EQ(listener.midi(), (std::vector<MidiEvent>{{207, {0xB0, 74, 64}}}));
}

TEST(OfflineRunner, PlaysOneBlockOfSilenceInASongThatStands) {
  Plugin plugin(linked());
  playSilence(plugin, 90.0, 48000.0, 32);
  ASSERT_EQ(foreign(plugin).blocks.size(), 1U);
  EXPECT_EQ(foreign(plugin).blocks[0].frames, 32);
  EXPECT_EQ(foreign(plugin).blocks[0].time.tempo, 90.0);
  EXPECT_FALSE(foreign(plugin).blocks[0].time.flags & kVstTransportPlaying);
  EXPECT_EQ(foreign(plugin).told.back().opcode, effStartProcess);
}

TEST(OfflineRunner, GivesUpWhenToldAndLeavesThePluginInactive) {
  Plugin plugin(linked());
  RenderJob job{.blockFrames = 10};
  job.progress = [](std::int64_t done, std::int64_t) { return done < 30; };
  EXPECT_THROW(static_cast<void>(render(plugin, 100, job)), Cancelled);
  EXPECT_EQ(blocksOf(plugin).size(), 3U);
  EXPECT_EQ(foreign(plugin).told.back(), ForeignPlugin::Told{effMainsChanged});
}

}  // namespace
}  // namespace modrift::host
