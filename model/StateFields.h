// SPDX-License-Identifier: MIT
// The stored fields as one table: name, type, place in both layouts of the chunk, limits, access, and the parameter
// that shows the field. Reader, writer, tests and the command line all work off it. A field that is added gets its
// member in State.h and its row in StateLayout.h; with `shownBy` there, the effect's row of that parameter finds it,
// keeps it in the state and takes it back, and nothing else has to be said.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string_view>

#include "model/State.h"

namespace model {

enum class FieldType { flag, i8, u8, i16, i32, f32, f64 };  // a flag is one byte, 0 or 1

// How many bytes one value of the type takes.
[[nodiscard]] std::size_t widthOf(FieldType type) noexcept;

// Where a layout has the field, and from which version on; chunks older than that do not hold it.
struct Place {
  static constexpr int kNowhere = -1;
  int offset = kNowhere;
  float since = 0.0f;
};

struct Field {
  std::string_view name;
  FieldType type;
  int count;  // values that lie one behind the other; those of graphs go graph by graph
  Place now;  // in the chunks that are written today
  Place old;  // in the layout before them
  double (*get)(const State& state, int element);
  void (*put)(State& state, int element, double value);  // see `store`
  // The first of `count` parameters that show the field, or -1. "In>Rerig" shows two fields.
  int parameter = -1;
  double low = -std::numeric_limits<double>::infinity();
  double high = std::numeric_limits<double>::infinity();
  bool staysIfAbsent = false;  // a chunk without it leaves the present value; else it takes the default

  [[nodiscard]] constexpr bool isReserved() const noexcept { return name.starts_with("reserved"); }
};

// In the order in which today's chunk has them.
[[nodiscard]] std::span<const Field> stateFields() noexcept;
// Null when no field has that name.
[[nodiscard]] const Field* findField(std::string_view name) noexcept;

// A fresh state's value.
[[nodiscard]] double defaultOf(const Field& field, int element) noexcept;
// Stores `value` inside the field's limits and type; NaN and infinities become the default.
void store(State& state, const Field& field, int element, double value) noexcept;

}  // namespace model
