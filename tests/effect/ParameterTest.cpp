// SPDX-License-Identifier: MIT
// The parameter table: what a value that was set reads back as, names, points, commands, what the editor hears.
#include <gtest/gtest.h>
#include <limits>

#include "tests/effect/TestHost.h"

using namespace model;

namespace {

TEST(Parameters, ReadBackWhatWasSet) {
  struct Row {
    int first, last;                                // indices
    std::vector<std::pair<double, double>> values;  // that are set, and what they read back as
  };
  const double route7 = 7.0 / 11;
  const Row kRows[] = {{-1, -1, {{0.3, 0.0}}},
                       {kRate, kDepthVar, {{0.3, 0.3}, {1.75, 1.75}}},
                       {kBpmSync, kTriplet, {{1.0, 1.0}, {0.0, 0.0}}},
                       {kDotted, kTriplet, {{0.2, 1.0}}},
                       {kBpmSync, kBpmSync, {{0.2, 0.0}}},  // on only at exactly 1
                       {kFilterCutoff, kSmooth, {{0.3, 0.3}}},
                       {kRetrigger, kRetrigger, {{0.24, 0.0}, {0.5, 0.5}, {0.74, 0.5}, {0.75, 1.0}, {0.2, 0.0}}},
                       {kGateMode, kNoteToRate, {{0.1, 1.0}, {0.0, 0.0}}},
                       {kRouteCut, kRouteVar, {{0.63, route7}, {1.0, 1.0}, {0.0, 0.0}}},
                       {kWarp1, kDepthKnob - 1, {{0.4, 0.4}}},
                       {kWarp1 + 1, kDepthKnob - 1, {{1.5, 1.5}}},
                       {kWarp1, kWarp1, {{1.5, 1.0}, {-1.0, 0.0}}},
                       {kDepthKnob, kFilterType, {{0.3, 0.3}}},
                       {kXoverOn, kXoverInvert, {{0.1, 1.0}, {0.0, 0.0}}},
                       {kXoverFrequency, kXoverFrequency, {{0.3, 0.3}}},
                       {kXoverFrequency + 1, kVarName, {{0.3, 0.0}}},
                       {kNoteToCutoff, kAnchor, {{0.1, 1.0}, {0.0, 0.0}}},
                       {kCurrentGraph, kCurrentGraph, {{0.63, route7}, {0.0, 0.0}}},
                       {kGridSize, kGridSize, {{0.3, 0.3}}},
                       {kCcNumber, kCcNumber, {{0.5, 0.5}, {1.0, -1.0}}},
                       {kCcNumber + 1, kCurrentWarp - 1, {{0.3, 0.0}}},
                       {kCurrentWarp, kCurrentWarp, {{0.3, 0.3}, {7.0, 1.0}}},
                       {kStepRouteCut, kCcLock - 1, {{0.3, 0.0}}},
                       {kCcLock, kCcLock, {{1.0, 1.0}, {0.0, 0.0}}},
                       {kCcLock + 1, kExportMidi - 1, {{0.3, 0.0}}},
                       {kTypeOfScratch, kNoticePresetTitle, {{0.3, 0.0}}},
                       {10000, 10000, {{0.3, 0.0}}}};
  EffectRig rig;
  for (const auto& [first, last, values] : kRows) {
    for (int index = first; index <= last; ++index) {
      for (const auto& [value, expected] : values) {
        rig.set(index, value);
        EXPECT_FLOAT_EQ(rig.get(index), static_cast<float>(expected)) << "index " << index << " set " << value;
      }
    }
  }
}

TEST(Parameters, IgnoreNaNAndInfinities) {
  using Limits = std::numeric_limits<double>;
  EffectRig rig;
  rig.playOnes(1);
  for (int index = 0; index < kParameterRows; ++index) {
    const float before = rig.get(index);
    for (const double value : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) rig.set(index, value);
    EXPECT_EQ(rig.get(index), before) << "index " << index;
  }
  EXPECT_EQ(rig.fx().timingOffset, 0.0f);
  EXPECT_EQ(rig.fx().padLFO.bLfoOpen, 1);
}

TEST(Parameters, StepRoutesWithinTheirTwelveGraphs) {
  EffectRig rig;
  for (int route = 0; route < 5; ++route) {
    for (const auto& [step, expected] : {std::pair{3.0, 3.0}, {1.9, 4.0}, {-1.0, 3.0}, {20.0, 11.0}, {-20.0, 0.0}}) {
      rig.set(kStepRouteCut + route, step);
      EXPECT_FLOAT_EQ(rig.get(kRouteCut + route), static_cast<float>(expected / 11.0)) << route;
    }
  }
}

TEST(ParameterNames, AreThoseThatHostsShow) {
  const char* const kFirst[] = {"Rate",     "Swing",    "Phase",    "PWM",      ">cut",    ">res",     ">vol",
                                ">pan",     ">var",     "BPMSync",  "Dotted",   "Triplet", "F.Cutoff", "F.Reso",
                                "F.On Off", "F.Drive",  "Smooth",   "In>Rerig", "In>Gate", "InVel>PW", "In>Rate",
                                "LFOn>Fil", "LFOn>Res", "LFOn>Vol", "LFOn>Pan", "LFOn>Var"};
  std::vector<std::string> names(std::begin(kFirst), std::end(kFirst));
  for (int g = 1; g <= model::kGraphs; ++g)
    names.push_back(std::string("Warp ") + (g < 10 ? "0" : "") + std::to_string(g));
  names.insert(names.end(), {"LFO Depth", "VF Var", "VF Mix", "Timing"});
  for (int p = 0; p < kPointParameters / 3; ++p) {
    names.push_back("Point Y" + std::to_string(p));
    names.push_back("Point X" + std::to_string(p));
    names.push_back("Curve  " + std::to_string(p + 1));
  }
  names.insert(names.end(), {"FilType", "Xov On", "Xov Inv", "Xov Freq"});
  names.resize(kParameterRows, "untouched");
  names[kNoteToCutoff] = "In>Cutoff";
  names[kCurrentGraph] = "Which Env";
  names[kCcNumber] = "CC Out";
  EffectRig rig;
  for (int index = -1; index <= kParameterRows; ++index) {
    char text[64] = "untouched";
    rig.call(effGetParamName, index, 0, text);
    EXPECT_EQ(text, index < 0 || index >= kParameterRows ? "untouched" : names[static_cast<std::size_t>(index)])
        << index;
  }
}

TEST(PointParameters, WaitUnheardUntilTheFirstBlock) {
  EffectRig rig;
  rig.set(kPoint1, 0.25);
  EXPECT_EQ(rig.get(kPoint1), 0.25f);
  rig.playOnes(1);
  EXPECT_EQ(rig.get(kPoint1), 1.0f);  // what was set before is never applied
  rig.set(kPoint1, 0.25);
  EXPECT_EQ(rig.fx().graphTable[0][0], 1.0f);
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().graphTable[0][0], 0.25f);
}

TEST(PointParameters, StayBetweenTheirNeighboursAndKeepTheEndsAtOneHeight) {
  EffectRig rig;
  rig.draw(0, {{0.0, 0.0}, {20000.0, 0.5}, {40000.0, 0.2}, {65536.0, 0.0}});
  rig.playOnes(1);
  auto& fx = rig.fx();
  rig.set(kPoint1 + 4, 1.0);  // X of point 1, beyond point 2
  rig.set(kPoint1 + 7, 0.1);  // X of point 2, before point 1
  for (const int fixed : {kPoint1 + 1, kPoint1 + 10, kPoint1 + 13})
    rig.set(fixed, 0.5);  // X of point 0, of the last, of one beyond
  const double kX[] = {0.0, 40000.0, 40000.0, 65536.0, 65536.0};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(fx.envX[0][i], kX[i]) << i;
  rig.set(kPoint1, 0.25);
  EXPECT_EQ(fx.envY[0][3], 0.75);
  rig.set(kPoint1 + 9, 0.5);  // Y of point 3, the last
  EXPECT_EQ(fx.envY[0][0], 0.5);
  rig.set(kPoint1 + 11, 0.9);  // the last point has no segment
  EXPECT_EQ(fx.envCurve[0][3], 0.4999999701976776);
}

class Listener : public AEffEditor {
 public:
  using Notice = std::pair<int, float>;
  void setParameter(VstInt32 index, float value) override { heard.emplace_back(index, value); }
  std::vector<Notice> heard;
};

TEST(Editor, HearsEveryChangeAndTheNoticesThatItCauses) {
  EffectRig rig;
  auto* const editor = new Listener;
  rig.fx().setEditor(editor);
  rig.playOnes(1);
  using Notices = std::vector<Listener::Notice>;
  const std::tuple<int, float, Notices> kRows[] = {
      {kRate, 0.25f, {{kNoticeClock, 11.0f}, {kRate, 0.25f}}},
      {kBpmSync, 1.0f, {{kNoticeClock, 11.0f}, {kRate, 0.25f}, {kNoticeClock, 11.0f}, {kBpmSync, 1.0f}}},
      {kFilterCutoff, 0.25f, {{kFilterCutoff, 0.25f}}},
      {kWarp1, 0.25f, {{kCurrentWarp, 0.25f}, {kWarp1, 0.25f}}},
      {kPoint1, 0.25f, {{kNoticePoint, 1.0f}, {kPoint1, 0.25f}}},
      {kPasteGraph, 0.0f, {{kPasteGraph, 0.0f}}},
      {kCopyGraph, 0.0f, {{kCopyGraph, 0.0f}}},
      {kPasteGraph, 0.0f, {{kNoticeGraph, 0.0f}, {kPasteGraph, 0.0f}}},
      {kCurrentGraph, 1.0f, {{kNoticeGraph, 0.0f}, {kCurrentGraph, 1.0f}}},
      {kStepRouteCut + 1, 11.0f, {{kRouteRes, 1.0f}, {kStepRouteCut + 1, 11.0f}}},
      {kNoticePresetTitle, 3.0f, {{kNoticePresetTitle, 3.0f}}}};
  for (const auto& [index, value, expected] : kRows) {
    editor->heard.clear();
    rig.set(index, static_cast<double>(value));
    EXPECT_EQ(editor->heard, expected) << "index " << index;
  }
}

}  // namespace
