// SPDX-License-Identifier: MIT
// The two-times rate change: levels, images, and the stereo form against two mono objects.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "filters/Downsampler2Flt.h"
#include "filters/SampleTypes.h"
#include "filters/StereoRateChange.h"

namespace {

using Samples = std::vector<float>;

rspl::Downsampler2Flt readyFilter() {
  rspl::Downsampler2Flt filter;
  filter.set_coefs(rspl::Mydwnspl_coef_arr);
  filter.clear_buffers();
  return filter;
}

Samples noise(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  Samples samples(count);
  for (float& s : samples) s = static_cast<float>(random() >> 8) * 0x1p-23f - 1.0f;
  return samples;
}

Samples up(rspl::Downsampler2Flt& filter, const Samples& in) {
  Samples out(2 * in.size());
  filter.tarnel_upsampleblock(out.data(), in.data(), static_cast<long>(in.size()));
  return out;
}

Samples down(rspl::Downsampler2Flt& filter, const Samples& in) {
  Samples out(in.size() / 2);
  filter.downsample_block(out.data(), in.data(), static_cast<long>(out.size()));
  return out;
}

double rms(const Samples& samples, std::size_t from) {
  double sum = 0.0;
  for (std::size_t i = from; i < samples.size(); ++i) sum += static_cast<double>(samples[i]) * samples[i];
  return std::sqrt(sum / static_cast<double>(samples.size() - from));
}

Samples tone(std::size_t count, double cyclesPerSample) {
  Samples samples(count);
  for (std::size_t i = 0; i < count; ++i)
    samples[i] = static_cast<float>(std::sin(2.0 * std::numbers::pi * cyclesPerSample * static_cast<double>(i)));
  return samples;
}

TEST(RateChange, LeavesOnlyAResidueOnTheOddSamplesOfTheWayUpAndDoublesBothBranchesDown) {
  auto upper = readyFilter(), lower = readyFilter();
  EXPECT_NEAR(down(lower, Samples(8000, 0.25f)).back(), 4.0f * 0.25f, 1e-5f);
  const Samples out = up(upper, noise(2000, 1));
  for (std::size_t i = 1; i < out.size(); i += 2) ASSERT_LT(std::abs(out[i]), 1e-24f) << "sample " << i;
}

TEST(RateChange, PassesToneLevelsUpAndDownWhateverTheirPitch) {
  for (const double cyclesPerSample : {0.001, 0.1, 0.3, 0.45}) {
    auto upper = readyFilter(), lower = readyFilter();
    const Samples in = tone(20000, cyclesPerSample);
    EXPECT_NEAR(rms(down(lower, up(upper, in)), 1000) / rms(in, 1000), 1.0, 2e-3) << cyclesPerSample;
  }
}

TEST(RateChange, RemovesWhatLiesAboveTheHostsNyquistFrequency) {
  auto lower = readyFilter();
  EXPECT_LT(20.0 * std::log10(rms(down(lower, tone(40000, 0.35)), 1000)), -60.0);
}

// Left and right samples in turn, as the stereo form takes them.
Samples pairs(const Samples& left, const Samples& right) {
  Samples frames;
  for (std::size_t i = 0; i < left.size(); ++i) frames.insert(frames.end(), {left[i], right[i]});
  return frames;
}

TEST(RateChange, GivesForAPairWhatTwoChannelsGive) {
  const Samples left = noise(1 << 14, 2);
  Samples right = noise(1 << 14, 3);
  std::fill(right.begin() + 5000, right.begin() + 9000, 0.0f);  // silence drives the memories towards denormals
  auto upLeft = readyFilter(), upRight = readyFilter(), downLeft = readyFilter(), downRight = readyFilter();
  rspl::StereoUpsampler2 stereoUp;
  rspl::StereoDownsampler2 stereoDown;
  for (std::size_t start = 0, n = 1; start + n <= left.size(); start += n, n = n % 12 + 1) {
    const auto part = [&](const Samples& s) { return Samples(&s[start], &s[start] + n); };
    const Samples l = up(upLeft, part(left)), r = up(upRight, part(right));
    Samples frames = pairs(part(left), part(right)), twice(4 * n);
    stereoUp.process(twice.data(), frames.data(), static_cast<int>(n));
    const Samples expected = pairs(l, r);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const bool isHeard = std::fabs(expected[i]) > 1e-9f;  // far above what either guard touches
      ASSERT_NEAR(twice[i], expected[i], isHeard ? 0.0 : 1e-17) << "up, from frame " << start;
    }
    stereoUp.halfBand.flushTraces();
    stereoDown.process(frames.data(), expected.data(), static_cast<int>(n));
    ASSERT_EQ(frames, pairs(down(downLeft, l), down(downRight, r))) << "down, from frame " << start;
  }
}

TEST(RateChange, DropsItsStateOnlyWhereThatIsNotFinite) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float value : {0.5f, std::numeric_limits<float>::quiet_NaN(), kInfinity, -kInfinity}) {
    for (const std::size_t lane : {0u, 1u, 2u, 3u}) {  // either channel in either branch
      rspl::StereoDownsampler2 lower;
      Samples frames(48), half(24);
      for (std::size_t i = lane; i < frames.size(); i += 4) frames[i] = value;
      lower.process(half.data(), frames.data(), 12);
      lower.halfBand.dropNonFinite();
      EXPECT_EQ(lower.halfBand.mem[3][lane] != 0.0f, value == 0.5f) << value << " in lane " << lane;
    }
  }
}

}  // namespace
