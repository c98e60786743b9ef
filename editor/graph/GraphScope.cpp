// SPDX-License-Identifier: MIT
#include "editor/graph/GraphScope.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "editor/graph/GraphGeometry.h"
#include "editor/graph/LFODisplay.h"
#include "effect/LfoDSP.h"

using namespace model;

using VSTGUI::CGraphicsPath;
using VSTGUI::Counted;

namespace editor {

namespace {

constexpr std::int32_t kBehind = 256;  // entries that the audio thread may be about to write

// What the columns of a calm trace sum up to: a few times the graph's height, which is 2.
constexpr double kCalmTravel = 16.0;

struct Range {
  float least = 1.0f;
  float greatest = -1.0f;
};

// Eight lanes, so that the compiler can look at several samples at once.
Range rangeOf(std::span<const float> samples) {
  constexpr std::size_t kLanes = 8;
  Range lanes[kLanes];
  const std::size_t even = samples.size() / kLanes * kLanes;
  for (std::size_t i = 0; i < even; i += kLanes)
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const float x = samples[i + lane];
      lanes[lane].least = x < lanes[lane].least ? x : lanes[lane].least;
      lanes[lane].greatest = x > lanes[lane].greatest ? x : lanes[lane].greatest;
    }
  Range all;
  const auto include = [&](const Range& r) {
    all = {std::min(all.least, r.least), std::max(all.greatest, r.greatest)};
  };
  for (const Range& lane : lanes) include(lane);
  for (std::size_t i = even; i < samples.size(); ++i)
    include({std::min(1.0f, samples[i]), std::max(-1.0f, samples[i])});
  return all;
}

std::vector<Range> rangesOf(std::span<const float> samples, double width) {
  const auto perPixel = static_cast<std::size_t>(static_cast<float>(kGraphTableSize) / static_cast<float>(width));
  const std::size_t end = std::min<std::size_t>(samples.size(), kGraphTableSize);
  std::vector<Range> columns(static_cast<std::size_t>(width));
  for (std::size_t x = 0; x < columns.size(); ++x) {
    const std::size_t from = std::min(end, perPixel * x);
    columns[x] = rangeOf(samples.subspan(from, std::min(perPixel, end - from)));
  }
  return columns;
}

Counted<CGraphicsPath> line(const std::vector<Range>& columns, float first, double width) {
  auto path = Counted<CGraphicsPath>::adopt(new CGraphicsPath);
  path->beginSubpath({0, static_cast<double>(first)});
  for (std::size_t x = 0; x < columns.size(); ++x) {
    path->addLine({static_cast<double>(x), static_cast<double>(columns[x].least)});
    path->addLine({static_cast<double>(x), static_cast<double>(columns[x].greatest)});
  }
  path->addLine({width, 0});
  return path;
}

// Each bar reaches to the one before it and is a pixel high at least.
Counted<CGraphicsPath> bars(const std::vector<Range>& columns, double pixel) {
  auto path = Counted<CGraphicsPath>::adopt(new CGraphicsPath);
  const auto onPixel = [&](float sample) { return std::round((static_cast<double>(sample) + 1) / pixel) * pixel - 1; };
  Range before = columns.front();
  for (std::size_t x = 0; x < columns.size(); ++x) {
    const double top = onPixel(std::min(columns[x].least, before.greatest));
    const double bottom = onPixel(std::max(columns[x].greatest, before.least));
    const auto left = static_cast<double>(x);
    path->addRect({left, top, left + 1, std::max(bottom, top + pixel)});
    before = columns[x];
  }
  return path;
}

void copySamples(LFODisplay& display, LfoDSP& effect, std::int32_t from, std::int32_t to) {
  for (std::int32_t i = from; i < to; ++i) {
    display.scopeOutCopy[at(i)] = effect.scopeOut[i];
    display.scopeInCopy[at(i)] = effect.scopeIn[i];
  }
}

}  // namespace

void readScope(LFODisplay& display, LfoDSP& effect, std::int32_t& readIndex) {
  std::int32_t target = effect.displayIndex - kBehind;
  if (target < 0) target += kGraphTableSize;
  target = std::clamp(target, 0, kGraphTableSize);
  if (target < readIndex) {
    copySamples(display, effect, readIndex, kGraphTableSize);
    readIndex = 0;
  }
  copySamples(display, effect, readIndex, target);
  readIndex = target;
}

ScopeOutline scopeOutline(std::span<const float> samples, double width, double pixel) {
  const std::vector<Range> columns = rangesOf(samples, width);
  double travel = 0.0;
  for (const Range& column : columns) travel += std::abs(static_cast<double>(column.greatest - column.least));
  if (travel > kCalmTravel) return {bars(columns, pixel), true};
  return {line(columns, samples.front(), width), false};
}

}  // namespace editor
