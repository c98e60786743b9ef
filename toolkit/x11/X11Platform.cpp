#include "toolkit/x11/X11Platform.h"

#include <algorithm>
#include <cassert>
#include <chrono>

#include "toolkit/x11/X11Frame.h"

namespace VSTGUI {

class X11::Timer : public IPlatformTimer {
 public:
  Timer(X11Platform& platform, IPlatformTimerCallback* callback) : platform_(platform), callback_(callback) {}
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() override { Timer::stop(); }

  bool start(std::uint32_t periodMs) override {
    stop();
    period_ = std::max(periodMs, 1u);
    due_ = platform_.getMilliseconds() + period_;
    platform_.timers_.push_back(this);
    return true;
  }
  void stop() override { std::erase(platform_.timers_, this); }
  [[nodiscard]] std::uint64_t due() const { return due_; }
  void fire(std::uint64_t now) {
    due_ = std::max(due_ + period_, now + 1);
    callback_->platformTimerFired();  // may destroy this timer
  }

 private:
  X11Platform& platform_;
  IPlatformTimerCallback* callback_;
  std::uint32_t period_ = 1;
  std::uint64_t due_ = 0;
};

X11Platform::~X11Platform() { assert(frames_.empty() && timers_.empty()); }

std::unique_ptr<IPlatformFrame> X11Platform::createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                         void* parent) {
  return X11::Frame::open(*this, callback, size, parent);
}

std::unique_ptr<IPlatformTimer> X11Platform::createTimer(IPlatformTimerCallback* callback) {
  return std::make_unique<X11::Timer>(*this, callback);
}

double X11Platform::getScaleFactor() const {
  const X11::NoPipeSignal guard;
  const auto connection = X11::Connection::open();
  return connection ? connection->scaleFactor() : 1.0;
}

std::uint64_t X11Platform::getMilliseconds() const {
  using std::chrono::milliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<milliseconds>(now).count());
}

void X11Platform::runTimers() {
  if (inTimer_) return;
  inTimer_ = true;
  const std::uint64_t now = getMilliseconds();
  const auto sooner = [](const X11::Timer* a, const X11::Timer* b) { return a->due() < b->due(); };
  for (;;) {  // each that fires is due after `now`, so this ends
    const auto next = std::min_element(timers_.begin(), timers_.end(), sooner);
    if (next == timers_.end() || (*next)->due() > now) break;
    (*next)->fire(now);
  }
  inTimer_ = false;
}

void X11Platform::readEventsOfAll() {
  for (X11::Frame* const frame : frames_) frame->readEvents();
}

PlatformType X11Platform::typeOfThis() const {
  return getPlatform(PlatformType::kX11EmbedWindowID) == this ? PlatformType::kX11EmbedWindowID
                                                              : PlatformType::kDefaultNative;
}

}  // namespace VSTGUI
