#include "toolkit/base/PlatformFrame.h"

#include <array>
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

}  // namespace VSTGUI
