// The picture's measurements at known signals, and that it is drawn, or refused, whatever comes.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "cli/WavePicture.h"
#include "tests/cli/TemporaryFolder.h"

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

LevelMap levelsOf(const WaveTrack& track, std::size_t columns, std::size_t rows) {
  const double samplesPerColumn = static_cast<double>(track.channels[0].size()) / static_cast<double>(columns);
  return spectrogram(track, {track.sampleRateHz / 2.0, rows}, samplesPerColumn, columns);
}

TEST(WaveColumns, HoldTheExtremesAndTheRmsOfTheirSamples) {
  const std::vector<float> samples{0.5f, -0.5f, 0.25f, -1.0f, 0.0f, 0.0f};
  const auto columns = waveColumns(samples, 3.0, 100);
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0].low, -1.0f);  // the line to the next column is drawn to its end
  EXPECT_EQ(columns[0].high, 0.5f);
  EXPECT_FLOAT_EQ(columns[0].rms, std::sqrt((0.25f + 0.25f + 0.0625f) / 3.0f));
  EXPECT_EQ(columns[1].high, 0.0f);
  const auto stretched = waveColumns(std::vector<float>{0.0f, 1.0f}, 0.25, 100);
  ASSERT_EQ(stretched.size(), 8u);
  EXPECT_FLOAT_EQ(stretched[1].low, 0.25f);  // samples are joined by a line
  EXPECT_FLOAT_EQ(stretched[1].high, 0.5f);
}

TEST(WaveColumns, AreGapsOnlyWhereSamplesAreNotFinite) {
  std::vector<float> samples(100, 0.5f);
  samples[55] = kNaN;
  const auto columns = waveColumns(samples, 10.0, 100);
  for (std::size_t i = 0; i < columns.size(); ++i) EXPECT_EQ(columns[i].gap, i == 5) << i;
}

TEST(Spectrogram, ShowsASineAtItsFrequencyAndLevelAtEveryRate) {
  constexpr std::size_t kRows = 200;
  for (const double rateHz : {4000.0, 44100.0, 768000.0}) {
    for (const double hz : {60.0, 1000.0}) {
      SCOPED_TRACE(testing::Message() << hz << " Hz at " << rateHz << " Hz");
      const LevelMap map = levelsOf(trackOf({sine(hz, 1.0, rateHz)}, rateHz), 5, kRows);
      std::size_t brightest = 0;
      for (std::size_t row = 0; row < kRows; ++row)
        if (map.at(2, row) > map.at(2, brightest)) brightest = row;
      const double octavesFromTop = std::log2(rateHz / 2.0 / hz), octaves = std::log2(rateHz / 2.0 / 30.0);
      EXPECT_NEAR(static_cast<double>(brightest) + 0.5, kRows * octavesFromTop / octaves, 1.5);
      EXPECT_NEAR(map.at(2, brightest), 0.0f, 1.0f);
    }
  }
}

TEST(Spectrogram, MixesChannelsAndTakesNotFiniteSamplesAsSilence) {
  const auto loudest = [](const WaveTrack& track) {
    const LevelMap map = levelsOf(track, 1, 50);
    return *std::max_element(map.db.begin(), map.db.end());
  };
  const std::vector<float> tone = sine(1000.0, 0.5);
  EXPECT_NEAR(loudest(trackOf({tone, std::vector<float>(tone.size())})), -6.0f, 0.5f);
  EXPECT_EQ(loudest(trackOf({std::vector<float>(1000, kNaN)})), kQuietestDb);
  std::vector<float> holed = tone;
  for (std::size_t i = 0; i < holed.size(); i += 100) holed[i] = kNaN;  // one in every window
  EXPECT_NEAR(loudest(trackOf({holed})), 0.0f, 0.5f);
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
  const auto many = beatLines({174.0, -2.5}, 3600.0, 1200);
  ASSERT_GT(many.size(), 20u);
  for (std::size_t i = 1; i < many.size(); ++i) EXPECT_GE(many[i].column - many[i - 1].column, 6.9);
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
