// SPDX-License-Identifier: MIT
// The sound of each type, held bit for bit on every build: settings that sweep, settings that jump, and one filter that
// goes from type to type. A line of a golden file has a name, a checksum of all samples, and a share of the samples
// themselves, so that a difference shows where it begins. After a wanted change:
// MODRIFT_WRITE_GOLDEN=tests/filters filters_tests --gtest_filter='Golden*'
#include <bit>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

#include "tests/filters/FilterFixtures.h"

namespace {

using namespace filters;
using Samples = std::vector<float>;

VGlobalCoeffs tablesFor(float hostRate) {
  VGlobalCoeffs tables;
  tables.init(440.0f, hostRate);
  return tables;
}

// Noise that fades in, stops half way, and settings that move in every tick.
Samples swept(const VGlobalCoeffs& tables, int type) {
  constexpr long kSamples = 9600;
  TestFilter<float> filter(tables, 44100.0f);
  Noise random(static_cast<std::uint32_t>(type) + 100u);
  Samples samples(kSamples);
  for (long i = 0; i < kSamples / 2; ++i)
    samples[static_cast<std::size_t>(i)] = random() * static_cast<float>(i) / kSamples;
  for (long i = 0; i < kSamples; i += 24) {
    const float ramp = static_cast<float>(i) / kSamples;
    filter.tick(filterParams(type, 0.35f + 0.4f * ramp, 0.8f * (1.0f - ramp), 0.2f + 0.6f * ramp, 0.3f), samples, i,
                24);
  }
  return samples;
}

Samples jumping(const VGlobalCoeffs& tables, int type) {
  constexpr long kSamples = 4800;
  TestFilter<float> filter(tables, 48000.0f);
  Samples samples = noise(3u, kSamples);
  for (const Tick& t : wanderingTicks(type, kSamples)) filter.tick(t.params, samples, t.first, t.count);
  return samples;
}

// One filter through all types, each after another one than in the catalogue; every eighth time it is off between.
Samples travelling(const VGlobalCoeffs& tables) {
  constexpr long kStay = 144;
  TestFilter<float> filter(tables, 48000.0f);
  Samples all;
  for (int i = 0; i < 2 * kFilterTypes; ++i) {
    Samples samples = noise(static_cast<std::uint32_t>(i), kStay);
    for (Tick& t : wanderingTicks(i * 37 % kFilterTypes, kStay)) {
      t.params[kPower] = i % 8 == 7 && t.first == 0 ? 0.0f : 1.0f;
      filter.tick(t.params, samples, t.first, t.count);
    }
    all.insert(all.end(), samples.begin(), samples.end());
  }
  return all;
}

std::uint64_t checksum(const Samples& samples) {
  std::uint64_t hash = 14695981039346656037u;  // FNV-1a
  for (const float x : samples) hash = (hash ^ std::bit_cast<std::uint32_t>(x)) * 1099511628211u;
  return hash;
}

void writeLine(std::ostream& lines, const char* name, const Samples& samples, std::size_t shownEvery) {
  lines << name << ';' << std::hex << std::setfill('0') << std::setw(16) << checksum(samples) << ';';
  for (std::size_t i = 0; i < samples.size(); i += shownEvery)
    lines << std::setw(8) << std::bit_cast<std::uint32_t>(samples[i]) << ' ';
  lines << '\n';
}

void expectLines(const char* fileName, const std::string& actual) {
  if (const char* const folder = std::getenv("MODRIFT_WRITE_GOLDEN")) {
    std::ofstream(std::string(folder) + '/' + fileName) << actual;
    GTEST_SKIP() << "wrote " << fileName;
  }
  std::ifstream file(std::string(MODRIFT_GOLDEN_FOLDER "/") + fileName);
  ASSERT_TRUE(file) << fileName;
  std::istringstream lines(actual);
  for (std::string expected, got; std::getline(lines, got);) {
    ASSERT_TRUE(std::getline(file, expected));
    const auto difference = std::mismatch(got.begin(), got.end(), expected.begin(), expected.end());
    EXPECT_EQ(got.size(), expected.size());
    EXPECT_EQ(difference.first - got.begin(), static_cast<long>(got.size()))
        << "the first character that differs of the line of " << got.substr(0, got.find(';'));
  }
  if (testing::Test::HasFailure()) std::ofstream(std::string("actual-") + fileName) << actual;
}

const char* nameOf(int type) { return typeAt(type).name; }

TEST(Golden, AllTypesSoundAsTheyDid) {
  const VGlobalCoeffs tables = tablesFor(44100.0f);
  std::ostringstream lines;
  for (int type = 0; type < kFilterTypes; ++type) writeLine(lines, nameOf(type), swept(tables, type), 48);
  expectLines("Golden.txt", lines.str());
}

TEST(Golden, SettingsAndTypesThatJumpSoundAsTheyDid) {
  const VGlobalCoeffs tables = tablesFor(48000.0f);
  std::ostringstream lines;
  for (int type = 0; type < kFilterTypes; ++type) writeLine(lines, nameOf(type), jumping(tables, type), 480);
  writeLine(lines, "all in turn", travelling(tables), 144);
  expectLines("GoldenJumps.txt", lines.str());
}

}  // namespace
