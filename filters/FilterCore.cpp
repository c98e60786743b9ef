// SPDX-License-Identifier: MIT
#include "filters/FilterCore.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>

namespace filters {

namespace {

using kernels::DelayLines;
using kernels::SignalMemory;

// Starts the stages that oscillate by themselves.
constexpr float kSeed = 1e-7f;
constexpr float kBeyondReason = 1e6f;  // 120 dB above full scale

template <class S>
auto kernelOf(const kernels::Kernels& both) noexcept {
  if constexpr (dsp::kLanes<S> == 1) {
    return both.mono;
  } else {
    return both.stereo;
  }
}

// Calls `f` with every delay line that the type plays on.
template <class S, class F>
void eachLine(const DelayLines<S>& lines, LinesUsed used, F f) {
  if (used.main) f(lines.main);
  std::for_each_n(lines.comb, used.combs, f);
  std::for_each_n(lines.ap, used.allPasses, f);
}

// Calls `f` with every field of the signal memory and the value with which it starts.
template <class S, class F>
void eachField(SignalMemory<S>& m, F f) {
  for (auto* const stage : {&m.a, &m.b}) {
    for (S* const field : {&stage->low, &stage->band, &stage->high, &stage->notch}) f(*field, kSeed);
  }
  for (S& field : m.chain) f(field, kSeed);
  for (S& field : m.chainPrev) f(field, kSeed);
  for (S* const field : {&m.previous, &m.late, &m.back}) f(*field, kSeed);
  f(m.held, 0.0f);
  for (S& field : m.morph) f(field, 0.0f);
  for (S& field : m.damp) f(field, 0.0f);
  for (S& field : m.dcTrack) f(field, 0.0f);
  for (S& field : m.inputs) f(field, 0.0f);
  for (auto& resonator : m.resonator) {
    f(resonator.y1, 0.0f);
    f(resonator.y2, 0.0f);
  }
}

// The zero-delay ladder alone starts from silence.
template <class S, class F>
void eachSilentField(SignalMemory<S>& m, const FilterType& type, F f) {
  if (type.trait != Trait::silentStart) return;
  f(m.previous, 0.0f);
  std::for_each_n(m.chain, kLadderPoles, [&](S& field) { f(field, 0.0f); });
}

long framesFor(long samples) noexcept {
  return static_cast<long>(std::bit_ceil(static_cast<unsigned long>(std::max(samples, 1L))));
}

}  // namespace

template <class S>
void FilterCore<S>::setSampleRate(float rate, float invRate) {
  const auto period = static_cast<long>(static_cast<double>(tables_->delay[VGlobalCoeffs::kNoteZero].samples) + 0.5);
  lines_.main.resize(framesFor(period));
  int place = 0;
  for (auto& line : lines_.comb) line.resize(framesFor(period >> 1), ++place);
  for (auto& line : lines_.ap) line.resize(framesFor(period >> 1), ++place);
  mode_ = 0;
  coefs_.hold.step = 0.0;
  clock_.holdPhase = 0.0;
  if (invRate == invSampleRate_) return;
  sampleRate_ = rate;
  invSampleRate_ = invRate;
  // The weights of a morph glide at 5 Hz: 2 pi 5 a second. Below any rate that hosts use they jump most of the way.
  constexpr double kGlide = -31.41592653589793;
  constexpr double kLowestGlidingRate = 43999.0;
  constexpr double kHalfPi = 1.5707963267948966;
  const double r = static_cast<double>(rate);
  const double exponent = r > kLowestGlidingRate ? kGlide : r * -kHalfPi;
  coefs_.morphRate = static_cast<float>(1.0 - std::exp(static_cast<double>(invRate) * exponent));
  coefs_.morphKeep = static_cast<float>(1.0 - static_cast<double>(coefs_.morphRate));
  clock_.delaySmooth.setRate(invRate);
  for (dsp::Filter2p& resonator : coefs_.resonator) {
    resonator.sampleFreq = rate;
    resonator.transform_s_to_z();
  }
}

template <class S>
void FilterCore<S>::clear() noexcept {
  eachField(memory_, [](S& field, float start) { field = dsp::both<S>(start); });
  coefs_.seedStages(kSeed);
  clock_.holdPhase = 0.0;
  clock_.writePos = 0;
  // The combs of a type that plays on; any other type empties its lines when it starts.
  if (mode_ == kBypass) return;
  eachLine(lines_, {.combs = typeAt(mode_).lines.combs}, [](const auto& line) { line.zero(); });
}

template <class S>
void FilterCore<S>::processBuffer(const float* params, const float* in, float* out, long count) noexcept {
  coefs_.driveGain = driveGainOf(params[kDrive]);
  coefs_.driveRaw = params[kDrive];
  if (params[kPower] < 0.5f) {
    mode_ = kBypass;
    return runKernel(bypassKernels(), in, out, count);
  }
  const int wanted = typeIndexOf(params[kMode]);
  const bool changed = wanted != mode_;
  if (changed) {
    mode_ = wanted;
    clear();
  }
  setUp(params, changed);
  runKernel(typeAt(mode_).run, in, out, count);
}

template <class S>
void FilterCore<S>::setUp(const float* params, bool changed) noexcept {
  const FilterType& type = typeAt(mode_);
  const auto control = [params](FilterParam p) { return static_cast<double>(params[p]); };
  FilterSetup setup(coefs_, *tables_, {control(kFreq), control(kRes), control(kVar), control(kDryWet)}, sampleRate_,
                    type.polarity);
  type.setUp(setup);
  if (type.lines.main) clock_.delaySmooth.target = coefs_.delay.samples;
  if (changed) startType(type);
}

template <class S>
void FilterCore<S>::startType(const FilterType& type) noexcept {
  if (type.lines.main) clock_.delaySmooth.current = coefs_.delay.samples;
  eachLine(lines_, type.lines, [](const auto& line) { line.zero(); });
  eachSilentField(memory_, type, [](S& field, float start) { field = dsp::both<S>(start); });
}

template <class S>
void FilterCore<S>::runKernel(const kernels::Kernels& kernel, const float* in, float* out, long count) noexcept {
  if (count < 1) return;
  kernels::Watch<S> watch;
  kernels::Job<S> job{memory_, lines_, clock_, coefs_, watch, in, out, count};
  kernelOf<S>(kernel)(job);
  if (watch.suspicious()) [[unlikely]] {
    for (int lane = 0; lane < dsp::kLanes<S>; ++lane) guard(lane, out, count);
  }
}

// A channel that grew beyond reason, or that holds a NaN, falls silent for this block and starts afresh.
template <class S>
void FilterCore<S>::guard(int lane, float* out, long count) noexcept {
  const auto isSound = [](float x) { return std::fabs(x) <= kBeyondReason; };
  bool sound = true;
  eachField(memory_, [&](S& field, float) { sound = sound && isSound(dsp::laneOf(field, lane)); });
  for (long i = 0; i < count; ++i) sound = sound && isSound(out[i * dsp::kLanes<S> + lane]);
  if (sound) return;
  restart(lane);
  for (long i = 0; i < count; ++i) out[i * dsp::kLanes<S> + lane] = 0.0f;
}

template <class S>
void FilterCore<S>::restart(int lane) noexcept {
  const auto start = [lane](S& field, float value) { dsp::setLane(field, lane, value); };
  eachField(memory_, start);
  if (mode_ == kBypass) return;
  const FilterType& type = typeAt(mode_);
  eachSilentField(memory_, type, start);
  eachLine(lines_, type.lines, [lane](const auto& line) { line.zero(lane); });
}

template class FilterCore<float>;
template class FilterCore<dsp::Quad>;

}  // namespace filters
