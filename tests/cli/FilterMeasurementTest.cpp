// SPDX-License-Identifier: MIT
// Measured responses against what the types' names promise.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "cli/pictures/FilterMeasurement.h"
#include "cli/pictures/FilterPicture.h"

namespace modrift::cli {
namespace {

TEST(FilterMeasurement, FindsTheSlopesThatNamesPromise) {
  struct Row {
    int type;
    float cutoff;
    double fromHz, toHz;  // an octave, well beyond the corner
    float expectedDb;
  };
  constexpr Row kRows[] = {{0, 0.3f, 2000, 4000, -12}, {12, 0.8f, 500, 1000, 12},  {4, 0.3f, 2000, 4000, -12},
                           {6, 0.2f, 500, 1000, -24},  {7, 0.3f, 2000, 4000, -6},  {8, 0.3f, 2000, 4000, -12},
                           {9, 0.3f, 1000, 2000, -18}, {10, 0.2f, 500, 1000, -24}, {11, 0.8f, 100, 200, 6},
                           {14, 0.8f, 500, 1000, 24},  {15, 0.3f, 2000, 4000, -6}, {16, 0.8f, 200, 400, 12},
                           {87, 0.2f, 500, 1000, -24}, {76, 0.5f, 100, 200, 0},    {17, 0.8f, 50, 100, 0}};
  FilterMeasurement measurement;
  for (const Row& row : kRows) {
    const auto db = measurement.response({row.type, row.cutoff}, std::array{row.fromHz, row.toHz});
    EXPECT_NEAR(db[1] - db[0], row.expectedDb, 1.0f) << "type " << row.type;
  }
}

TEST(FilterMeasurement, FindsPeaksAndNewTonesWhereTheyAre) {
  const std::vector<double> hz = chartFrequencies();
  FilterMeasurement measurement;
  const auto loudest = [&](const std::vector<float>& db) {
    return hz[static_cast<std::size_t>(std::ranges::max_element(db) - db.begin())];
  };
  EXPECT_NEAR(loudest(measurement.response({0, 0.5f, 0.9f}, hz)), 562.0, 6.0);  // the cutoff's own text
  ASSERT_TRUE(FilterMeasurement::makesNewTones(79));
  const std::vector<float> ring = measurement.spectrumOfTone({79, 0.5f}, hz);
  const double first = loudest(ring);
  const auto at = [&](double f) {
    return ring[static_cast<std::size_t>(std::ranges::lower_bound(hz, f) - hz.begin())];
  };
  EXPECT_GT(std::abs(first - FilterMeasurement::kToneHz), 100.0);
  EXPECT_LT(at(FilterMeasurement::kToneHz), -60.0f);  // the sine itself is gone
}

}  // namespace
}  // namespace modrift::cli
