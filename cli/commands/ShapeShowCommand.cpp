// SPDX-License-Identifier: MIT
#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "cli/commands/ShapeCommands.h"
#include "cli/files/StoredFiles.h"
#include "cli/terminal/Table.h"
#include "cli/values/GraphText.h"

using namespace model;

namespace modrift::cli {

void runShapeShow(const ShapeShowOptions& options) {
  using Json = nlohmann::ordered_json;
  const GraphPoints points = readGraph(options.input, std::nullopt);
  if (options.json) {
    const Json json = {{"file", options.input}, {"points", pointsJson(points)}};
    fmt::print("{}\n", json.dump(2, ' ', false, Json::error_handler_t::replace));
    return;
  }
  printAligned(pointRows(points));
}

}  // namespace modrift::cli
