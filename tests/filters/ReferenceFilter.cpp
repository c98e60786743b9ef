#include "tests/filters/ReferenceFilter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <numbers>
#include <span>
#include <string_view>

namespace reference {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kLastType = 92;
constexpr int kTableSize = 24576;
constexpr int kNoteZero = 8192;  // where MIDI note 0 stands; 64 entries a semitone
constexpr float kSeed = 1e-7f;   // starts the self-oscillating types
constexpr std::array kCombRatio{0.809869, 0.862119, 0.926705, 0.984035, 1.03193, 1.082, 1.1299, 1.17344};
constexpr std::array kApRatio{0.403483, 0.320029, 0.24746, 0.16328};

float f32(double value) { return static_cast<float>(value); }
double clamp01(double value) { return std::clamp(value, 0.0, 1.0); }
float clampTo(float value, float limit) { return std::clamp(value, -limit, limit); }
float cube(float x) { return x * x * x; }

float softClip(float x) {
  const float t = clampTo(x, 1.5f);
  return t - 0.14814815f * cube(t);
}

// Values far below the signal range become exactly 0.
float flush(float value) {
  const float raised = value + 1e-18f;
  return raised + -1e-18f;
}

// From the start of a sample, after its first and after its second step.
float avg(float q0, float q1, float q2) { return 0.25f * q0 + 0.5f * q1 + 0.25f * q2; }

template <class Step, class Tap>
float twoSteps(Step step, Tap tap) {
  const float q0 = tap();
  step();
  const float q1 = tap();
  step();
  return avg(q0, q1, tap());
}

long truncated(double value) { return static_cast<long>(std::trunc(value)); }
std::size_t tableIndex(double x) { return static_cast<std::size_t>(std::clamp(x, 0.0, kTableSize - 1.0) + 0.5); }
std::size_t cutoffIndex(double x) { return tableIndex((x + 1.0) * kNoteZero); }

}  // namespace

Tables::Tables(double sampleRate) : svf1Hz(f32(2.0 * std::sin(3.1415927410125732 / sampleRate))) {
  const double tune = 440.0;
  const double period0 = sampleRate / (0.018581361171917516 * tune);
  for (int i = 0; i < kTableSize; ++i) {
    const double note = (i - kNoteZero) / 64.0;
    const double raw = tune * std::pow(2.0, (note - 69.0) / 12.0) / sampleRate;
    const double f = std::min(raw, 0.5);
    const double base = i * 1.2 / (kTableSize - 1);
    const double fall = (kTableSize - 1.0 - i) / (kTableSize - 1);
    const double p =
        f32((((-1.608432026158994 * f + 7.348410539666077) * f + 1.263955430638294) * f + 2.4467465842116107) * f);
    const double t = std::min(std::tan(kPi * f), kPi / 2.0);
    const double s = 2.0 * std::sin(kPi * f / 2.0);
    moog.push_back({f32(4.0 * base), f32((0.29 * p - 1.0) / (p + 1.0)), f32(p / (p + 1.0)), f32(0.29 * p / (p + 1.0))});
    svf.push_back({f32(s), f32(2.0 * (1.0 - std::pow(base, 0.25))), f32(std::clamp(2.0 / s - s / 2.0, 0.0, 2.0)),
                   f32(1.0 / (1.0 + 4.0 * base))});
    hold.push_back({f32(std::pow(2.0, 22.0 * (fall * fall))), f32(2.0 * f)});
    delay.push_back({f32(std::min(period0, 1.0 / f + 1.0)), f32(base), f32(1.0 / (base + 1.0)), f32(t)});
  }
}

// Life cycle

void Line::resize(long least) {
  long size = 1;
  while (size < least) size *= 2;
  if (size == mask + 1) return;
  data.assign(static_cast<std::size_t>(size), 0.0f);
  mask = size - 1;
}

void Line::zero() { std::ranges::fill(data, 0.0f); }

void Filter::setSampleRate(float rate, float invRate) {
  const long period = truncated(static_cast<double>(tables.delay[kNoteZero].samples) + 0.5);
  mainLine.resize(period);
  for (Line& line : combLine) line.resize(period >> 1);
  for (Line& line : apLine) line.resize(period >> 1);
  type = 0;
  holdStep = holdPhase = 0.0;
  combScale = apScale = 1.0f;
  if (invRate == invSampleRate) return;
  sampleRate = rate;
  invSampleRate = invRate;
  const double radians = rate > 43999.0f ? -31.41592653589793 : static_cast<double>(rate) * -1.5707963267948966;
  morphRate = f32(1.0 - std::exp(static_cast<double>(invRate) * radians));
  morphKeep = 1.0f - morphRate;
  delaySmooth.coef = f32(std::min(50.0 * 1.5707964 * static_cast<double>(invRate), 1.0));
  for (Resonator& each : resonator) each.sampleFreq = rate;
}

void Filter::clear() {
  // Coefficients too: "French LP" runs its second stage on these.
  stageA = stageB = {kSeed, kSeed, kSeed, kSeed, kSeed, kSeed, kSeed};
  chain.fill(kSeed);
  germanPrev = kSeed;
  chainPrev.fill(kSeed);
  morph.fill(0.0f);
  morphTarget.fill(0.0f);
  eqGain = held = 0.0f;
  holdPhase = 0.0;
  writePos = 0;
  std::ranges::for_each(combLine, &Line::zero);
  damp.fill(0.0f);
  dcTrack.fill(0.0f);
  for (Resonator& each : resonator) each.memX = each.memY = {};
}

void Filter::processBuffer(const float* params, const float* in, float* out, long count) {
  const double drive = 1.0 + std::clamp<double>(params[0], -1.0, 1.0);
  driveGain = f32(drive * drive * drive * drive);
  driveRaw = params[0];
  if (params[1] < 0.5f) {
    type = -1;
  } else {
    const int wanted = static_cast<int>(clamp01(params[2]) * kLastType + 0.5);
    changed = wanted != type;
    if (changed) {
      type = wanted;
      clear();
    }
    set(params);
  }
  processFilter(in, out, count);
}

// Set-up, once a block

float Filter::limitedF(double x) const { return std::min(tables.svf[cutoffIndex(x)].f, 1.4142135f); }

// Resonance damping under the limit at which the stage stays stable.
void Filter::setStage(Stage& stage, double x) const {
  const Tables::Svf& entry = tables.svf[cutoffIndex(x)];
  stage.f = entry.f;
  stage.cubic = stage.f * 0.5f;
  stage.q = std::min(entry.qMax, tables.svf[resonanceRow].damp);
}

void Filter::setHalfMix(bool inverted) {
  const double half = clamp01(mix * 0.5);
  dry = f32((1.0 - half) * static_cast<double>(tables.delay[resonanceRow].inv));
  wet = f32(inverted ? -half : half);
}

void Filter::set(const float* params) {
  cutoff = params[3];
  resonance = params[4];
  var = params[5];
  mix = params[6];
  unitVar = clamp01(var);
  unitMix = clamp01(mix);
  resonanceRow = tableIndex(resonance * kTableSize / 1.2);
  inGain = 1.0f;
  wet = f32(unitMix);
  dry = f32(1.0 - unitMix);
  if (type <= 2) return setClean();
  if (type <= 41 || type == 92) return setStages();
  if (type <= 73) return setDelayTypes();
  if (83 <= type && type <= 85) return setReverb();
  if (89 <= type) return setFormants();
  setEffects();
}

void Filter::setClean() {
  const double rate = sampleRate;
  const double hertz = std::min(rate * 0.25, std::exp(6.526007 * cutoff + 3.069596));
  stageA.f = f32(2.0 * std::sin(3.1415925 * std::min(0.25, hertz / (2.0 * rate))));
  const double f = stageA.f;
  const double d = 1.0 - std::pow(clamp01(resonance) * 0.9 + 0.01, 0.25);
  stageA.q = f32(std::min(2.0 * d, std::min(2.0, 2.0 / f - f * 0.5)));
}

// Types 3 to 41 and 92.
void Filter::setStages() {
  const auto is = [this](std::initializer_list<int> types) { return std::ranges::find(types, type) != types.end(); };
  if (type <= 6) {
    const Tables::Moog& pole = tables.moog[cutoffIndex(cutoff)];
    ladderFb = pole.c1;
    chainCoef = pole.c2;
    ladderPrev = pole.c3;
    feedback = tables.moog[resonanceRow].k;
    inGain = f32((static_cast<double>(feedback) + 1.0) * unitVar + (1.0 - unitVar));
  } else if (is({7, 9, 11, 13, 21})) {
    stageA.f = limitedF(cutoff);
  } else if (type == 92) {
    const double width = 0.495 * var + 0.005;
    setStage(stageA, std::max(cutoff - width, 0.0));
    setStage(stageB, std::max(cutoff + width, 0.0));
  } else {
    setStage(stageA, cutoff);
  }
  if (is({9, 13})) setStage(stageB, cutoff);
  if (is({10, 14, 16, 18, 20, 35, 37, 39, 41})) {  // a broad second stage while the first one rings
    setStage(stageB, cutoff);
    const double q = stageA.q;
    stageB.q = f32(std::min<double>(tables.svf[cutoffIndex(cutoff)].qMax, q * q / 4.0 + 1.0));
  }
  if (type == 21) stageB.f = limitedF(var);
  if (22 <= type && type <= 33) setStage(stageB, var);
  if (is({25, 28, 30, 32})) stageB.q = tables.svf[cutoffIndex(var)].qMax;
  if (is({8, 9, 10, 12, 13, 14, 15, 16, 17, 18}))
    inGain = f32((1.0 - unitVar) * static_cast<double>(tables.svf[resonanceRow].gainComp) + unitVar);
  if (is({34, 35, 36, 37, 38, 39, 40, 41})) {
    const double n = 2.0 * unitVar;
    morphTarget = {f32(std::max(1.0 - n, 0.0)), f32(n < 1.0 ? n : 2.0 - n), f32(std::max(n - 1.0, 0.0))};
  }
}

namespace {

// The four forms of the filter in a comb's loop and before a phaser's chain.
struct LoopFilter {
  bool blocksDc;   // else high-passes
  bool lowPasses;  // then
};

LoopFilter loopFilterOf(int type) {
  const int form = type <= 57 ? (type - 42) / 2 % 4 : type <= 65 ? 0 : type <= 71 ? (type - 66) / 2 + 1 : 3;
  return {form < 2, form % 2 == 1};
}

}  // namespace

// Combs, flangers and phasers, types 42 to 73.
void Filter::setDelayTypes() {
  const bool isMinus = type % 2 == 1, isPhaser = 58 <= type && type <= 71;
  if (!isPhaser) {
    delaySmooth.target = tables.delay[cutoffIndex(cutoff)].samples;
    if (changed) {
      delaySmooth.current = delaySmooth.target;
      mainLine.zero();
    }
  }
  const LoopFilter form = loopFilterOf(type);
  const double offset = cutoff + 2.0 * var - 1.0;
  stageA.f = form.blocksDc ? tables.svf1Hz : limitedF(form.lowPasses ? cutoff - var : offset);
  if (form.lowPasses) stageB.f = limitedF(form.blocksDc ? offset : cutoff + var);
  const float base = isMinus ? -tables.delay[resonanceRow].base : tables.delay[resonanceRow].base;
  (isPhaser ? feedback : delayFeedback) = base;
  if (type >= 58) chainCoef = tables.delay[cutoffIndex(cutoff)].tan - 1.0f;
  if (type >= 72) feedback = 0.0f;
  setHalfMix(isMinus && type >= 50);
}

// Types 74 to 82 and 86 to 88.
void Filter::setEffects() {
  if (type <= 78) {
    setStage(stageA, cutoff);
    stageA.f = limitedF(cutoff);
    stageA.cubic = stageA.f * 0.5f;
    double w = 2.0 * unitVar - 1.0;
    if (w > 0.0) w = 2.0 * w;
    eqGain = f32(w * w * w);
  } else if (type <= 80) {
    setStage(stageA, cutoff);
    setStage(stageB, cutoff + 2.0 * var - 1.0);
    stageA.q = stageB.q = -0.1f;
    wet = f32(2.0 * unitMix);
  } else if (type <= 82) {
    holdStep = tables.hold[cutoffIndex(cutoff)].step;
    holdLevels = tables.hold[resonanceRow].levels;
  } else if (type == 86) {
    setStage(stageA, cutoff);
    inGain = f32(unitVar);
    setApDelays(2);
    apCoef = 0.0f;
    verbIn = 1.0f;
    if (changed) std::ranges::for_each(apLine.begin(), apLine.begin() + 2, &Line::zero);
  } else if (type == 87) {
    if (changed) germanPrev = chain[0] = chain[1] = chain[2] = chain[3] = 0.0f;
    stageB.f = f32(clamp01(std::tan(2.0943952 * static_cast<double>(tables.svf[cutoffIndex(cutoff - 0.0975)].f))));
    stageA.q = f32(resonance * 4.4444447);
  } else {
    setStage(stageA, 0.8 * cutoff + 0.2);
    chainCoef = f32(var);
  }
}

void Filter::setApDelays(std::size_t count) {
  const double d = tables.delay[cutoffIndex(cutoff)].samples;
  for (std::size_t j = 0; j < count; ++j) apDelay[j] = truncated(kApRatio[j] * d * static_cast<double>(apScale) + 0.5);
}

void Filter::setReverb() {
  const double d = tables.delay[cutoffIndex(cutoff)].samples;
  const bool hasCombs = type != 84, hasSections = type != 83;
  if (hasCombs) {
    wet = f32(unitMix * 0.25);
    for (std::size_t k = 0; k < combDelay.size(); ++k)
      combDelay[k] = truncated(kCombRatio[k] * d * static_cast<double>(combScale) + 0.5);
  }
  if (hasSections) setApDelays(apDelay.size());
  if (type == 85) apCoef = 0.5f;
  const double g = std::max(resonance * 0.99, 0.0);
  const bool holds = g >= 1.0;  // what is in the lines stays there, and nothing more comes in
  (type == 84 ? apCoef : verbFeedback) = holds ? 1.0f : f32(g);
  verbIn = holds ? 0.0f : 1.0f;
  stageA.f = holds ? 1.0f : f32(1.0 - unitVar);
  if (!changed) return;
  if (hasSections) std::ranges::for_each(apLine, &Line::zero);
  if (!hasCombs) return;
  std::ranges::for_each(combLine, &Line::zero);
  damp.fill(0.0f);
  dcTrack.fill(0.0f);
}

// Vowels

namespace {

struct Vowel {
  std::array<double, 5> f, b;  // hertz
};
using Voice = std::array<Vowel, 5>;

constexpr std::array kVoices{Voice{{{{800, 1150, 2900, 3900, 4950}, {80, 90, 120, 130, 140}},  // soprano
                                    {{350, 2000, 2800, 3600, 4950}, {60, 100, 120, 150, 200}},
                                    {{270, 2140, 2950, 3900, 4950}, {60, 90, 100, 120, 120}},
                                    {{450, 800, 2830, 3800, 4950}, {70, 80, 100, 130, 135}},
                                    {{325, 700, 2700, 3800, 4950}, {50, 60, 170, 180, 200}}}},
                             Voice{{{{800, 1150, 2800, 3500, 4950}, {80, 90, 120, 130, 140}},  // alto
                                    {{400, 1600, 2700, 3300, 4950}, {60, 80, 120, 150, 200}},
                                    {{350, 1700, 2700, 3700, 4950}, {50, 100, 120, 150, 200}},
                                    {{450, 800, 2830, 3500, 4950}, {70, 80, 100, 130, 135}},
                                    {{325, 700, 2530, 3500, 4950}, {50, 60, 170, 180, 200}}}},
                             Voice{{{{660, 1120, 2750, 3000, 3350}, {80, 90, 120, 130, 140}},  // countertenor
                                    {{440, 1800, 2700, 3000, 3300}, {70, 80, 100, 120, 120}},
                                    {{270, 1850, 2900, 3350, 3590}, {40, 90, 100, 120, 120}},
                                    {{430, 820, 2700, 3000, 3300}, {40, 80, 100, 120, 120}},
                                    {{370, 630, 2750, 3000, 3400}, {40, 60, 100, 120, 120}}}},
                             Voice{{{{650, 1080, 2650, 2900, 3250}, {80, 90, 120, 130, 140}},  // tenor
                                    {{400, 1700, 2600, 3200, 3580}, {70, 80, 100, 120, 120}},
                                    {{290, 1870, 2800, 3250, 3540}, {40, 90, 100, 120, 120}},
                                    {{400, 800, 2600, 2800, 3000}, {40, 80, 100, 120, 120}},
                                    {{350, 600, 2700, 2900, 3300}, {40, 60, 100, 120, 120}}}},
                             Voice{{{{600, 1040, 2250, 2450, 2750}, {60, 70, 110, 120, 130}},  // bass
                                    {{400, 1620, 2400, 2800, 3100}, {40, 80, 100, 120, 120}},
                                    {{250, 1750, 2600, 3050, 3340}, {60, 90, 100, 120, 120}},
                                    {{400, 750, 2400, 2600, 2900}, {40, 80, 100, 120, 120}},
                                    {{350, 600, 2400, 2675, 2950}, {40, 80, 100, 120, 120}}}}};

// One row a vowel: man, woman, child, helium.
constexpr double kThreeFormants[10][4][3] = {
    {{270, 2300, 3000}, {300, 2800, 3300}, {370, 3200, 3700}, {555, 4800, 5550}},
    {{400, 2000, 2550}, {430, 2500, 3100}, {530, 2750, 3600}, {795, 4125, 5400}},
    {{530, 1850, 2500}, {600, 2350, 3000}, {700, 2600, 3550}, {1050, 3900, 5325}},
    {{660, 1700, 2400}, {860, 2050, 2850}, {1000, 2300, 3300}, {1500, 3450, 4950}},
    {{730, 1100, 2450}, {850, 1200, 2800}, {1030, 1350, 3200}, {1545, 2025, 4800}},
    {{570, 850, 2400}, {590, 900, 2700}, {680, 1050, 3200}, {1020, 1575, 4800}},
    {{440, 1000, 2250}, {470, 1150, 2700}, {560, 1400, 3300}, {840, 2100, 4950}},
    {{300, 850, 2250}, {370, 950, 2650}, {430, 1150, 3250}, {645, 1725, 4875}},
    {{640, 1200, 2400}, {760, 1400, 2800}, {850, 1600, 3350}, {1275, 2400, 5025}},
    {{490, 1350, 1700}, {500, 1650, 1950}, {560, 1650, 2150}, {840, 2475, 3225}}};

constexpr double kFourFormants[6][4] = {{519, 1407, 5233, 6128},  {715, 1421, 5130, 5841},  {895, 1475, 5369, 5950},
                                        {1072, 1614, 5451, 5895}, {1190, 1773, 5160, 5700}, {1407, 1988, 4666, 5226}};

// Bandwidths of the two lists above.
constexpr std::array kBandwidths{60.0, 100.0, 120.0, 120.0};

// The order in which a control walks the rows.
constexpr std::array<std::size_t, 10> kWalk1{0, 1, 2, 3, 4, 0, 2, 4, 3, 1};
constexpr std::array<std::size_t, 11> kWalk2{0, 1, 2, 3, 4, 5, 7, 6, 9, 8, 0};
constexpr std::array<std::size_t, 6> kWalk3{0, 1, 2, 3, 4, 5};

std::size_t formantCount(int type) { return type == 89 ? 5 : type == 90 ? 3 : 4; }

// A control between two neighbours of a walk.
struct Between {
  std::size_t first, second;
  double fraction;
};

Between walk(std::span<const std::size_t> rows, double x) {
  const double whole = std::floor(x);
  const auto i = static_cast<std::size_t>(whole);
  return {rows[i], rows[(i + 1) % rows.size()], x - whole};
}

struct Corner {
  double freq, bw;
};

Corner formantOf(int type, std::size_t voice, std::size_t vowel, std::size_t k) {
  if (type == 89) return {kVoices[voice][vowel].f[k], kVoices[voice][vowel].b[k]};
  if (type == 90) return {kThreeFormants[vowel][std::min<std::size_t>(voice, 3)][k], kBandwidths[k]};  // 4: weight 0
  return {(voice == 0 ? 0.125 : 2.0) * kFourFormants[vowel][k], kBandwidths[k]};
}

Corner mixedFormant(int type, const Between& vowel, const Between& voice, std::size_t k) {
  const double a = vowel.fraction, b = voice.fraction;
  const double w11 = a * b, w01 = b - w11, w10 = a - w11, w00 = 1.0 - w11 - w10 - w01;
  const Corner c00 = formantOf(type, voice.first, vowel.first, k), c10 = formantOf(type, voice.first, vowel.second, k);
  const Corner c01 = formantOf(type, voice.second, vowel.first, k),
               c11 = formantOf(type, voice.second, vowel.second, k);
  const double freq = c00.freq * w00 + c10.freq * w10 + c01.freq * w01 + c11.freq * w11;
  if (type == 91) return {freq, c00.bw * (w00 + w01) + c10.bw * (w10 + w11)};
  return {freq, c00.bw * w00 + c10.bw * w10 + c01.bw * w01 + c11.bw * w11};
}

}  // namespace

void Filter::setFormants() {
  const double scaled = unitVar * 0.98;
  const std::span<const std::size_t> rows = type == 89   ? std::span<const std::size_t>(kWalk1)
                                            : type == 90 ? std::span<const std::size_t>(kWalk2)
                                                         : std::span<const std::size_t>(kWalk3);
  const Between vowel = walk(rows, clamp01(cutoff) * (type == 89 ? 4.0 : 5.0));
  const Between voice = type == 89   ? walk(rows, (1.0 - unitVar) * 4.0)
                        : type == 90 ? walk(rows, 3.0 * unitVar)
                                     : Between{0, 1, scaled - std::floor(scaled)};  // an eighth and twice the pitch
  for (std::size_t n = 0; n < formantCount(type); ++n) {
    const Corner formant = mixedFormant(type, vowel, voice, n);
    resonator[n].gain = f32(static_cast<double>(driveGain) + 0.02);
    resonator[n].f0 = f32(formant.freq);
    resonator[n].q = f32(formant.freq / formant.bw * (resonance + 0.5));
    resonator[n].updateEq();
  }
}

void Resonator::updateEq() {
  const double numerator = f32(static_cast<double>(gain) / static_cast<double>(q));
  const double denominator = f32(1.0 / static_cast<double>(q));
  const double k = 1.0 / std::tan(kPi * static_cast<double>(f0) / static_cast<double>(sampleFreq));
  const double b1 = numerator * k, a1 = denominator * k, a2 = k * k;
  const double n = 1.0 / (a1 + a2 + 1.0);
  zB = {f32(b1 * n), 0.0f, f32(-b1 * n)};
  zA = {1.0f, f32(2.0 * (1.0 - a2) * n), f32((a2 + 1.0 - a1) * n)};
}

float Resonator::process(float x) {
  const float y = zB[0] * x + zB[1] * memX[0] + zB[2] * memX[1] - (zA[1] * memY[0] + zA[2] * memY[1]);
  memX = {x, memX[0]};
  memY = {y, memY[0]};
  return y;
}

void Filter::formants(const float* in, float* out, long count) {
  const std::vector<float> input(in, in + count);
  std::fill_n(out, count, 0.0f);
  for (std::size_t k = 0; k < formantCount(type); ++k)
    for (std::size_t i = 0; i < input.size(); ++i) out[i] += resonator[k].process(input[i]);
  if (wet >= 1.0f) return;
  for (std::size_t i = 0; i < input.size(); ++i) out[i] = wet * out[i] + dry * input[i];
}

// Sample loops

void Filter::processFilter(const float* in, float* out, long count) {
  if (count < 1) return;
  if (89 <= type && type <= 91) return formants(in, out, count);
  for (long i = 0; i < count; ++i) out[i] = sample(in[i], softClip(in[i] * driveGain));
  if (type != 83) return;
  for (std::size_t k = 0; k < 8; ++k) {  // once a block, so its time constant follows the block's length
    dcTrack[k] += (damp[k] - dcTrack[k]) * 0.01f;
    damp[k] -= dcTrack[k];
  }
}

void Stage::poleStep(float u) {
  low += f * high;
  high = u - low;
}

void Stage::nlStep(float u) {
  notch = u - q * band;
  low += f * band;
  high = notch - low;
  const float b = band + clampTo(f * high, 0.8333333f);
  band = b - cubic * cube(b);
}

void Stage::linStep(float u) {
  notch = u - q * band;
  low += f * band;
  high = notch - low;
  band += f * high;
}

namespace {

// Six characters a type, from 7 to 41: step and tap of stage A, then of stage B. The digits are the morphing taps.
constexpr std::string_view kMultimode =
    "pL -- nL -- pL nL nL lL "                                                        // low
    "pH -- nH -- pH nH nH lH "                                                        // high
    "nB -- nB lB nP -- nP lP nN -- nN lN "                                            // band, peak, notch
    "pL pH nL nH nL nB nL nP nL nN nH nB nH nP nH nN nB nP nB nN nP nP nP nN nN nN "  // duals
    "n1 -- n1 l1 n2 -- n2 l2 n3 -- n3 l3 n4 -- n4 l4 ";                               // morphing
static_assert(kMultimode.size() == 35 * 6);

float valueAt(const Stage& s, char tap, const std::array<float, 3>& w) {
  if (tap == 'L') return s.low;
  if (tap == 'H') return s.high;
  if (tap == 'B') return s.band;
  if (tap == 'N') return s.notch;
  if (tap == 'P') return s.notch + s.band;
  if (tap == '1') return w[0] * s.low + w[1] * s.band + w[2] * s.high;
  if (tap == '2') return w[0] * s.low + w[1] * (s.notch + s.band) + w[2] * s.high;
  if (tap == '3') return w[0] * s.low + w[1] * s.notch + w[2] * s.high;
  return w[0] * s.band + w[1] * (s.notch + s.band) + w[2] * s.notch;
}

// `form` is a step and a tap.
float runStage(Stage& stage, std::string_view form, float u, const std::array<float, 3>& weights = {}) {
  const auto once = [&] {
    if (form[0] == 'p') stage.poleStep(u);
    if (form[0] == 'n') stage.nlStep(u);
    if (form[0] == 'l') stage.linStep(u);
  };
  return twoSteps(once, [&] { return valueAt(stage, form[1], weights); });
}

}  // namespace

float Filter::sample(float in, float y) {
  if (type == -1) return y;
  if (type <= 2) return cleanSvf(in);
  if ((42 <= type && type <= 57) || type == 72 || type == 73) return delayLoop(y);
  if (type == 86) return clampTo(wet * 0.25f * french(y), 1.0f) + y * dry;
  if (type == 87) return german(y) * wet + in * dry;  // the raw input here, and in "Add Bass"
  if (type == 88) return addBass(y) * wet * 0.5f + in * dry;
  return tapOf(y) * wet + y * dry;
}

float Filter::tapOf(float y) {
  if (type <= 6) return ladder(inGain * y);
  if (type <= 41) return multimode(inGain * y);
  if (type <= 71) return allpassChain(loopFilter(y), type <= 65 ? static_cast<std::size_t>(type - 58) / 2 * 2 + 2 : 8);
  if (type <= 78) {
    constexpr std::array<std::string_view, 5> forms{"pL", "nL", "nB", "pH", "nH"};
    return runStage(stageA, forms[static_cast<std::size_t>(type - 74)], y) * eqGain + y;
  }
  if (type <= 80) {
    const float carried = runStage(stageA, "nL", 0.0f) * y;
    return type == 79 ? carried : carried * runStage(stageB, "nL", 0.0f);
  }
  if (type == 81) return sampleAndHold(y);
  if (type == 82) return y - sampleAndHold(y);
  if (type == 92) {
    const float low = runStage(stageA, "nL", y);
    return low + runStage(stageB, "nH", y);
  }
  writePos = (writePos + 1) & mainLine.mask;
  float u = type == 84 ? verbIn * y : combBank(verbIn * y);
  for (std::size_t j = 0; j < apLine.size() && type != 83; ++j)
    u = type == 84 ? dampedSection(j, u) : plainSection(j, u);
  return u;
}

float Filter::cleanSvf(float in) {
  float& low = chain[0];
  float& band = chain[1];
  const float f = stageA.f, q = stageA.q, d = driveRaw;
  const float x = clampTo(in, 0.9999f);
  low += f * band;
  const float b = clampTo(band + f * (x - q * band - low) - d * cube(band), 1.0f);
  const float notch = x - q * b;
  low += f * b;
  const float high = notch - low;
  band = clampTo(flush(b + f * high - d * cube(b)), 1.0f);
  const float tap = type == 0 ? low : type == 1 ? band : high;
  return tap * wet + x * dry;
}

float Filter::ladder(float g) {
  const auto pass = [&] {
    float x = clampTo(g - feedback * chain[3], 1.6666666f);
    for (std::size_t i = 0; i < 4; ++i) {
      const float next = chainCoef * x + ladderPrev * chainPrev[i] - ladderFb * chain[i];
      chainPrev[i] = x;
      chain[i] = x = next;
    }
  };
  const float& tap = chain[static_cast<std::size_t>(type - 3)];
  return twoSteps(pass, [&] { return tap; });
}

float Filter::multimode(float g) {
  const std::string_view forms = kMultimode.substr(static_cast<std::size_t>(type - 7) * 6, 6);
  if (type >= 34)
    for (std::size_t i = 0; i < 3; ++i) morph[i] = morphTarget[i] * morphRate + morph[i] * morphKeep;
  const float first = runStage(stageA, forms.substr(0, 2), g, morph);
  return forms[3] == '-' ? first : runStage(stageB, forms.substr(3, 2), softClip(first), morph);
}

float Filter::loopFilter(float x) {
  const LoopFilter form = loopFilterOf(type);
  if (form.blocksDc) stageA.poleStep(x);
  const float s = form.blocksDc ? stageA.high : runStage(stageA, "pH", x);
  return form.lowPasses ? runStage(stageB, "pL", s) : s;
}

float Filter::allpassChain(float x, std::size_t stages) {
  float w = clampTo(feedback * chain[stages - 1] + x, 0.8333333f);
  for (std::size_t i = 0; i < stages; ++i) {
    const float next = (w - chain[i]) * chainCoef + chainPrev[i];
    chainPrev[i] = w;
    chain[i] = w = next;
  }
  return w;
}

float Filter::hermite(float position) {
  const float whole = std::floor(position);
  const float t = position - whole;
  const long i = static_cast<long>(whole);
  const float a = mainLine[i - 1], b = mainLine[i], c = mainLine[i + 1], d = mainLine[i + 2];
  const float h = (c - a) * 0.5f;
  const float k = (d - a) * 0.5f + (b - c) * 1.5f;
  return ((k * t + (a - b + h - k)) * t + h) * t + b;
}

// Combs, flangers, and the flanger into a phaser.
float Filter::delayLoop(float y) {
  const bool isComb = type <= 49, hasChain = type >= 72;
  const long w = writePos & mainLine.mask;
  mainLine[w] = y;
  auto& glide = delaySmooth;
  glide.denormalBias = f32(1e-18 - static_cast<double>(glide.denormalBias));
  glide.current += (glide.target - glide.current) * glide.coef + glide.denormalBias;
  float r = hermite(static_cast<float>(w) - glide.current);
  if (isComb) r *= delayFeedback;
  float s = loopFilter(clampTo(r, 0.8333333f));
  if (hasChain) s = allpassChain(s, 2);
  mainLine[w - 1] += isComb ? s : delayFeedback * s;
  float& dryBefore = chainPrev[hasChain ? 2 : 0];
  const float out = s * wet + dryBefore * dry;
  dryBefore = y;
  writePos = w + 1;
  return out;
}

float Filter::sampleAndHold(float y) {
  holdPhase += holdStep;
  if (holdPhase >= 1.0) {
    holdPhase -= 1.0;
    held = static_cast<float>(static_cast<std::int32_t>(y * holdLevels + 0.5f)) / holdLevels;
  }
  return held;
}

float Filter::addBass(float y) {
  float input = y;
  const auto step = [&] {
    stageA.nlStep(input);
    input = f32(std::sin(static_cast<double>(y) * kPi));
  };
  const float low = twoSteps(step, [&] { return stageA.low; });
  return y * chainCoef - low;
}

float Filter::combBank(float x) {
  float sum = 0.0f;
  for (std::size_t k = 0; k < combLine.size(); ++k) {
    const float r = combLine[k][writePos - combDelay[k]];
    damp[k] += (r - damp[k]) * stageA.f;
    combLine[k][writePos] = damp[k] * verbFeedback + x;
    sum += r;
  }
  return sum;
}

float Filter::dampedSection(std::size_t j, float u) {
  const float r = apLine[j][writePos - apDelay[j]];
  damp[j] += (r - damp[j]) * stageA.f;
  dcTrack[j] += (damp[j] - dcTrack[j]) * 0.01f;
  const float h = damp[j] - dcTrack[j] - u * apCoef;
  apLine[j][writePos] = apCoef * h + u;
  return h;
}

float Filter::plainSection(std::size_t j, float u) {
  const float t = apLine[j][writePos - apDelay[j]] - u * apCoef;
  apLine[j][writePos] = apCoef * t + u;
  return t;
}

float Filter::french(float y) {
  writePos = (writePos + 1) & mainLine.mask;
  const float e = softClip((std::max(inGain, 0.2f) * chain[7] + y) * driveGain);
  const float a = runStage(stageA, "nL", e);
  stageB.nlStep(softClip(a));
  const float l1 = stageB.low;
  stageB.nlStep(softClip(a));
  const float l2 = stageB.low;
  const float s = a + 0.5f * l1 + 0.25f * l2;
  float u = softClip(s);
  for (std::size_t j = 0; j < 2; ++j) chain[7] = u = dampedSection(j, u);
  return s;
}

namespace {

// tanh(x) / x, nearly.
float tanhGain(float x) {
  const double square = static_cast<double>(x) * static_cast<double>(x);
  return f32(((square + 105.0) * square + 945.0) / ((15.0 * square + 420.0) * square + 945.0));
}

}  // namespace

float Filter::german(float y) {
  float &s1 = chain[0], &s2 = chain[1], &s3 = chain[2], &s4 = chain[3];
  const float G = stageB.f, K = stageA.q;
  const float xa = (germanPrev + y) * 0.5f;
  germanPrev = y;
  const float t0 = tanhGain(xa - K * s4);
  const float t1 = tanhGain(s1), t2 = tanhGain(s2), t3 = tanhGain(s3), t4 = tanhGain(s4);
  const float d1 = 1.0f / (1.0f + G * t1), d2 = 1.0f / (1.0f + G * t2);
  const float d3 = 1.0f / (1.0f + G * t3), d4 = 1.0f / (1.0f + G * t4);
  const float e3 = G * t3 * d4;
  const float e2 = G * t2 * d3 * e3;
  const float e1 = G * t1 * d2 * e2;
  const float e0 = G * t0 * d1 * e1;
  // The fourth stage's output in closed form, the gains of the stages held for this sample.
  const float y4 = (y * e0 + e1 * d1 * s1 + e2 * d2 * s2 + e3 * d3 * s3 + d4 * s4) / (1.0f + K * e0);
  const float u0 = (y - K * y4) * t0;
  const float u1 = (G * u0 + s1) * d1 * t1;
  const float u2 = (G * u1 + s2) * d2 * t2;
  const float u3 = (G * u2 + s3) * d3 * t3;
  s1 += 2.0f * G * (u0 - u1);
  s2 += 2.0f * G * (u1 - u2);
  s3 += 2.0f * G * (u2 - u3);
  s4 += 2.0f * G * (u3 - t4 * y4);
  return y4;
}

}  // namespace reference
