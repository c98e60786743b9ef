// SPDX-License-Identifier: MIT
// The words that hosts and the editor show of the parameters, and those of a value that is passed in.
#include <gtest/gtest.h>

#include "effect/ParameterTable.h"
#include "model/PrivateCalls.h"
#include "tests/effect/TestHost.h"

using namespace model;

namespace {

std::string shown(EffectRig& rig, int index) {
  char text[256] = "untouched";
  rig.call(effGetParamDisplay, index, 0, text);
  return text;
}

std::string textOf(EffectRig& rig, int index, float value) {
  char text[256] = "";
  std::memcpy(text, &value, sizeof value);
  EXPECT_EQ(rig.call(effVendorSpecific, model::kCallValueToText, index, text), 1);
  return text;
}

struct Case {
  double value;
  const char* shown;              // after the value was set
  const char* ofValue = nullptr;  // of the same value passed in, where that differs; "" for none
};
struct Row {
  int first, last;  // indices
  std::vector<Case> cases;
};

// The cutoff's middle is half way between 21.5 and 14700 by ratio; a negative offset in samples reads as its floor,
// that of a value as what its rounding leaves; a point's height counts from the bottom, a value passed in from the top;
// a filter type that is passed in is its number. The warp of the graph on show is limited.
const Row kRows[] = {
    {kRate, kRate, {{0.5, "1/8"}, {0.0, "16 bar"}, {1.0, "fast"}, {-7.0, "16 bar"}}},
    {kDepthCut, kDepthVar, {{0.0, " -100"}, {1.0, "  100"}, {1e9, "Huge!"}, {-1e30, "-2147"}}},
    {kPhase, kPhase, {{0.25, "   90"}}},
    {kPwm, kPwm, {{0.5, "    0"}, {0.4999, "   -1"}}},
    {kBpmSync, kBpmSync, {{0.0, "Free"}, {1.0, "Beat"}}},
    {kDotted, kTriplet, {{0.0, "No  "}, {0.2, "Yes "}}},
    {kFilterCutoff, kFilterCutoff, {{0.5, "  562"}}},
    {kFilterReso, kFilterReso, {{0.29, " 29"}}},
    {kFilterOn, kFilterOn, {{0.4, "FILT OFF"}, {0.5, "FILT ON"}}},
    {kFilterDrive, kSmooth, {{0.999, "   99"}}},
    {kRetrigger, kRetrigger, {{1.0, "Env", "ENV"}, {0.5, "Trig"}, {0.2, "OFF"}}},
    {kGateMode, kNoteToRate, {{1.0, "ON "}, {0.0, "OFF"}}},
    {kRouteCut, kRouteVar, {{0.0, "    1"}, {1.0, "   12"}}},
    {kWarp1, kDepthKnob - 1, {{0.4666, "1x "}, {1.0, "16x"}}},
    {kWarp1 + 1, kDepthKnob - 1, {{1.1, "??"}, {-1.0, "??"}}},
    {kCurrentWarp, kCurrentWarp, {{0.0, "1/16", ""}}},
    {kDepthKnob, kDepthKnob, {{0.999, "  100"}}},
    {kTiming, kTiming, {{0.5, "   0", "    0"}, {1.0, "4096", " 4096"}, {0.4999, "  -1", "    0"}}},
    {kPoint1, kPoint1, {{1.0, "  100", "    0"}, {0.0, "    0", "  100"}}},
    {kPoint1 + 4, kPoint1 + 4, {{0.25, "   25"}}},
    {kPoint1 + 5, kPoint1 + 5, {{0.75, "   75"}}},
    {kFilterType, kFilterType, {{0.0, "SVF LP"}, {6.0 / 92, "MG Low 24", "SVF LP"}, {92.0, "Bandreject"}}},
    {kXoverInvert, kXoverInvert, {{1.0, "HF_PROC", "ON "}, {0.0, "LF_PROC", "OFF"}}},
    {kXoverFrequency, kXoverFrequency, {{0.5, "632"}, {1e30, "20000"}}},
    {kCurrentGraph, kCurrentGraph, {{1.0, "12"}}},
    {kGridSize, kGridSize, {{0.0, " 2"}, {1.0, "16"}}},
    {kCcNumber, kCcNumber, {{0.0, " off "}, {0.5, "   64"}, {1.0, " off "}}},
    {kXoverFrequency + 1, kXoverFrequency + 1, {{0.5, "untouched", ""}}}};

TEST(ParameterTexts, SayWhatWasSet) {
  for (const auto& [first, last, cases] : kRows) {
    for (const Case& c : cases) {
      EffectRig rig;
      rig.draw(0, {{0.0, 0.0}, {20000.0, 0.5}, {65536.0, 0.0}});
      rig.playOnes(1);
      for (int index = first; index <= last; ++index) {
        rig.set(index, c.value);
        EXPECT_EQ(shown(rig, index), c.shown) << index << " at " << c.value;
        const std::string expected = c.ofValue ? c.ofValue : c.shown;
        EXPECT_EQ(expected.empty() ? "" : textOf(rig, index, static_cast<float>(c.value)), expected) << index;
      }
    }
  }
}

TEST(ParameterTexts, OfTheRateFollowItsSwitches) {
  EffectRig rig;
  const float step2 = 2.5f / 42.0f;
  rig.set(kRate, static_cast<double>(step2));
  for (const auto& [triplet, dotted, text] :
       {std::tuple{1.0, 1.0, "8 bar t"}, {0.0, 1.0, "12 bar"}, {1.0, 0.0, "8 bar t"}, {0.0, 0.0, "16 bar"}}) {
    rig.set(kTriplet, triplet);
    rig.set(kDotted, dotted);
    EXPECT_EQ(shown(rig, kRate), text);
    EXPECT_EQ(textOf(rig, kRate, step2), text);
  }
  rig.set(kBpmSync, 0.0);
  rig.set(kRate, 1.0);
  EXPECT_EQ(shown(rig, kRate), "440.000 Hz");
  EXPECT_EQ(textOf(rig, kRate, 1.0f), "440.0");
}

// 440 Hz is MIDI note 69 of 128, the same at any rate; the clean types' range is another.
TEST(ParameterTexts, OfTheFilterFollowItsType) {
  for (const float hertz : {44100.0f, 96000.0f}) {
    EffectRig rig(hertz);
    rig.set(kFilterCutoff, 69.0 / 128);
    EXPECT_EQ(shown(rig, kFilterCutoff), "  725");
    for (const auto& [type, name, var] : {std::tuple{6, "MG Low 24", "Fat"}, {89, "Formant-I", "Formnt"}}) {
      rig.set(kFilterType, type / 92.0);
      rig.set(kFilterNameScratch, 79 / 92.0);
      EXPECT_EQ(shown(rig, kFilterCutoff), "  440") << hertz;
      EXPECT_EQ(shown(rig, kFilterType), name);
      EXPECT_EQ(shown(rig, kFilterNameScratch), name);
      EXPECT_EQ(shown(rig, kVarName), var);
      EXPECT_EQ(shown(rig, kTypeOfScratch), "Ring Mod");
    }
  }
}

bool typed(EffectRig& rig, int index, std::string text) { return rig.call(effString2Parameter, index, 0, text.data()); }

// Under settings that reach every form of a text: each one shown is taken, and shows again.
TEST(ParameterTexts, AreReadBackAsTheyAreShown) {
  for (const double way : {0.0, 1.0}) {
    EffectRig rig;
    rig.draw(0, {{0.0, 0.0}, {20000.0, 0.5}, {65536.0, 0.0}});
    rig.playOnes(1);
    rig.set(kTriplet, way);
    rig.set(kBpmSync, way);
    rig.set(kFilterType, way);
    for (const effect::ParameterRow& row : effect::parameterRows()) {
      if (!row.read) continue;
      const float before = rig.get(row.index);
      for (int step = 0; step <= 200; ++step) {
        rig.set(row.index, step / 200.0);
        const std::string text = shown(rig, row.index);
        rig.set(row.index, step % 2);
        EXPECT_TRUE(typed(rig, row.index, text)) << row.index << " takes no " << text;
        EXPECT_EQ(shown(rig, row.index), text) << row.index;
      }
      rig.set(row.index, static_cast<double>(before));
    }
  }
}

TEST(ParameterTexts, AreReadInAnyCaseWithUnitsAndNothingElseIs) {
  EffectRig rig;
  const std::tuple<int, const char*, double> kTaken[] = {
      {kDepthVol, "-50", 0.25}, {kDepthVol, " +50 % ", 0.75}, {kGateMode, "on", 1.0},       {kRetrigger, "trig", 0.5},
      {kRouteVol, "12", 1.0},   {kWarp1, "1/16", 0.0},        {kXoverFrequency, "20hz", 0}, {kCcNumber, "OFF", 0.0}};
  for (const auto& [index, text, value] : kTaken) {
    EXPECT_TRUE(typed(rig, index, text)) << text;
    EXPECT_FLOAT_EQ(rig.get(index), static_cast<float>(value)) << text;
  }
  const std::pair<int, const char*> kRefused[] = {{kDepthVol, "101"},     {kDepthVol, ""},
                                                  {kDepthVol, "5 Hz"},    {kDepthVol, "nan"},
                                                  {kGateMode, "1"},       {kRouteVol, "1.5"},
                                                  {kRouteVol, "13"},      {kFilterType, "Low"},
                                                  {kRate, "5 Hz"},        {kRate, "1/3"},
                                                  {kGridSize, "1"},       {kCcNumber, "128"},
                                                  {kXoverFrequency, "0"}, {kLoadPreset, "1"},
                                                  {kFilterCutoff, "-1"},  {-1, "1"},
                                                  {kParameterRows, "1"},  {kFilterNameScratch, "SVF LP"}};
  const auto before = rig.get(kDepthVol);
  for (const auto& [index, text] : kRefused) EXPECT_FALSE(typed(rig, index, text)) << index << " took " << text;
  EXPECT_EQ(rig.get(kDepthVol), before);
}

}  // namespace
