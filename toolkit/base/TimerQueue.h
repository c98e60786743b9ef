// SPDX-License-Identifier: MIT
// The timers of a platform that has none of its own: it asks what is due and fires it. [ui]
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "toolkit/base/PlatformFrame.h"

namespace VSTGUI {

class TimerQueue {
 public:
  // `clock` is the platform that holds the queue. Timers must be gone before it.
  explicit TimerQueue(const IPlatform& clock) : clock_(clock) {}
  TimerQueue(const TimerQueue&) = delete;
  TimerQueue& operator=(const TimerQueue&) = delete;

  [[nodiscard]] std::unique_ptr<IPlatformTimer> createTimer(IPlatformTimerCallback* callback);
  [[nodiscard]] bool isEmpty() const { return timers_.empty(); }
  // When the next timer is due, in the clock's milliseconds; none while no timer runs.
  [[nodiscard]] std::optional<std::uint64_t> nextDue() const;
  // Fires the timer that is due next, which must be there. At the time `now` that comes after its own, what it missed
  // isn't made up for: it is due again after `now`.
  void fireNext(std::uint64_t now);

 private:
  class Timer;

  const IPlatform& clock_;
  std::vector<Timer*> timers_;
};

}  // namespace VSTGUI
