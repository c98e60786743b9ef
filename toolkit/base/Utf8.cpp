// SPDX-License-Identifier: MIT
#include "toolkit/base/Utf8.h"

#include <glib.h>

namespace VSTGUI {

void appendUtf8(std::string& text, std::int32_t character) {
  char bytes[6];
  const int count = g_unichar_to_utf8(static_cast<gunichar>(character), bytes);
  text.append(bytes, static_cast<std::size_t>(count));
}

std::vector<std::int32_t> charactersOf(std::string_view utf8) {
  std::vector<std::int32_t> characters;
  const char* const end = utf8.data() + utf8.size();
  for (const char* at = utf8.data(); at < end; at = g_utf8_next_char(at))
    characters.push_back(static_cast<std::int32_t>(g_utf8_get_char(at)));
  return characters;
}

std::string madeValidUtf8(const std::string& bytes) {
  char* const valid = g_utf8_make_valid(bytes.c_str(), static_cast<gssize>(bytes.size()));
  std::string text = valid;
  g_free(valid);
  return text;
}

}  // namespace VSTGUI
