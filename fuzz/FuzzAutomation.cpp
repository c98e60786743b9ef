// SPDX-License-Identifier: MIT
// Any bytes as an automation file: parsed, and its promises checked.
#include <cmath>

#include "cli/files/Automation.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace modrift::cli;
  const auto parsed = parseAutomation({reinterpret_cast<const char*>(data), size});
  if (const auto* fault = std::get_if<AutomationFault>(&parsed)) {
    require(fault->line >= 1 && !fault->expected.empty(), "a fault has a line and a reason");
    return 0;
  }
  int line = 0;
  for (const AutomationPoint& point : std::get<std::vector<AutomationPoint>>(parsed)) {
    require(point.line > line && !point.parameter.empty(), "lines rise and name a parameter");
    require(std::isfinite(point.beat), "beats are finite");
    require(point.value.number ? std::isfinite(*point.value.number) : !point.value.text.empty(), "there is a value");
    const std::int64_t frame = frameAtBeat(point.beat, -3.5, 1.0, 768000.0);
    require(frame >= -(std::int64_t{1} << 53) && frame <= std::int64_t{1} << 53, "frames are in range");
    line = point.line;
  }
  return 0;
}
