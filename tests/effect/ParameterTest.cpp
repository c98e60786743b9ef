// The parameter table: what a value that was set reads back as, names, points, commands, what the editor hears.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "tests/effect/TestHost.h"

namespace {

struct RoundTrip {
  int first, last;  // indices
  double set, expected;
};

TEST(Parameters, ReadBackWhatWasSet) {
  const double route7 = 7.0 / 11;
  const RoundTrip kRows[] = {
      {0, 8, 0.3, 0.3},     {0, 8, 1.75, 1.75},   {9, 11, 1.0, 1.0},  {9, 11, 0.0, 0.0},       {10, 11, 0.2, 1.0},
      {9, 9, 0.2, 0.0},  // on only at exactly 1
      {12, 16, 0.3, 0.3},   {17, 17, 0.24, 0.0},  {17, 17, 0.5, 0.5}, {17, 17, 0.74, 0.5},     {17, 17, 0.75, 1.0},
      {17, 17, 0.2, 0.0},   {18, 20, 0.1, 1.0},   {18, 20, 0.0, 0.0}, {21, 25, 0.63, route7},  {21, 25, 1.0, 1.0},
      {21, 25, 0.0, 0.0},   {26, 37, 0.4, 0.4},   {27, 37, 1.5, 1.5}, {26, 26, 1.5, 1.0},      {26, 26, -1.0, 0.0},
      {38, 41, 0.3, 0.3},   {42, 65, 0.3, 0.3},   {66, 66, 0.3, 0.3}, {67, 68, 0.1, 1.0},      {67, 68, 0.0, 0.0},
      {69, 69, 0.3, 0.3},   {70, 72, 0.3, 0.0},   {73, 74, 0.1, 1.0}, {73, 74, 0.0, 0.0},      {78, 78, 0.63, route7},
      {78, 78, 0.0, 0.0},   {79, 79, 0.3, 0.3},   {80, 80, 0.5, 0.5}, {80, 80, 1.0, -1.0},     {81, 91, 0.3, 0.0},
      {92, 92, 0.3, 0.3},   {92, 92, 7.0, 1.0},   {93, 99, 0.3, 0.0}, {100, 100, 1.0, 1.0},    {100, 100, 0.0, 0.0},
      {101, 104, 0.3, 0.0}, {106, 109, 0.3, 0.0}, {-1, -1, 0.3, 0.0}, {10000, 10000, 0.3, 0.0}};
  EffectRig rig;
  for (const auto& row : kRows) {
    for (int index = row.first; index <= row.last; ++index) {
      rig.set(index, row.set);
      EXPECT_FLOAT_EQ(rig.get(index), static_cast<float>(row.expected)) << "index " << index << " set " << row.set;
    }
  }
}

TEST(Parameters, HaveTheirDefaults) {
  EffectRig rig;
  for (int index = 0; index < 110; ++index) {
    float expected = 0.0f;
    if (index <= 8 || index == 12 || index == 39 || index == 41 || index == 69) expected = index == 2 ? 0.0f : 0.5f;
    if ((index >= 9 && index <= 11) || index == 38 || index == 40 || index == 74) expected = 1.0f;
    if (index == 13) expected = 0.01f;
    if ((index >= 26 && index <= 37) || index == 92) expected = 0.46666667f;
    if (index == 79) expected = 0.45f;
    EXPECT_EQ(rig.get(index), expected) << "index " << index;
  }
}

TEST(Parameters, IgnoreWhatIsNoNumber) {
  using Limits = std::numeric_limits<double>;
  EffectRig rig;
  rig.playOnes(1);
  for (int index = 0; index < 110; ++index) {
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
      rig.set(93 + route, step);
      EXPECT_FLOAT_EQ(rig.get(21 + route), static_cast<float>(expected / 11.0)) << route;
    }
  }
}

TEST(ParameterNames, AreThoseThatHostsShow) {
  const char* const kFirst[] = {"Rate",     "Swing",    "Phase",    "PWM",      ">cut",    ">res",     ">vol",
                                ">pan",     ">var",     "BPMSync",  "Dotted",   "Triplet", "F.Cutoff", "F.Reso",
                                "F.On Off", "F.Drive",  "Smooth",   "In>Rerig", "In>Gate", "InVel>PW", "In>Rate",
                                "LFOn>Fil", "LFOn>Res", "LFOn>Vol", "LFOn>Pan", "LFOn>Var"};
  std::vector<std::string> names(110, "untouched");
  std::copy(std::begin(kFirst), std::end(kFirst), names.begin());
  for (std::size_t g = 0; g < 12; ++g)
    names[26 + g] = std::string("Warp ") + (g < 9 ? "0" : "") + std::to_string(g + 1);
  for (std::size_t p = 0; p < 8; ++p) {
    names[42 + 3 * p] = "Point Y" + std::to_string(p);
    names[43 + 3 * p] = "Point X" + std::to_string(p);
    names[44 + 3 * p] = "Curve  " + std::to_string(p + 1);
  }
  const std::pair<std::size_t, const char*> kOthers[] = {
      {38, "LFO Depth"}, {39, "VF Var"},   {40, "VF Mix"},    {41, "Timing"},    {66, "FilType"}, {67, "Xov On"},
      {68, "Xov Inv"},   {69, "Xov Freq"}, {73, "In>Cutoff"}, {78, "Which Env"}, {80, "CC Out"}};
  for (const auto& [index, name] : kOthers) names[index] = name;
  EffectRig rig;
  for (int index = -1; index < 111; ++index) {
    char text[64] = "untouched";
    rig.call(effGetParamName, index, 0, text);
    EXPECT_EQ(text, index < 0 || index > 109 ? "untouched" : names[static_cast<std::size_t>(index)]) << index;
  }
}

TEST(PointParameters, WaitUnheardUntilTheFirstBlock) {
  EffectRig rig;
  rig.set(42, 0.25);
  EXPECT_EQ(rig.get(42), 0.25f);
  rig.playOnes(1);
  EXPECT_EQ(rig.get(42), 1.0f);  // what was set before is never applied
  rig.set(42, 0.25);
  EXPECT_EQ(rig.fx().graphTable[0][0], 1.0f);
  rig.playOnes(1);
  EXPECT_EQ(rig.fx().graphTable[0][0], 0.25f);
}

TEST(PointParameters, StayBetweenTheirNeighboursAndKeepTheEndsAtOneHeight) {
  EffectRig rig;
  rig.draw(0, {{0.0, 0.0}, {20000.0, 0.5}, {40000.0, 0.2}, {65536.0, 0.0}});
  rig.playOnes(1);
  auto& fx = rig.fx();
  rig.set(46, 1.0);                                          // X of point 1, beyond point 2
  rig.set(49, 0.1);                                          // X of point 2, before point 1
  for (const int fixed : {43, 52, 55}) rig.set(fixed, 0.5);  // X of point 0, of the last, of one beyond
  const double kX[] = {0.0, 40000.0, 40000.0, 65536.0, 65536.0};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(fx.envX[0][i], kX[i]) << i;
  rig.set(42, 0.25);
  EXPECT_EQ(fx.envY[0][3], 0.75);
  rig.set(51, 0.5);  // Y of point 3, the last
  EXPECT_EQ(fx.envY[0][0], 0.5);
  rig.set(53, 0.9);  // the last point has no segment
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
  const std::tuple<int, float, Notices> kRows[] = {{0, 0.25f, {{84, 11.0f}, {0, 0.25f}}},
                                                   {9, 1.0f, {{84, 11.0f}, {0, 0.25f}, {84, 11.0f}, {9, 1.0f}}},
                                                   {12, 0.25f, {{12, 0.25f}}},
                                                   {26, 0.25f, {{92, 0.25f}, {26, 0.25f}}},
                                                   {42, 0.25f, {{86, 1.0f}, {42, 0.25f}}},
                                                   {76, 0.0f, {{76, 0.0f}}},
                                                   {75, 0.0f, {{75, 0.0f}}},
                                                   {76, 0.0f, {{85, 0.0f}, {76, 0.0f}}},
                                                   {78, 1.0f, {{85, 0.0f}, {78, 1.0f}}},
                                                   {94, 11.0f, {{22, 1.0f}, {94, 11.0f}}},
                                                   {109, 3.0f, {{109, 3.0f}}}};
  for (const auto& [index, value, expected] : kRows) {
    editor->heard.clear();
    rig.set(index, static_cast<double>(value));
    EXPECT_EQ(editor->heard, expected) << "index " << index;
  }
}

}  // namespace
