#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "cli/WavePicture.h"

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

// A PNG on disk for the time of one test.
class Picture {
 public:
  Picture() : path_(std::filesystem::path(testing::TempDir()) / pictureName()) {}
  ~Picture() { std::filesystem::remove(path_); }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  void draw(const std::vector<WaveTrack>& tracks, std::optional<BeatGrid> beats = {}) const {
    writeWavePicture(path_, tracks, beats);
  }
  // From the header chunk: width in bytes 16 to 19, height in bytes 20 to 23; 0 when the file is no PNG.
  [[nodiscard]] std::array<unsigned, 2> size() const {
    std::ifstream file(path_, std::ios::binary);
    std::array<char, 24> head{};
    file.read(head.data(), head.size());
    if (!file || std::string_view(head.data() + 1, 3) != "PNG") return {};
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(head[i])); };
    return {byte(18) << 8 | byte(19), byte(22) << 8 | byte(23)};
  }

 private:
  static std::string pictureName() {
    return std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png";
  }
  std::filesystem::path path_;
};

TEST(WaveColumns, HoldTheExtremesAndTheRmsOfTheirSamples) {
  const std::vector<float> samples{0.5f, -0.5f, 0.25f, -1.0f, 0.0f, 0.0f};
  const auto columns = waveColumns(samples, 3.0, 100);
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0].low, -1.0f);  // the line to the next column is drawn to its end
  EXPECT_EQ(columns[0].high, 0.5f);
  EXPECT_FLOAT_EQ(columns[0].rms, std::sqrt((0.25f + 0.25f + 0.0625f) / 3.0f));
  EXPECT_EQ(columns[1].low, -1.0f);
  EXPECT_EQ(columns[1].high, 0.0f);
}

TEST(WaveColumns, JoinTheSamplesByLinesWhenThereAreMoreColumnsThanSamples) {
  const auto columns = waveColumns(std::vector<float>{0.0f, 1.0f}, 0.25, 100);
  ASSERT_EQ(columns.size(), 8u);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_FLOAT_EQ(columns[i].low, 0.25f * static_cast<float>(i));
    EXPECT_FLOAT_EQ(columns[i].high, 0.25f * static_cast<float>(i + 1));
  }
  EXPECT_EQ(columns[7].low, 1.0f);
  EXPECT_TRUE(waveColumns({}, 0.25, 100).empty());
  EXPECT_EQ(waveColumns(std::vector<float>(1000), 1.0, 100).size(), 100u);
}

TEST(WaveColumns, AreGapsOnlyWhereSamplesAreNotFinite) {
  for (const float bad : {kNaN, std::numeric_limits<float>::infinity()}) {
    std::vector<float> samples(100, 0.5f);
    samples[55] = bad;
    const auto columns = waveColumns(samples, 10.0, 100);
    for (std::size_t i = 0; i < columns.size(); ++i) EXPECT_EQ(columns[i].gap, i == 5) << i;
  }
}

TEST(FrequencyAxis, IsLogarithmicFromThirtyHertzToNyquist) {
  const FrequencyAxis axis{480.0, 4};  // four octaves
  EXPECT_NEAR(axis.hzAt(0.0), 480.0, 1e-9);
  EXPECT_NEAR(axis.hzAt(3.0), 60.0, 1e-9);
  EXPECT_NEAR(axis.hzAt(4.0), 30.0, 1e-9);
  EXPECT_NEAR(axis.rowAt(120.0), 2.0, 1e-9);
}

TEST(Spectrogram, ShowsASineAtItsFrequencyAndLevelAtEveryRate) {
  constexpr std::size_t kRows = 200;
  for (const double rateHz : {4000.0, 44100.0, 768000.0})
    for (const double hz : {60.0, 440.0, 1000.0}) {
      SCOPED_TRACE(testing::Message() << hz << " Hz at " << rateHz << " Hz");
      const LevelMap map = levelsOf(trackOf({sine(hz, 1.0, rateHz)}, rateHz), 5, kRows);
      std::size_t brightest = 0;
      for (std::size_t row = 0; row < kRows; ++row)
        if (map.at(2, row) > map.at(2, brightest)) brightest = row;
      const FrequencyAxis axis{rateHz / 2.0, kRows};
      EXPECT_NEAR(static_cast<double>(brightest) + 0.5, axis.rowAt(hz), 1.5);
      EXPECT_NEAR(map.at(2, brightest), 0.0f, 1.0f);
    }
}

TEST(Spectrogram, IsDarkOutsideOfALoudBurst) {
  std::vector<float> samples(48000, 0.0f);
  const std::vector<float> burst = sine(5000.0, 0.1);
  std::copy(burst.begin(), burst.end(), samples.begin() + 24000);
  constexpr std::size_t kColumns = 10;
  const LevelMap map = levelsOf(trackOf({samples}), kColumns, 100);
  for (std::size_t column = 0; column < kColumns; ++column) {
    float loudest = kQuietestDb;
    for (std::size_t row = 0; row < map.rows; ++row) loudest = std::max(loudest, map.at(column, row));
    if (column == 5) {
      EXPECT_GT(loudest, -3.0f);
    } else if (column < 4 || column > 6) {
      EXPECT_EQ(loudest, kQuietestDb) << column;
    }
  }
}

TEST(Spectrogram, MixesChannelsAndTakesNotFiniteSamplesAsSilence) {
  const auto loudest = [](const WaveTrack& track) {
    const LevelMap map = levelsOf(track, 1, 50);
    return *std::max_element(map.db.begin(), map.db.end());
  };
  const std::vector<float> tone = sine(1000.0, 0.5);
  std::vector<float> inverse = tone;
  for (float& sample : inverse) sample = -sample;
  EXPECT_NEAR(loudest(trackOf({tone, std::vector<float>(tone.size())})), -6.0f, 0.5f);
  EXPECT_EQ(loudest(trackOf({tone, inverse})), kQuietestDb);
  EXPECT_EQ(loudest(trackOf({std::vector<float>(1000, kNaN)})), kQuietestDb);
  std::vector<float> holed = tone;
  for (std::size_t i = 0; i < holed.size(); i += 100) holed[i] = kNaN;  // one in every window
  EXPECT_NEAR(loudest(trackOf({holed})), 0.0f, 0.5f);
}

TEST(HeatColour, GetsBrighterWithTheLevelAndStopsAtTheEnds) {
  const auto lightness = [](float db) {
    const std::uint32_t rgb = heatColour(db);
    return 0.299 * (rgb >> 16) + 0.587 * (rgb >> 8 & 0xffu) + 0.114 * (rgb & 0xffu);
  };
  for (int i = 0; i < 45; ++i) {
    const float db = kQuietestDb + 2.0f * static_cast<float>(i);
    EXPECT_GT(lightness(db + 2.0f), lightness(db)) << db;
  }
  EXPECT_EQ(heatColour(-200.0f), heatColour(kQuietestDb));
  EXPECT_EQ(heatColour(20.0f), heatColour(0.0f));
}

TEST(BeatLines, StandAtTheBeatsAndNumberTheBars) {
  const auto lines = beatLines({120.0, 3.0}, 4.0, 800);  // beats 3 to 10, 100 columns each
  ASSERT_EQ(lines.size(), 8u);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_NEAR(lines[i].column, 100.0 * static_cast<double>(i), 1e-6);
    EXPECT_EQ(lines[i].strong, i == 1 || i == 5) << i;
  }
  EXPECT_EQ(lines[0].label, "");
  EXPECT_EQ(lines[1].label, "2");
  EXPECT_EQ(lines[5].label, "3");
}

TEST(BeatLines, AreThinnedOutInLongFiles) {
  for (const double seconds : {60.0, 3600.0, 86400.0}) {
    const auto lines = beatLines({174.0, -2.5}, seconds, 1200);
    ASSERT_GT(lines.size(), 20u);
    double labelled = -40.0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
      EXPECT_GE(lines[i].column - lines[i - 1].column, 6.9);
      if (lines[i].label.empty()) continue;
      EXPECT_GE(lines[i].column - labelled, 39.9);
      labelled = lines[i].column;
    }
  }
}

TEST(SecondLines, HaveRoundLabelsFromMicrosecondsToHours) {
  EXPECT_EQ(secondLines(8.0, 1236)[1].label, "1 s");
  EXPECT_EQ(secondLines(1.4, 1236)[1].label, "0.1 s");
  EXPECT_EQ(secondLines(3600.0, 1236)[1].label, "500 s");
  EXPECT_EQ(secondLines(1.0 / 768000.0, 1236)[1].label, "0.0000001 s");
}

TEST(WavePicture, GrowsWithTracksAndChannelsOnly) {
  const Picture picture;
  const std::vector<float> tone = sine(300.0, 0.2);
  picture.draw({trackOf({tone})});
  const auto mono = picture.size();
  picture.draw({trackOf({tone, tone})});
  const auto stereo = picture.size();
  picture.draw({trackOf({tone, tone}), trackOf({sine(300.0, 2.0), sine(300.0, 2.0)})}, BeatGrid{120.0, 0.0});
  const auto both = picture.size();
  EXPECT_EQ(mono[0], 1400u);
  EXPECT_EQ(both[0], 1400u);
  EXPECT_GT(stereo[1], mono[1]);
  EXPECT_GT(both[1], stereo[1] * 3 / 2);
}

TEST(WavePicture, IsDrawnForTheOddestAudioToo) {
  const Picture picture;
  const float largest = std::numeric_limits<float>::max();
  const std::vector<WaveTrack> tracks{
      trackOf({}),
      trackOf({{}}),
      trackOf({{1.0f}}, 768000.0),
      trackOf({{largest, -largest, largest}}, 1000.0),
      trackOf({std::vector<float>(500, kNaN), std::vector<float>(500, 1.0f)}),
      {"no \xff UTF-8 \xe2\x82 \xed\xa0\x80 \n" + std::string(3000, 'x'), kRateHz, {{0.0f, 1.0f}}},
  };
  for (const WaveTrack& track : tracks) {
    picture.draw({track}, BeatGrid{999.0, -1e9});
    EXPECT_EQ(picture.size()[0], 1400u);
  }
  picture.draw(tracks);
  EXPECT_EQ(picture.size()[0], 1400u);
}

TEST(WavePicture, RefusesWhatItCannotDraw) {
  const Picture picture;
  const WaveTrack good = trackOf({{0.0f, 1.0f}});
  EXPECT_THROW(picture.draw({}), std::runtime_error);
  for (const double rateHz : {0.0, -1.0, 999.0, 1e6, std::nan("")})
    EXPECT_THROW(picture.draw({trackOf({{0.0f}}, rateHz)}), std::runtime_error) << rateHz;
  EXPECT_THROW(picture.draw({trackOf({{0.0f}, {0.0f, 1.0f}})}), std::runtime_error);
  EXPECT_THROW(picture.draw({trackOf(std::vector<std::vector<float>>(1000, {0.0f}))}), std::runtime_error);
  for (const double tempo : {0.0, 1e300, std::nan("")})
    EXPECT_THROW(picture.draw({good}, BeatGrid{tempo, 0.0}), std::runtime_error) << tempo;
  EXPECT_THROW(picture.draw({good}, BeatGrid{120.0, std::nan("")}), std::runtime_error);
  const std::vector<WaveTrack> tracks{good};
  EXPECT_THROW(writeWavePicture("no such folder/picture.png", tracks, {}), std::runtime_error);
}

}  // namespace
}  // namespace modrift::cli
