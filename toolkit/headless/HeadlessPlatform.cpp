#include "toolkit/headless/HeadlessPlatform.h"

#include <algorithm>
#include <cassert>

namespace VSTGUI {

class HeadlessTimer : public IPlatformTimer {
 public:
  HeadlessTimer(HeadlessPlatform& platform, IPlatformTimerCallback* callback)
      : platform_(platform), callback_(callback) {}
  HeadlessTimer(const HeadlessTimer&) = delete;
  HeadlessTimer& operator=(const HeadlessTimer&) = delete;
  ~HeadlessTimer() override { HeadlessTimer::stop(); }

  bool start(std::uint32_t periodMs) override {
    stop();
    period_ = std::max(periodMs, 1u);
    due_ = platform_.now_ + period_;
    platform_.timers_.push_back(this);
    return true;
  }
  void stop() override { std::erase(platform_.timers_, this); }
  [[nodiscard]] std::uint64_t due() const { return due_; }
  void fire() {
    due_ += period_;
    callback_->platformTimerFired();  // may destroy this timer
  }

 private:
  HeadlessPlatform& platform_;
  IPlatformTimerCallback* callback_;
  std::uint32_t period_ = 1;
  std::uint64_t due_ = 0;
};

HeadlessPlatform::~HeadlessPlatform() { assert(frames_.empty() && timers_.empty()); }

std::unique_ptr<IPlatformFrame> HeadlessPlatform::createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                              void* /*parent*/) {
  return hasDisplay ? std::make_unique<HeadlessFrame>(*this, callback, size) : nullptr;
}

std::unique_ptr<IPlatformTimer> HeadlessPlatform::createTimer(IPlatformTimerCallback* callback) {
  return std::make_unique<HeadlessTimer>(*this, callback);
}

void HeadlessPlatform::advance(std::uint32_t milliseconds) {
  const std::uint64_t end = now_ + milliseconds;
  const auto sooner = [](const HeadlessTimer* a, const HeadlessTimer* b) { return a->due() < b->due(); };
  for (;;) {
    const auto next = std::min_element(timers_.begin(), timers_.end(), sooner);
    if (next == timers_.end() || (*next)->due() > end) break;
    now_ = (*next)->due();
    (*next)->fire();
  }
  now_ = end;
}

}  // namespace VSTGUI
