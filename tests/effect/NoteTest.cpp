// SPDX-License-Identifier: MIT
// Notes: what they start, open, set and choose, at which sample it is heard, and what passes by.
#include <cmath>
#include <gtest/gtest.h>

#include "tests/effect/TestHost.h"

using namespace model;
using namespace effect;

namespace {

constexpr int kOn = 0x90, kOff = 0x80, kControl = 0xb0;
constexpr float kCentreGain = 1.0003273f;

// The volume follows a graph of half a beat (11025 samples) that is loud in its first eighth only.
struct PulseRig : EffectRig {
  PulseRig() {
    draw(0, {{0.0, 0.0}, {8192.0, 0.0}, {8192.0, 1.0}, {65536.0, 1.0}});
    set(kDepthVol, 1.0);
    at(0.25, 120.0);  // in the silent half
  }
};

std::size_t firstLoud(const Stereo& out) {
  std::size_t i = 0;
  while (i < out.size() && out.left[i] == 0.0f) ++i;
  return i;
}

TEST(Retrigger, IsHeardFromTheFirstSampleOfTheNotesTickAndCountsFromItsExactFrame) {
  for (const int frame : {0, 11, 12, 30, 99}) {
    PulseRig rig;
    rig.set(kRetrigger, 0.5);
    rig.send({{frame, kOn, 60, 100}});
    const Stereo out = rig.playOnes(100);
    const auto tick = static_cast<std::size_t>(frame / 12 * 12);
    EXPECT_EQ(firstLoud(out), tick) << frame;
    EXPECT_EQ(out.left[tick], kCentreGain);
    // From the next block on the song's position counts from the note.
    rig.playOnes(1);
    EXPECT_NEAR(rig.fx().beatPos * 22050.0, 101.0 - frame, 1e-6) << frame;
  }
}

TEST(Gate, OpensWithTheFirstNoteAndClosesWithTheLast) {
  PulseRig rig;
  rig.draw(0, {{0.0, 1.0}, {100.0, 1.0}, {100.0, 0.0}, {65536.0, 0.0}});  // silent where a closed gate reads
  rig.set(kGateMode, 1.0);
  rig.set(kVelToPwm, 1.0);  // the gate alone takes no notes
  rig.send({{24, kOn, 60, 100}, {36, kOn, 64, 1}, {48, kOff, 60, 64}, {60, kOn, 64, 0}});
  const Stereo out = rig.playOnes(100);
  for (std::size_t i = 0; i < 100; ++i) ASSERT_EQ(out.left[i] != 0.0f, i >= 24 && i < 60) << i;
  // Note-offs of nothing are harmless.
  rig.send({{0, kOff, 60, 0}, {0, kOff, 61, 0}, {12, kOn, 62, 100}});
  EXPECT_EQ(firstLoud(rig.playOnes(24)), 12u);
  EXPECT_EQ(rig.fx().heldNotes, 1);
}

TEST(Notes, SetRateCutoffAndPwmAndTellTheHost) {
  const double type3 = 3.0 / 92.0, type2 = 2.0 / 92.0;
  for (const auto& [note, type, rate, cutoff] : {std::tuple{48, type3, 0.0, 48.0 / 128},
                                                 {47, type3, 0.5, 47.0 / 128},
                                                 {60, type2, 12.0 / 79, 60.0 / 112 - 0.155},
                                                 {5, type2, 0.5, 0.0},
                                                 {127, type2, 1.0, 127.0 / 112 - 0.155}}) {
    EffectRig rig;
    for (const int on : {kVelToPwm, kNoteToRate, kNoteToCutoff}) rig.set(on, 1.0);
    rig.set(kFilterType, type);
    rig.send({{0, kOn, note, 32}});
    rig.playOnes(1);
    EXPECT_FLOAT_EQ(rig.get(kRate), static_cast<float>(rate)) << note;
    EXPECT_FLOAT_EQ(rig.get(kFilterCutoff), static_cast<float>(cutoff)) << note;
    EXPECT_FLOAT_EQ(rig.get(kPwm), 32.0f / 127.0f);
    EXPECT_EQ(rig.host.automated.size(), note < 48 ? 2u : 3u);
    EXPECT_EQ(rig.host.eventLists, 0);  // a note that is taken does not pass on
    EXPECT_EQ(rig.fx().trigPos, 0.0);   // and without the switch nothing is triggered
  }
}

TEST(Notes, ChooseGraphsWhenNothingElseTakesThem) {
  EffectRig rig;
  rig.fx().bNoteSelectsGraphs = true;
  rig.send({{0, kOn, 11, 9}, {0, kOn, 12, 9}, {0, kOn, 29, 9}, {0, kOn, 47, 9}, {0, kOn, 50, 9}});
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().routes(), (std::array<std::int8_t, 5>{11, 0, 5, 11, 2}));
  EXPECT_EQ(rig.fx().heldNotes, 0);
  rig.send({{0, kOn, 60, 9}});
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().heldNotes, 1);
  rig.set(kRetrigger, 0.5);  // a switch that takes notes ends it
  rig.send({{0, kOn, 0, 9}});
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().routeCut, 11);
  EXPECT_EQ(rig.fx().heldNotes, 2);
}

TEST(NoteQueue, HoldsAHundredAndTwentyEightAndCountsTheRest) {
  EffectRig rig;
  rig.set(kRetrigger, 0.5);
  rig.send(std::vector<Midi>(130, {11, kOn, 60, 100}));
  EXPECT_EQ(rig.fx().noteQueue.count(), 128);
  EXPECT_EQ(rig.fx().noteQueue.dropped(), 2);
  rig.send({{0, kControl, 1, 1}});  // others still pass
  rig.playOnes(12);
  EXPECT_EQ(rig.fx().heldNotes, 127);
  EXPECT_EQ(rig.host.sent.size(), 1u);
}

TEST(HeldBlock, KeepsItsNotesInOrderForTheNextOne) {
  EffectRig rig;
  rig.set(kRetrigger, 0.5);
  rig.fx().bAudioHold = true;
  rig.send({{300, kOn, 60, 100}, {300, kControl, 1, 1}});
  rig.playOnes(512);
  rig.send({{10, kOff, 60, 0}});
  rig.playOnes(512);
  EXPECT_EQ(rig.host.eventLists, 0);
  rig.fx().bAudioHold = false;
  rig.playOnes(12);
  EXPECT_EQ(rig.fx().heldNotes, 0);
  EXPECT_NE(rig.fx().trigPos, 0.0);
  ASSERT_EQ(rig.host.sent.size(), 1u);
  EXPECT_EQ(rig.host.sent[0].deltaFrames, 0);
}

}  // namespace
