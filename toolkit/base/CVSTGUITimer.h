// SPDX-License-Identifier: MIT
// Calls its target at a steady period. [ui]
#pragma once

#include <memory>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/PlatformFrame.h"

namespace VSTGUI {

// `target->notify(timer, kMsgTimer)` at each period, in ms. The target isn't remembered: stop the timer before it goes.
class CVSTGUITimer : public CBaseObject, private IPlatformTimerCallback {
 public:
  explicit CVSTGUITimer(CBaseObject* target, std::uint32_t period = 100, bool start = false);
  ~CVSTGUITimer() override;
  CVSTGUITimer(const CVSTGUITimer&) = delete;
  CVSTGUITimer& operator=(const CVSTGUITimer&) = delete;

  // A running timer goes on with the new period. False without a platform.
  bool setFireTime(std::uint32_t period);
  [[nodiscard]] std::uint32_t getFireTime() const { return period_; }
  bool start();
  bool stop();
  [[nodiscard]] bool isRunning() const { return timer_ != nullptr; }

  VSTGUI_CLASS(CVSTGUITimer, CBaseObject)

 private:
  void platformTimerFired() override;

  CBaseObject* target_;
  std::uint32_t period_;
  std::unique_ptr<IPlatformTimer> timer_;
};

}  // namespace VSTGUI
