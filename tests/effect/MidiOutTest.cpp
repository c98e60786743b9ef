// SPDX-License-Identifier: MIT
// The controller stream of the cutoff, its thinning and caps, and what shares the block's list with it.
#include <gtest/gtest.h>

#include "tests/effect/TestHost.h"

using namespace model;

namespace {

TEST(Controller, IsWellFormedAndCarriesTheSmoothedCutoff) {
  EffectRig rig;
  rig.set(kCcNumber, 74.0 / 128.0);
  rig.set(kFilterCutoff, 0.75);
  rig.playOnes(12);
  ASSERT_EQ(rig.host.sent.size(), 1u);
  const VstMidiEvent& event = rig.host.sent[0];
  EXPECT_EQ(event.deltaFrames, 11);
  EXPECT_EQ(event.type, kVstMidiType);
  EXPECT_EQ(event.byteSize, 32);
  EXPECT_EQ(std::string_view(event.midiData, 4), std::string_view("\xb0\x4a\x5c\0", 4));  // 0.725 of 127
}

// The cutoff goes up and down so fast that its seven bits change in every tick of a block.
TEST(Cap, IsTwoThousandAndFortyEightOfBothKinds) {
  EffectRig rig;
  for (const auto& [index, value] :
       {std::pair<int, double>{kCcNumber, 74.0 / 128}, {kDepthCut, 0.85}, {kBpmSync, 0.0}, {kRate, 0.9}})
    rig.set(index, value);
  rig.fx().midiThinning = 0;
  rig.send(std::vector<Midi>(2046, {0, 0xe3, 1, 2}));
  rig.playOnes(512);
  ASSERT_EQ(rig.host.sent.size(), 2048u);
  EXPECT_EQ(rig.host.sent[2046].deltaFrames, 11);
  EXPECT_EQ(rig.host.sent[2047].deltaFrames, 23);
  // The rest of an overflowing call is dropped, notes that would be taken included.
  rig.set(kRetrigger, 0.5);
  std::vector<Midi> flood(2049, {0, 0xe3, 1, 2});
  flood.push_back({0, 0x90, 60, 100});
  rig.send(flood);
  rig.host.sent.clear();
  rig.playOnes(12);
  EXPECT_EQ(rig.host.sent.size(), 2048u);
  EXPECT_EQ(rig.fx().heldNotes, 0);
}

TEST(PassThrough, KeepsFrameAndBytesAndDropsTheRest) {
  EffectRig rig;
  VstMidiEvent event;
  event.deltaFrames = 9;
  event.noteLength = 5;
  event.detune = 7;
  event.midiData[0] = static_cast<char>(0xc2);
  event.midiData[3] = 99;
  VstMidiSysexEvent dump;
  VstEvents list;
  list.numEvents = 2;
  list.events[0] = reinterpret_cast<VstEvent*>(&dump);
  list.events[1] = reinterpret_cast<VstEvent*>(&event);
  EXPECT_EQ(rig.call(effProcessEvents, 0, 0, &list), 1);
  rig.playOnes(12);
  ASSERT_EQ(rig.host.sent.size(), 1u);
  EXPECT_EQ(rig.host.sent[0].deltaFrames, 9);
  EXPECT_EQ(rig.host.sent[0].noteLength + rig.host.sent[0].detune + rig.host.sent[0].midiData[3], 0);
}

}  // namespace
