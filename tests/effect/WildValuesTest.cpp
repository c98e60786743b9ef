// SPDX-License-Identifier: MIT
// Settings, positions and graphs far beyond any sense: blocks end, output is finite, indices are inside the tables (the
// sanitizer build watches those).
#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

#include "model/ParameterIndex.h"
#include "tests/effect/TestHost.h"

using namespace model;

namespace {

void expectFinite(EffectRig& rig, const std::string& what) {
  const Stereo out = rig.play(noise(600, 1), {511, 12, 1});
  for (std::size_t i = 0; i < out.size(); ++i) {
    ASSERT_TRUE(std::isfinite(out.left[i]) && std::isfinite(out.right[i])) << what << ", sample " << i;
  }
  const int index = rig.fx().displayIndex;
  EXPECT_TRUE(index >= 0 && index < 65536) << what;
  EXPECT_TRUE(std::isfinite(rig.fx().lfoPhase) && std::isfinite(rig.fx().freePhase)) << what;
}

constexpr double kWild[] = {1e20, -1e20,    1e9,   -1e9,   1e30, -1e30, 3e38, -3e38,
                            NAN,  INFINITY, 1e-40, -1e-40, -5.0, 0.0,   1.0,  777.0};

TEST(WildValues, OfParametersAndSampleRateAreHarmless) {
  for (std::uint32_t seed = 1; seed <= 120; ++seed) {
    Random random(seed);
    EffectRig rig(random.pick({0.0f, -1.0f, 1e-40f, 1e30f, -1e30f, NAN, INFINITY, 32000.0f, 44100.0f}));
    rig.fx().bScopeOn = true;
    rig.playOnes(13);
    for (int turn = 0; turn < 20; ++turn) {
      for (int n = 0; n < 6; ++n) {
        const int index = random.below(kParameterRows);
        if (index == kLoadShape || index == kLoadPreset || index == kExportMidi) continue;  // files
        const auto value = static_cast<float>(kWild[random.below(std::size(kWild))]);
        rig.set(index, static_cast<double>(value));
        char shown[256] = "", ofValue[256] = "";
        std::memcpy(ofValue, &value, sizeof value);
        rig.call(effGetParamDisplay, index, 0, shown);
        rig.call(effVendorSpecific, model::kCallValueToText, index, ofValue);
        EXPECT_LT(std::max(std::strlen(shown), std::strlen(ofValue)), 24u) << index << " at " << value;
      }
      rig.set(kFilterOn, 0.0);  // wild drives and mixes are the filter's matter
      expectFinite(rig, "seed " + std::to_string(seed) + ", turn " + std::to_string(turn));
    }
  }
}

TEST(WildValues, OfTheHostsClockAreHarmless) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInf = std::numeric_limits<double>::infinity();
  const double kClock[] = {0.0, 1e300, -1e300, 1e18, -1e18, kNaN, kInf, -kInf, -1.0, 5e-324};
  for (const auto& [anchor, swing] : {std::pair{0.0, 0.5}, {0.0, 0.3}, {1.0, 0.5}, {1.0, 0.3}, {1.0, 1e-40}}) {
    EffectRig rig;
    for (int depth = kDepthCut; depth <= kDepthVar; ++depth) rig.set(depth, 0.9);
    rig.set(kSwing, swing);
    rig.set(kAnchor, anchor);
    rig.set(kRetrigger, 0.5);
    for (int n = 0; n < 200; ++n) {
      const double beat = kClock[n % 10], tempo = kClock[n / 10 % 10];
      rig.at(beat, tempo, n < 100);
      if (n % 3 == 0) rig.send({{5, 0x90, 60, 100}});
      expectFinite(rig, "beat " + std::to_string(beat) + " tempo " + std::to_string(tempo));
      EXPECT_TRUE(std::isfinite(rig.fx().trigOffset)) << n;
    }
  }
}

TEST(WildValues, OfGraphPointsAreHarmless) {
  using Points = std::vector<EffectRig::Point>;
  Points falling, full;
  for (int i = 0; i < 65; ++i) {
    falling.push_back({60000.0 - 900.0 * i, 0.5});
    full.push_back({i * 1000.0, 0.5});
  }
  const Points kGraphs[] = {{{0, 0}, {1e300, 0.5}, {-1e300, 1}, {65536, 0}},
                            {{0, 0}, {NAN, 0.5}, {30000, 1}, {65536, 0}},
                            {{0, 0, NAN}, {40000, 0.5, -1e300}, {50000, 1, 1e300}, {65536, 0}},
                            {{0, 0}},
                            falling,
                            full};
  for (const auto& points : kGraphs) {
    EffectRig rig;
    rig.draw(0, points);
    rig.set(kCopyGraph, 1.0);
    rig.set(kPasteGraph, 1000.0);
    rig.playOnes(1);
    for (int point = kPoint1; point < kPoint1 + kPointParameters; ++point) rig.set(point, 0.3);
    expectFinite(rig, "points");
  }
}

}  // namespace
