// SPDX-License-Identifier: MIT
// The platform under X11: windows in the windows of a host. [ui]
//
//   X11Platform platform;
//   setPlatform(PlatformType::kDefaultNative, &platform);
//   frame->open(reinterpret_cast<void*>(window));   // the id of the host's X11 window
//   frame->idle();                                  // from the host, 20 times a second or more often
//
// There is no thread and no main loop: events, timers and painting run inside of `CFrame::idle`, so timers fire while
// at least one frame is open and idles, and are as late as it is. A frame keeps the scale that it opened with.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/base/PlatformFrame.h"
#include "toolkit/base/TimerQueue.h"

namespace VSTGUI {

namespace X11 {
class Frame;
}  // namespace X11

class X11Platform : public IPlatform {
 public:
  X11Platform() = default;
  X11Platform(const X11Platform&) = delete;
  X11Platform& operator=(const X11Platform&) = delete;
  ~X11Platform() override;  // frames and timers must be gone

  [[nodiscard]] std::unique_ptr<IPlatformFrame> createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                            void* parent) override;
  // From the environment variable MODRIFT_SCALE, else from the desktop's Xft.dpi at 96 a unit; 1 without a display.
  [[nodiscard]] double getScaleFactor() const override;
  [[nodiscard]] std::unique_ptr<IPlatformTimer> createTimer(IPlatformTimerCallback* callback) override {
    return timers_.createTimer(callback);
  }
  [[nodiscard]] std::uint64_t getMilliseconds() const override { return steadyMilliseconds(); }

  // Where files are chosen, in the order in which they are tried.
  enum class Selector { kPortal, kProgram, kBrowser };
  std::vector<Selector> selectors{Selector::kPortal, Selector::kProgram, Selector::kBrowser};

 private:
  friend class X11::Frame;

  // Fires each due timer once; does nothing inside of one.
  void runTimers();
  // Takes what has come for any frame without calling anybody, so that two of ours can exchange data.
  void readEventsOfAll();
  [[nodiscard]] PlatformType typeOfThis() const;

  std::vector<X11::Frame*> frames_;
  TimerQueue timers_{*this};
  bool inTimer_ = false;
};

}  // namespace VSTGUI
