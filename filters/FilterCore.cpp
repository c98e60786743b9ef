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
constexpr float kBeyondReason = 1e6f;

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
  const bool bCombs = used == LinesUsed::combLines || used == LinesUsed::allLines;
  const bool bAllPasses = used == LinesUsed::allPassLines || used == LinesUsed::allLines;
  const int allPasses = bAllPasses ? kAllPasses : used == LinesUsed::twoAllPassLines ? 2 : 0;
  if (used == LinesUsed::mainLine) f(lines.main);
  if (bCombs) std::for_each_n(lines.comb, kCombs, f);
  std::for_each_n(lines.ap, allPasses, f);
}

// Calls `f` with every field of the signal memory and the value with which it starts.
template <class S, class F>
void eachField(SignalMemory<S>& m, F f) {
  for (auto* const stage : {&m.a, &m.b}) {
    for (S* const field : {&stage->low, &stage->band, &stage->high, &stage->notch}) f(*field, kSeed);
  }
  for (S& field : m.chain) f(field, kSeed);
  for (S& field : m.chainPrev) f(field, kSeed);
  f(m.germanPrev, kSeed);
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
  if (!type.bStartsSilent) return;
  f(m.germanPrev, 0.0f);
  std::for_each_n(m.chain, 4, [&](S& field) { f(field, 0.0f); });
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
  coefs_.holdStep = 0.0;
  clock_.holdPhase = 0.0;
  coefs_.combScale = coefs_.apScale = 1.0f;
  if (invRate == invSampleRate_) return;
  sampleRate_ = rate;
  invSampleRate_ = invRate;
  const double r = static_cast<double>(rate);
  const double exponent = r > 43999.0 ? -31.41592653589793 : r * -1.5707963267948966;  // a glide of 5 Hz
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
  std::fill(std::begin(coefs_.morphTarget), std::end(coefs_.morphTarget), 0.0f);
  coefs_.eqGain = 0.0f;
  clock_.holdPhase = 0.0;
  clock_.writePos = 0;
  // The combs of a type that plays on; any other type empties its lines when it starts.
  const bool bCombs = mode_ != kBypass && types()[static_cast<std::size_t>(mode_)].usesCombs();
  if (bCombs) eachLine(lines_, LinesUsed::combLines, [](const auto& line) { line.zero(); });
}

template <class S>
void FilterCore<S>::processBuffer(const float* params, const float* in, float* out, long count) noexcept {
  coefs_.driveGain = driveGainOf(params[kDrive]);
  coefs_.driveRaw = params[kDrive];
  if (params[kPower] < 0.5f) {
    mode_ = kBypass;
    return runKernel(bypassKernels(), in, out, count);
  }
  const int wanted = typeAt(params[kMode]);
  const bool bChanged = wanted != mode_;
  if (bChanged) {
    mode_ = wanted;
    clear();
  }
  setUp(params, bChanged);
  runKernel(types()[static_cast<std::size_t>(mode_)].run, in, out, count);
}

template <class S>
void FilterCore<S>::setUp(const float* params, bool bChanged) noexcept {
  const FilterType& type = types()[static_cast<std::size_t>(mode_)];
  const auto control = [params](FilterParam p) { return static_cast<double>(params[p]); };
  FilterSetup setup(coefs_, *tables_, {control(kFreq), control(kRes), control(kVar), control(kDryWet)}, sampleRate_,
                    type.polarity);
  type.setUp(setup);
  if (type.lines == LinesUsed::mainLine) clock_.delaySmooth.target = coefs_.delayTarget;
  if (bChanged) startType(type);
}

template <class S>
void FilterCore<S>::startType(const FilterType& type) noexcept {
  if (type.lines == LinesUsed::mainLine) clock_.delaySmooth.current = coefs_.delayTarget;
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

// A channel that grew beyond reason, or that holds what is no number, falls silent for this block and starts afresh.
template <class S>
void FilterCore<S>::guard(int lane, float* out, long count) noexcept {
  const auto isSound = [](float x) { return std::fabs(x) <= kBeyondReason; };
  bool bSound = true;
  eachField(memory_, [&](S& field, float) { bSound = bSound && isSound(dsp::laneOf(field, lane)); });
  for (long i = 0; i < count; ++i) bSound = bSound && isSound(out[i * dsp::kLanes<S> + lane]);
  if (bSound) return;
  restart(lane);
  for (long i = 0; i < count; ++i) out[i * dsp::kLanes<S> + lane] = 0.0f;
}

template <class S>
void FilterCore<S>::restart(int lane) noexcept {
  const auto start = [lane](S& field, float value) { dsp::setLane(field, lane, value); };
  eachField(memory_, start);
  if (mode_ == kBypass) return;
  const FilterType& type = types()[static_cast<std::size_t>(mode_)];
  eachSilentField(memory_, type, start);
  eachLine(lines_, type.lines, [lane](const auto& line) { line.zero(lane); });
}

template class FilterCore<float>;
template class FilterCore<dsp::Quad>;

}  // namespace filters
