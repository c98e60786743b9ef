// SPDX-License-Identifier: MIT
#include "toolkit/base/CResourceDescription.h"

#include <array>
#include <cstdio>

namespace VSTGUI {

std::string CResourceDescription::lookupName(const char* prefix) const {
  if (type == kStringType) return name;
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "%05d", id);
  return std::string(prefix) + digits.data();
}

}  // namespace VSTGUI
