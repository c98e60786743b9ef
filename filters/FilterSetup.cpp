// SPDX-License-Identifier: MIT
#include "filters/FilterSetup.h"

#include <algorithm>
#include <cmath>

#include "filters/FormantTables.h"

namespace filters {

namespace {

float asFloat(double x) noexcept { return static_cast<float>(x); }
double asDouble(float x) noexcept { return static_cast<double>(x); }

// A NaN becomes `low`.
double limited(double x, double low, double high) noexcept { return x > low ? (x < high ? x : high) : low; }
double limited01(double x) noexcept { return limited(x, 0.0, 1.0); }

// The cubic that bends the band back is half as strong as the step is wide.
StageCoefs stageOf(float f, float q) noexcept { return {f, f * 0.5f, q}; }

int tableEntry(double position) noexcept {
  return static_cast<int>(limited(position, 0.0, VGlobalCoeffs::kEntries - 1) + 0.5);
}

}  // namespace

int pitchEntry(double x) noexcept { return tableEntry((x + 1.0) * VGlobalCoeffs::kNoteZero); }

FilterSetup::FilterSetup(FilterCoefs& coefs, const VGlobalCoeffs& t, const FilterControls& controls, float sampleRateHz,
                         double feedbackSign) noexcept
    : k(coefs),
      tables(t),
      c(controls.c),
      r(controls.r),
      v(controls.v),
      m(controls.m),
      v1(limited01(controls.v)),
      rate(asDouble(sampleRateHz)),
      polarity(feedbackSign),
      resonance_(
          static_cast<std::size_t>(tableEntry(controls.r * VGlobalCoeffs::kEntries / VGlobalCoeffs::kTopResonance))) {
  k.inGain = 1.0f;
}

StageCoefs FilterSetup::stageAt(double x) const noexcept {
  const VGlobalCoeffs::Svf& row = svf(x);
  return stageOf(row.f, std::min(row.qMax, tables.svf[resonance_].damp));
}

StageCoefs FilterSetup::openStageAt(double x) const noexcept {
  const VGlobalCoeffs::Svf& row = svf(x);
  return stageOf(row.f, row.qMax);
}

// The second damping falls from 2 to 1 only, while the first one falls from 2 to 0.
void FilterSetup::bothStages(double x) noexcept {
  k.a = k.b = stageAt(x);
  const double q = asDouble(k.a.q);
  k.b.q = asFloat(std::min(asDouble(svf(x).qMax), q * q / 4.0 + 1.0));
}

float FilterSetup::poleAt(double x) const noexcept {
  constexpr float kHighest = 1.4142135f;  // at half the host's rate, where the tables end: 2 sin(pi / 4)
  return std::min(svf(x).f, kHighest);
}

float FilterSetup::dcBlock() noexcept { return VGlobalCoeffs::svf1Hz.load(std::memory_order_relaxed); }

void FilterSetup::fat() noexcept { k.inGain = asFloat((1.0 - v1) * asDouble(tables.svf[resonance_].gainComp) + v1); }

void FilterSetup::phaserSections() noexcept { k.phaser.allPass = asFloat(asDouble(delay(c).tan) - 1.0); }

float FilterSetup::signedFeedback() const noexcept {
  return asFloat(polarity * asDouble(tables.delay[resonance_].base));
}

void FilterSetup::mix(double wetScale) noexcept {
  const double share = limited01(m);
  k.dry = asFloat(1.0 - share);
  k.wet = asFloat(share * wetScale);
}

void FilterSetup::halfMix(double wetSign) noexcept {
  const double share = limited01(m * 0.5);
  k.dry = asFloat((1.0 - share) * asDouble(tables.delay[resonance_].inv));
  k.wet = asFloat(wetSign * share);
}

namespace setups {
namespace {

// The post stages of combs, flangers and phasers.
void dcBlocked(FilterSetup& s) noexcept { s.k.a.f = FilterSetup::dcBlock(); }

void lowPassed(FilterSetup& s) noexcept {
  dcBlocked(s);
  s.k.b.f = s.poleAt(s.aroundCutoff());
}

void highPassed(FilterSetup& s) noexcept { s.k.a.f = s.poleAt(s.aroundCutoff()); }

void bandLimited(FilterSetup& s) noexcept {
  s.k.a.f = s.poleAt(s.c - s.v);
  s.k.b.f = s.poleAt(s.c + s.v);
}

// A delay of a period of the pitch with feedback, and one of the post stages in its loop.
void delayLoop(FilterSetup& s, void (*postStage)(FilterSetup&) noexcept, double wetSign) noexcept {
  s.k.delay = {s.delay(s.c).samples, s.signedFeedback()};
  postStage(s);
  s.halfMix(wetSign);
}

void phaserChain(FilterSetup& s, void (*postStage)(FilterSetup&) noexcept) noexcept {
  postStage(s);
  s.k.phaser.feedback = s.signedFeedback();
  s.phaserSections();
  s.halfMix(s.polarity);
}

// "Var" at 0, 0.5 and 1 is the first, second and third response, with linear cross-fades between.
void morphTargets(FilterSetup& s) noexcept {
  const double n = 2.0 * s.v1;
  s.k.morphTarget[0] = asFloat(std::max(1.0 - n, 0.0));
  s.k.morphTarget[1] = asFloat(n < 1.0 ? n : 2.0 - n);
  s.k.morphTarget[2] = asFloat(std::max(n - 1.0, 0.0));
}

// The lines' lengths as ratios of one period of the pitch: inharmonic, so that no two echoes meet; combs are a period
// long on average.
constexpr double kCombRatio[kCombs] = {0.809869, 0.862119, 0.926705, 0.984035, 1.03193, 1.082, 1.1299, 1.17344};
constexpr double kAllPassRatio[kAllPasses] = {0.403483, 0.320029, 0.24746, 0.16328};
constexpr double kCombsWet = 0.25;  // eight combs are summed

// To the nearest sample.
void combDelays(FilterSetup& s) noexcept {
  const double period = asDouble(s.delay(s.c).samples);
  for (int i = 0; i < kCombs; ++i) s.k.network.combSamples[i] = static_cast<long>(kCombRatio[i] * period + 0.5);
}

void allPassDelays(FilterSetup& s, int lines) noexcept {
  const double period = asDouble(s.delay(s.c).samples);
  for (int i = 0; i < lines; ++i) s.k.network.allPassSamples[i] = static_cast<long>(kAllPassRatio[i] * period + 0.5);
}

// At full feedback the reverberator holds what it has and takes no more input. A resonance of 1 stays just below.
void loopFeedback(FilterSetup& s, float& feedback) noexcept {
  constexpr double kFeedbackAtFullResonance = 0.99;
  const double g = std::max(s.r * kFeedbackAtFullResonance, 0.0);
  const bool holds = g >= 1.0;
  feedback = holds ? 1.0f : asFloat(g);
  s.k.network.input = holds ? 0.0f : 1.0f;
  s.k.network.damping = holds ? 1.0f : asFloat(1.0 - s.v1);
}

}  // namespace

// The cutoff ends at a quarter of the rate, and f is that of two steps per sample. Damping falls by the fourth root,
// which spreads the strong resonances over the knob; it ends short of 0, and at what keeps a stage stable.
void stateVariable(FilterSetup& s) noexcept {
  constexpr double kLogRange = 6.526007;   // of kHighestCleanHz / kLowestCleanHz
  constexpr double kLogLowest = 3.069596;  // of kLowestCleanHz
  constexpr double kPi = 3.1415925;        // one too low in the last digit, which stays: it tunes the last bits
  constexpr double kLeast = 0.01, kSpan = 0.9;
  const double cutoffHz = std::min(s.rate * 0.25, std::exp(kLogRange * s.c + kLogLowest));
  s.k.a.f = asFloat(2.0 * std::sin(kPi * std::min(0.25, cutoffHz / (2.0 * s.rate))));
  const double f = asDouble(s.k.a.f);
  const double d = 1.0 - std::pow(limited01(s.r) * kSpan + kLeast, 0.25);
  s.k.a.q = asFloat(std::min(2.0 * d, std::min(2.0, 2.0 / f - f * 0.5)));
  s.mix();
}

// "Fat" makes good for the level that feedback takes from the lows: 1 / (1 + feedback) at DC.
void ladder(FilterSetup& s) noexcept {
  const VGlobalCoeffs::Moog& row = s.moog(s.c);
  const float feedback = s.tables.moog[s.resonanceEntry()].k;
  s.k.ladder = {row.c2, row.c3, row.c1, feedback};
  s.k.inGain = asFloat((asDouble(feedback) + 1.0) * s.v1 + (1.0 - s.v1));
  s.mix();
}

void pole(FilterSetup& s) noexcept {
  s.k.a.f = s.poleAt(s.c);
  s.mix();
}

void single(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(s.c);
  s.fat();
  s.mix();
}

void poleThenStage(FilterSetup& s) noexcept {
  s.k.a.f = s.poleAt(s.c);
  s.k.b = s.stageAt(s.c);
  s.fat();
  s.mix();
}

void twoStages(FilterSetup& s) noexcept {
  s.bothStages(s.c);
  s.fat();
  s.mix();
}

void notch(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(s.c);
  s.mix();
}

void twoNotches(FilterSetup& s) noexcept {
  s.bothStages(s.c);
  s.mix();
}

void dualPole(FilterSetup& s) noexcept {
  s.k.a.f = s.poleAt(s.c);
  s.k.b.f = s.poleAt(s.v);
  s.mix();
}

void dual(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(s.c);
  s.k.b = s.stageAt(s.v);
  s.mix();
}

void dualNotch(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(s.c);
  s.k.b = s.openStageAt(s.v);
  s.mix();
}

void morph(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(s.c);
  morphTargets(s);
  s.mix();
}

void morphTwoStages(FilterSetup& s) noexcept {
  s.bothStages(s.c);
  morphTargets(s);
  s.mix();
}

// Combs keep the polarity of the wet path, flangers and phasers turn it with that of the feedback.
void comb(FilterSetup& s) noexcept { delayLoop(s, dcBlocked, 1.0); }
void combLow(FilterSetup& s) noexcept { delayLoop(s, lowPassed, 1.0); }
void combHigh(FilterSetup& s) noexcept { delayLoop(s, highPassed, 1.0); }
void combBand(FilterSetup& s) noexcept { delayLoop(s, bandLimited, 1.0); }
void flanger(FilterSetup& s) noexcept { delayLoop(s, dcBlocked, s.polarity); }
void flangerLow(FilterSetup& s) noexcept { delayLoop(s, lowPassed, s.polarity); }
void flangerHigh(FilterSetup& s) noexcept { delayLoop(s, highPassed, s.polarity); }
void flangerBand(FilterSetup& s) noexcept { delayLoop(s, bandLimited, s.polarity); }

void flangerPhaser(FilterSetup& s) noexcept {
  flangerBand(s);
  s.k.phaser.feedback = 0.0f;
  s.phaserSections();
}

void phaser(FilterSetup& s) noexcept { phaserChain(s, dcBlocked); }
void phaserLow(FilterSetup& s) noexcept { phaserChain(s, lowPassed); }
void phaserHigh(FilterSetup& s) noexcept { phaserChain(s, highPassed); }
void phaserBand(FilterSetup& s) noexcept { phaserChain(s, bandLimited); }

// "Var" from the middle on counts twice, so that the cube goes from -1 over 0 to 8.
void equaliser(FilterSetup& s) noexcept {
  s.k.a = stageOf(s.poleAt(s.c), s.stageAt(s.c).q);
  const double w = 2.0 * s.v1 - 1.0;
  const double u = w > 0.0 ? 2.0 * w : w;
  s.k.bandGain = asFloat(u * u * u);
  s.mix();
}

// Negative damping: the stages oscillate by themselves, as far as their cubic lets them: half of full scale.
void ring(FilterSetup& s) noexcept {
  constexpr float kDamping = -0.1f;
  constexpr double kMakeUp = 2.0;
  s.k.a = stageOf(s.svf(s.c).f, kDamping);
  s.k.b = stageOf(s.svf(s.aroundCutoff()).f, kDamping);
  s.mix(kMakeUp);
}

void sampleHold(FilterSetup& s) noexcept {
  s.k.hold.step = asDouble(s.hold(s.c).step);
  s.k.hold.levels = s.tables.hold[s.resonanceEntry()].levels;
  s.mix();
}

void combs(FilterSetup& s) noexcept {
  combDelays(s);
  loopFeedback(s, s.k.network.combFeedback);
  s.mix(kCombsWet);
}

void allPasses(FilterSetup& s) noexcept {
  allPassDelays(s, kAllPasses);
  loopFeedback(s, s.k.network.allPass);
  s.mix();
}

void reverb(FilterSetup& s) noexcept {
  combDelays(s);
  allPassDelays(s, kAllPasses);
  s.k.network.allPass = 0.5f;  // dense soon, and no ringing of its own
  loopFeedback(s, s.k.network.combFeedback);
  s.mix(kCombsWet);
}

// The loops are damped as far as the low-pass itself is open. A fifth of the delayed signal always comes back.
void french(FilterSetup& s) noexcept {
  constexpr float kLeastBack = 0.2f;
  s.k.a = s.stageAt(s.c);
  s.k.network.damping = s.k.a.f;
  s.k.network.comesBack = std::max(asFloat(s.v1), kLeastBack);
  allPassDelays(s, kFrenchDelays);
  s.mix();
}

// The pitch is set a good octave lower, to be heard where the other types stand.
void german(FilterSetup& s) noexcept {
  constexpr double kTuning = 0.0975;            // ranges of 128 semitones: 12.48 semitones
  constexpr double kTwoThirdsOfPi = 2.0943952;  // from a step's f to the argument of the tangent
  constexpr double kFullFeedback = 4.4444447;   // 40/9; a linear ladder would oscillate at 4
  const double f = asDouble(s.svf(s.c - kTuning).f);
  s.k.zeroDelay = {asFloat(limited01(std::tan(kTwoThirdsOfPi * f))), asFloat(s.r * kFullFeedback)};
  s.mix();
}

// The cutoff starts a fifth of the range up, at note 26: there is nothing to enhance below.
void addBass(FilterSetup& s) noexcept {
  s.k.a = s.stageAt(0.8 * s.c + 0.2);
  s.k.through = asFloat(s.v);
  s.mix();
}

// Half the width of the hole, in ranges of 128 semitones: two thirds of a semitone to 64.
void bandReject(FilterSetup& s) noexcept {
  const double w = 0.495 * s.v + 0.005;
  s.k.a = s.stageAt(std::max(s.c - w, 0.0));
  s.k.b = s.stageAt(std::max(s.c + w, 0.0));
  s.mix();
}

namespace {

// Bilinear weights of two fractions.
struct Weights {
  Weights(double a, double b) noexcept : w11(a * b), w01(b - w11), w10(a - w11), w00(1.0 - w11 - w10 - w01) {}
  [[nodiscard]] double mixed(float v00, float v10, float v01, float v11) const noexcept {
    return w00 * asDouble(v00) + w10 * asDouble(v10) + w01 * asDouble(v01) + w11 * asDouble(v11);
  }
  double w11, w01, w10, w00;
};

// A position on a walk: the step it is on, and how far it is to the next.
struct Step {
  explicit Step(double position) noexcept : index(static_cast<int>(position)), fraction(position - index) {}
  [[nodiscard]] int here(const int* walk) const noexcept { return walk[index]; }
  [[nodiscard]] int next(const int* walk, int length) const noexcept { return walk[(index + 1) % length]; }
  int index;
  double fraction;
};

// The tangent of the transform is the dearest part of a formant's set-up, so it waits for a change.
void tune(FilterSetup& s, std::size_t formant, double freq, double bw) noexcept {
  dsp::Filter2p& resonator = s.k.resonator[formant];
  constexpr double kLeastGain = 0.02;       // no drive closes a formant altogether
  constexpr double kSharpnessAtRest = 0.5;  // of the bandwidths in the tables; once and a half at full resonance
  const float gain = asFloat(asDouble(s.k.driveGain) + kLeastGain);
  const float f0 = asFloat(freq);
  const float q = asFloat(freq / bw * (s.r + kSharpnessAtRest));
  if (resonator.gain == gain && resonator.f0 == f0 && resonator.q == q) return;
  resonator.gain = gain;
  resonator.f0 = f0;
  resonator.q = q;
  resonator.update_eq();
}

template <std::size_t kVowels, std::size_t kFormants>
void walkVoices(FilterSetup& s, const Voice<kVowels, kFormants>* voices, int lastVoice, const int* walk, int length,
                Step vowel, Step voice) noexcept {
  const Weights w(vowel.fraction, voice.fraction);
  const auto& first = voices[voice.here(walk)].vowels;
  const auto& second = voices[std::min(voice.next(walk, length), lastVoice)].vowels;
  const int here = vowel.here(walk);
  const int next = vowel.next(walk, length);
  for (std::size_t i = 0; i < kFormants; ++i) {
    tune(s, i, w.mixed(first[here].freq[i], first[next].freq[i], second[here].freq[i], second[next].freq[i]),
         w.mixed(first[here].bw[i], first[next].bw[i], second[here].bw[i], second[next].bw[i]));
  }
  s.mix();
}

}  // namespace

// The cutoff goes over the first four steps of the walk, "Var" from the last voice up to the first.
void formantSung(FilterSetup& s) noexcept {
  constexpr double kVowelSteps = 4.0, kVoiceSteps = kVoices - 1;
  walkVoices(s, VOICE_LIST, kVoices - 1, TRANSITION_LIST, kTransitions, Step(limited01(s.c) * kVowelSteps),
             Step((1.0 - s.v1) * kVoiceSteps));
}

// The cutoff goes over the first five steps. The fourth speaker is the last: where the walk points behind it, its
// weight is 0.
void formantSpoken(FilterSetup& s) noexcept {
  constexpr double kVowelSteps = 5.0, kSpeakerSteps = kSpeakers - 1;
  walkVoices(s, FRMNT_VOICE_LIST, kSpeakers - 1, FRMNT_TRANSITION_LIST, kSpokenTransitions,
             Step(limited01(s.c) * kVowelSteps), Step(kSpeakerSteps * s.v1));
}

// One voice, whose formants "Var" takes from three octaves below to one above where the table has them, in hertz and
// not in octaves; its end stays short of the next whole step, which would be the lowest again.
void formantModern(FilterSetup& s) noexcept {
  constexpr double kVowelSteps = kModernTransitions - 1;
  constexpr double kShortOfWhole = 0.98;
  constexpr double kLowest = 0.125, kHighest = 2.0;
  const Step vowel(limited01(s.c) * kVowelSteps);
  const Weights w(vowel.fraction, Step(s.v1 * kShortOfWhole).fraction);
  const Vowel<4>& a = FRMNT3_VOICE_LIST[0].vowels[vowel.here(FRMNT3_TRANSITION_LIST)];
  const Vowel<4>& b = FRMNT3_VOICE_LIST[0].vowels[vowel.next(FRMNT3_TRANSITION_LIST, kModernTransitions)];
  for (std::size_t i = 0; i < 4; ++i) {
    const double freq = kLowest * asDouble(a.freq[i]) * w.w00 + kLowest * asDouble(b.freq[i]) * w.w10 +
                        kHighest * asDouble(a.freq[i]) * w.w01 + kHighest * asDouble(b.freq[i]) * w.w11;
    tune(s, i, freq, asDouble(a.bw[i]) * (w.w00 + w.w01) + asDouble(b.bw[i]) * (w.w10 + w.w11));
  }
  s.mix();
}

}  // namespace setups

}  // namespace filters
