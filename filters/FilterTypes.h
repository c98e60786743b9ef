// SPDX-License-Identifier: MIT
// The catalogue of filter types. Dispatch, texts, documents and tests read this one table.
#pragma once

#include <span>

#include "filters/FilterSetup.h"
#include "filters/Kernel.h"

namespace filters {

inline constexpr int kFilterTypes = 93;
inline constexpr int kBypass = -1;

// The delay lines that a type plays on; they start empty with it.
struct LinesUsed {
  bool main = false;
  int combs = 0;
  int allPasses = 0;

  [[nodiscard]] constexpr bool any() const noexcept { return main || combs > 0 || allPasses > 0; }
};

// What sets a type apart from all others.
enum class Trait {
  none,
  hertzCutoff,  // the cutoff goes from kLowestCleanHz to kHighestCleanHz and is heard as it reads
  shapedByVar,  // "Var" changes the response more than the cutoff does
  newTones,     // makes other tones of a tone, so there is no response to speak of
  silentStart,  // no seed in its state
};

struct FilterType {
  const char* name;
  const char* family;
  const char* varText;  // what "Var" is called in this type; "-" where it does nothing
  double polarity;      // of the feedback
  LinesUsed lines;
  void (*setUp)(FilterSetup& setup) noexcept;
  kernels::Kernels run;
  Trait trait = Trait::none;
};

// In the order of the type index, which hosts and presets store: a row never moves.
[[nodiscard]] std::span<const FilterType, kFilterTypes> types() noexcept;
// The row of an index from 0 to kFilterTypes - 1.
[[nodiscard]] const FilterType& typeAt(int index) noexcept;
// What runs in the bypass state, which has no name.
[[nodiscard]] const kernels::Kernels& bypassKernels() noexcept;

// The index that a normalised value 0 to 1 stands for; what is outside counts as the nearer end, a NaN as 0.
[[nodiscard]] int typeIndexOf(float normalised) noexcept;
[[nodiscard]] constexpr float normalisedType(int index) noexcept {
  return static_cast<float>(index) / static_cast<float>(kFilterTypes - 1);
}

}  // namespace filters
