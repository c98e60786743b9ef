// SPDX-License-Identifier: MIT
#include "toolkit/headless/HeadlessPlatform.h"

#include <cassert>

namespace VSTGUI {

HeadlessPlatform::~HeadlessPlatform() { assert(frames_.empty() && timers_.isEmpty()); }

std::unique_ptr<IPlatformFrame> HeadlessPlatform::createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                              void* /*parent*/) {
  return hasDisplay ? std::make_unique<HeadlessFrame>(*this, callback, size) : nullptr;
}

void HeadlessPlatform::advance(std::uint32_t milliseconds) {
  const std::uint64_t end = now_ + milliseconds;
  for (auto due = timers_.nextDue(); due && *due <= end; due = timers_.nextDue()) {
    now_ = *due;
    timers_.fireNext(now_);
  }
  now_ = end;
}

}  // namespace VSTGUI
