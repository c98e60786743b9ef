// Everything the host and the editor can change, as one table with a row for each number.
#pragma once

#include <array>

#include "model/ParameterIndex.h"

class LfoDSP;

struct ParameterRow {
  std::array<char, 12> name{};                                    // as hosts show it; empty for none
  void (*set)(LfoDSP& effect, int index, float value) = nullptr;  // null: nothing happens
  float (*get)(LfoDSP& effect, int index) = nullptr;              // null: reads 0
};

// Null for an index outside the table.
[[nodiscard]] const ParameterRow* parameterRow(int index) noexcept;
