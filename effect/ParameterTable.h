// SPDX-License-Identifier: MIT
// Everything the host and the editor can change, as one table with a row for each number: what it is called, what
// setting it does, what it reads back as, its words there and back, and the field that a project stores of it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "model/ParameterIndex.h"

class LfoDSP;
namespace model {
struct Field;
}

namespace effect {

// [any] Functions may be null: nothing happens, reads 0, writes nothing, takes no text.
struct ParameterRow {
  int index = 0;
  std::array<char, 12> name{};  // as hosts show it; empty for none
  const char* label = "  ";     // the unit that hosts show behind the text
  void (*set)(LfoDSP& effect, int index, float value) = nullptr;
  float (*get)(const LfoDSP& effect, int index) = nullptr;
  // What hosts and the editor show of the present value, and of one that is passed in.
  void (*text)(const LfoDSP& effect, int index, char* text) = nullptr;
  void (*textOf)(const LfoDSP& effect, int index, float value, char* text) = nullptr;
  // The value from 0 to 1 which shows a text, under the present settings; nothing for what is no such text.
  std::optional<float> (*read)(const LfoDSP& effect, int index, std::string_view text) = nullptr;
  // The live field itself: taking it back has no consequences, the load sees to them.
  double (*load)(const LfoDSP& effect, int index) = nullptr;
  void (*store)(LfoDSP& effect, int index, double value) = nullptr;
  const model::Field* stored = nullptr;  // where a project has it; null for what is not stored
};

// In the order of their numbers, which have no gaps: a number without a use has an empty row.
[[nodiscard]] std::span<const ParameterRow, model::kParameterRows> parameterRows() noexcept;
// Null for an index outside the table.
[[nodiscard]] const ParameterRow* parameterRow(int index) noexcept;

}  // namespace effect
