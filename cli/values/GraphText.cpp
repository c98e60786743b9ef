// SPDX-License-Identifier: MIT
#include "cli/values/GraphText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/core.h>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/values/Numbers.h"
#include "model/Bytes.h"

using namespace model;

namespace modrift::cli {
namespace {

constexpr std::size_t kFewestPoints = 2;
constexpr std::size_t kMostPoints = kStoredSlots;

// Empty pieces at the end do not count, as "a; b;" is what people write.
std::vector<std::string_view> pieces(std::string_view text, char separator) {
  std::vector<std::string_view> found;
  while (!trimmed(text).empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    found.push_back(trimmed(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return found;
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found = pieces(text, ' ');
  std::erase(found, std::string_view());
  return found;
}

std::optional<TextPoint> parsePoint(std::string_view text) {
  const std::vector<std::string_view> numbers = words(text);
  if (numbers.size() < 2 || numbers.size() > 3) return std::nullopt;
  std::array<double, 3> values = {0.0, 0.0, 0.5};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::optional<double> number = parseNumber(numbers[i]);
    if (!number || *number < 0.0 || *number > 1.0) return std::nullopt;
    values[i] = *number;
  }
  return TextPoint{values[0], values[1], values[2]};
}

// Slots behind the last point lie on it: a reader that knows graphs of three points and more only sees the same graph.
GraphPoints graphOf(const std::vector<TextPoint>& chain) {
  GraphPoints points = freshGraph();
  points.lastPoint = static_cast<int>(chain.size()) - 1;
  for (std::size_t i = 0; i < points.x.size(); ++i) {
    const TextPoint& point = chain[std::min(i, chain.size() - 1)];
    points.x[i] = model::throughFloat(point.x * kGraphWidth);
    points.y[i] = model::throughFloat(1.0 - point.y);
    points.curve[i] = i < chain.size() && point.curve != 0.5 ? model::throughFloat(point.curve) : kStraightCurve;
  }
  return points;
}

}  // namespace

TextPoint textPoint(const GraphPoints& points, int index) noexcept {
  const auto i = static_cast<std::size_t>(index);
  return {points.x[i] / kGraphWidth, 1.0 - points.y[i], points.curve[i]};
}

std::variant<GraphPoints, std::string> parsePoints(const std::string& text) {
  std::vector<TextPoint> chain;
  for (const std::string_view piece : pieces(text, ';')) {
    const std::optional<TextPoint> point = parsePoint(piece);
    if (!point) {
      return fmt::format("\"x y [curve]\" with numbers from 0 to 1 was expected as point {}, not '{}'",
                         chain.size() + 1, piece);
    }
    if (!chain.empty() && point->x < chain.back().x) {
      return fmt::format("an x of {} or more was expected in point {}, not {}", chain.back().x, chain.size() + 1,
                         point->x);
    }
    chain.push_back(*point);
  }
  if (chain.size() < kFewestPoints || chain.size() > kMostPoints) {
    return fmt::format("{} to {} points were expected, not {}", kFewestPoints, kMostPoints, chain.size());
  }
  if (chain.front().x != 0.0) return fmt::format("x 0 was expected in the first point, not {}", chain.front().x);
  if (chain.back().x != 1.0) return fmt::format("x 1 was expected in the last point, not {}", chain.back().x);
  return graphOf(chain);
}

Rows pointRows(const GraphPoints& points) {
  Rows rows = {{"point", "x", "y", "curve"}};
  for (int i = 0; i <= points.lastPoint; ++i) {
    const auto [x, y, curve] = textPoint(points, i);
    rows.push_back(
        {std::to_string(i + 1), fmt::format("{:.6g}", x), fmt::format("{:.6g}", y), fmt::format("{:.6g}", curve)});
  }
  return rows;
}

nlohmann::ordered_json pointsJson(const GraphPoints& points) {
  auto json = nlohmann::ordered_json::array();
  for (int i = 0; i <= points.lastPoint; ++i) {
    const auto [x, y, curve] = textPoint(points, i);
    json.push_back({{"x", x}, {"y", y}, {"curve", curve}});
  }
  return json;
}

}  // namespace modrift::cli
