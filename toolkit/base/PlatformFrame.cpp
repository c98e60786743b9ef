// SPDX-License-Identifier: MIT
#include "toolkit/base/PlatformFrame.h"

#include <array>
#include <chrono>
#include <cstddef>

namespace VSTGUI {

namespace {

IPlatform*& platformSlot(PlatformType type) {
  static std::array<IPlatform*, 3> platforms{};
  return platforms.at(static_cast<std::size_t>(type));
}

}  // namespace

void setPlatform(PlatformType type, IPlatform* platform) { platformSlot(type) = platform; }
IPlatform* getPlatform(PlatformType type) { return platformSlot(type); }

std::uint64_t steadyMilliseconds() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<milliseconds>(now).count());
}

}  // namespace VSTGUI
