// SPDX-License-Identifier: MIT
// What Modrift answers beyond what every plug-in does: vendor calls (effVendorSpecific), told apart by a tag of four
// characters in the call's index. The program and the tests ask by the same tags.
#pragma once

#include <cstddef>
#include <cstdint>

namespace model {

[[nodiscard]] constexpr std::int32_t fourCharacters(const char (&tag)[5]) noexcept {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(tag[i]);
  return static_cast<std::int32_t>(number);
}

// By which hosts and the program know the plug-in.
inline constexpr std::int32_t kUniqueId = fourCharacters("Vrlq");

// [value] 2 for two inputs, anything else for one; there are always two outputs. Answers 0.
inline constexpr std::int32_t kCallSetIoCount = fourCharacters("sAIO");
// Answers 1: whoever asks may use the calls below.
inline constexpr std::int32_t kCallHello = fourCharacters("sHi!");
// [value] a parameter's number, [ptr] the value as a float, in whose place the value's text is written, 24 bytes at
// most; answers 1.
inline constexpr std::int32_t kCallValueToText = fourCharacters("sV2S");
// [ptr] a path of at most `kLongestPath` bytes, for the file that the next load reads or the MIDI export writes;
// answers 1, or 0 for a path that does not fit. Editors fill `loadPath` themselves; this is the way in for hosts.
inline constexpr std::int32_t kCallSetPath = fourCharacters("mPth");
inline constexpr std::size_t kLongestPath = 511;
// [ptr] a path, [value] width * 65536 + height in pixels, or 0 for the stored size: writes the editor's picture as a
// PNG there, without a display; answers 1, or 0 when that did not work.
inline constexpr std::int32_t kCallDrawEditor = fourCharacters("mPic");

}  // namespace model
