// SPDX-License-Identifier: MIT
// The filter for one channel (S = float) or a left/right pair (S = dsp::Quad): type, coefficients, signal state, guard.
//
// Life: construction on a table set that outlives the filter; `setSampleRate`; `clear`; then blocks [audio]. The owner
// keeps the first three [host, not during a block] apart from `processBuffer`.
#pragma once

#include "filters/FilterTypes.h"

namespace filters {

template <class S>
class FilterCore {
 public:
  explicit FilterCore(const VGlobalCoeffs* tables) noexcept : tables_(tables) {}

  // The rate at which this filter runs, in hertz, and its inverse. Allocates the delay lines at the first call; later
  // ones keep them, since their length follows the tables.
  void setSampleRate(float rate, float invRate);
  // Forgets the signal.
  void clear() noexcept;
  // [audio] `params` holds kFilterParams entries; frames of left and right in turn; `in` may be `out`; a count below 1
  // only sets up. Output that is not finite or above 1e6 becomes silence, and its channel starts afresh.
  void processBuffer(const float* params, const float* in, float* out, long count) noexcept;

  [[nodiscard]] int mode() const noexcept { return mode_; }
  [[nodiscard]] const FilterCoefs& coefs() const noexcept { return coefs_; }
  [[nodiscard]] const kernels::DelayLines<S>& lines() const noexcept { return lines_; }

 private:
  void setUp(const float* params, bool changed) noexcept;
  void startType(const FilterType& type) noexcept;
  void runKernel(const kernels::Kernels& kernel, const float* in, float* out, long count) noexcept;
  void guard(int lane, float* out, long count) noexcept;
  void restart(int lane) noexcept;

  const VGlobalCoeffs* tables_;
  int mode_ = 0;
  float sampleRate_ = 0.0f;
  float invSampleRate_ = -1.0f;
  FilterCoefs coefs_;
  kernels::SignalMemory<S> memory_{};
  kernels::DelayLines<S> lines_;
  kernels::FilterClock clock_;
};

extern template class FilterCore<float>;
extern template class FilterCore<dsp::Quad>;

}  // namespace filters
