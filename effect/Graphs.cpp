// SPDX-License-Identifier: MIT
// The twelve graphs: default, copy and paste, rendering.
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"
#include "model/WarpTable.h"

using namespace model;

namespace {

std::size_t slot(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void LfoDSP::initEnv(int g) noexcept { setPoints(g, freshGraph(), kGraphSlots); }

void LfoDSP::setPoints(int g, const GraphPoints& points, int slots) noexcept {
  envNumPoints[slot(g)] = static_cast<std::int8_t>(points.lastPoint);
  for (int i = 0; i < slots; ++i) {
    envX[g][i] = points.x[slot(i)];
    envY[g][i] = points.y[slot(i)];
    envCurve[g][i] = points.curve[slot(i)];
  }
}

void LfoDSP::initClipboard() noexcept {
  envClipboard = {};
  envClipboard.points.curve.fill(kStraightCurve);
  envClipboard.warp = kWarpOne;
}

GraphPoints LfoDSP::pointsOf(int g) const noexcept {
  GraphPoints points;
  points.lastPoint = envNumPoints[slot(g)];
  for (int i = 0; i < kGraphSlots; ++i) {
    points.x[slot(i)] = envX[g][i];
    points.y[slot(i)] = envY[g][i];
    points.curve[slot(i)] = envCurve[g][i];
  }
  return points;
}

void LfoDSP::copyEnv(int g) noexcept {
  envClipboard.points = pointsOf(g);
  envClipboard.warp = padLFO.graphWarp[slot(g)];
}

void LfoDSP::pasteEnv(int g) {
  const GraphPoints& from = envClipboard.points;
  if (from.lastPoint <= 0) return;
  setPoints(g, from, kStoredSlots);
  setWarp(g, envClipboard.warp);
  setParameter(kNoticeGraph, 0.0f);
  renderEnv(g);
  if (g != 0) RenderEnvsInCaseGUIClosed(true);
}

void LfoDSP::setWarp(int g, float value) noexcept {
  padLFO.graphWarp[slot(g)] = value;
  warpMult[slot(g)] = warpMultiplier(value);
}

void LfoDSP::renderEnv(int g) noexcept {
  renderGraph(pointsOf(g), std::span<Shared<float>, kGraphTableSize>(graphTable[slot(g)].get(), kGraphTableSize));
}

void LfoDSP::RenderEnvsInCaseGUIClosed(bool firstOnly) noexcept {
  const int count = firstOnly ? 1 : kGraphs;
  for (int g = 0; g < count; ++g) renderEnv(g);
}
