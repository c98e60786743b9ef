// SPDX-License-Identifier: MIT
// Names a resource of the bundle by number or by file name.
#pragma once

#include <cstdint>
#include <string>

namespace VSTGUI {

struct CResourceDescription {
  enum Type { kIntegerType, kStringType };

  CResourceDescription(std::int32_t number = 0) : id(number) {}                          // NOLINT: either way of naming
  CResourceDescription(const char* text) : type(kStringType), name(text ? text : "") {}  // NOLINT

  // The name itself, or the number through `format`, as "bmp%05d".
  [[nodiscard]] std::string lookupName(const char* prefix) const;

  Type type = kIntegerType;
  std::int32_t id = 0;
  std::string name;
};

}  // namespace VSTGUI
