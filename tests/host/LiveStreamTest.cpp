// SPDX-License-Identifier: MIT
// A plug-in that plays live, in blocks of any length.
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

#include "host/Error.h"
#include "host/LiveStream.h"
#include "tests/host/HostFixtures.h"

namespace modrift::host {
namespace {

TEST(LiveStream, PlaysLongBlocksInPiecesAndTheSongRunsOn) {
  Plugin plugin(linked());
  {
    LiveStream stream(plugin, {.tempoBpm = 60.0}, 48000.0, 64);
    std::vector<float> ramp(200), right(200, 0.5f), outLeft(200), outRight(200);
    std::iota(ramp.begin(), ramp.end(), 0.0f);
    for (int call = 0; call < 2; ++call)
      stream.process({ramp.data(), right.data()}, {outLeft.data(), outRight.data()}, 200);
    EXPECT_EQ(outLeft, ramp);
    EXPECT_EQ(outRight, right);
  }
  const std::vector<ForeignPlugin::Block>& blocks = foreign(plugin).blocks;
  const std::vector<std::pair<VstInt32, int>> expected = {{64, 0},   {64, 64},  {64, 128}, {8, 192},
                                                          {64, 200}, {64, 264}, {64, 328}, {8, 392}};
  ASSERT_EQ(blocks.size(), expected.size());
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_EQ(blocks[i].frames, expected[i].first) << i;
    EXPECT_DOUBLE_EQ(blocks[i].time.ppqPos, expected[i].second / 48000.0) << i;
    EXPECT_EQ(blocks[i].processLevel, kVstProcessLevelRealtime);
  }
  EXPECT_EQ(foreign(plugin).told.back(), ForeignPlugin::Told{effMainsChanged});
}

TEST(LiveStream, FillsChannelsThatOneSideLacks) {
  Plugin plugin(linked());
  AEffect& record = foreign(plugin).record;
  record.numOutputs = 1;
  record.processReplacing = [](AEffect*, float** inputs, float** outputs, VstInt32) { outputs[0][0] = inputs[1][0]; };
  LiveStream stream(plugin, {}, 48000.0, 64);
  const float left = 1.0f, right = 2.0f;
  float outLeft = 0.0f, outRight = 0.0f;
  stream.process({&left, &right}, {&outLeft, &outRight}, 1);
  EXPECT_EQ(outLeft, 2.0f);
  EXPECT_EQ(outRight, 2.0f);
  Plugin deaf(linked());
  foreign(deaf).record.numOutputs = 0;
  EXPECT_THROW(LiveStream(deaf, {}, 48000.0, 64), Error);
  EXPECT_EQ(foreign(deaf).told.back().value, 0);
}

}  // namespace
}  // namespace modrift::host
