// SPDX-License-Identifier: MIT
#include "editor/graph/GraphHistory.h"

#include <algorithm>
#include <cmath>

using namespace model;

namespace editor {

namespace {

// Rounding on the way through pixels of any window, floats and back; far below what a gesture can move.
constexpr double kSameX = 0.02;
constexpr double kSameY = 1e-6;

std::optional<GraphState> step(std::deque<GraphState>& from, std::deque<GraphState>& to, const GraphState& now) {
  if (from.empty()) return std::nullopt;
  to.push_back(now);
  const GraphState state = from.back();
  from.pop_back();
  return state;
}

}  // namespace

bool sameGraph(const GraphState& a, const GraphState& b) noexcept {
  if (a.points.lastPoint != b.points.lastPoint || a.loopPoint != b.loopPoint || a.startPoint != b.startPoint)
    return false;
  const auto last = static_cast<std::size_t>(std::clamp(a.points.lastPoint, 0, kGraphSlots - 1));
  for (std::size_t i = 0; i <= last; ++i) {
    if (std::abs(a.points.x[i] - b.points.x[i]) > kSameX) return false;
    if (std::abs(a.points.y[i] - b.points.y[i]) > kSameY) return false;
    if (i < last && std::abs(a.points.curve[i] - b.points.curve[i]) > kSameY) return false;
  }
  return true;
}

void GraphHistory::record(int graph, const GraphState& before, int run) {
  Steps& steps = steps_[static_cast<std::size_t>(graph)];
  steps.future.clear();
  const bool goesOn = run != 0 && run == run_ && graph == runGraph_ && !steps.past.empty();
  run_ = run;
  runGraph_ = graph;
  if (goesOn) return;
  steps.past.push_back(before);
  if (steps.past.size() > kSteps) steps.past.pop_front();
}

std::optional<GraphState> GraphHistory::undo(int graph, const GraphState& now) {
  endRun();
  Steps& steps = steps_[static_cast<std::size_t>(graph)];
  return step(steps.past, steps.future, now);
}

std::optional<GraphState> GraphHistory::redo(int graph, const GraphState& now) {
  endRun();
  Steps& steps = steps_[static_cast<std::size_t>(graph)];
  return step(steps.future, steps.past, now);
}

}  // namespace editor
