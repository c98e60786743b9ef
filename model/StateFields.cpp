// SPDX-License-Identifier: MIT
#include "model/StateFields.h"

#include <algorithm>
#include <cmath>

#include "model/StateLayout.h"

namespace model {

std::size_t widthOf(FieldType type) noexcept {
  switch (type) {
    case FieldType::i16:
      return 2;
    case FieldType::i32:
    case FieldType::f32:
      return 4;
    case FieldType::f64:
      return 8;
    case FieldType::flag:
    case FieldType::i8:
    case FieldType::u8:
      break;
  }
  return 1;
}

std::span<const Field> stateFields() noexcept { return kStateFields; }

const Field* findField(std::string_view name) noexcept {
  const auto found = std::ranges::find(kStateFields, name, &Field::name);
  return found == kStateFields.end() ? nullptr : &*found;
}

double defaultOf(const Field& field, int element) noexcept {
  static const State fresh;
  return field.get(fresh, element);
}

void store(State& state, const Field& field, int element, double value) noexcept {
  if (!std::isfinite(value)) value = defaultOf(field, element);
  field.put(state, element, std::clamp(value, field.low, field.high));
}

}  // namespace model
