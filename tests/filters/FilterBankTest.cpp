// All types against a plain model, and a pair against two single channels.
#include <cstring>
#include <gtest/gtest.h>

#include "filters/VFilter.h"
#include "tests/filters/FilterFixtures.h"
#include "tests/filters/ReferenceFilter.h"

namespace {

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

// One tick's length and settings; every fourth tick has an odd length, as at the end of a host's block.
struct Tick {
  long first, count;
  FilterParams params;
};

std::vector<Tick> wanderingTicks(int type) {
  Noise random(static_cast<std::uint32_t>(type) + 7u);
  const auto unit = [&] { return 0.5f + 0.5f * random(); };
  std::vector<Tick> ticks;
  FilterParams params = filterParams(type, 0.5f, 0.3f, 0.5f);
  for (long first = 0; first < kFrames;) {
    const bool bOdd = ticks.size() % 4 == 3;
    const long count = std::min(bOdd ? 7L : 24L, kFrames - first);
    if (ticks.size() % 5 == 0)
      params = filterParams(type, 0.2f + 0.6f * unit(), 0.8f * unit(), unit(), ticks.size() > 100 ? unit() : 0.0f);
    ticks.push_back({first, count, params});
    first += count;
  }
  return ticks;
}

std::vector<float> noise(std::uint32_t seed, long count) {
  Noise next(seed);
  std::vector<float> out(static_cast<std::size_t>(count));
  for (float& x : out) x = 0.5f * next();
  return out;
}

std::vector<float> monoRun(const std::vector<Tick>& ticks, std::vector<float> signal) {
  TestFilter<float> filter(tables(), kHostRate);
  for (const Tick& t : ticks) filter.tick(t.params, signal, t.first, t.count);
  return signal;
}

class EveryType : public testing::TestWithParam<int> {};

TEST_P(EveryType, SoundsAsThePlainModelDoes) {
  static const reference::Tables plainTables(static_cast<double>(kHostRate));
  const std::vector<Tick> ticks = wanderingTicks(GetParam());
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
  const std::vector<Tick> ticks = wanderingTicks(GetParam());
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
  std::string name = filterTypes()[static_cast<std::size_t>(info.param)].name;
  for (char& c : name) {
    if (c == '+') c = 'p';
    if (c == '-') c = 'm';
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Bank, EveryType, testing::Range(0, kFilterTypes), nameOf);

}  // namespace
