#include "filters/FilterSetup.h"

#include <algorithm>
#include <cmath>

#include "filters/FormantTables.h"

namespace filters {

namespace {

float asFloat(double x) noexcept { return static_cast<float>(x); }
double asDouble(float x) noexcept { return static_cast<double>(x); }

// NaN becomes `low`.
double limited(double x, double low, double high) noexcept { return x > low ? (x < high ? x : high) : low; }
double limited01(double x) noexcept { return limited(x, 0.0, 1.0); }

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

void FilterSetup::stageA(double x) noexcept {
  const VGlobalCoeffs::Svf& row = svf(x);
  k.fA = row.f;
  k.cubicA = row.f * 0.5f;
  k.qA = std::min(row.qMax, tables.svf[resonance_].damp);
}

void FilterSetup::stageB(double x) noexcept {
  const VGlobalCoeffs::Svf& row = svf(x);
  k.fB = row.f;
  k.cubicB = row.f * 0.5f;
  k.qB = std::min(row.qMax, tables.svf[resonance_].damp);
}

void FilterSetup::bothStages(double x) noexcept {
  stageA(x);
  k.fB = k.fA;
  k.cubicB = k.cubicA;
  const double q = asDouble(k.qA);
  k.qB = asFloat(std::min(asDouble(svf(x).qMax), q * q / 4.0 + 1.0));
}

float FilterSetup::poleAt(double x) const noexcept { return std::min(svf(x).f, 1.4142135f); }

void FilterSetup::dcBlock() noexcept { k.fA = VGlobalCoeffs::svf1Hz.load(std::memory_order_relaxed); }

void FilterSetup::fat() noexcept { k.inGain = asFloat((1.0 - v1) * asDouble(tables.svf[resonance_].gainComp) + v1); }

void FilterSetup::allPassChain() noexcept { k.chainCoef = asFloat(asDouble(delay(c).tan) - 1.0); }

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
void lowPassed(FilterSetup& s) noexcept {
  s.dcBlock();
  s.k.fB = s.poleAt(s.c + 2.0 * s.v - 1.0);
}

void highPassed(FilterSetup& s) noexcept { s.k.fA = s.poleAt(s.c + 2.0 * s.v - 1.0); }

void bandLimited(FilterSetup& s) noexcept {
  s.k.fA = s.poleAt(s.c - s.v);
  s.k.fB = s.poleAt(s.c + s.v);
}

void dcBlocked(FilterSetup& s) noexcept { s.dcBlock(); }

// A delay of a period of the pitch with feedback, and one of the post stages in its loop.
void delayLoop(FilterSetup& s, void (*postStage)(FilterSetup&) noexcept, double wetSign) noexcept {
  s.k.delayTarget = s.delay(s.c).samples;
  s.k.delayFeedback = s.signedFeedback();
  postStage(s);
  s.halfMix(wetSign);
}

void phaserChain(FilterSetup& s) noexcept {
  s.k.feedback = s.signedFeedback();
  s.allPassChain();
  s.halfMix(s.polarity);
}

void openStageB(FilterSetup& s) noexcept {
  const VGlobalCoeffs::Svf& row = s.svf(s.v);
  s.k.fB = row.f;
  s.k.cubicB = row.f * 0.5f;
  s.k.qB = row.qMax;
}

// "Var" at 0, 0.5 and 1 is the first, second and third response, with linear cross-fades between.
void morphTargets(FilterSetup& s) noexcept {
  const double n = 2.0 * s.v1;
  s.k.morphTarget[0] = asFloat(std::max(1.0 - n, 0.0));
  s.k.morphTarget[1] = asFloat(n < 1.0 ? n : 2.0 - n);
  s.k.morphTarget[2] = asFloat(std::max(n - 1.0, 0.0));
}

// The lines' lengths as ratios of one period of the pitch: inharmonic, so that no two echoes meet.
constexpr double kCombRatio[kCombs] = {0.809869, 0.862119, 0.926705, 0.984035, 1.03193, 1.082, 1.1299, 1.17344};
constexpr double kApRatio[kAllPasses] = {0.403483, 0.320029, 0.24746, 0.16328};

void combDelays(FilterSetup& s) noexcept {
  const double period = asDouble(s.delay(s.c).samples);
  for (int i = 0; i < kCombs; ++i)
    s.k.combDelay[i] = static_cast<long>(kCombRatio[i] * period * asDouble(s.k.combScale) + 0.5);
}

void allPassDelays(FilterSetup& s, int lines) noexcept {
  const double period = asDouble(s.delay(s.c).samples);
  for (int i = 0; i < lines; ++i)
    s.k.apDelay[i] = static_cast<long>(kApRatio[i] * period * asDouble(s.k.apScale) + 0.5);
}

// At full feedback the reverberator holds what it has and takes no more input.
void loopFeedback(FilterSetup& s, float& feedback) noexcept {
  const double g = std::max(s.r * 0.99, 0.0);
  const bool bHolds = g >= 1.0;
  feedback = bHolds ? 1.0f : asFloat(g);
  s.k.verbIn = bHolds ? 0.0f : 1.0f;
  s.k.fA = bHolds ? 1.0f : asFloat(1.0 - s.v1);
}

}  // namespace

void stateVariable(FilterSetup& s) noexcept {
  const double cutoff = std::min(s.rate * 0.25, std::exp(6.526007 * s.c + 3.069596));
  s.k.fA = asFloat(2.0 * std::sin(3.1415925 * std::min(0.25, cutoff / (2.0 * s.rate))));
  const double f = asDouble(s.k.fA);
  const double d = 1.0 - std::pow(limited01(s.r) * 0.9 + 0.01, 0.25);
  s.k.qA = asFloat(std::min(2.0 * d, std::min(2.0, 2.0 / f - f * 0.5)));
  s.mix();
}

void ladder(FilterSetup& s) noexcept {
  const VGlobalCoeffs::Moog& row = s.moog(s.c);
  s.k.ladderFb = row.c1;
  s.k.chainCoef = row.c2;
  s.k.ladderPrev = row.c3;
  s.k.feedback = s.tables.moog[s.resonanceEntry()].k;
  s.k.inGain = asFloat((asDouble(s.k.feedback) + 1.0) * s.v1 + (1.0 - s.v1));
  s.mix();
}

void pole(FilterSetup& s) noexcept {
  s.k.fA = s.poleAt(s.c);
  s.mix();
}

void single(FilterSetup& s) noexcept {
  s.stageA(s.c);
  s.fat();
  s.mix();
}

void poleThenStage(FilterSetup& s) noexcept {
  s.k.fA = s.poleAt(s.c);
  s.stageB(s.c);
  s.fat();
  s.mix();
}

void twoStages(FilterSetup& s) noexcept {
  s.bothStages(s.c);
  s.fat();
  s.mix();
}

void notch(FilterSetup& s) noexcept {
  s.stageA(s.c);
  s.mix();
}

void twoNotches(FilterSetup& s) noexcept {
  s.bothStages(s.c);
  s.mix();
}

void dualPole(FilterSetup& s) noexcept {
  s.k.fA = s.poleAt(s.c);
  s.k.fB = s.poleAt(s.v);
  s.mix();
}

void dual(FilterSetup& s) noexcept {
  s.stageA(s.c);
  s.stageB(s.v);
  s.mix();
}

void dualNotch(FilterSetup& s) noexcept {
  s.stageA(s.c);
  openStageB(s);
  s.mix();
}

void morph(FilterSetup& s) noexcept {
  s.stageA(s.c);
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
  s.k.feedback = 0.0f;
  s.allPassChain();
}

void phaser(FilterSetup& s) noexcept {
  s.dcBlock();
  phaserChain(s);
}

void phaserLow(FilterSetup& s) noexcept {
  lowPassed(s);
  phaserChain(s);
}

void phaserHigh(FilterSetup& s) noexcept {
  highPassed(s);
  phaserChain(s);
}

void phaserBand(FilterSetup& s) noexcept {
  bandLimited(s);
  phaserChain(s);
}

// -1 cancels the band, 0 leaves the signal flat, 8 boosts.
void equaliser(FilterSetup& s) noexcept {
  s.k.fA = s.poleAt(s.c);
  s.k.cubicA = s.k.fA * 0.5f;
  s.k.qA = std::min(s.svf(s.c).qMax, s.tables.svf[s.resonanceEntry()].damp);
  const double w = 2.0 * s.v1 - 1.0;
  const double u = w > 0.0 ? 2.0 * w : w;
  s.k.eqGain = asFloat(u * u * u);
  s.mix();
}

// Negative damping: the stages oscillate by themselves.
void ring(FilterSetup& s) noexcept {
  s.k.fA = s.svf(s.c).f;
  s.k.fB = s.svf(s.c + 2.0 * s.v - 1.0).f;
  s.k.cubicA = s.k.fA * 0.5f;
  s.k.cubicB = s.k.fB * 0.5f;
  s.k.qA = s.k.qB = -0.1f;
  s.mix(2.0);
}

void sampleHold(FilterSetup& s) noexcept {
  s.k.holdStep = asDouble(s.hold(s.c).step);
  s.k.holdLevels = s.tables.hold[s.resonanceEntry()].levels;
  s.mix();
}

void combs(FilterSetup& s) noexcept {
  combDelays(s);
  loopFeedback(s, s.k.verbFeedback);
  s.mix(0.25);
}

void allPasses(FilterSetup& s) noexcept {
  allPassDelays(s, kAllPasses);
  loopFeedback(s, s.k.apCoef);
  s.mix();
}

void reverb(FilterSetup& s) noexcept {
  combDelays(s);
  allPassDelays(s, kAllPasses);
  s.k.apCoef = 0.5f;
  loopFeedback(s, s.k.verbFeedback);
  s.mix(0.25);
}

void french(FilterSetup& s) noexcept {
  s.stageA(s.c);
  s.k.inGain = asFloat(s.v1);
  allPassDelays(s, 2);
  s.k.apCoef = 0.0f;
  s.k.verbIn = 1.0f;
  s.mix();
}

void german(FilterSetup& s) noexcept {
  s.k.fB = asFloat(limited01(std::tan(2.0943952 * asDouble(s.svf(s.c - 0.0975).f))));
  s.k.qA = asFloat(s.r * 4.4444447);
  s.mix();
}

void addBass(FilterSetup& s) noexcept {
  s.stageA(0.8 * s.c + 0.2);
  s.k.chainCoef = asFloat(s.v);
  s.mix();
}

void bandReject(FilterSetup& s) noexcept {
  const double w = 0.495 * s.v + 0.005;
  s.stageA(std::max(s.c - w, 0.0));
  s.stageB(std::max(s.c + w, 0.0));
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
  const float gain = asFloat(asDouble(s.k.driveGain) + 0.02);
  const float f0 = asFloat(freq);
  const float q = asFloat(freq / bw * (s.r + 0.5));
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

void formantSung(FilterSetup& s) noexcept {
  walkVoices(s, VOICE_LIST, kVoices - 1, TRANSITION_LIST, kTransitions, Step(limited01(s.c) * 4.0),
             Step((1.0 - s.v1) * 4.0));
}

// The fourth speaker is the last: where the walk points behind it, its weight is 0.
void formantSpoken(FilterSetup& s) noexcept {
  walkVoices(s, FRMNT_VOICE_LIST, kSpeakers - 1, FRMNT_TRANSITION_LIST, kSpokenTransitions, Step(limited01(s.c) * 5.0),
             Step(3.0 * s.v1));
}

void formantModern(FilterSetup& s) noexcept {
  const Step vowel(limited01(s.c) * 5.0);
  const Weights w(vowel.fraction, Step(s.v1 * 0.98).fraction);
  const Vowel<4>& a = FRMNT3_VOICE_LIST[0].vowels[vowel.here(FRMNT3_TRANSITION_LIST)];
  const Vowel<4>& b = FRMNT3_VOICE_LIST[0].vowels[vowel.next(FRMNT3_TRANSITION_LIST, kModernTransitions)];
  for (std::size_t i = 0; i < 4; ++i) {
    const double freq = 0.125 * asDouble(a.freq[i]) * w.w00 + 0.125 * asDouble(b.freq[i]) * w.w10 +
                        2.0 * asDouble(a.freq[i]) * w.w01 + 2.0 * asDouble(b.freq[i]) * w.w11;
    tune(s, i, freq, asDouble(a.bw[i]) * (w.w00 + w.w01) + asDouble(b.bw[i]) * (w.w10 + w.w11));
  }
  s.mix();
}

}  // namespace setups

}  // namespace filters
