// The two-times rate change: levels, images, and the stereo form against two mono objects.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "filters/Downsampler2Flt.h"
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
  std::uniform_real_distribution<float> level(-1.0f, 1.0f);
  Samples samples(count);
  for (float& s : samples) s = level(random);
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

TEST(RateChange, MarksCoefficientsThatWereNeverSet) {
  const rspl::Downsampler2Flt filter;
  EXPECT_EQ(filter.coef[0], 12345.0f);
  EXPECT_EQ(filter.coef[6], 0.0f);
}

TEST(RateChange, KeepsAConstantUpAndDownAgain) {
  auto upper = readyFilter();
  auto lower = readyFilter();
  const Samples out = down(lower, up(upper, Samples(4000, 0.7f)));
  EXPECT_NEAR(out.back(), 0.7f, 1e-6f);
}

TEST(RateChange, LeavesOnlyAResidueOnTheOddSamplesOfTheWayUp) {
  auto upper = readyFilter();
  const Samples out = up(upper, noise(2000, 1));
  for (std::size_t i = 1; i < out.size(); i += 2) ASSERT_LT(std::abs(out[i]), 1e-24f) << "sample " << i;
}

TEST(RateChange, DoublesBothBranchesOnTheWayDown) {
  auto lower = readyFilter();
  EXPECT_NEAR(down(lower, Samples(8000, 0.25f)).back(), 4.0f * 0.25f, 1e-5f);
}

TEST(RateChange, PassesToneLevelsUpAndDownWhateverTheirPitch) {
  for (const double cyclesPerSample : {0.001, 0.01, 0.1, 0.2, 0.3, 0.4, 0.45}) {
    auto upper = readyFilter();
    auto lower = readyFilter();
    Samples tone(20000);
    for (std::size_t i = 0; i < tone.size(); ++i)
      tone[i] = static_cast<float>(std::sin(2.0 * std::numbers::pi * cyclesPerSample * static_cast<double>(i)));
    const Samples out = down(lower, up(upper, tone));
    EXPECT_NEAR(rms(out, 1000) / rms(tone, 1000), 1.0, 2e-3) << cyclesPerSample << " cycles a sample";
  }
}

// A tone above the host's Nyquist frequency is what the way down must take away.
TEST(RateChange, RemovesWhatLiesAboveTheHostsNyquistFrequency) {
  auto lower = readyFilter();
  Samples tone(40000);
  for (std::size_t i = 0; i < tone.size(); ++i)
    tone[i] = static_cast<float>(std::sin(2.0 * std::numbers::pi * 0.35 * static_cast<double>(i)));
  EXPECT_LT(20.0 * std::log10(rms(down(lower, tone), 1000)), -60.0);
}

TEST(RateChange, GivesTheSameBitsForAPairAsForTwoChannels) {
  const Samples left = noise(1 << 14, 2);
  Samples right = noise(1 << 14, 3);
  std::fill(right.begin() + 5000, right.begin() + 9000, 0.0f);  // silence drives the memories towards denormals
  auto upLeft = readyFilter(), upRight = readyFilter(), downLeft = readyFilter(), downRight = readyFilter();
  rspl::StereoUpsampler2 stereoUp;
  rspl::StereoDownsampler2 stereoDown;
  for (std::size_t start = 0, n = 1; start + n <= left.size(); start += n, n = n % 12 + 1) {
    const Samples l =
        up(upLeft, {left.begin() + static_cast<long>(start), left.begin() + static_cast<long>(start + n)});
    const Samples r =
        up(upRight, {right.begin() + static_cast<long>(start), right.begin() + static_cast<long>(start + n)});
    Samples frames(2 * n);
    for (std::size_t i = 0; i < n; ++i) {
      frames[2 * i] = left[start + i];
      frames[2 * i + 1] = right[start + i];
    }
    Samples twice(4 * n);
    stereoUp.process(twice.data(), frames.data(), static_cast<int>(n));
    for (std::size_t i = 0; i < 2 * n; ++i) {
      ASSERT_EQ(twice[2 * i], l[i]) << "up, left, frame " << start + i;
      ASSERT_EQ(twice[2 * i + 1], r[i]) << "up, right, frame " << start + i;
    }
    stereoDown.process(frames.data(), twice.data(), static_cast<int>(n));
    const Samples dl = down(downLeft, l), dr = down(downRight, r);
    for (std::size_t i = 0; i < n; ++i) {
      ASSERT_EQ(frames[2 * i], dl[i]) << "down, left, frame " << start + i;
      ASSERT_EQ(frames[2 * i + 1], dr[i]) << "down, right, frame " << start + i;
    }
  }
}

TEST(RateChange, ForgetsNonFiniteInputAndNothingElse) {
  for (const float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 3e38f}) {
    rspl::StereoUpsampler2 upper;
    rspl::StereoDownsampler2 lower;
    Samples frames(24, 0.5f), twice(48);
    const auto run = [&] {
      upper.process(twice.data(), frames.data(), 12);
      lower.process(frames.data(), twice.data(), 12);
    };
    run();
    upper.halfBand.dropNonFinite();
    EXPECT_NE(upper.halfBand.mem[3][0], 0.0f) << "a healthy state was dropped";
    frames.assign(24, 0.5f);
    frames[7] = bad;
    run();
    upper.halfBand.dropNonFinite();
    lower.halfBand.dropNonFinite();
    frames.assign(24, 0.5f);
    run();
    for (const float s : frames) ASSERT_TRUE(std::isfinite(s)) << "after " << bad;
  }
}

}  // namespace
