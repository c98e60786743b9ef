// SPDX-License-Identifier: MIT
// What a musician expects of the filter types, measured from the running filter: corners, slopes, peaks, pitches,
// decay.
#include <algorithm>
#include <gtest/gtest.h>
#include <numbers>
#include <utility>

#include "filters/VFilter.h"
#include "tests/filters/FilterFixtures.h"

namespace {

using namespace filters;
using Signal = std::vector<float>;

constexpr float kHostRate = 48000.0f;
constexpr float kWetOnly = 2.0f;  // mix at which combs and phasers leave the dry path out

const VGlobalCoeffs& tables() {
  static const VGlobalCoeffs made = [] {
    VGlobalCoeffs t;
    t.init(440.0f, kHostRate);
    return t;
  }();
  return made;
}

// The pitch of a cutoff: MIDI notes 0 to 128.
double noteHz(double cutoff) { return 440.0 * std::exp2((128.0 * cutoff - 69.0) / 12.0); }
double db(double gain) { return 20.0 * std::log10(std::max(gain, 1e-15)); }

FilterParams mixed(FilterParams params, float mix) {
  params[kDryWet] = mix;
  return params;
}

Signal played(const FilterParams& params, Signal signal) {
  TestFilter<float>(tables(), kHostRate).run(params, signal);
  return signal;
}
Signal constant(float level, std::size_t count) { return Signal(count, level); }
bool isSilent(const Signal& signal) { return signal == Signal(signal.size()); }

// The answer to a small impulse, after a second of silence in which seeds fade out and glides arrive.
class Response {
 public:
  explicit Response(const FilterParams& params, float hostRate = kHostRate, std::size_t count = 32768)
      : taps(count), rate_(2.0 * static_cast<double>(hostRate)) {
    TestFilter<float> filter(tables(), hostRate);
    Signal silence(96000);
    filter.run(params, silence);
    taps[0] = kLevel;
    filter.run(params, taps);
    for (float& tap : taps) tap /= kLevel;
  }

  [[nodiscard]] double gain(double hz) const { return gainAt(taps, hz / rate_); }
  [[nodiscard]] double dbAt(double hz) const { return db(gain(hz)); }
  [[nodiscard]] double dbPerOctave(double hz) const { return dbAt(2.0 * hz) - dbAt(hz); }

  // Where the gain is largest (sign 1) or smallest (-1) from low to high: a grid, and twice a finer one round its best.
  [[nodiscard]] double extreme(double low, double high, double sign = 1.0) const {
    for (int pass = 0; pass < 3; ++pass) {
      const double step = std::pow(high / low, 1.0 / 40.0);
      double best = low, bestGain = -1e9;
      for (int i = 0; i <= 40; ++i) {
        const double hz = low * std::pow(step, i), g = sign * gain(hz);
        if (g > bestGain) bestGain = g, best = hz;
      }
      low = best / step;
      high = best * step;
    }
    return std::sqrt(low * high);
  }
  [[nodiscard]] double peakOver(double hz) const { return extreme(hz * 0.8, hz * 1.25) / hz; }
  [[nodiscard]] double notchOver(double hz) const { return extreme(hz * 0.7, hz * 1.4, -1.0) / hz; }

  [[nodiscard]] double energyDb(std::size_t from, std::size_t count) const {
    double sum = 0.0;
    for (std::size_t i = from; i < from + count; ++i) sum += std::pow(static_cast<double>(taps[i]), 2.0);
    return 0.5 * db(sum);
  }

  Signal taps;

 private:
  static constexpr float kLevel = 0.01f;

  double rate_;
};

TEST(FilterFacts, CleanTypesMeetTheStatedHertz) {
  for (const float c : {0.0f, 0.3f, 0.7f}) {
    const double hz = static_cast<double>(kLowestCleanHz * std::pow(kHighestCleanHz / kLowestCleanHz, c));
    EXPECT_NEAR(Response(filterParams(1, c, 0.9f, 0.5f)).peakOver(hz), 1.0, 0.005) << c;
    for (const int type : {0, 2}) {
      const Response r(filterParams(type, c, 0.0f, 0.5f));
      EXPECT_NEAR(r.dbAt(hz), -3.0, 0.5) << c;
      EXPECT_NEAR(type == 0 ? r.dbPerOctave(4.0 * hz) : -r.dbPerOctave(hz / 8.0), -12.0, 0.6) << c;
    }
  }
  EXPECT_NEAR(Response(filterParams(1, 1.0f, 0.9f, 0.5f)).peakOver(14700.0), 1.0, 0.015);
  EXPECT_NEAR(Response(filterParams(1, 1.0f, 0.9f, 0.5f), 12000.0f).peakOver(6000.0), 1.0, 0.03)
      << "a quarter of 24 kHz";
}

// Tables made for the host's rate sound an octave higher at twice that rate.
TEST(FilterFacts, TableDrivenCornersLieAnOctaveAboveTheNoteAndFallSixDecibelsAPole) {
  const double corner = 2.0 * noteHz(0.45);
  for (int type = 3; type <= 14; ++type) {
    const Response r(filterParams(type, 0.45f, 0.0f, 1.0f));
    const bool isHigh = type >= 11;
    const int poles = (type - 3) % 4 + 1;
    const double fall = isHigh ? -r.dbPerOctave(corner / 8.0) : r.dbPerOctave(4.0 * corner);
    EXPECT_NEAR(fall, -6.0206 * poles, 0.25 * poles) << type;
    EXPECT_NEAR(r.dbAt(corner), -3.0103 * poles, 0.15 * poles) << type << ": undamped poles of one frequency";
    EXPECT_NEAR(r.dbAt(isHigh ? corner * 16.0 : corner / 32.0), 0.0, 0.2 * poles) << type;
  }
  // Low-pass (1), high-pass (2) or both (3) in front of phasers and in flangers' loops, with "Var" at the cutoff's
  // pitch.
  for (const auto& [first, filters] : {std::pair{52, 1}, {54, 2}, {56, 3}, {66, 1}, {68, 2}, {70, 3}, {72, 3}}) {
    for (const int type : {first, first + 1}) {
      const Response r(mixed(filterParams(type, 0.45f, 0.0f, filters == 3 ? 0.0f : 0.5f), kWetOnly));
      EXPECT_NEAR(r.dbAt(corner), filters == 3 ? -6.02 : -3.01, 0.2) << type;
      EXPECT_NEAR(r.dbPerOctave(corner / 8.0), (filters & 2) != 0 ? 6.0 : 0.0, 0.5) << type;
      EXPECT_NEAR(r.dbPerOctave(4.0 * corner), (filters & 1) != 0 ? -6.0 : 0.0, 0.5) << type;
    }
  }
}

TEST(FilterFacts, ResonancesPeakAndNotchesCancelAtTheSameFrequency) {
  const double hz = 2.0 * noteHz(0.5);
  for (const int type : {3, 6, 8, 9, 10, 12, 13, 14, 15, 16, 17, 18, 87}) {
    const Response r(filterParams(type, 0.5f, 0.8f, 1.0f));
    EXPECT_NEAR(r.peakOver(hz), 1.0, type <= 6 ? 0.06 : 0.03) << type;
    EXPECT_GT(r.dbAt(hz), std::max(r.dbAt(hz / 8.0), r.dbAt(8.0 * hz)) + 6.0) << type;
  }
  for (const int type : {19, 20, 25}) {  // the third one is a notch at "Var" below a low-pass
    const Response r(filterParams(type, type == 25 ? 0.8f : 0.5f, 0.2f, 0.5f));
    EXPECT_NEAR(r.notchOver(hz), 1.0, 0.01) << type;
    EXPECT_LT(r.dbAt(hz), -40.0) << type;
    EXPECT_NEAR(r.dbAt(hz / 32.0), 0.0, 0.5) << type;
  }
  const Response reject(filterParams(92, 0.5f, 0.0f, 0.3f));
  for (const double c : {0.5 - 0.1535, 0.5 + 0.1535}) EXPECT_NEAR(reject.dbAt(2.0 * noteHz(c)), -6.0, 0.6);
  EXPECT_LT(reject.dbAt(hz), -15.0);
  const Response lowest(filterParams(92, 0.05f, 0.0f, 1.0f));
  EXPECT_NEAR(lowest.dbAt(2.0 * noteHz(0.0)), -6.0, 0.6) << "the lower edge stops at note 0";
}

TEST(FilterFacts, MorphsAreTheirThreeResponsesAndFadeInFromSilence) {
  constexpr int kPure[4][3] = {{8, 15, 12}, {8, 17, 12}, {8, 19, 12}, {15, 17, 19}};
  constexpr int kTwoStages[4][3] = {{10, 16, 14}, {10, 18, 14}, {10, 20, 14}, {16, 18, 20}};
  for (int type = 34; type <= 41; ++type) {
    for (int i = 0; i < 3; ++i) {
      const int pureType = (type % 2 == 0 ? kPure : kTwoStages)[(type - 34) / 2][i];
      const Response morph(filterParams(type, 0.5f, 0.4f, 0.5f * static_cast<float>(i)));
      const Response pure(filterParams(pureType, 0.5f, 0.4f, 1.0f));
      for (const double hz : {100.0, 660.0, 5000.0}) EXPECT_NEAR(morph.gain(hz), pure.gain(hz), 1e-3) << type << i;
    }
  }
  const Signal fade = played(filterParams(34, 0.5f, 0.0f, 0.0f), constant(0.1f, 3057));
  EXPECT_LT(std::fabs(fade[24]), 0.001f);
  EXPECT_NEAR(fade.back(), 0.1 * (1.0 - std::exp(-1.0)), 0.002) << "a glide of 5 Hz";
}

TEST(FilterFacts, CombsSoundThePeriodOfThePitchAndTheirMinusFormsHalfwayBetween) {
  const double pitch = 2.0 * noteHz(0.5);
  for (const int type : {42, 43, 50, 51}) {
    const Response r(filterParams(type, 0.5f, 0.6f, 0.5f));
    for (const double k : {1.0, 2.0, 3.0}) {
      const double hz = (type % 2 == 0 ? k : k + 0.5) * pitch;
      EXPECT_NEAR(r.extreme(hz - pitch * 0.45, hz + pitch * 0.45) / hz, 1.0, 0.003) << type;
      EXPECT_GT(r.dbAt(hz), r.dbAt(hz + 0.5 * pitch) + 9.0) << type;
    }
  }
  const Response comb(mixed(filterParams(42, 0.5f, 0.0f, 0.5f), kWetOnly)), flanger(filterParams(50, 0.5f, 0.0f, 0.5f));
  EXPECT_LT(comb.energyDb(0, 4096), -80.0) << "without feedback a comb is nothing but its dry path";
  EXPECT_NEAR(flanger.gain(pitch), 1.0, 0.02) << "a flanger's echo is as loud as its dry path";
  EXPECT_NEAR(flanger.gain(1.5 * pitch), 0.0, 0.02);
}

TEST(FilterFacts, PhasersTurnOnlyThePhaseAndCancelOncePerTwoSections) {
  for (int type = 58; type <= 65; ++type) {
    const Response wet(mixed(filterParams(type, 0.5f, 0.0f, 0.5f), kWetOnly)),
        sum(filterParams(type, 0.5f, 0.0f, 0.5f));
    for (const double hz : {50.0, 300.0, 5000.0}) EXPECT_NEAR(wet.gain(hz), 1.0, 0.003) << type;
    int notches = 0;
    double before = -1e9, at = -1e9;
    for (int i = 0; i < 720; ++i) {
      const double next = sum.dbAt(30.0 * std::pow(1.01, i));  // to 38 kHz
      notches += at < -15.0 && at < before && at <= next ? 1 : 0;
      before = std::exchange(at, next);
    }
    const int pairs = (type - 56) / 2;
    EXPECT_EQ(notches, type % 2 == 0 ? pairs : pairs - 1) << type << ": minus cancels at the ends of the range instead";
  }
  const Response two(filterParams(58, 0.5f, 0.0f, 0.5f));  // where each of two sections turns by a quarter
  EXPECT_NEAR(two.notchOver(noteHz(0.5)), 1.0, 0.03) << "at the note itself";
}

TEST(FilterFacts, ReverberatorsEchoAtTunedTimesAndDecayMoreSlowlyAsResonanceRises) {
  const Response combs(filterParams(83, 0.5f, 0.0f, 0.0f)), hall(filterParams(85, 0.5f, 0.0f, 0.0f));
  std::vector<std::size_t> echoes;
  for (std::size_t i = 0; i < combs.taps.size(); ++i) {
    if (std::fabs(combs.taps[i]) > 1e-3f) echoes.push_back(i);
  }
  ASSERT_EQ(echoes.size(), 8u) << "no feedback: one echo a comb";
  for (const std::size_t echo : echoes) EXPECT_NEAR(combs.taps[echo], 0.25f, 1e-4f);
  const double period = static_cast<double>(kHostRate) / noteHz(0.5) + 1.0;
  EXPECT_NEAR(static_cast<double>(echoes.front()), 0.809869 * period, 0.51);
  EXPECT_NEAR(static_cast<double>(echoes.back()), 1.17344 * period, 0.51);
  EXPECT_NEAR(hall.taps[echoes.front()], 0.25f / 16.0f, 1e-4f)
      << "the same delay, then straight through four all-passes";

  for (const int type : {83, 84, 85}) {
    double least = 1e9;  // loss in decibels
    for (const float r : {0.3f, 0.6f, 0.8f, 0.95f}) {
      const Response decay(filterParams(type, 0.4f, r, 0.0f));
      const double loss = decay.energyDb(500, 1000) - decay.energyDb(1500, 1000);
      EXPECT_LT(loss, 0.85 * least) << type << " at " << r;
      least = loss;
    }
  }
  const Response full(filterParams(85, 0.4f, 1.0f, 0.0f));
  const double loops = 16000.0 / (static_cast<double>(kHostRate) / noteHz(0.4));
  EXPECT_NEAR(full.energyDb(0, 16000) - full.energyDb(16000, 16000), -db(0.99) * loops, 1.5);
  for (const int type : {83, 84, 85})
    EXPECT_TRUE(isSilent(Response(filterParams(type, 0.4f, 1.1f, 0.0f)).taps)) << type << " holds, and takes no more";
}

TEST(FilterFacts, VowelsStandAtTheirFormantsWithTheDrivesGain) {
  struct Vowel {
    int type;
    float cutoff, var;
    std::vector<double> hz;
  };
  const Vowel vowels[] = {{89, 0.0f, 1.0f, {800, 1150, 2900, 3900, 4950}},  // the first voice's first vowel
                          {89, 0.0f, 0.0f, {600, 1040, 2250, 2450, 2750}},  // the last voice's
                          {89, 1.0f, 1.0f, {325, 700, 2700, 3800, 4950}},   // the last vowel
                          {90, 1.0f, 0.0f, {570, 850, 2400}},
                          {90, 0.0f, 1.0f, {555, 4800, 5550}},
                          {91, 1.0f, 0.0f, {175.9, 248.5, 583.25, 653.25}},  // an eighth of the table
                          {91, 0.0f, 1.0f, {1018.5, 2761.2, 10269.8, 12026.2}}};
  for (const Vowel& v : vowels) {
    const Response sharp(filterParams(v.type, v.cutoff, 20.0f, v.var), kHostRate, 65536);  // far sharper than in use
    for (const double hz : v.hz) {
      EXPECT_NEAR(sharp.extreme(hz * 0.97, hz * 1.03) / hz, 1.0, 0.003) << v.type;
      EXPECT_NEAR(sharp.gain(hz), 1.02, 0.05) << v.type << " at " << hz;
    }
  }
  EXPECT_NEAR(Response(filterParams(90, 0.0f, 1.0f, 0.0f, 1.0f)).gain(270.0), 16.02, 0.2);
  const auto beside = [](float r) { return Response(filterParams(90, 0.0f, r, 0.0f)).gain(270.0 + 30.0); };
  EXPECT_NEAR(beside(0.5f), 1.02 * std::sqrt(0.5), 0.05) << "the table's bandwidth of 60 Hz";
  EXPECT_LT(beside(1.0f), 0.8 * beside(0.5f));
}

TEST(FilterFacts, EqualisersCancelLeaveOrBoostTheirBand) {
  struct Band {
    int type;
    double inside, outside;  // hertz
    float resonance;
  };
  // The bell's height is the inverse of its damping, which is 1 at this resonance.
  for (const Band b : {Band{74, 3, 20000, 0},
                       {75, 3, 20000, 0},
                       {76, 2.0 * noteHz(0.25), 3, 0.0625f},
                       {77, 2000, 3, 0},
                       {78, 2000, 3, 0}}) {
    const Response cut(filterParams(b.type, 0.25f, b.resonance, 0.0f)),
        boost(filterParams(b.type, 0.25f, b.resonance, 1.0f));
    EXPECT_LT(cut.dbAt(b.inside), -20.0) << b.type;
    EXPECT_NEAR(cut.dbAt(b.outside), 0.0, 0.5) << b.type;
    EXPECT_NEAR(boost.gain(b.inside), 9.0, 0.5) << b.type;
    EXPECT_EQ(played(filterParams(b.type, 0.5f, 0.3f, 0.5f), {0.3f}), Signal{kernels::softClip(0.3f)}) << "flat";
  }
}

TEST(FilterFacts, RingModulatorsGrowTheirOwnCarrierFromNextToNothingAndPlayOnInSilence) {
  const Signal carrier = played(filterParams(79, 0.5f, 0.0f, 0.5f), constant(0.1f, 192000));
  EXPECT_LT(std::fabs(carrier[100]), 1e-6f);
  EXPECT_GT(*std::max_element(carrier.end() - 1000, carrier.end()), 0.02f);
  int periods = 0;
  for (std::size_t i = 96000; i < carrier.size(); ++i) periods += carrier[i - 1] < 0.0f && carrier[i] >= 0.0f ? 1 : 0;
  EXPECT_NEAR(periods, 2.0 * noteHz(0.5), 5.0);
  for (const int type : {79, 80}) {
    TestFilter<float> filter(tables(), kHostRate);
    Signal silence(96000), tone(960, 0.1f);
    filter.run(filterParams(type, 0.5f, 0.0f, 0.5f), silence);
    EXPECT_TRUE(isSilent(silence));
    filter.run(filterParams(type, 0.5f, 0.0f, 0.5f), tone);
    EXPECT_GT(*std::max_element(tone.begin(), tone.end()), 0.01f) << type;
  }
}

TEST(FilterFacts, SampleAndHoldTakesFourSamplesAPeriodOfTheNoteInStepsThatResonanceWidens) {
  Signal ramp(96000);
  for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = 1.5f * static_cast<float>(i) / 96000.0f;
  const Signal held = played(filterParams(81, 0.5f, 0.0f, 0.5f), ramp),
               rest = played(filterParams(82, 0.5f, 0.0f, 0.5f), ramp);
  const auto steps = [](Signal s) { return std::unique(s.begin(), s.end()) - s.begin() - 1; };
  EXPECT_NEAR(static_cast<double>(steps(held)), 4.0 * noteHz(0.5), 2.0);
  EXPECT_EQ(steps(played(filterParams(81, 0.7f, 0.6f, 0.5f), ramp)), 45) << "levels, 2^5.5 of them";
  for (std::size_t i = 0; i < ramp.size(); i += 97) EXPECT_NEAR(held[i] + rest[i], kernels::softClip(ramp[i]), 1e-6f);
  // A single level: rounded up from one half, and toward zero below.
  for (const auto& [in, level] : {std::pair{0.7f, 1.0f}, {0.41f, 0.0f}, {-0.41f, 0.0f}, {-1.5f, 0.0f}})
    EXPECT_EQ(played(filterParams(81, 0.7f, 1.2f, 0.5f), constant(in, 1000)).back(), level) << in;
}

TEST(FilterFacts, GermanLadderIsSilentInSilenceAndAddBassSubtractsWhatItAdds) {
  for (const float r : {0.0f, 1.0f}) {
    TestFilter<float> filter(tables(), kHostRate);
    Signal loud = constant(1.0f, 2400), silence(24000);
    filter.run(filterParams(8, 0.5f, 0.5f, 0.5f), loud);
    filter.run(filterParams(87, 0.5f, r, 0.5f), silence);
    EXPECT_TRUE(isSilent(silence)) << r;
  }
  // One of its two steps hears the signal, the other its sine, which is pi times as large for small signals.
  const double added = 0.5 * (1.0 + std::numbers::pi) / 2.0;
  const Response bass(filterParams(88, 0.3f, 0.0f, 0.0f)), through(filterParams(88, 0.3f, 0.0f, 1.0f));
  EXPECT_NEAR(bass.gain(20.0), added, 0.02);
  EXPECT_LT(bass.dbAt(20000.0), -40.0);
  EXPECT_NEAR(through.gain(20.0), added - 0.5, 0.02);
  EXPECT_NEAR(through.gain(20000.0), 0.5, 0.01);
}

TEST(FilterFacts, DryMixIsTheInputAsEachFamilyHearsIt) {
  const Signal in{0.2f, -0.9f, 1.2f, 0.05f};
  for (int type = 0; type < kFilterTypes; ++type) {
    const FilterParams params = mixed(filterParams(type, 0.5f, 0.0f, 0.5f, 0.2f), 0.0f);
    const Signal out = played(params, in);
    const bool isClean = type <= 2, isRaw = type >= 87 && type <= 91;
    const bool isLate = (type >= 42 && type <= 57) || type == 72 || type == 73;
    for (std::size_t i = isLate ? 1 : 0; i < in.size(); ++i) {
      const float x = in[isLate ? i - 1 : i];
      const float expected = isRaw ? x : isClean ? std::min(x, 0.9999f) : kernels::softClip(x * 2.0736f);
      EXPECT_NEAR(out[i], expected, 1e-6f) << type << " at " << i;
    }
  }
}

TEST(FilterFacts, BlocksOfNoSampleChangeNothing) {
  Noise random(4u);
  Signal noise(480);
  for (float& x : noise) x = random();
  for (int type = 0; type < kFilterTypes; ++type) {
    const FilterParams params = filterParams(type, 0.6f, 0.5f, 0.5f);
    TestFilter<float> filter(tables(), kHostRate);
    Signal signal = noise;
    for (long i = 0; i < 480; i += 24) {
      filter.tick(params, signal, i, 24);
      for (const long count : {0L, -3L}) filter.tick(params, signal, i, count);
    }
    EXPECT_EQ(signal, played(params, noise)) << type;
  }
}

class FilterLife : public testing::Test {
 protected:
  FilterLife() : filter(&tables()) {
    filter.setSampleRate(96000.0f, 1.0f / 96000.0f);
    filter.clear();
  }
  Signal run(FilterParams params, Signal signal, float power = 1.0f) {
    params[kPower] = power;
    filter.processBuffer(params.data(), signal.data(), signal.data(), static_cast<long>(signal.size()));
    return signal;
  }
  // What is left of a constant of 1 that went before.
  float rest(int type, float power = 1.0f) {
    return std::fabs(run(filterParams(type, 0.1f, 0.0f, 0.5f), Signal{0.0f}, power)[0]);
  }
  VFilter filter;
};

TEST_F(FilterLife, BypassDrivesOnAndForgetsTheTypeThatItInterrupts) {
  EXPECT_NEAR(kernels::softClip(1.5f), 1.0f, 1e-6f);
  EXPECT_NEAR(kernels::softClip(1.49f), 1.0f, 1e-4f) << "reached without a slope";
  const auto bypassed = [this](float drive, float in) {
    return run(filterParams(7, 0.5f, 0, 0, drive), {in}, 0.49f)[0];
  };
  EXPECT_EQ(bypassed(0.0f, 0.01f), kernels::softClip(0.01f));
  EXPECT_EQ(bypassed(7.0f, -0.01f), kernels::softClip(-0.16f)) << "drive beyond its range";
  EXPECT_NEAR(bypassed(1.0f, 0.25f), 1.0f, 1e-6f) << "4.0, far beyond the clamp";
  EXPECT_EQ(filter.mode(), kBypass);
  run(filterParams(7, 0.1f, 0.0f, 0.5f), constant(1.0f, 24000));
  EXPECT_GT(rest(7, 0.5f), 0.8f) << "half the power is on";
  rest(7, 0.49f);
  EXPECT_LT(rest(7), 1e-6f);
}

TEST_F(FilterLife, SettingTheSameRateAgainMakesTheFirstTypeCurrentWithoutClearing) {
  run(filterParams(0, 0.1f, 0.0f, 0.5f), constant(1.0f, 24000));
  filter.setSampleRate(96000.0f, 1.0f / 96000.0f);
  EXPECT_EQ(filter.mode(), 0);
  EXPECT_GT(rest(0), 0.9f);
  EXPECT_LT(rest(1), 1e-6f) << "another type clears";
}

TEST(FilterLines, AreThePowersOfTwoAboveThePeriodOfNoteZeroAndWrapBeyond) {
  VGlobalCoeffs slow;
  slow.init(440.0f, 44100.0f);
  TestFilter<float> filter(slow, 44100.0f);
  const auto& lines = filter.core().lines();
  EXPECT_EQ(lines.main.size, 8192);
  for (const auto& line : lines.comb) EXPECT_EQ(line.size, 4096);
  for (const auto& line : lines.ap) EXPECT_EQ(line.size, 4096);
  Signal impulse(1000);
  impulse[0] = 0.01f;
  filter.run(filterParams(83, 0.0f, 0.0f, 0.0f), impulse);
  const auto echo = std::find_if(impulse.begin(), impulse.end(), [](float x) { return x > 1e-3f; });
  EXPECT_EQ(echo - impulse.begin(), 4368 - 4096) << "the first comb wants 4368 samples at note 0";
}

TEST(FilterLines, StartEmptyWithEachType) {
  for (int type = 0; type < kFilterTypes; ++type) {
    if (!typeAt(type).lines.any()) continue;
    TestFilter<float> filter(tables(), kHostRate);
    Signal loud = noise(5u, 12000), little(24), silence(12000);
    filter.run(filterParams(type, 0.1f, 0.8f, 0.5f), loud);
    filter.run(filterParams(0, 0.1f, 0.0f, 0.5f), little);
    filter.run(filterParams(type, 0.1f, 0.8f, 0.5f), silence);
    for (const float x : silence) ASSERT_LT(std::fabs(x), 1e-5f) << type;
  }
}

}  // namespace
