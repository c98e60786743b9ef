// SPDX-License-Identifier: MIT
// A graph's points as people write and read them: x as a fraction of the cycle, y from 0 at the bottom to 1 at the top.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <variant>

#include "cli/terminal/Table.h"
#include "model/Graph.h"

namespace modrift::cli {

struct TextPoint {
  double x, y, curve;  // 0 to 1 each
};

// Of point `index`, from 0 to the graph's last one.
[[nodiscard]] TextPoint textPoint(const model::GraphPoints& points, int index) noexcept;

// "x y [curve]; x y [curve]; ...", or a sentence part saying what was expected instead. Numbers get the precision that
// graphs have in the plug-in. Pure.
[[nodiscard]] std::variant<model::GraphPoints, std::string> parsePoints(const std::string& text);

// With a heading; rounded to what an eye can use, so that lines can be typed again.
[[nodiscard]] Rows pointRows(const model::GraphPoints& points);
// Exact.
[[nodiscard]] nlohmann::ordered_json pointsJson(const model::GraphPoints& points);

}  // namespace modrift::cli
