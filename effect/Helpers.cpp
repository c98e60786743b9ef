// SPDX-License-Identifier: MIT
#include "effect/Helpers.h"

#include <cstdio>
#include <cstring>

#include "filters/Strings.h"

void mylong2string(long value, char* text) noexcept { strings::long2string(value, text); }

void Int2string(int value, char* text) noexcept {
  if (value >= 1000000) {
    std::strcpy(text, "Huge!");
    return;
  }
  char whole[32];
  std::snprintf(whole, sizeof whole, "%5i", value);
  whole[5] = '\0';
  std::strcpy(text, whole);
}
