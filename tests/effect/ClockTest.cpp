// The clock's stated edges: one sample at a known beat, and the position it reads. Expected positions are worked out by
// hand from the cycle's length.
#include <gtest/gtest.h>
#include <ostream>

#include "tests/effect/TestHost.h"

namespace {

// The read position of the sample at `beat`, 120 beats a minute, on the beat clock.
struct ClockCase {
  const char* name;
  double beat, expected;
  double rate = 0.5, swing = 0.5, phase = 0.0, pwm = 0.5;
  bool dotted = true, triplet = true;
  double timing = 0.5;

  friend std::ostream& operator<<(std::ostream& out, const ClockCase& c) { return out << c.name; }
};

constexpr double kTwentyTwo = 22.5 / 42.0, kTwentyThree = 23.5 / 42.0;  // rates between two steps of the divider

class BeatClock : public ::testing::TestWithParam<ClockCase> {};

TEST_P(BeatClock, ReadsThePositionOfTheBeat) {
  const ClockCase& c = GetParam();
  EffectRig rig;
  const std::pair<int, double> settings[] = {{0, c.rate},    {1, c.swing},    {2, c.phase},  {3, c.pwm},
                                             {10, c.dotted}, {11, c.triplet}, {41, c.timing}};
  for (const auto& [index, value] : settings) rig.set(index, value);
  rig.at(c.beat, 120.0);
  rig.playOnes(1);
  EXPECT_NEAR(rig.fx().lfoPhase, c.expected, 2e-7);
  const int index = rig.fx().displayIndex;
  EXPECT_NEAR(index, c.expected * 65535.0, 1.02);
  EXPECT_FLOAT_EQ(rig.fx().displayPos, static_cast<float>(index) * 1.5258789e-5f);
}

INSTANTIATE_TEST_SUITE_P(
    , BeatClock,
    ::testing::Values(
        ClockCase{"HalfABeatByDefault", 0.125, 0.25}, ClockCase{"SixtyFourBeatsAtTheSlowest", 16.0, 0.25, 0.0},
        ClockCase{"A256thOfABeatAtTheFastest", 3.0 + 1.0 / 1024, 0.25, 1.0},
        ClockCase{.name = "Triplet", .beat = 64.0 / 192 / 4, .expected = 0.25, .rate = kTwentyThree},
        ClockCase{.name = "Dotted", .beat = 64.0 / (128 * 1.33333) / 4, .expected = 0.25, .rate = kTwentyTwo},
        ClockCase{
            .name = "StepsAreCountedInFloat", .beat = 64.0 / 192 / 4, .expected = 0.25, .rate = 0.5476190447807312},
        ClockCase{.name = "DottedWhereTripletIsOff",
                  .beat = 64.0 / (128 * 1.33333) / 4,
                  .expected = 0.25,
                  .rate = kTwentyThree,
                  .triplet = false},
        ClockCase{
            .name = "NoDotsOnATripletStepOfOne", .beat = 0.125, .expected = 0.25, .rate = kTwentyTwo, .dotted = false},
        ClockCase{.name = "Straight",
                  .beat = 0.125,
                  .expected = 0.25,
                  .rate = kTwentyThree,
                  .dotted = false,
                  .triplet = false},
        ClockCase{.name = "PhaseWraps", .beat = 57.6, .expected = 0.15, .rate = 0.0, .phase = 0.25},
        ClockCase{.name = "AWholeTurnOfPhase", .beat = 0.125, .expected = 0.25, .phase = 1.0},
        ClockCase{"BeforeTheStartCountsFrom64", -16.0, 0.75, 0.0},
        ClockCase{"LongBeforeTheStart", -1000.0, 24.0 / 64.0, 0.0}, ClockCase{"SwungEarly", 0.125, 0.5, 0.5, 0.25},
        ClockCase{"SwungEarlySecondCycle", 0.75, 0.5 + 0.5 / 3, 0.5, 0.25},
        ClockCase{"SwungLate", 0.75, 1.0 - 1e-16, 0.5, 0.75000006}, ClockCase{"SwingNone", 0.375, 0.375, 0.5, 0.0},
        ClockCase{"SwingAll", 0.375, 0.375, 0.5, 1.0},
        ClockCase{.name = "PwmUp", .beat = 0.125, .expected = 0.25 * 0.004 + 0.996 / 4294967296.0, .pwm = 1.0},
        ClockCase{.name = "PwmDown", .beat = 0.125, .expected = 0.9870174944, .pwm = 0.0},
        ClockCase{.name = "TimingLate", .beat = 0.125, .expected = 0.25 + 2048.0 / 22050 * 2, .timing = 0.75},
        ClockCase{.name = "TimingEarly", .beat = 0.125 + 2048.0 / 22050, .expected = 0.25, .timing = 0.25}),
    [](const auto& test) { return std::string(test.param.name); });

struct FreeCase {
  double rate, tempo, cyclesPerSecond;
  bool freeRun;
};

TEST(FreeClock, RunsAtTheFourthPowerOfTheRateOrAtTheBeatsOwnSpeed) {
  for (const auto& c : {FreeCase{1.0, 120, 440.0, true},
                        {0.5, 120, 27.5, true},
                        {0.25, 37, 440.0 / 256, true},
                        {0.5, 120, 4.0, false},
                        {0.5, 90, 3.0, false},
                        {0.0, 60, 1.0 / 64, false}}) {
    EffectRig rig(48000.0f);
    rig.at(0.0, c.tempo, false);  // also on a stopped song
    rig.set(0, c.rate);
    rig.set(9, c.freeRun ? 0.0 : 1.0);
    rig.set(74, 0.0);
    const double turns = c.cyclesPerSecond * 500.0 / 48000.0;
    rig.playOnes(500);
    EXPECT_NEAR(rig.fx().lfoPhase, turns - std::floor(turns), 1e-6);
    EXPECT_NEAR(rig.fx().freeIncrement * 48000.0, c.cyclesPerSecond, 1e-4);
  }
}

TEST(StoppedTransport, ResetsTheBeatClockAndStopsModulationWhileAnchored) {
  EffectRig rig;
  for (int depth = 4; depth <= 8; ++depth) rig.set(depth, 1.0);
  const auto& fx = rig.fx();
  const auto active = [&] { return fx.activeCut + fx.activeRes + fx.activeVol + fx.activePan + fx.activeVar; };
  rig.at(7.0, 120.0);
  rig.playOnes(10);
  EXPECT_EQ(active(), 5);
  EXPECT_EQ(fx.tempo, 120.0);
  EXPECT_NEAR(fx.beatPos, 7.0 + 10.0 / 22050, 1e-9);
  EXPECT_EQ(rig.host.timeFilter, 0x60d);

  rig.at(7.0, 120.0, false);
  rig.playOnes(1);
  EXPECT_EQ(active(), 0);
  for (const double zero : {double{fx.tempo}, double{fx.beatsPerSample}, double{fx.beatPos}, double{fx.trigPos}})
    EXPECT_EQ(zero, 0.0);
  rig.set(74, 0.0);
  rig.playOnes(1);
  EXPECT_EQ(active(), 5);
  rig.host.givesTime = false;
  rig.playOnes(1);
  EXPECT_EQ(active(), 0);
}

TEST(ClosedGate, PinsEveryRouteToItsFirstSample) {
  EffectRig rig;
  rig.draw(3, {{0.0, 0.75}, {65536.0, 0.0}});
  rig.set(22, 3.0 / 11);
  rig.set(18, 1.0);
  rig.at(0.2, 120.0);
  rig.playOnes(50);
  EXPECT_EQ(rig.fx().padLFO.graphOut[0], 1.0f);
  EXPECT_EQ(rig.fx().padLFO.graphOut[3], 0.25f);
  EXPECT_EQ(rig.fx().displayIndex, 0);
  EXPECT_EQ(rig.fx().displayPos, 0.0f);
  EXPECT_EQ(rig.fx().lfoPhase, 0.0);
  rig.set(18, 0.0);
  rig.playOnes(1);
  EXPECT_NE(rig.fx().padLFO.graphOut[3], 0.25f);
}

TEST(OneShot, RestsAtTheEndOfTheCycleUntilANoteComes) {
  EffectRig rig;
  rig.draw(5, {{0.0, 0.0}, {65536.0, 0.75}});
  rig.set(23, 5.0 / 11);
  rig.set(17, 1.0);
  const float end = rig.fx().graphTable[5][65535];
  EXPECT_NEAR(end, 0.25f, 1e-4f);
  rig.at(0.2, 120.0);
  rig.playOnes(100);
  EXPECT_EQ(rig.fx().padLFO.graphOut[5], end);
  EXPECT_TRUE(rig.fx().bOneShotDone);
  rig.fx().padLFO.cyclePos = 0.5f;
  rig.at(0.2, 120.0, false);
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().padLFO.cyclePos, 0.0f);

  rig.set(74, 0.0);  // the free clock goes round once and stays there
  rig.set(0, 1.0);
  rig.playOnes(44100);
  EXPECT_EQ(rig.fx().freePhase, 0.9999999999999);
  EXPECT_EQ(rig.fx().padLFO.graphOut[5], rig.fx().graphTable[5][65534]);
}

}  // namespace
