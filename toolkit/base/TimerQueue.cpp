// SPDX-License-Identifier: MIT
#include "toolkit/base/TimerQueue.h"

#include <algorithm>

namespace VSTGUI {

class TimerQueue::Timer : public IPlatformTimer {
 public:
  Timer(TimerQueue& queue, IPlatformTimerCallback* callback) : queue_(queue), callback_(callback) {}
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() override { Timer::stop(); }

  bool start(std::uint32_t periodMs) override {
    stop();
    period_ = std::max(periodMs, 1u);
    due_ = queue_.clock_.getMilliseconds() + period_;
    queue_.timers_.push_back(this);
    return true;
  }
  void stop() override { std::erase(queue_.timers_, this); }
  void fire(std::uint64_t now) {
    due_ = std::max(due_ + period_, now + 1);
    callback_->platformTimerFired();  // may destroy this timer
  }
  [[nodiscard]] static bool isSooner(const Timer* a, const Timer* b) { return a->due_ < b->due_; }
  [[nodiscard]] std::uint64_t due() const { return due_; }

 private:
  TimerQueue& queue_;
  IPlatformTimerCallback* callback_;
  std::uint32_t period_ = 1;
  std::uint64_t due_ = 0;
};

std::unique_ptr<IPlatformTimer> TimerQueue::createTimer(IPlatformTimerCallback* callback) {
  return std::make_unique<Timer>(*this, callback);
}

std::optional<std::uint64_t> TimerQueue::nextDue() const {
  const auto next = std::min_element(timers_.begin(), timers_.end(), Timer::isSooner);
  return next == timers_.end() ? std::nullopt : std::optional((*next)->due());
}

void TimerQueue::fireNext(std::uint64_t now) {
  (*std::min_element(timers_.begin(), timers_.end(), Timer::isSooner))->fire(now);
}

}  // namespace VSTGUI
