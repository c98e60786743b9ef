#include "effect/Helpers.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

// Writes `value` with at least `width` characters and cuts the text at `most`.
void writeCut(long value, int width, std::size_t most, char* text) noexcept {
  char whole[32];
  std::snprintf(whole, sizeof whole, "%*ld", width, value);
  const std::size_t length = std::min(std::strlen(whole), most);
  std::memcpy(text, whole, length);
  text[length] = 0;
}

}  // namespace

void mylong2string(long value, char* text) noexcept {
  if (value >= 100000000) {
    std::strcpy(text, "Huge!");
  } else {
    writeCut(value, 7, 8, text);
  }
}

void Int2string(int value, char* text) noexcept {
  if (value >= 1000000) {
    std::strcpy(text, "Huge!");
  } else {
    writeCut(value, 5, 5, text);
  }
}
