// SPDX-License-Identifier: MIT
// One channel of the filter, at twice the host's rate, and the texts of its parameters.
//
// Life: construction on a table set that outlives the filter; `setSampleRate`; `clear`; then blocks [audio]. The owner
// keeps `setSampleRate` and `clear` [host, not during a block] apart from `processBuffer`. Texts need no rate.
#pragma once

#include "filters/FilterCore.h"

class VFilter {
 public:
  explicit VFilter(const VGlobalCoeffs* tables) : coeffs(tables), core_(tables) {}

  [[nodiscard]] virtual const char* name() const noexcept { return "VFilter"; }
  [[nodiscard]] virtual const char* nameShort() const noexcept { return "Filt"; }
  virtual ~VFilter() = default;
  VFilter(const VFilter&) = delete;
  VFilter& operator=(const VFilter&) = delete;

  // [audio] `params` holds kFilterParams entries; `in` may be `out`; a count below 1 changes no sample.
  virtual void processBuffer(const float* params, const float* in, float* out, long count) noexcept;
  // Writes the text of a parameter's value, at most 20 characters; index 3 appends to the text that is there, indices
  // outside 0 to 7 write nothing. For the texts of "Mode" and "Var", `value` is the normalised type.
  virtual void getParamInInfo(long index, float value, char* text) const noexcept;
  // The number of choices of a parameter that is one of several; 0 for others.
  [[nodiscard]] virtual long getNumEntries(long index) const noexcept;
  // The rate at which this filter runs, in hertz, and its inverse. Allocates at the first call.
  virtual void setSampleRate(float rate, float invRate);

  // Forgets the signal.
  void clear() noexcept { core_.clear(); }
  [[nodiscard]] int mode() const noexcept { return core_.mode(); }
  [[nodiscard]] const filters::FilterCore<float>& core() const noexcept { return core_; }

  const VGlobalCoeffs* coeffs;  // not owned

 private:
  filters::FilterCore<float> core_;
};
