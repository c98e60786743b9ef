// SPDX-License-Identifier: MIT
// What other threads leave for the user-interface thread: the last value of each index, and which are new.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "effect/ParameterTable.h"
#include "threads/Shared.h"

namespace editor {

class ParameterNotes {
 public:
  // [any] Neither waits nor allocates; an index outside of the table is ignored.
  void post(int index, float value) noexcept {
    if (index < 0 || index >= model::kParameterRows) return;
    const auto i = static_cast<std::size_t>(index);
    values_[i] = value;
    fresh_[i / kBits].fetch_or(std::uint64_t{1} << (i % kBits), std::memory_order_release);
  }

  // [ui] Calls act(index, value) for each new index, from the lowest. A note that comes meanwhile is not lost.
  template <class Action>
  void collect(Action act) {
    for (std::size_t word = 0; word < fresh_.size(); ++word) {
      for (std::uint64_t bits = fresh_[word].exchange(0, std::memory_order_acquire); bits != 0; bits &= bits - 1) {
        const std::size_t i = word * kBits + static_cast<std::size_t>(std::countr_zero(bits));
        act(static_cast<int>(i), static_cast<float>(values_[i]));
      }
    }
  }

  // [ui] Forgets what came so far.
  void clear() noexcept {
    for (auto& word : fresh_) word.store(0, std::memory_order_relaxed);
  }

 private:
  static constexpr std::size_t kBits = 64;
  std::array<Shared<float>, model::kParameterRows> values_{};
  std::array<std::atomic<std::uint64_t>, (model::kParameterRows + kBits - 1) / kBits> fresh_{};
};

}  // namespace editor
