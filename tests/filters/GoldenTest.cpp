// The sound of each type, held bit for bit on every build. `Golden.txt` has a line a type: its name, a checksum of all
// samples, and a share of the samples themselves, so that a difference shows where it begins. After a wanted change:
// MODRIFT_WRITE_GOLDEN=tests/filters/Golden.txt modrift_filters_test --gtest_filter='Golden*'
#include <bit>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

#include "tests/filters/FilterFixtures.h"

namespace {

constexpr long kSamples = 9600;
constexpr std::size_t kShownEvery = 48;

// Noise that fades in, stops half way, and settings that move in every tick.
std::vector<float> playedType(const VGlobalCoeffs& tables, int type) {
  TestFilter<float> filter(tables, 44100.0f);
  Noise random(static_cast<std::uint32_t>(type) + 100u);
  std::vector<float> samples(kSamples);
  for (long i = 0; i < kSamples / 2; ++i)
    samples[static_cast<std::size_t>(i)] = random() * static_cast<float>(i) / kSamples;
  for (long i = 0; i < kSamples; i += 24) {
    const float ramp = static_cast<float>(i) / kSamples;
    filter.tick(filterParams(type, 0.35f + 0.4f * ramp, 0.8f * (1.0f - ramp), 0.2f + 0.6f * ramp, 0.3f), samples, i,
                24);
  }
  return samples;
}

std::uint64_t checksum(const std::vector<float>& samples) {
  std::uint64_t hash = 14695981039346656037u;  // FNV-1a
  for (const float x : samples) hash = (hash ^ std::bit_cast<std::uint32_t>(x)) * 1099511628211u;
  return hash;
}

std::string goldenLine(const VGlobalCoeffs& tables, int type) {
  const std::vector<float> samples = playedType(tables, type);
  std::ostringstream line;
  line << filterTypes()[static_cast<std::size_t>(type)].name << ';' << std::hex << std::setfill('0') << std::setw(16)
       << checksum(samples) << ';';
  for (std::size_t i = 0; i < samples.size(); i += kShownEvery)
    line << std::setw(8) << std::bit_cast<std::uint32_t>(samples[i]) << ' ';
  return line.str();
}

TEST(Golden, AllTypesSoundAsTheyDid) {
  VGlobalCoeffs tables;
  tables.init(440.0f, 44100.0f);
  std::ostringstream actual;
  for (int type = 0; type < kFilterTypes; ++type) actual << goldenLine(tables, type) << '\n';
  if (const char* const path = std::getenv("MODRIFT_WRITE_GOLDEN")) {
    std::ofstream(path) << actual.str();
    GTEST_SKIP() << "wrote " << path;
  }
  std::ifstream file(MODRIFT_GOLDEN_FILE);
  ASSERT_TRUE(file) << MODRIFT_GOLDEN_FILE;
  std::istringstream lines(actual.str());
  for (std::string expected, got; std::getline(lines, got);) {
    ASSERT_TRUE(std::getline(file, expected));
    const auto difference = std::mismatch(got.begin(), got.end(), expected.begin(), expected.end());
    EXPECT_EQ(got.size(), expected.size());
    EXPECT_EQ(difference.first - got.begin(), static_cast<long>(got.size()))
        << "the first character that differs of the line of " << got.substr(0, got.find(';'));
  }
  if (HasFailure()) std::ofstream("Golden.actual.txt") << actual.str();
}

}  // namespace
