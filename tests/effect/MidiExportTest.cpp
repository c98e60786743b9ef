// SPDX-License-Identifier: MIT
// The MIDI file export: lengths, events, bytes, and what it leaves behind.
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <unistd.h>

#include "effect/ControllerFile.h"
#include "tests/effect/TestHost.h"

using namespace model;
using namespace effect;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kFirstEvent = 14 + 19;  // behind the heads of file and track

// Exports into a file of the test's own, gone after it.
struct ExportRig : EffectRig {
  explicit ExportRig(float hertz = 44100.0f) : EffectRig(hertz) {
    path = testing::TempDir() + "modrift-export-" + std::to_string(getpid()) + ".mid";
    EXPECT_TRUE(fx().setLoadPath(path.c_str()));
  }
  ~ExportRig() { std::filesystem::remove(path); }
  ExportRig(const ExportRig&) = delete;
  ExportRig& operator=(const ExportRig&) = delete;

  Bytes bytes() {
    set(kExportMidi, 1.0);
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // Of the last event, by the file's own rules.
  int lastTick() {
    const Bytes file = bytes();
    int tick = 0;
    for (std::size_t i = kFirstEvent; i + 4 < file.size(); i += 3) {
      int delta = file[i] & 127;
      while (file[i++] & 128) delta = delta << 7 | (file[i] & 127);
      tick += delta;
      EXPECT_EQ(file[i], 0xb0);
    }
    return tick;
  }

  std::string path;
};

TEST(ControllerFile, IsTheEmptyTrackWithoutEvents) {
  const Bytes expected = {'M', 'T', 'h', 'd', 0,   0, 0,    6,  0, 0,   0,   1,  1,   0xe0,
                          'M', 'T', 'r', 'k', 0,   0, 0,    19, 0, 255, 3,   7,  'e', 'm',
                          'p', 't', 'y', '!', ' ', 0, 0xb0, 0,  0, 0,   255, 47, 0};
  EXPECT_EQ(controllerFile({}, 74), expected);
}

TEST(ControllerFile, NamesTheControllerAndWritesDeltasInAsManyBytesAsTheyNeed) {
  const std::vector<TickEvent> events = {
      {0, 0xb0, 74, 3}, {127, 0xb0, 74, 4}, {128, 0xb0, 74, 5}, {15360, 0xb0, 74, 6}};
  const Bytes file = controllerFile(events, 74);
  EXPECT_EQ(std::memcmp(&file[26], "cc 074 ", 7), 0);
  const Bytes expected = {0, 0xb0, 74, 3, 127, 0xb0, 74, 4, 0x81, 0, 0xb0, 74, 5, 0xf8, 0, 0xb0, 74, 6, 0, 255, 47, 0};
  EXPECT_EQ(Bytes(file.begin() + kFirstEvent, file.end()), expected);
  EXPECT_EQ(file[21], file.size() - 22);
}

TEST(Ticks, TakeWrongFramesAndSayItOnStandardError) {
  std::array<VstMidiEvent, 3> frames;
  for (std::size_t i = 0; i < 3; ++i) frames[i].deltaFrames = std::array{-5, 22050, 11025}[i];
  testing::internal::CaptureStderr();
  const auto events = ticksOf(frames, 22050.0);
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(events[0].delta, 0);
  EXPECT_EQ(events[2].delta, 0);
  EXPECT_NE(told.find("\n warning - MIDI Export, delta is negative for ev# 0, frames# -5, lastdelta is 0"
                      "\n  ev# 0, CCVal 0 delta reads 0 frames# -5, lastdelta is 0"),
            std::string::npos);
  EXPECT_NE(told.find("\n warning - MIDI export, delta reads -240 - assigning to 0---   ev# 2, frames# 11025, "
                      "lastdelta is 480"),
            std::string::npos);
}

TEST(Export, LastsABarOrEightAtTheSongsTempoWhetherItPlaysStandsOrIsUnknown) {
  for (const auto& [bpm, playing, rate, sync, quarterFrames, bars] : {std::tuple{90.0, true, 12.0 / 42, 1.0, 61, 1},
                                                                      {90.0, false, 11.0 / 42, 1.0, 61, 8},
                                                                      {0.0, false, 0.5, 0.0, 46, 8}}) {
    ExportRig rig;
    rig.at(3.0, bpm, playing);
    rig.host.givesTime = bpm > 0.0;
    rig.playOnes(512);
    rig.set(kBpmSync, sync);
    rig.set(kRate, rate);
    testing::internal::CaptureStderr();
    EXPECT_EQ((rig.lastTick() + 100) / 1920, bars) << rate;
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_NE(told.find(", PPQInSamps " + std::to_string(quarterFrames) + "\n"), std::string::npos)
        << told.substr(0, 99);
  }
  ExportRig fresh;  // before any block
  EXPECT_EQ(fresh.lastTick(), 1920);
}

TEST(Export, IsBoundedAtWildTemposAndRates) {
  for (const double bpm : {1e-300, -5.0, 1e300, 1e9, 20000.0}) {
    ExportRig rig(bpm < 1.0 ? 44100.0f : 1e6f);
    rig.at(0.0, bpm);
    rig.playOnes(12);
    if (bpm == 1e-300) rig.set(kRate, 1.0);  // one bar at one beat a minute: 10.6 million frames
    rig.fx().bDontInsertMIDIEachPPQ_OnRender = bpm == 1e-300;
    const Bytes file = rig.bytes();
    EXPECT_GE(file.size(), 41u) << bpm;
    EXPECT_LT(file.size(), 8u << 20) << bpm;
  }
}

}  // namespace
