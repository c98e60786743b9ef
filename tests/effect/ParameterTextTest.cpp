// The words that hosts and the editor show of the parameters, and those of a value that is passed in.
#include <gtest/gtest.h>
#include <limits>

#include "effect/ParameterTexts.h"
#include "tests/effect/TestHost.h"

namespace {

constexpr VstInt32 kValueToText = CCONST('s', 'V', '2', 'S');

std::string shown(EffectRig& rig, int index) {
  char text[256] = "untouched";
  rig.call(effGetParamDisplay, index, 0, text);
  return text;
}

std::string textOf(EffectRig& rig, int index, float value) {
  char text[256] = "";
  std::memcpy(text, &value, sizeof value);
  EXPECT_EQ(rig.call(effVendorSpecific, kValueToText, index, text), 1);
  return text;
}

struct Row {
  int first, last;  // indices
  double value;
  const char* shown;    // after the value was set
  const char* ofValue;  // of the same value passed in
};

// "" for the text of a value where the number's own bytes stay.
constexpr Row kRows[] = {
    {0, 0, 0.5, "1/8", "1/8"},
    {0, 0, 0.0, "16 bar", "16 bar"},
    {0, 0, 1.0, "fast", "fast"},
    {0, 0, -7.0, "16 bar", "16 bar"},
    {1, 1, 0.5, "    0", "    0"},
    {4, 8, 0.0, " -100", " -100"},
    {4, 8, 1.0, "  100", "  100"},
    {4, 8, 1e9, "Huge!", "Huge!"},
    {4, 8, -1e30, "-2147", "-2147"},
    {2, 2, 0.25, "   90", "   90"},
    {3, 3, 0.5, "    0", "    0"},
    {3, 3, 0.4999, "   -1", "   -1"},
    {9, 9, 0.0, "Free", "Free"},
    {9, 9, 1.0, "Beat", "Beat"},
    {10, 11, 0.0, "No  ", "No  "},
    {10, 11, 0.2, "Yes ", "Yes "},
    {12, 12, 0.5, "  562", "  562"},  // half way between 21.5 and 14700 by ratio
    {13, 13, 0.29, " 29", " 29"},
    {14, 14, 0.4, "FILT OFF", "FILT OFF"},
    {14, 14, 0.5, "FILT ON", "FILT ON"},
    {15, 16, 0.999, "   99", "   99"},
    {39, 40, 0.999, "   99", "   99"},
    {17, 17, 1.0, "Env", "ENV"},
    {17, 17, 0.5, "Trig", "Trig"},
    {17, 17, 0.2, "OFF", "OFF"},
    {18, 20, 1.0, "ON ", "ON "},
    {18, 20, 0.0, "OFF", "OFF"},
    {73, 73, 0.1, "ON ", "ON "},
    {21, 25, 0.0, "    1", "    1"},
    {21, 25, 1.0, "   12", "   12"},
    {26, 37, 0.4666, "1x ", "1x "},
    {26, 37, 1.0, "16x", "16x"},
    {27, 37, 1.1, "??", "??"},  // the warp of the graph on show is limited
    {27, 37, -1.0, "??", "??"},
    {92, 92, 0.0, "1/16", ""},
    {38, 38, 0.999, "  100", "  100"},
    {41, 41, 0.5, "   0", "    0"},
    {41, 41, 1.0, "4096", " 4096"},
    {41, 41, 0.4999, "  -1", "    0"},  // the floor of -0.8, and what is left of its rounding
    {42, 42, 1.0, "  100", "    0"},    // a point's height counts from the bottom, a value passed in from the top
    {42, 42, 0.0, "    0", "  100"},
    {46, 46, 0.25, "   25", "   25"},
    {47, 47, 0.75, "   75", "   75"},
    {66, 66, 0.0, "SVF LP", "SVF LP"},
    {66, 66, 6.0 / 92, "MG Low 24", "SVF LP"},  // by number where a value is passed in
    {66, 66, 92.0, "Bandreject", "Bandreject"},
    {67, 67, 1.0, "ON ", "ON "},
    {68, 68, 1.0, "HF_PROC", "ON "},
    {68, 68, 0.0, "LF_PROC", "OFF"},
    {69, 69, 0.5, "632", "632"},
    {69, 69, 1e30, "20000", "20000"},
    {78, 78, 1.0, "12", "12"},
    {79, 79, 0.0, " 2", " 2"},
    {79, 79, 1.0, "16", "16"},
    {80, 80, 0.0, " off ", " off "},
    {80, 80, 0.5, "   64", "   64"},
    {80, 80, 1.0, " off ", " off "},
    {70, 70, 0.5, "untouched", ""},
};

TEST(ParameterTexts, SayWhatWasSet) {
  for (const Row& row : kRows) {
    EffectRig rig;
    rig.draw(0, {{0.0, 0.0}, {20000.0, 0.5}, {65536.0, 0.0}});
    rig.playOnes(1);
    for (int index = row.first; index <= row.last; ++index) {
      rig.set(index, row.value);
      EXPECT_EQ(shown(rig, index), row.shown) << index << " at " << row.value;
      const bool bHasText = *row.ofValue != 0;
      EXPECT_EQ(bHasText ? textOf(rig, index, static_cast<float>(row.value)) : "", row.ofValue) << index;
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
