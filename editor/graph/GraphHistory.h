// SPDX-License-Identifier: MIT
// Undo and redo of graph edits, for each graph its own. [ui]
//
// States are in stored units, so that a history outlives a window and its size.
#pragma once

#include <array>
#include <deque>
#include <optional>

#include "model/Graph.h"

namespace editor {

inline constexpr int kNoLoopPoint = 512;
inline constexpr int kNoStartPoint = -1;

// A graph as the editor knows it.
struct GraphState {
  model::GraphPoints points;
  int loopPoint = kNoLoopPoint;
  int startPoint = kNoStartPoint;
};

// Same points, curves and markers, but for rounding on the way to the effect and back.
[[nodiscard]] bool sameGraph(const GraphState& a, const GraphState& b) noexcept;

class GraphHistory {
 public:
  static constexpr std::size_t kSteps = 128;  // a graph; older ones are forgotten

  // One step. Those of one run, one after the other, count as one: `run` 0 for a step of its own.
  void record(int graph, const GraphState& before, int run = 0);
  // The state before the last step, with `now` kept for the way back; none when there is no step.
  [[nodiscard]] std::optional<GraphState> undo(int graph, const GraphState& now);
  [[nodiscard]] std::optional<GraphState> redo(int graph, const GraphState& now);
  // The next step is one of its own.
  void endRun() noexcept { run_ = 0; }

 private:
  struct Steps {
    std::deque<GraphState> past, future;
  };

  std::array<Steps, model::kGraphs> steps_;
  int run_ = 0;
  int runGraph_ = 0;
};

}  // namespace editor
