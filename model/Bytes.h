// SPDX-License-Identifier: MIT
// Numbers in blocks of bytes, little-endian as stored states are and as the machines are that this builds for.
//
// A number that would reach beyond the block reads as 0 and is not written; readers check sizes first, so this is the
// second fence.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>

namespace model {

static_assert(std::endian::native == std::endian::little);

template <class T>
[[nodiscard]] T load(std::span<const std::byte> bytes, std::size_t offset) noexcept {
  static_assert(std::is_arithmetic_v<T>);
  T value{};
  if (offset <= bytes.size() && sizeof value <= bytes.size() - offset)
    std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

template <class T>
void put(std::span<std::byte> bytes, std::size_t offset, T value) noexcept {
  static_assert(std::is_arithmetic_v<T>);
  if (offset <= bytes.size() && sizeof value <= bytes.size() - offset)
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// `value` with the precision of a float, and inside its range; NaN and infinities stay what they are.
[[nodiscard]] inline double throughFloat(double value) noexcept {
  constexpr double kMost = static_cast<double>(std::numeric_limits<float>::max());
  if (value > kMost || value < -kMost) return value;
  return static_cast<double>(static_cast<float>(value));
}

}  // namespace model
