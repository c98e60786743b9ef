// All types against a plain model, and a pair against two single channels.
#include <cstring>
#include <gtest/gtest.h>

#include "filters/VFilter.h"
#include "tests/filters/FilterFixtures.h"
#include "tests/filters/ReferenceFilter.h"

namespace {

using namespace filters;

constexpr float kHostRate = 48000.0f;
constexpr long kFrames = 4800;

const VGlobalCoeffs& tables() {
  static const VGlobalCoeffs made = [] {
    VGlobalCoeffs t;
    t.init(440.0f, kHostRate);
    return t;
  }();
  return made;
}

std::vector<float> monoRun(const std::vector<Tick>& ticks, std::vector<float> signal) {
  TestFilter<float> filter(tables(), kHostRate);
  for (const Tick& t : ticks) filter.tick(t.params, signal, t.first, t.count);
  return signal;
}

class EveryType : public testing::TestWithParam<int> {};

TEST_P(EveryType, SoundsAsThePlainModelDoes) {
  static const reference::Tables plainTables(static_cast<double>(kHostRate));
  const std::vector<Tick> ticks = wanderingTicks(GetParam(), kFrames);
  const std::vector<float> in = noise(3u, kFrames);
  const std::vector<float> out = monoRun(ticks, in);
  reference::Filter plain(plainTables);
  plain.setSampleRate(2.0f * kHostRate, 0.5f / kHostRate);
  plain.clear();
  std::vector<float> expected(in.size());
  for (const Tick& t : ticks) {
    std::array<float, 8> params{};
    std::copy(t.params.begin(), t.params.end(), params.begin());
    plain.processBuffer(params.data(), in.data() + t.first, expected.data() + t.first, t.count);
  }
  for (std::size_t i = 0; i < in.size(); ++i) {
    ASSERT_EQ(out[i], expected[i]) << "at sample " << i;
  }
}

TEST_P(EveryType, GivesThePairTheBitsOfTwoSingleChannels) {
  const std::vector<Tick> ticks = wanderingTicks(GetParam(), kFrames);
  const std::vector<float> left = noise(11u, kFrames);
  const std::vector<float> right = noise(12u, kFrames);
  std::vector<float> both;
  for (std::size_t i = 0; i < left.size(); ++i) {
    both.push_back(left[i]);
    both.push_back(right[i]);
  }
  TestFilter<dsp::Quad> pair(tables(), kHostRate);
  for (const Tick& t : ticks) pair.tick(t.params, both, t.first, t.count);
  const std::vector<float> leftAlone = monoRun(ticks, left);
  const std::vector<float> rightAlone = monoRun(ticks, right);
  for (std::size_t i = 0; i < left.size(); ++i) {
    ASSERT_EQ(std::memcmp(&both[2 * i], &leftAlone[i], sizeof(float)), 0) << "left at " << i;
    ASSERT_EQ(std::memcmp(&both[2 * i + 1], &rightAlone[i], sizeof(float)), 0) << "right at " << i;
  }
}

std::string nameOf(const testing::TestParamInfo<int>& info) {
  std::string name = typeAt(info.param).name;
  for (char& c : name) {
    if (c == '+') c = 'p';
    if (c == '-') c = 'm';
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Bank, EveryType, testing::Range(0, kFilterTypes), nameOf);

}  // namespace
