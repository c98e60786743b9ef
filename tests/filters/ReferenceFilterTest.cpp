// The plain filter bank against facts that do not depend on how it is written.
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

#include "tests/filters/ReferenceFilter.h"

namespace {

const reference::Tables kTables(44100.0);
reference::Filter ready() {
  reference::Filter filter(kTables);
  filter.setSampleRate(88200.0f, 1.0f / 88200.0f);
  filter.clear();
  return filter;
}

std::vector<float> played(int type, const std::vector<float>& in, float mix = 1.0f, bool bypassed = false) {
  const float drive = bypassed ? 1.0f : 0.0f, power = bypassed ? 0.4f : 0.5f;
  const float params[8]{drive, power, static_cast<float>(type) / 92.0f, 0.5f, 0.0f, 0.0f, mix, 0.0f};
  reference::Filter filter = ready();
  std::vector<float> out(in.size());
  filter.processBuffer(params, in.data(), out.data(), static_cast<long>(in.size()));
  EXPECT_EQ(filter.mode(), bypassed ? -1 : type);
  return out;
}

TEST(ReferenceFilter, FindsEveryTypeAndStillDrivesInBypass) {
  for (int type = 0; type <= 92; ++type) played(type, {0.0f});
  EXPECT_EQ(played(0, {0.25f}, 1.0f, true)[0], 1.0f);
  EXPECT_EQ(ready().mainLine.mask + 1, 8192);
  EXPECT_EQ(ready().combLine[7].mask + 1, 4096);
}

TEST(ReferenceFilter, PassesOrStopsAConstantAsTheTypesNameSays) {
  for (const int type : {0, 3, 4, 5, 6, 7, 8, 9, 10, 17, 18, 19, 20, 24, 25, 31, 32, 33, 87, 92})
    EXPECT_NEAR(played(type, std::vector<float>(40000, 0.01f)).back(), 0.01f, 2e-5f) << type;
  for (const int type : {1, 2, 11, 12, 13, 14, 15, 16, 21, 22, 23, 26, 29, 30, 89, 90, 91})
    EXPECT_NEAR(played(type, std::vector<float>(40000, 0.01f)).back(), 0.0f, 2e-5f) << type;
}

TEST(ReferenceFilter, KeepsThePhasersEnergyTheFlangersDelayAndTheVowelsPeak) {
  std::vector<float> impulse(4000), sine(4000);
  impulse[0] = 0.01f;
  const auto sineAt = [](double i) { return 0.01 * std::sin(0.1 * std::numbers::pi * i); };
  for (std::size_t i = 0; i < sine.size(); ++i) sine[i] = static_cast<float>(sineAt(static_cast<double>(i)));
  for (const int type : {58, 60, 62, 64}) {  // wet alone
    double energy = 0.0;
    for (const float y : played(type, impulse, 2.0f)) energy += static_cast<double>(y) * y;
    EXPECT_NEAR(std::sqrt(energy), 0.01, 1e-5) << type;
  }
  EXPECT_NEAR(played(50, sine, 2.0f)[3003], sineAt(3003.0 - kTables.delay[12288].samples), 1e-4);
  reference::Resonator peak{.sampleFreq = 88200.0f, .f0 = 4410.0f, .gain = 1.02f, .q = 10.0f};
  peak.updateEq();
  for (std::size_t i = 0; i < sine.size(); ++i) impulse[i] = peak.process(sine[i]);
  EXPECT_NEAR(impulse.back(), 1.02f * sine.back(), 1e-5f);
}

}  // namespace
