// SPDX-License-Identifier: MIT
#include "toolkit/base/CVSTGUITimer.h"

#include <algorithm>

namespace VSTGUI {

CVSTGUITimer::CVSTGUITimer(CBaseObject* target, std::uint32_t period, bool startNow)
    : target_(target), period_(std::max(period, 1u)) {
  if (startNow) start();
}

CVSTGUITimer::~CVSTGUITimer() = default;

bool CVSTGUITimer::setFireTime(std::uint32_t period) {
  period_ = std::max(period, 1u);
  return !timer_ || timer_->start(period_);
}

bool CVSTGUITimer::start() {
  if (timer_) return true;
  auto* const platform = getPlatform();
  auto made = platform ? platform->createTimer(this) : nullptr;
  if (!made || !made->start(period_)) return false;
  timer_ = std::move(made);
  return true;
}

bool CVSTGUITimer::stop() {
  const bool wasRunning = timer_ != nullptr;
  timer_.reset();
  return wasRunning;
}

void CVSTGUITimer::platformTimerFired() {
  const Counted<CVSTGUITimer> alive = this;
  target_->notify(this, kMsgTimer);
}

}  // namespace VSTGUI
