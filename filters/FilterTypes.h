// The catalogue of filter types. Dispatch, texts, documents and tests read this one table.
#pragma once

#include <span>

#include "filters/FilterSetup.h"
#include "filters/Kernel.h"

namespace filters {

inline constexpr int kFilterTypes = 93;
inline constexpr int kBypass = -1;

// The delay lines that a type plays on; they start empty with it.
enum class LinesUsed { noLines, mainLine, combLines, allPassLines, allLines, twoAllPassLines };

struct FilterType {
  const char* name;
  const char* family;
  const char* varText;  // what "Var" is called in this type; "-" where it does nothing
  double polarity;      // of the feedback
  LinesUsed lines;
  void (*setUp)(FilterSetup& setup) noexcept;
  kernels::Kernels run;
  bool bStartsSilent = false;  // no seed in its state

  [[nodiscard]] constexpr bool usesCombs() const noexcept {
    return lines == LinesUsed::combLines || lines == LinesUsed::allLines;
  }
};

// In the order of the type index, which hosts and presets store: a row never moves.
[[nodiscard]] std::span<const FilterType, kFilterTypes> types() noexcept;
// What runs in the bypass state, which has no name.
[[nodiscard]] const kernels::Kernels& bypassKernels() noexcept;

// The type of a normalised value 0 to 1; what is outside, or not a number, counts as the nearer end or 0.
[[nodiscard]] int typeAt(float normalised) noexcept;

}  // namespace filters
