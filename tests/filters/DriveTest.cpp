// The filter's bypass state: the drive stage alone.
#include <array>
#include <gtest/gtest.h>

#include "filters/VFilter.h"

namespace {

float driven(float drive, float in, int count = 1) {
  VGlobalCoeffs tables;
  tables.init(440.0f, 48000.0f);
  VFilter filter(&tables);
  filter.setSampleRate(96000.0f, 1.0f / 96000.0f);
  filter.clear();
  std::array<float, kFilterParams> params{drive, 0.0f, 0.0f, 0.5f, 0.0f, 0.5f, 1.0f};
  float out = 7.0f;
  filter.processBuffer(params.data(), &in, &out, count);
  return out;
}

TEST(Drive, GoesFromOneToSixteenTimesIntoAClampAtOneAndAHalf) {
  EXPECT_NEAR(kernels::softClip(1.5f), 1.0f, 1e-6f);
  EXPECT_NEAR(kernels::softClip(1.49f), 1.0f, 1e-4f);  // reached without a slope
  EXPECT_EQ(kernels::softClip(-0.5f), -kernels::softClip(0.5f));
  EXPECT_FLOAT_EQ(driven(0.0f, 0.01f), kernels::softClip(0.01f));
  EXPECT_FLOAT_EQ(driven(1.0f, 0.01f), kernels::softClip(0.16f));
  EXPECT_FLOAT_EQ(driven(1.0f, 0.25f), 1.0f);  // 4.0, far beyond the clamp
  EXPECT_FLOAT_EQ(driven(7.0f, 0.01f), kernels::softClip(0.16f)) << "drive beyond its range is limited";
  for (const int count : {0, -3}) EXPECT_EQ(driven(0.0f, 0.5f, count), 7.0f) << "nothing asked for, something written";
}

}  // namespace
