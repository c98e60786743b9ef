// SPDX-License-Identifier: MIT
// Whatever a host sends and however the graphs jump: output is finite, a channel that broke comes back, and the other
// one never notices.
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

#include "tests/filters/FilterFixtures.h"

namespace {

using namespace filters;
using Frames = std::vector<float>;

constexpr long kTick = 24;
constexpr int kSignals = 5;

float signalAt(int signal, long i, Noise& random) {
  const double t = static_cast<double>(i);
  switch (signal) {
    case 0:
      return random();
    case 1:
      return static_cast<float>(4.0 * std::sin(2.0 * std::numbers::pi * t / 300.0));  // loud
    case 2:
      return i % 700 < 350 ? 1.0f : -1.0f;
    case 3:
      return static_cast<float>(i % 441) / 220.5f - 1.0f;
    default:
      return 0.0f;
  }
}

FilterParams corner(int type, int bits) {
  const auto end = [bits](int bit) { return (bits >> bit & 1) ? 1.0f : 0.0f; };
  return filterParams(type, end(0), end(1), end(2), end(3));
}

bool isSound(const Frames& frames) {
  return std::all_of(frames.begin(), frames.end(), [](float x) { return std::fabs(x) <= 1e6f; });
}

class AtRate : public testing::TestWithParam<float> {};

// Left and right hear different signals, so that each type meets all of them in both.
TEST_P(AtRate, StaysFiniteAtAllCornersSteadyAndJumping) {
  VGlobalCoeffs tables;
  tables.init(440.0f, GetParam());
  Noise random(5u);
  Frames frames(2 * kTick);
  for (int type = 0; type < kFilterTypes; ++type) {
    TestFilter<dsp::Quad> filter(tables, GetParam());
    long i = 0;
    const auto tick = [&](const FilterParams& params, int signal) {
      for (long j = 0; j < kTick; ++j, ++i) {
        frames[static_cast<std::size_t>(2 * j)] = signalAt(signal, i, random);
        frames[static_cast<std::size_t>(2 * j + 1)] = signalAt((signal + 2) % kSignals, i, random);
      }
      filter.tick(params, frames, 0, kTick);
      return isSound(frames);
    };
    for (int c = 0; c < 16; ++c) {
      for (int k = 0; k < 50; ++k) ASSERT_TRUE(tick(corner(type, c), k / 10)) << type << " at corner " << c;
    }
    for (int k = 0; k < 500; ++k) {
      const int bits = static_cast<int>(8.0f + 8.0f * random()) & 15;
      ASSERT_TRUE(tick(corner(type, bits), k / 100)) << type << " jumping";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rates, AtRate, testing::Values(22050.0f, 44100.0f, 96000.0f, 192000.0f));

TEST(Guard, DropsHostileInputOfOneChannelAloneAndGoesOn) {
  VGlobalCoeffs tables;
  tables.init(440.0f, 48000.0f);
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float hostile : {std::numeric_limits<float>::quiet_NaN(), kInfinity, -kInfinity, 1e30f}) {
    for (int type = 0; type < kFilterTypes; ++type) {
      TestFilter<dsp::Quad> filter(tables, 48000.0f);
      TestFilter<float> rightAlone(tables, 48000.0f);
      const FilterParams params = filterParams(type, 0.5f, 0.5f, 0.5f, 0.5f);
      Noise random(9u);
      float last = 0.0f;
      for (int k = 0; k < 400; ++k) {
        Frames both(2 * kTick), right(kTick);
        for (std::size_t j = 0; j < right.size(); ++j) {
          both[2 * j] = k == 100 && j == 5 ? hostile : 0.3f * random();
          right[j] = both[2 * j + 1] = 0.3f * random();
        }
        filter.tick(params, both, 0, kTick);
        rightAlone.tick(params, right, 0, kTick);
        ASSERT_TRUE(isSound(both)) << type << " at tick " << k;
        for (std::size_t j = 0; j < right.size(); ++j) ASSERT_EQ(both[2 * j + 1], right[j]) << type << ", tick " << k;
        last = 0.0f;
        for (std::size_t j = 0; j < right.size(); ++j) last = std::max(last, std::fabs(both[2 * j]));
      }
      const bool growsFromSeed = type == 79 || type == 80;
      EXPECT_GT(last, growsFromSeed ? 0.0f : 1e-4f) << type << " after " << hostile;
    }
  }
}

}  // namespace
