// SPDX-License-Identifier: MIT
// The audio path at exact numbers, with the filter off; what its formulas give in between is GoldenTest's.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "tests/effect/TestHost.h"

using namespace model;

namespace {

constexpr float kCentreGain = 1.0003273f;  // the pan law in the middle; never bypassed

TEST(Gains, FollowTheGraphByItsDepth) {
  for (const auto& [height, pan, volume, knob, left, right] :
       {std::tuple{1.0, 0.0, 0.5, 1.0, 1.413f, 0.0f},
        {1.0, 1.0, 0.5, 1.0, 0.0f, 1.413f},
        {1.0, 0.5, 1.0, 1.0, kCentreGain, kCentreGain},
        {0.25, 0.5, 0.0, 1.0, kCentreGain * 0.75f, kCentreGain * 0.75f},
        {0.0, 0.5, 0.75, 1.0, kCentreGain * 0.5f, kCentreGain * 0.5f},
        {0.0, 0.5, 1.0, 0.5, kCentreGain * 0.5f, kCentreGain * 0.5f}}) {
    EffectRig rig;
    rig.drawFlat(0, height);
    for (const auto& [index, value] : {std::pair{6, volume}, {7, pan}, {38, knob}}) rig.set(index, value);
    const Stereo out = rig.playOnes(2);
    EXPECT_EQ(out.left[1], left) << height << " " << volume;
    EXPECT_EQ(out.right[1], right) << height << " " << volume;
  }
}

TEST(HeldAndEmptyBlocks, LeaveTheOutputsAlone) {
  EffectRig rig;
  rig.fx().bAudioHold = true;
  const float in = 1.0f;
  float left = 7.0f, right = 7.0f;
  rig.block(&in, &in, &left, &right, 1);
  rig.fx().bAudioHold = false;
  for (const int frames : {0, -5}) rig.block(&in, &in, &left, &right, static_cast<std::size_t>(frames));
  EXPECT_EQ(left, 7.0f);
  rig.block(&in, &in, &left, &right, 1);
  EXPECT_EQ(left, kCentreGain);
}

TEST(Input, ThatIsNaNOrInfiniteIsGoneByTheNextCleanBlock) {
  for (const float poison : {NAN, INFINITY, -INFINITY}) {
    for (const int way : {kFilterOn, kXoverOn, kDepthVol}) {  // filter, crossover, gains
      EffectRig rig;
      rig.set(way, 1.0);
      rig.set(kSmooth, 0.5);
      Stereo in = noise(256, 3);
      in.left[100] = in.right[30] = poison;
      rig.play(in);
      const Stereo clean = rig.play(noise(256, 4));
      const auto finite = [](float x) { return std::isfinite(x) && std::abs(x) < 10.0f; };
      EXPECT_TRUE(std::all_of(clean.left.begin(), clean.left.end(), finite));
      EXPECT_TRUE(std::all_of(clean.right.begin(), clean.right.end(), finite));
    }
  }
}

}  // namespace
