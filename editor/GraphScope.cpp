#include "editor/GraphScope.h"

#include <algorithm>
#include <cmath>

#include "editor/LFODisplay.h"
#include "effect/LfoDSP.h"

using VSTGUI::CGraphicsPath;
using VSTGUI::Counted;

namespace {

constexpr std::int32_t kBehind = 256;  // entries that the audio thread may be about to write

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

void copySamples(LFODisplay& display, LfoDSP& effect, std::int32_t from, std::int32_t to) {
  for (std::int32_t i = from; i < to; ++i) {
    display.scopeOutCopy[static_cast<std::size_t>(i)] = effect.scopeOut[i];
    display.scopeInCopy[static_cast<std::size_t>(i)] = effect.scopeIn[i];
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

Counted<CGraphicsPath> scopePath(std::span<const float> samples, double width) {
  auto path = Counted<CGraphicsPath>::adopt(new CGraphicsPath);
  const int columns = static_cast<int>(width);
  const auto perPixel =
      static_cast<std::size_t>(std::floor(static_cast<float>(kGraphTableSize) / static_cast<float>(width)));
  const std::size_t end = std::min<std::size_t>(samples.size(), kGraphTableSize);
  path->beginSubpath({0, static_cast<double>(samples.front())});
  for (int x = 0; x < columns; ++x) {
    const std::size_t from = std::min(end, perPixel * static_cast<std::size_t>(x));
    const Range range = rangeOf(samples.subspan(from, std::min(perPixel, end - from)));
    path->addLine({static_cast<double>(x), static_cast<double>(range.least)});
    path->addLine({static_cast<double>(x), static_cast<double>(range.greatest)});
  }
  path->addLine({width, 0});
  return path;
}
