// SPDX-License-Identifier: MIT
#include "toolkit/x11/X11Platform.h"

#include <cassert>

#include "toolkit/x11/X11Frame.h"

namespace VSTGUI {

X11Platform::~X11Platform() { assert(frames_.empty() && timers_.isEmpty()); }

std::unique_ptr<IPlatformFrame> X11Platform::createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                         void* parent) {
  return X11::Frame::open(*this, callback, size, parent);
}

double X11Platform::getScaleFactor() const {
  const X11::NoPipeSignal guard;
  const auto connection = X11::Connection::open();
  return connection ? connection->scaleFactor() : 1.0;
}

void X11Platform::runTimers() {
  if (inTimer_) return;
  inTimer_ = true;
  const std::uint64_t now = getMilliseconds();
  // Each that fires is due after `now`, so this ends.
  for (auto due = timers_.nextDue(); due && *due <= now; due = timers_.nextDue()) timers_.fireNext(now);
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
