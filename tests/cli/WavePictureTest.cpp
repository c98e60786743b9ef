// SPDX-License-Identifier: MIT
// The picture's measurements at known signals, and that it is drawn, or refused, whatever comes.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "cli/pictures/WavePicture.h"
#include "tests/TemporaryFolder.h"

namespace modrift::cli {
namespace {

constexpr double kRateHz = 48000.0;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<float> sine(double hz, double seconds, double rateHz = kRateHz) {
  std::vector<float> samples(static_cast<std::size_t>(seconds * rateHz));
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<float>(std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(i) / rateHz));
  return samples;
}

WaveTrack trackOf(std::vector<std::vector<float>> channels, double rateHz = kRateHz) {
  return {"a title", rateHz, std::move(channels)};
}

TEST(WaveColumns, HoldTheExtremesAndTheRmsOfTheirSamplesAndMarkGaps) {
  const std::vector<float> samples{0.5f, -0.5f, 0.25f, -1.0f, 0.0f, 0.0f, 0.0f, 0.0f, kNaN};
  const auto columns = waveColumns(samples, 3.0, 100);
  ASSERT_EQ(columns.size(), 3u);
  EXPECT_EQ(columns[0].low, -1.0f);  // the line to the next column is drawn to its end
  EXPECT_EQ(columns[0].high, 0.5f);
  EXPECT_FLOAT_EQ(columns[0].rms, std::sqrt((0.25f + 0.25f + 0.0625f) / 3.0f));
  EXPECT_EQ(columns[1].high, 0.0f);
  EXPECT_FALSE(columns[1].gap);
  EXPECT_TRUE(columns[2].gap);
  const auto stretched = waveColumns(std::vector<float>{0.0f, 1.0f}, 0.25, 100);
  ASSERT_EQ(stretched.size(), 8u);
  EXPECT_FLOAT_EQ(stretched[1].low, 0.25f);  // samples are joined by a line
  EXPECT_FLOAT_EQ(stretched[1].high, 0.5f);
}

TEST(Spectrogram, ShowsASineAtItsFrequencyAndLevelAtEveryRateInSpiteOfHoles) {
  constexpr std::size_t kRows = 200;
  for (const double rateHz : {4000.0, 44100.0, 768000.0}) {
    std::vector<float> holed = sine(1000.0, 1.0, rateHz);
    for (std::size_t i = 0; i < holed.size(); i += 1000) holed[i] = kNaN;
    const LevelMap map = spectrogram(trackOf({holed}, rateHz), {rateHz / 2.0, kRows}, rateHz / 5.0, 5);
    std::size_t brightest = 0;
    for (std::size_t row = 0; row < kRows; ++row)
      if (map.at(2, row) > map.at(2, brightest)) brightest = row;
    const double octavesFromTop = std::log2(rateHz / 2000.0), octaves = std::log2(rateHz / 60.0);
    EXPECT_NEAR(static_cast<double>(brightest) + 0.5, kRows * octavesFromTop / octaves, 1.5) << rateHz;
    EXPECT_NEAR(map.at(2, brightest), 0.0f, 1.0f) << rateHz;
  }
}

TEST(BeatLines, StandAtTheBeatsNumberTheBarsAndThinOutInLongFiles) {
  const auto lines = beatLines({120.0, 3.0}, 4.0, 800);  // beats 3 to 10, 100 columns each
  ASSERT_EQ(lines.size(), 8u);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_NEAR(lines[i].column, 100.0 * static_cast<double>(i), 1e-6);
    EXPECT_EQ(lines[i].strong, i == 1 || i == 5) << i;
  }
  EXPECT_EQ(lines[1].label, "2");
  EXPECT_EQ(lines[5].label, "3");
  EXPECT_LT(beatLines({174.0, -2.5}, 3600.0, 1200).size(), 200u);
}

TEST(WavePicture, IsDrawnForTheOddestAudioToo) {
  const TemporaryFolder folder;
  const float largest = std::numeric_limits<float>::max();
  const std::vector<WaveTrack> tracks{
      trackOf({}),
      trackOf({{}}),
      trackOf({{1.0f}}, 768000.0),
      trackOf({{largest, -largest, largest}}, 1000.0),
      trackOf({std::vector<float>(500, kNaN), std::vector<float>(500, 1.0f)}),
      {"no \xff UTF-8 \xe2\x82 \xed\xa0\x80 \n" + std::string(3000, 'x'), kRateHz, {{0.0f, 1.0f}}},
  };
  writeWavePicture(folder / "all.png", tracks, BeatGrid{999.0, -1e9});
  EXPECT_EQ(readText(folder / "all.png").substr(1, 3), "PNG");
}

TEST(WavePicture, RefusesWhatItCannotDraw) {
  const TemporaryFolder folder;
  const auto refuses = [&](const std::vector<WaveTrack>& tracks, std::optional<BeatGrid> beats = {}) {
    EXPECT_THROW(writeWavePicture(folder / "a.png", tracks, beats), std::runtime_error);
  };
  refuses({});
  for (const double rateHz : {0.0, -1.0, 999.0, 1e6, std::nan("")}) refuses({trackOf({{0.0f}}, rateHz)});
  refuses({trackOf({{0.0f}, {0.0f, 1.0f}})});
  refuses({trackOf(std::vector<std::vector<float>>(1000, {0.0f}))});
  for (const double tempo : {0.0, 1e300, std::nan("")}) refuses({trackOf({{0.0f}})}, BeatGrid{tempo, 0.0});
  refuses({trackOf({{0.0f}})}, BeatGrid{120.0, std::nan("")});
}

}  // namespace
}  // namespace modrift::cli
