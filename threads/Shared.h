// SPDX-License-Identifier: MIT
// A field that two threads touch.
//
// Costs what a plain aligned load or store costs. Reads and writes are relaxed: whoever needs "what I wrote before is
// ready" uses `publish` and `take`. It refuses += and copying, which would look atomic and are not.
#pragma once

#include <atomic>

template <class T>
class Shared {
 public:
  constexpr Shared(T v = {}) noexcept : value_(v) {}  // NOLINT: implicit, so that fields take plain values
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;

  operator T() const noexcept { return value_.load(std::memory_order_relaxed); }
  T operator=(T v) noexcept {  // NOLINT: the value, as a plain field's assignment gives
    value_.store(v, std::memory_order_relaxed);
    return v;
  }

  // Stores `v`; whoever takes it sees all that was written before.
  void publish(T v) noexcept { value_.store(v, std::memory_order_release); }
  // The stored value, which becomes `v`; the other end of `publish`.
  T take(T v) noexcept { return value_.exchange(v, std::memory_order_acq_rel); }

 private:
  static_assert(std::atomic<T>::is_always_lock_free && sizeof(std::atomic<T>) == sizeof(T));
  std::atomic<T> value_;
};
