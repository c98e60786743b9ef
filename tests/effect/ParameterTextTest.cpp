// The words that hosts and the editor show of the parameters, and those of a value that is passed in.
#include <gtest/gtest.h>
#include <limits>

#include "effect/ParameterTexts.h"
#include "model/PrivateCalls.h"
#include "tests/effect/TestHost.h"

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
const Row kRows[] = {{0, 0, {{0.5, "1/8"}, {0.0, "16 bar"}, {1.0, "fast"}, {-7.0, "16 bar"}}},
                     {4, 8, {{0.0, " -100"}, {1.0, "  100"}, {1e9, "Huge!"}, {-1e30, "-2147"}}},
                     {2, 2, {{0.25, "   90"}}},
                     {3, 3, {{0.5, "    0"}, {0.4999, "   -1"}}},
                     {9, 9, {{0.0, "Free"}, {1.0, "Beat"}}},
                     {10, 11, {{0.0, "No  "}, {0.2, "Yes "}}},
                     {12, 12, {{0.5, "  562"}}},
                     {13, 13, {{0.29, " 29"}}},
                     {14, 14, {{0.4, "FILT OFF"}, {0.5, "FILT ON"}}},
                     {15, 16, {{0.999, "   99"}}},
                     {17, 17, {{1.0, "Env", "ENV"}, {0.5, "Trig"}, {0.2, "OFF"}}},
                     {18, 20, {{1.0, "ON "}, {0.0, "OFF"}}},
                     {21, 25, {{0.0, "    1"}, {1.0, "   12"}}},
                     {26, 37, {{0.4666, "1x "}, {1.0, "16x"}}},
                     {27, 37, {{1.1, "??"}, {-1.0, "??"}}},
                     {92, 92, {{0.0, "1/16", ""}}},
                     {38, 38, {{0.999, "  100"}}},
                     {41, 41, {{0.5, "   0", "    0"}, {1.0, "4096", " 4096"}, {0.4999, "  -1", "    0"}}},
                     {42, 42, {{1.0, "  100", "    0"}, {0.0, "    0", "  100"}}},
                     {46, 46, {{0.25, "   25"}}},
                     {47, 47, {{0.75, "   75"}}},
                     {66, 66, {{0.0, "SVF LP"}, {6.0 / 92, "MG Low 24", "SVF LP"}, {92.0, "Bandreject"}}},
                     {68, 68, {{1.0, "HF_PROC", "ON "}, {0.0, "LF_PROC", "OFF"}}},
                     {69, 69, {{0.5, "632"}, {1e30, "20000"}}},
                     {78, 78, {{1.0, "12"}}},
                     {79, 79, {{0.0, " 2"}, {1.0, "16"}}},
                     {80, 80, {{0.0, " off "}, {0.5, "   64"}, {1.0, " off "}}},
                     {70, 70, {{0.5, "untouched", ""}}}};

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
  rig.set(0, static_cast<double>(step2));
  for (const auto& [triplet, dotted, text] :
       {std::tuple{1.0, 1.0, "8 bar t"}, {0.0, 1.0, "12 bar"}, {1.0, 0.0, "8 bar t"}, {0.0, 0.0, "16 bar"}}) {
    rig.set(11, triplet);
    rig.set(10, dotted);
    EXPECT_EQ(shown(rig, 0), text);
    EXPECT_EQ(textOf(rig, 0, step2), text);
  }
  rig.set(9, 0.0);
  rig.set(0, 1.0);
  EXPECT_EQ(shown(rig, 0), "440.000 Hz");
  EXPECT_EQ(textOf(rig, 0, 1.0f), "440.0");
}

// 440 Hz is MIDI note 69 of 128, the same at any rate; the clean types' range is another.
TEST(ParameterTexts, OfTheFilterFollowItsType) {
  for (const float hertz : {44100.0f, 96000.0f}) {
    EffectRig rig(hertz);
    rig.set(12, 69.0 / 128);
    EXPECT_EQ(shown(rig, 12), "  725");
    for (const auto& [type, name, var] : {std::tuple{6, "MG Low 24", "Fat"}, {89, "Formant-I", "Formnt"}}) {
      rig.set(66, type / 92.0);
      rig.set(71, 79 / 92.0);
      EXPECT_EQ(shown(rig, 12), "  440") << hertz;
      EXPECT_EQ(shown(rig, 66), name);
      EXPECT_EQ(shown(rig, 71), name);
      EXPECT_EQ(shown(rig, 72), var);
      EXPECT_EQ(shown(rig, 106), "Ring Mod");
    }
  }
}

// Whatever the number is: inside the tables, inside a host's buffer, closed by a zero. The sanitizer build looks too.
TEST(ParameterTexts, AreShortForAnyValue) {
  using Limits = std::numeric_limits<float>;
  EffectRig rig;
  for (int index = -1; index < 111; ++index) {
    if (index == 77 || index == 83 || index == 105) continue;  // files
    for (const float value : {0.0f, 1.0f, 0.5f, -3.0f, 1e9f, -1e9f, Limits::max(), Limits::lowest(), Limits::infinity(),
                              -Limits::infinity(), Limits::quiet_NaN()}) {
      rig.set(index, static_cast<double>(value));
      EXPECT_LT(shown(rig, index).size(), 24u) << index << " at " << value;
      EXPECT_LT(textOf(rig, index, value).size(), 24u) << index << " at " << value;
    }
  }
}

}  // namespace
