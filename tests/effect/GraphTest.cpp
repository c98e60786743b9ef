// SPDX-License-Identifier: MIT
// Graphs: copy and paste, the warp table.
#include <cstdio>
#include <gtest/gtest.h>

#include "model/WarpTable.h"
#include "tests/effect/TestHost.h"

using namespace model;

namespace {

TEST(Clipboard, PastesPointsTableAndWarpAtOnceAndNothingWhileItIsEmpty) {
  EffectRig rig;
  rig.drawFlat(2, 0.25);
  rig.set(kWarp1 + 2, 1.0);
  rig.set(kCurrentGraph, 2.0 / 11);
  rig.set(kPasteGraph, 1000.0);
  EXPECT_EQ(rig.fx().graphTable[6][0], 1.0f);
  rig.set(kCopyGraph, 1.0);
  rig.drawFlat(2, 0.75);
  rig.set(kWarp1 + 2, 0.0);
  rig.set(kPasteGraph, 1.0);  // back over itself
  EXPECT_EQ(rig.fx().graphTable[2][9], 0.25f);
  EXPECT_EQ(rig.get(kCurrentWarp), 1.0f);
  EXPECT_EQ(rig.fx().graphTable[6][0], 1.0f);
  rig.set(kPasteGraph, 1000.0);
  for (std::size_t g = 0; g < 12; ++g) {
    EXPECT_EQ(rig.fx().graphTable[g][0], 0.25f);
    EXPECT_EQ(rig.fx().warpMult[g], 16.0);
    EXPECT_EQ(rig.fx().envNumPoints[g], 1);
    EXPECT_EQ(rig.fx().envX[g][1], 65536.0);
  }
}

// "3/8" is a ratio, and "1.66" cut after two digits.
TEST(WarpTable, SaysTheRatiosThatItHolds) {
  EffectRig rig;
  for (std::size_t n = 0; n < 18; ++n) {
    rig.set(kWarp1 + 4, static_cast<double>(n) / 17.0);
    double numerator = 0.0, denominator = 1.0;
    EXPECT_GE(std::sscanf(WarpNames[n], "%lf/%lf", &numerator, &denominator), 1);
    EXPECT_NEAR(rig.fx().warpMult[4], numerator / denominator, denominator > 1.0 ? 0.0 : 0.007) << WarpNames[n];
  }
  EXPECT_EQ(rig.fx().warpMult[4], 16.0);
}

}  // namespace
