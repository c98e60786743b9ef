// A field that the user-interface thread and other threads touch: one aligned value, written and read whole.
//
// Loads and stores are relaxed, so they cost what plain ones cost. It refuses += and ++, which would look atomic and
// are not.
#pragma once

#include <atomic>

namespace VSTGUI {

template <class T>
class Relaxed {
 public:
  constexpr Relaxed(T v = {}) noexcept : value_(v) {}  // NOLINT: implicit, so that fields take plain values
  Relaxed(const Relaxed& other) noexcept : value_(T(other)) {}
  Relaxed& operator=(const Relaxed& other) noexcept {
    *this = T(other);
    return *this;
  }

  operator T() const noexcept { return value_.load(std::memory_order_relaxed); }  // NOLINT: reads as a plain field
  T operator=(T v) noexcept {  // NOLINT: the value, as a plain field's assignment gives
    value_.store(v, std::memory_order_relaxed);
    return v;
  }

 private:
  static_assert(std::atomic<T>::is_always_lock_free && sizeof(std::atomic<T>) == sizeof(T));
  std::atomic<T> value_;
};

}  // namespace VSTGUI
