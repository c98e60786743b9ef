// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "host/Transport.h"

namespace modrift::host {
namespace {

constexpr double kRateHz = 48000.0;  // 24000 frames a beat at 120 bpm

TEST(Transport, CountsBeatsBarsAndClocksFromTheStartBeat) {
  Transport transport({.startBeat = 5.0}, kRateHz);
  transport.advance(12500);
  const VstTimeInfo time = transport.time().value();
  EXPECT_DOUBLE_EQ(time.ppqPos, 5.0 + 12500.0 / 24000.0);
  EXPECT_EQ(time.samplePos, 132500.0);
  EXPECT_EQ(time.tempo, 120.0);
  EXPECT_EQ(time.barStartPos, 4.0);
  EXPECT_EQ(time.samplesToNextClock, 500);  // clocks come every 1000 frames
  EXPECT_DOUBLE_EQ(time.nanoSeconds, 12500.0 / 48000.0 * 1e9);
  EXPECT_EQ(Transport({.startBeat = -1.0}, kRateHz).time()->barStartPos, -4.0);
  EXPECT_EQ(Transport({.givesTime = false}, kRateHz).time().has_value(), false);
}

TEST(Transport, IsExactHoweverTheBlocksAreCut) {
  const TransportSettings odd{.tempoBpm = 127.3, .startBeat = 0.1};
  Transport whole(odd, 44100.0);
  Transport cut(odd, 44100.0);
  whole.advance(1000003);
  for (int i = 0; i < 1000003; ++i) cut.advance(1);
  EXPECT_EQ(whole.time()->ppqPos, cut.time()->ppqPos);
}

TEST(Transport, StandsStillWhenStoppedAndMarksTheChange) {
  Transport transport({.playing = false}, kRateHz);
  EXPECT_EQ(transport.time()->flags & (kVstTransportPlaying | kVstTransportChanged), kVstTransportChanged);
  transport.advance(480);
  EXPECT_EQ(transport.time()->ppqPos, 0.0);
  EXPECT_FALSE(transport.time()->flags & kVstTransportChanged);
  transport.setPlaying(true);
  EXPECT_TRUE(transport.time()->flags & kVstTransportChanged);
  transport.advance(480);
  EXPECT_EQ(transport.time()->ppqPos, 0.02);
  EXPECT_EQ(transport.time()->flags & (kVstTransportPlaying | kVstTransportChanged), kVstTransportPlaying);
}

TEST(Transport, JumpsBackAtTheEndOfTheLoopButNotFromBehindIt) {
  Transport transport({.startBeat = 3.0, .cycle = CycleRange{2.0, 4.0}}, kRateHz);
  EXPECT_EQ(transport.framesToJump(), 24000);
  transport.advance(60000);
  EXPECT_EQ(transport.time()->ppqPos, 3.5);
  EXPECT_TRUE(transport.time()->flags & kVstTransportCycleActive);
  const Transport behind({.startBeat = 5.0, .cycle = CycleRange{2.0, 4.0}}, kRateHz);
  EXPECT_EQ(behind.framesToJump(), std::nullopt);
}

}  // namespace
}  // namespace modrift::host
