// SPDX-License-Identifier: MIT
// One rendered graph as the audio path reads it, and a copy of one as the clipboard keeps it.
#pragma once

#include "model/CurveLaw.h"
#include "threads/Shared.h"

namespace effect {

// A copy of one graph, for copy and paste; `points.lastPoint` 0 means empty.
struct EnvClipboard {
  model::GraphPoints points;
  float warp = 0.0f;
};

// Reads a graph's table at positions from 0 to 1, as many times a cycle as its warp says.
//
// Positions are 0 to 1 and warps at most 16, so the number fits whatever the settings are. It is scaled by 65535 and
// wraps at 65536, as stored projects know it. What is heard is scaled first and warped then, what is shown the other
// way round: the two may part by a rounding.
struct GraphReader {
  const Shared<float>* table;
  double warp;
  bool open;  // a closed gate reads the first sample

  [[nodiscard]] float read(double position) const noexcept {
    const double y = open ? position * kLastEntry : 0.0;
    return table[tableIndex(y * warp)];
  }

  // Where the position stands in the picture of the graph.
  [[nodiscard]] static int shownIndex(double position, double warp) noexcept {
    return tableIndex(position * warp * kLastEntry);
  }

 private:
  static constexpr double kLastEntry = model::kGraphTableSize - 1;

  static int tableIndex(double scaledPosition) noexcept {
    return static_cast<int>(static_cast<unsigned>(static_cast<int>(scaledPosition)) & (model::kGraphTableSize - 1u));
  }
};

}  // namespace effect
