// SPDX-License-Identifier: MIT
#include "cli/files/Automation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "cli/values/Numbers.h"

namespace modrift::cli {
namespace {

// Longer lines are no work of people or their tools.
constexpr std::size_t kLongestLine = 1024;

constexpr std::size_t kFieldCount = 3;
using Fields = std::array<std::string, kFieldCount>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Takes one field off the front of `rest`, without the comma behind it. Nothing if quotes do not close or text follows
// them.
std::optional<std::string> takeField(std::string_view& rest) {
  rest = trimmed(rest);
  if (!rest.starts_with('"')) {
    const std::string_view field = rest.substr(0, rest.find(','));
    rest.remove_prefix(field.size());
    return std::string(trimmed(field));
  }
  std::string field;
  for (rest.remove_prefix(1);; rest.remove_prefix(1)) {
    if (rest.empty()) return std::nullopt;
    if (rest.starts_with("\"\"")) {
      rest.remove_prefix(1);
    } else if (rest.starts_with('"')) {
      break;
    }
    field.push_back(rest.front());
  }
  rest = trimmed(rest.substr(1));
  return rest.empty() || rest.front() == ',' ? std::optional(std::move(field)) : std::nullopt;
}

std::optional<Fields> splitFields(std::string_view rest) {
  Fields fields;
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    if (i > 0) {
      if (rest.empty()) return std::nullopt;
      rest.remove_prefix(1);  // the comma
    }
    // A name may hold a '#', so that a remark on the same line begins in the last field.
    if (i + 1 == kFieldCount) rest = rest.substr(0, rest.find('#'));
    std::optional<std::string> field = takeField(rest);
    if (!field) return std::nullopt;
    fields[i] = std::move(*field);
  }
  // Spreadsheets may leave a comma behind the last field.
  return rest.empty() || rest == "," ? std::optional(std::move(fields)) : std::nullopt;
}

class Parser {
 public:
  std::optional<AutomationFault> readLine(std::string_view text) {
    ++line_;
    if (text.size() > kLongestLine) return fault("a line of at most 1024 characters");
    if (text.find('\0') != std::string_view::npos) return fault("a text file");
    text = trimmed(text);
    if (text.empty() || text.front() == '#') return std::nullopt;
    const bool isFirst = !std::exchange(seenFirst_, true);
    const std::optional<Fields> fields = splitFields(text);
    if (!fields) return fault("three fields, \"beat, parameter, value\"");
    const std::optional<double> beat = parseNumber((*fields)[0]);
    std::optional<TypedValue> value = parseTypedValue((*fields)[2]);
    if (isFirst && !looksNumeric((*fields)[0]) && !looksNumeric((*fields)[2])) return std::nullopt;  // the heading
    if (!beat) return fault("a finite number as beat, not '" + (*fields)[0] + "'");
    if ((*fields)[1].empty()) return fault("a parameter's name or index");
    if (!value) return fault("a finite number or a text as value, not '" + (*fields)[2] + "'");
    points_.push_back({line_, *beat, (*fields)[1], std::move(*value)});
    return std::nullopt;
  }

  std::vector<AutomationPoint> takePoints() { return std::move(points_); }

 private:
  [[nodiscard]] AutomationFault fault(std::string expected) const { return {line_, std::move(expected)}; }

  // A number or a botched one, "nan" and "1.5x" alike; a heading has no such field.
  static bool looksNumeric(std::string_view field) {
    return field.empty() || std::string_view("+-.0123456789").find(field.front()) != std::string_view::npos ||
           isAnyNumber(field);
  }

  int line_ = 0;
  bool seenFirst_ = false;
  std::vector<AutomationPoint> points_;
};

}  // namespace

std::variant<std::vector<AutomationPoint>, AutomationFault> parseAutomation(std::string_view bytes) {
  if (bytes.size() > kMostAutomationBytes) return AutomationFault{1, "an automation file of at most 64 MiB"};
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  Parser parser;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    if (auto fault = parser.readLine(bytes.substr(0, end))) return std::move(*fault);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return parser.takePoints();
}

std::int64_t frameAtBeat(double beat, double startBeat, double tempoBpm, double sampleRateHz) noexcept {
  const double frame = std::round((beat - startBeat) * 60.0 / tempoBpm * sampleRateHz);
  return static_cast<std::int64_t>(std::clamp(frame, -kMostFrames, kMostFrames));
}

}  // namespace modrift::cli
