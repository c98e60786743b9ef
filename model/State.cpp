// SPDX-License-Identifier: MIT
#include "model/State.h"

#include <algorithm>

namespace model {

GraphPoints pointsOf(const State& state, int g) noexcept {
  const auto i = static_cast<std::size_t>(g);
  GraphPoints points = freshGraph();
  points.lastPoint = int{state.envNumPoints[i]};
  std::ranges::copy(state.envX[i], points.x.begin());
  std::ranges::copy(state.envY[i], points.y.begin());
  std::ranges::copy(state.envCurve[i], points.curve.begin());
  return points;
}

void setPoints(State& state, int g, const GraphPoints& points) noexcept {
  const auto i = static_cast<std::size_t>(g);
  state.envNumPoints[i] = static_cast<std::int8_t>(points.lastPoint);
  state.envX[i] = storedSlots(points.x);
  state.envY[i] = storedSlots(points.y);
  state.envCurve[i] = storedSlots(points.curve);
}

}  // namespace model
