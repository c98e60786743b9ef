// SPDX-License-Identifier: MIT
// Automation files: which parameter takes which value at which beat.
//
//   beat, parameter, value        (a first line without numbers is a heading and optional)
//   0,    >vol,      0.25         # a remark ends a line
//   4.5,  7,         1
//   8,    FilType,   Low 24
//
// Fields may stand in double quotes ("" inside for one quote), for names with a comma. Lines end with LF or CRLF.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/values/TypedValue.h"
#include "host/OfflineRunner.h"

namespace modrift::cli {

// A file beyond this is something else.
inline constexpr std::size_t kMostAutomationBytes = std::size_t{64} << 20;

struct AutomationPoint {
  int line = 0;           // in the file, from 1
  double beat = 0.0;      // quarter notes since the song's start; finite
  std::string parameter;  // name or index, as written; never empty
  TypedValue value;
};

struct AutomationFault {
  int line = 0;
  std::string expected;  // what was expected there
};

// Pure: reads any bytes, throws nothing but std::bad_alloc, and stops at the first fault.
[[nodiscard]] std::variant<std::vector<AutomationPoint>, AutomationFault> parseAutomation(std::string_view bytes);

// The frame, counted from `startBeat`, that is nearest to the beat. Beats before the start give a negative frame;
// frames are limited to what 53 bits hold.
[[nodiscard]] std::int64_t frameAtBeat(double beat, double startBeat, double tempoBpm, double sampleRateHz) noexcept;

}  // namespace modrift::cli
