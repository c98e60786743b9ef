// SPDX-License-Identifier: MIT
// What the effect answers to its host.
#include <gtest/gtest.h>
#include <limits>

#include "tests/effect/TestHost.h"

using namespace model;

namespace {

TEST(Record, TellsTheHostWhatItIs) {
  EffectRig rig;
  const AEffect& r = *rig.record();
  EXPECT_EQ((std::vector{r.magic, r.uniqueID, r.version, r.numPrograms, r.numParams, r.numInputs, r.numOutputs}),
            (std::vector{0x56737450, 0x56726c71, 1, 1, int{kHostParameters}, 2, 2}));
  EXPECT_EQ(r.flags, effFlagsCanMono | effFlagsCanReplacing | effFlagsProgramChunks);
}

TEST(Answers, AreThoseOfTheInterface) {
  EffectRig rig;
  const std::pair<VstInt32, VstIntPtr> kNumbers[] = {{effIdentify, 0x4E764566},
                                                     {effCanBeAutomated, 1},
                                                     {effGetPlugCategory, 1},
                                                     {effGetVendorVersion, effect::kVendorVersion},
                                                     {effGetTailSize, 1},
                                                     {effGetVstVersion, 2400},
                                                     {effGetNumMidiInputChannels, 1},
                                                     {effVendorSpecific, 0}};
  for (const auto& [opcode, expected] : kNumbers) EXPECT_EQ(rig.call(opcode), expected) << "opcode " << opcode;
  EXPECT_EQ(rig.call(effVendorSpecific, model::kCallHello), 1);
  const std::pair<VstInt32, const char*> kTexts[] = {{effGetEffectName, "Modrift"},
                                                     {effGetProductString, "Modrift"},
                                                     {effGetVendorString, "Ambrel Works"},
                                                     {effGetProgramNameIndexed, "DefaultProgram  "}};
  for (const auto& [opcode, expected] : kTexts) {
    char text[64] = "";
    EXPECT_EQ(rig.call(opcode, 0, 0, text), 1);
    EXPECT_STREQ(text, expected);
  }
  for (const char* can : {"receiveVstEvents", "receiveVstMidiEvent", "plugAsChannelInsert", "2in2out", "1in2out",
                          "sendVstMidiEvent", "sendVstEvents", "FileSelector", "receiveVstTimeInfo", "wantsUTF8Paths"})
    EXPECT_EQ(rig.call(effCanDo, 0, 0, const_cast<char*>(can)), 1) << can;
  for (const char* cannot : {"", "bypass", "receiveVstEvents "})
    EXPECT_EQ(rig.call(effCanDo, 0, 0, const_cast<char*>(cannot)), -1) << cannot;
}

TEST(Program, KeepsANameOf23Characters) {
  EffectRig rig;
  char name[64] = "";
  rig.call(effGetProgramName, 0, 0, name);
  EXPECT_STREQ(name, " ");
  char longName[] = "abcdefghijklmnopqrstuvwxyz";
  rig.call(effSetProgramName, 0, 0, longName);
  rig.call(effSetProgram, 0, 1);
  EXPECT_EQ(rig.call(effGetProgram), 0);
  rig.call(effGetProgramName, 0, 0, name);
  EXPECT_STREQ(name, "abcdefghijklmnopqrstuvw");
}

TEST(Pins, AreTwoStereoPairsOrWhatTheChannelSetUpSays) {
  EffectRig rig;
  const auto pin = [&](VstInt32 opcode, int index) {
    VstPinProperties p;
    return rig.call(opcode, index, 0, &p) ? p.label + std::string(p.flags & kVstPinIsStereo ? ", stereo" : "") : "none";
  };
  EXPECT_EQ(pin(effGetInputProperties, 0), "1 In, stereo");
  EXPECT_EQ(pin(effGetInputProperties, 1), "2 In");
  EXPECT_EQ(pin(effGetOutputProperties, 0), "LFOOut 1, stereo");
  for (const int index : {-1, 2, 10000}) {
    EXPECT_EQ(pin(effGetInputProperties, index), "none");
    EXPECT_EQ(pin(effGetOutputProperties, index), "none");
  }
  for (const int inputs : {1, 3, 0, -1, 10000}) {
    EXPECT_EQ(rig.call(effVendorSpecific, model::kCallSetIoCount, inputs), 0);
    EXPECT_EQ(rig.record()->numInputs, 1);
    EXPECT_EQ(rig.record()->numOutputs, 2);
  }
  EXPECT_EQ(pin(effGetInputProperties, 0), "1 In");
  EXPECT_EQ(pin(effGetInputProperties, 1), "none");
  rig.call(effMainsChanged, 0, 1);  // a set-up does not survive this
  EXPECT_EQ(pin(effGetInputProperties, 1), "2 In");
}

TEST(Speakers, AreTakenAsMonoStereoOrMonoToStereo) {
  EffectRig rig;
  VstSpeakerArrangement in, out;
  for (const int pair : {0, 1, 10, 11, 12, 20, 21, 22, 23, 32, 33}) {
    in.numChannels = pair / 10;
    out.numChannels = pair % 10;
    const bool taken = rig.call(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&in), &out) != 0;
    EXPECT_EQ(taken, pair == 11 || pair == 12 || pair == 22) << pair;
  }
}

TEST(Dispatcher, TakesMissingPointersAndAnyIndex) {
  EffectRig rig;
  for (VstInt32 opcode = -1; opcode < 120; ++opcode) {
    if (opcode == effClose) continue;
    for (const VstInt32 index : {-1, 0, 10000}) rig.call(opcode, index);
    EXPECT_TRUE(opcode <= effGetNumMidiOutputChannels || rig.call(opcode) == 0);
  }
  char text[256] = "";
  for (const VstInt32 index : {-1, 10000, std::numeric_limits<VstInt32>::min(), std::numeric_limits<VstInt32>::max()}) {
    for (const VstInt32 opcode : {effGetParamLabel, effGetParamDisplay, effGetParamName})
      rig.call(opcode, index, 0, text);
    rig.set(index, 0.5);
    EXPECT_EQ(rig.get(index), 0.0f);
    EXPECT_EQ(rig.fx().getRecentFilterParam(index), 0.0f);
  }
}

TEST(Resume, TellsTheHostAndTakesTheSampleRate) {
  EffectRig rig(96000.0f);
  EXPECT_EQ(rig.fx().sampleRateSafe, 96000.0f);
  EXPECT_EQ(rig.host.wantMidiCalls, 2);  // once while it was made, once by the rig
  EXPECT_EQ(rig.host.ioChangedCalls, 2);
  rig.call(effSetSampleRate, 0, 0, nullptr, 48000.0f);
  EXPECT_EQ(rig.fx().sampleRateSafe, 96000.0f);
  rig.call(effMainsChanged, 0, 0);
  EXPECT_EQ(rig.fx().sampleRateSafe, 48000.0f);
}

}  // namespace
