// SPDX-License-Identifier: MIT
// The one encoding of all texts here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace VSTGUI {

// `character` from 0 to 0x10ffff.
void appendUtf8(std::string& text, std::int32_t character);
// The characters of a text that is known to be valid.
[[nodiscard]] std::vector<std::int32_t> charactersOf(std::string_view utf8);
// True for a byte inside of a character, after its first.
[[nodiscard]] constexpr bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; }
// Valid UTF-8 whatever the bytes are: what isn't becomes replacement characters.
[[nodiscard]] std::string madeValidUtf8(const std::string& bytes);

}  // namespace VSTGUI
