// SPDX-License-Identifier: MIT
// The filter of the audio path, which takes left and right at once, against two single channels.
#include <cstring>
#include <gtest/gtest.h>

#include "tests/filters/FilterFixtures.h"

namespace {

using namespace filters;

constexpr float kHostRate = 48000.0f;
constexpr long kFrames = 4800;

template <class S>
std::vector<float> played(const VGlobalCoeffs& tables, int type, std::vector<float> frames) {
  TestFilter<S> filter(tables, kHostRate);
  for (const Tick& t : wanderingTicks(type, kFrames)) filter.tick(t.params, frames, t.first, t.count);
  return frames;
}

TEST(Pair, GivesTheBitsOfTwoSingleChannelsInAllTypes) {
  VGlobalCoeffs tables;
  tables.init(440.0f, kHostRate);
  std::vector<float> left = noise(11u, kFrames), right = noise(12u, kFrames);
  for (std::vector<float>* const channel : {&left, &right})
    std::fill(channel->begin() + kFrames / 2, channel->end(), 0.0f);  // to see traces flushed
  std::vector<float> both;
  for (std::size_t i = 0; i < left.size(); ++i) both.insert(both.end(), {left[i], right[i]});
  for (int type = 0; type < kFilterTypes; ++type) {
    const std::vector<float> pair = played<dsp::Quad>(tables, type, both);
    const std::vector<float> alone[] = {played<float>(tables, type, left), played<float>(tables, type, right)};
    for (std::size_t i = 0; i < pair.size(); ++i)
      ASSERT_EQ(std::memcmp(&pair[i], &alone[i % 2][i / 2], sizeof(float)), 0) << typeAt(type).name << " at " << i;
  }
}

}  // namespace
