// SPDX-License-Identifier: MIT
// The bank's parts on their own: second-order sections, the glide, numbers as texts, the catalogue's texts.
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "filters/Strings.h"
#include "filters/VFilter.h"
#include "tests/filters/FilterFixtures.h"

namespace {

using namespace filters;
using Signal = std::vector<float>;

// A lightly damped section, so that what it remembers counts.
dsp::Filter2p ringing(float f0 = 1000.0f) {
  dsp::Filter2p section(dsp::Filter2p::kBandPass);
  section.f0 = f0;
  section.q = 20.0f;
  section.update_eq();
  return section;
}

using Variant = std::function<void(dsp::Biquad&, float* dest, const float* src, long n)>;

TEST(Biquad, GivesTheSameHoweverABlockIsCutAndInPlace) {
  dsp::EnvFollowerBase env;
  const Variant variants[] = {
      [](auto& b, float* d, const float* s, long n) { b.process_block(d, s, n); },
      [](auto& b, float* d, const float* s, long n) { b.process_block_nd(d, s, n); },
      [](auto& b, float* d, const float* s, long n) { b.process_block_clip(d, s, n, 0.4f); },
      [&env](auto& b, float* d, const float* s, long n) { b.process_block_limit(d, s, n, env, 3.0f); }};
  Noise random(9u);
  Signal in(17);
  for (float& x : in) x = random();
  for (const Variant& run : variants) {
    Signal whole(in.size());
    dsp::Filter2p one = ringing();
    env = {};
    run(one, whole.data(), in.data(), 17);
    for (std::size_t first = 1; first < in.size(); ++first) {
      Signal cut = in;
      dsp::Filter2p two = ringing();
      env = {};
      run(two, cut.data(), cut.data(), static_cast<long>(first));
      run(two, cut.data() + first, cut.data() + first, static_cast<long>(in.size() - first));
      EXPECT_EQ(cut, whole) << &run - variants << " cut at " << first;
      EXPECT_EQ(two.memY[two.memPos], whole.back());
    }
  }
}

TEST(Biquad, PassesSamplesUntouchedByDefaultAndMixesOnTop) {
  dsp::Biquad section;
  Signal samples{0.5f, -1.0f, 0.25f};
  section.process_block(samples.data(), 3);
  EXPECT_EQ(samples, (Signal{0.5f, -1.0f, 0.25f}));
  section.process_block(samples.data(), 0);
  EXPECT_EQ(section.memPos, 1);
  section.process_block_mix(samples.data(), 3);
  EXPECT_EQ(samples, (Signal{1.0f, -2.0f, 0.5f}));
  EXPECT_EQ(section.memPos, 0);
  Signal silence(5);
  section.process_block_nd(silence.data(), 5);
  EXPECT_EQ(silence, (Signal{1e-20f, 0.0f, 1e-20f, 0.0f, 0.0f})) << "the first of each whole pair";
}

TEST(Biquad, ClipsAndLimitsInsideItsRecursion) {
  dsp::Biquad section;
  float y = 1.0f;
  section.process_block_clip(&y, 1, 1.0f);
  EXPECT_FLOAT_EQ(y, 5.0f / 6.0f);
  EXPECT_EQ(section.memY[section.memPos], y);
  dsp::EnvFollowerBase env{0.0f, 1.0f, 0.5f};
  Signal level{2.0f, -0.5f, -0.5f};
  section.process_block_limit(level.data(), 3, env, 2.0f);
  EXPECT_EQ(level, (Signal{0.5f, -0.5f / 2.5f, -0.5f / 1.75f})) << "up to 4 at once, twice half the way to 1";
  EXPECT_EQ(section.memY[section.memPos], level[2]);
}

TEST(Biquad, KeepsItsMemoriesWithinReason) {
  dsp::Biquad section;
  const auto inputs = [&] { return Signal(section.memX, section.memX + 2); };
  const auto outputs = [&] { return Signal(section.memY, section.memY + 2); };
  section.memY[0] = 3.0f;
  section.memY[1] = -3.0f;
  section.set_mem_dc(0.7f);
  section.clip_memory(2.0f);
  EXPECT_EQ(inputs(), (Signal{0.7f, 0.7f}));
  EXPECT_EQ(outputs(), (Signal{2.0f, -2.0f}));
  for (const float y : {-0.0f, 1e-40f, -1e-40f}) {
    section.memY[1] = y;
    EXPECT_FALSE(section.check_denormal());
    section.kill_denormal();
    EXPECT_TRUE(section.check_denormal());
    EXPECT_EQ(outputs(), (Signal{2.0f, 0.0f}));
  }
  section.memPos = 1;
  section.bq_clear_buffers();
  EXPECT_EQ(inputs(), Signal(2));
  EXPECT_EQ(outputs(), Signal(2));
  EXPECT_EQ(section.memPos, 0);
}

double gainOf(dsp::Filter2p section, double hz) {
  Signal impulse(44100);
  impulse[0] = 1.0f;
  section.process_block(impulse.data(), 44100);
  return gainAt(impulse, hz / 44100.0);
}

TEST(Filter2p, HasItsNamedShapesAndKeepsItsMemories) {
  struct Shape {
    const char* name;
    double low, middle, high;  // gains at 10 Hz, f0 and 20 kHz for gain 3
  };
  const Shape shapes[] = {
      {"Low-pass", 1, 3, 0}, {"High-pass", 0, 3, 1}, {"Resonator", 1, 3, 1}, {"Band-pass", 0, 3, 0}};
  for (int type = 0; type < 4; ++type) {
    dsp::Filter2p section(type);
    section.gain = 3.0f;
    section.q = 8.0f;
    section.update_eq();
    EXPECT_STREQ(dsp::Filter2p::TYPE_NAME_0[type], shapes[type].name);
    EXPECT_NEAR(gainOf(section, 10.0), shapes[type].low, 0.02);
    EXPECT_NEAR(gainOf(section, 1000.0), shapes[type].middle, 0.001);
    EXPECT_NEAR(gainOf(section, 20000.0), shapes[type].high, 0.02);
  }
  dsp::Filter2p section = ringing();
  EXPECT_NEAR(gainOf(section, 1000.0), 1.0, 1e-4);
  Signal impulse{1.0f, 0.0f, 0.0f};
  section.process_block(impulse.data(), 3);
  const dsp::Filter2p before = section;
  section.f0 = 3000.0f;
  section.update_eq();
  EXPECT_TRUE(std::equal(section.memY, section.memY + 2, before.memY));
  EXPECT_TRUE(std::equal(section.memX, section.memX + 2, before.memX));
  section.bq_clear_buffers();
  EXPECT_NEAR(gainOf(section, 3000.0), 1.0, 1e-4);
  section.type = 4;
  section.gain = 9.0f;
  section.update_eq();
  EXPECT_NEAR(gainOf(section, 3000.0), 1.0, 1e-4) << "an unknown shape leaves the old one";
}

TEST(BiquadS, FastTransformAgreesAtLowFrequenciesAndDriftsAtHighOnes) {
  const auto difference = [](float f0) {
    dsp::Filter2p exact = ringing(f0), fast = exact;
    fast.transform_s_to_z_fast();
    return std::fabs(exact.zA[1] - fast.zA[1]) + std::fabs(exact.zB[0] - fast.zB[0]);
  };
  EXPECT_LT(difference(300.0f), 1e-4f);
  EXPECT_LT(difference(3000.0f), 1e-3f);
  EXPECT_GT(difference(18000.0f), 0.05f);
  const dsp::BiquadS section;
  EXPECT_EQ(section.wrap_freq_blt(1000.0f), 1.0f);
  EXPECT_NEAR(section.wrap_freq_blt(11025.0f), 14.01f, 0.01f);  // tan(pi / 4) over tan(pi / 44.1)
  EXPECT_NEAR(section.wrap_freq_blt_fast(2000.0f), section.wrap_freq_blt(2000.0f), 1e-4f);
}

TEST(VSmoothLog, GlidesByTheSampleOrByTheBlock) {
  VSmoothLog glide;
  EXPECT_STREQ(glide.name(), "VSmoothLog");
  EXPECT_STREQ(glide.nameShort(), "SmoothLog");
  glide.setRate(1.0f / 96000.0f);
  Signal ones(1223, 1.0f);
  glide.multiplyBuffer(1.0f, ones.data(), ones.data(), 1223);
  EXPECT_NEAR(ones.back(), 1.0 - std::exp(-1.0), 1e-3) << "12.7 ms: 1 / (50 Hz pi / 2)";
  float target = 3.0f, out = 0.0f;
  glide.processBuffer(&target, &out, nullptr, nullptr, 1000000);
  EXPECT_EQ(out, 3.0f) << "a long block goes all the way";
  EXPECT_EQ(glide.current, 3.0f);
  VSmoothLog still;
  for (const float bias : {0.0f, 1e-18f, 0.0f, 1e-18f}) {
    still.processBuffer(&(target = 0.0f), &out, nullptr, nullptr, 0);
    EXPECT_NEAR(still.denormalBias, bias, 1e-24f);
  }
  EXPECT_GT(out, 1e-18f) << "the offsets add up";
}

using Words = std::vector<std::string>;

template <class Write>
Words written(Write write, const std::vector<float>& values) {
  Words texts;
  for (const float value : values) {
    char text[64] = "as it was";
    write(value, text);
    texts.emplace_back(text);
  }
  return texts;
}

TEST(Strings, WriteEightCharactersCutAndNotRounded) {
  EXPECT_EQ(written(strings::float2string, {1.5f, -12.25f, 1234567.0f, 0.0f, -0.5f, 1.9999999f}),
            (Words{"1.500000", "-12.2500", "1234567.", "0.000000", "-0.50000", "1.999999"}));
  EXPECT_EQ(written(strings::float2string, {12345678.0f, -9999999.0f, -1e7f, 1e8f, 3e9f}),
            (Words{"12345678", "-9999999", "Huge!", "Huge!", "Huge!"}));
  EXPECT_EQ(written(strings::dB2string, {0.0f, -2.0f, 1.0f, 10.0f}), (Words{"-oo", "-oo", "0.000000", "20.00000"}));
  EXPECT_EQ(written(strings::Hz2string, {100.0f, 0.0f}), (Words{"441.0000", "0.000000"}));
  EXPECT_EQ(written(strings::ms2string, {441.0f}), Words{"10.00000"});
}

TEST(Texts, SayWhatEachParameterOfTheFilterMeans) {
  VGlobalCoeffs tables;
  tables.init(440.0f, 48000.0f);
  const VFilter filter(&tables);
  const auto texts = [&](long index, const std::vector<float>& values) {
    return written([&](float value, char* text) { filter.getParamInInfo(index, value, text); }, values);
  };
  EXPECT_EQ(texts(0, {0.0f, -1.0f, 1.0f, 5.0f}), (Words{"0.000000", "-oo", "24.08239", "24.08239"}));
  EXPECT_EQ(texts(1, {0.51f, 0.5f}), (Words{"on", "off"}));
  EXPECT_EQ(texts(2, {-1.0f, 1.0f / 92.0f, 3.0f}), (Words{"SVF LP", "SVF BP", "Bandreject"}));
  EXPECT_EQ(texts(3, {0.5f}), Words{"as it was  329.6275"});
  EXPECT_EQ(texts(4, {0.25f}), Words{"0.250000"});
  EXPECT_EQ(texts(6, {0.25f}), Words{"dry/wet"});
  EXPECT_EQ(texts(7, {0.25f}), Words{"0.250000"});
  for (const long index : {-1L, 8L}) EXPECT_EQ(texts(index, {0.25f}), Words{"as it was"});
  EXPECT_STREQ(filter.name(), "VFilter");
  EXPECT_STREQ(filter.nameShort(), "Filt");
  for (long index = -1; index < 10; ++index) EXPECT_EQ(filter.getNumEntries(index), index == 2 ? 93 : 0);
}

// Stored projects know a type by its place, so a name never moves. Each line: what "Var" is called, then names.
TEST(Texts, NameAllTypesInTheOrderThatProjectsStore) {
  constexpr std::pair<const char*, const char*> kCatalogue[] = {
      {"-", "SVF LP,SVF BP,SVF HP"},
      {"Fat", "MG Low 6,MG Low 12,MG Low 18,MG Low 24"},
      {"-", "Low 6"},
      {"Fat", "Low 12,Low 18,Low 24"},
      {"-", "High 6"},
      {"Fat", "High 12,High 18,High 24,Band 12,Band 24,Peak 12,Peak 24,Notch 12,Notch 24"},
      {"Freq", "LH 6,LH 12,LB 12,LP 12,LN 12,HB 12,HP 12,HN 12,BP 12,BN 12,PP 12,PN 12,NN 12"},
      {"Morph", "L/B/H 12,L/B/H 24,L/P/H 12,L/P/H 24,L/N/H 12,L/N/H 24,B/P/N 12,B/P/N 24"},
      {"-", "Cmb +,Cmb -"},
      {"LP Frq", "Cmb L6+,Cmb L6-"},
      {"HP Frq", "Cmb H6+,Cmb H6-"},
      {"HL Wid", "Cmb HL6+,Cmb HL6-"},
      {"-", "Flg +,Flg -"},
      {"HP Frq", "Flg L6+,Flg L6-,Flg H6+,Flg H6-"},
      {"HL Wid", "Flg HL6+,Flg HL6-"},
      {"-", "Phs 12+,Phs 12-,Phs 24+,Phs 24-,Phs 36+,Phs 36-,Phs 48+,Phs 48-"},
      {"HP Frq", "Phs 48L6+,Phs 48L6-,Phs 48H6+,Phs 48H6-"},
      {"HL Wid", "Phs 48HL6+,Phs 48HL6-,FPhs 12HL6+,FPhs 12HL6-"},
      {"dB +/-", "Low EQ 6,Low EQ 12,Band EQ 12,High EQ 6,High EQ 12"},
      {"-", "Ring Mod"},
      {"Spread", "Ring Modx2"},
      {"-", "SampHold,SampHold-,Combs,Allpasses,Reverb"},
      {"Boeuf", "French LP"},
      {"-", "German LP"},
      {"Thru", "Add Bass"},
      {"Formnt", "Formant-I,Formant-II,Formant-III"},
      {"width", "Bandreject"}};
  const VFilter filter(nullptr);
  int type = 0;
  for (const auto& [varText, names] : kCatalogue) {
    std::istringstream list(names);
    for (std::string name; std::getline(list, name, ','); ++type) {
      char text[32] = {};
      filter.getParamInInfo(2, normalisedType(type), text);
      EXPECT_EQ(text, name) << type;
      filter.getParamInInfo(5, normalisedType(type), text);
      EXPECT_STREQ(text, varText) << name;
    }
  }
  EXPECT_EQ(type, kFilterTypes);
}

}  // namespace
