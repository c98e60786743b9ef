#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numbers>
#include <sndfile.h>

#include "cli/AudioFile.h"
#include "cli/Channels.h"
#include "cli/Errors.h"
#include "cli/Levels.h"
#include "cli/PendingFile.h"
#include "cli/RenderTargets.h"
#include "cli/Resample.h"
#include "tests/cli/TemporaryFolder.h"

namespace modrift::cli {
namespace {

namespace fs = std::filesystem;

std::vector<float> sine(double hz, std::size_t frames, double rateHz, double amplitude = 0.5) {
  std::vector<float> samples(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>(i) / rateHz;
    samples[i] = static_cast<float>(amplitude * std::sin(phase));
  }
  return samples;
}

struct Format {
  const char* name;
  int rateHz;
  double tolerance;  // of a sample
};

class EveryFormat : public testing::TestWithParam<Format> {};

TEST_P(EveryFormat, BringsBackWhatWasWritten) {
  const TemporaryFolder folder;
  const double rate = GetParam().rateHz;
  const Audio audio{rate, {sine(440.0, 10000, rate), sine(220.0, 10000, rate)}};
  writeAudio(folder / GetParam().name, audio);
  const Audio back = readAudio(folder / GetParam().name);
  EXPECT_EQ(back.sampleRateHz, rate);
  ASSERT_EQ(back.channels.size(), 2U);
  ASSERT_EQ(back.frames(), audio.frames());
  for (std::size_t channel = 0; channel < 2; ++channel) {
    for (std::size_t i = 0; i < audio.frames(); ++i) {
      ASSERT_NEAR(back.channels[channel][i], audio.channels[channel][i], GetParam().tolerance) << channel << " " << i;
    }
  }
}

// Vorbis is lossy: what must hold is that channels, length and scale are right.
INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat,
                         testing::Values(Format{"a.wav", 44100, 0.0}, Format{"a.WAV", 96000, 0.0},
                                         Format{"a.aiff", 48000, 0.0}, Format{"a.flac", 44100, 2.5e-7},
                                         Format{"a.ogg", 48000, 0.1}));

TEST(WriteAudio, ClipsInsteadOfWrappingRoundWhereTheFormatHasAnEnd) {
  const TemporaryFolder folder;
  writeAudio(folder / "a.flac", {44100.0, {{1.5f, -1.5f}}});
  EXPECT_NEAR(readAudio(folder / "a.flac").channels[0][0], 1.0f, 1e-6f);
  EXPECT_NEAR(readAudio(folder / "a.flac").channels[0][1], -1.0f, 1e-6f);
  writeAudio(folder / "a.wav", {44100.0, {{1.5f, -1.5f}}});
  EXPECT_EQ(readAudio(folder / "a.wav").channels[0][0], 1.5f);
}

TEST(WriteAudio, LeavesTheOldFileAndNothingElseWhenItFails) {
  const TemporaryFolder folder;
  writeText(folder / "a.ogg", "old");
  EXPECT_THROW(writeAudio(folder / "a.ogg", {1000000.0, {sine(1.0, 10, 10.0)}}), RunError);  // no rate for Vorbis
  EXPECT_EQ(readText(folder / "a.ogg"), "old");
  EXPECT_EQ(folder.fileCount(), 1);
}

TEST(ReadAudio, RefusesMoreThanTwoChannelsAndWhatIsNoAudio) {
  const TemporaryFolder folder;
  SF_INFO info{};
  info.channels = 3;
  info.samplerate = 44100;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  sf_close(sf_open((folder / "three.wav").c_str(), SFM_WRITE, &info));
  EXPECT_THROW(static_cast<void>(readAudio(folder / "three.wav")), RunError);
  writeText(folder / "text.wav", "not audio");
  EXPECT_THROW(static_cast<void>(readAudio(folder / "text.wav")), RunError);
  EXPECT_THROW(static_cast<void>(readAudio(folder / "none.wav")), RunError);
}

TEST(PendingFile, ReplacesTheTargetOnlyWhenCommitted) {
  const TemporaryFolder folder;
  writeText(folder / "target", "old");
  {
    const PendingFile given(folder / "target");
    writeText(given.path(), "half");
    EXPECT_EQ(fs::path(given.path()).parent_path(), folder.path());  // one file system, so that the rename is atomic
  }
  EXPECT_EQ(readText(folder / "target"), "old");
  PendingFile kept(folder / "target");
  writeText(kept.path(), "whole");
  kept.commit();
  EXPECT_EQ(readText(folder / "target"), "whole");
  EXPECT_EQ(folder.fileCount(), 1);
}

TEST(PendingFile, FollowsLinksAndRefusesWhatIsNoRegularFile) {
  const TemporaryFolder folder;
  writeText(folder / "real", "old");
  fs::create_symlink("real", folder / "link");
  PendingFile pending(folder / "link");
  writeText(pending.path(), "new");
  pending.commit();
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(readText(folder / "real"), "new");
  EXPECT_THROW(PendingFile("/dev/null"), RunError);
  EXPECT_THROW(PendingFile(folder.path()), RunError);
  EXPECT_THROW(PendingFile(folder / "missing/file"), RunError);
}

TEST(RenderTargets, NameResultsInFoldersAfterTheirInputs) {
  const std::vector<std::string> inputs = {"a/loop.flac", "b/voice.au"};
  const auto targets = renderTargets(inputs, {"out/", "pictures/", "midi/"});
  EXPECT_EQ(targets[0].output, "out/loop.flac");
  EXPECT_EQ(targets[1].output, "out/voice.wav");  // a format that is read only
  EXPECT_EQ(targets[1].picture, "pictures/voice.png");
  EXPECT_EQ(targets[0].midi, "midi/loop.mid");
}

TEST(RenderTargets, RefuseToReplaceInputsAndEachOther) {
  const TemporaryFolder folder;
  writeText(folder / "a.wav", "");
  fs::create_hard_link(folder / "a.wav", folder / "b.wav");
  const std::vector<std::string> one = {folder / "a.wav"};
  EXPECT_THROW(renderTargets(one, {folder / "b.wav"}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder.path()}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder / "./x/../a.wav"}), UsageError);
  const std::vector<std::string> automation = {folder / "c.wav"};
  EXPECT_THROW(renderTargets(one, {folder / "c.wav"}, automation), UsageError);
  const std::vector<std::string> twins = {"x/a.wav", "y/a.wav"};
  EXPECT_THROW(renderTargets(twins, {folder / "out/"}), UsageError);
  EXPECT_THROW(renderTargets(twins, {folder / "out.wav"}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder / "out.mp4"}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder / "out.wav", folder / "out.gif"}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder / "out.wav", "", folder / "out.wav"}), UsageError);
  EXPECT_THROW(renderTargets(one, {folder / "out.wav", "", folder / "out.mp3"}), UsageError);
}

TEST(Channels, MeetAsTheHelpTells) {
  const host::Planar stereo = {{1.0f}, {0.5f}};
  const host::Planar mono = {{1.0f}};
  const host::Planar mean = {{0.75f}};
  EXPECT_EQ(fitToInputs(stereo, 2, ResultChannels::stereo), stereo);
  EXPECT_EQ(fitToInputs(mono, 2, ResultChannels::stereo), (host::Planar{{1.0f}, {1.0f}}));
  EXPECT_EQ(fitToInputs(stereo, 1, ResultChannels::stereo), mean);
  EXPECT_EQ(fitToInputs(stereo, 2, ResultChannels::mono), (host::Planar{{0.75f}, {0.75f}}));
  EXPECT_EQ(fitToFile({{1.0f}, {0.5f}, {9.0f}}, ResultChannels::stereo), stereo);
  EXPECT_EQ(fitToFile(mono, ResultChannels::stereo), (host::Planar{{1.0f}, {1.0f}}));
  EXPECT_EQ(fitToFile(stereo, ResultChannels::mono), mean);
}

TEST(Resample, KeepsASineASine) {
  for (const double to : {48000.0, 96000.0, 22050.0}) {
    const host::Planar result = resample({sine(1000.0, 44100, 44100.0)}, 44100.0, to);
    const std::vector<float> expected = sine(1000.0, static_cast<std::size_t>(to), to);
    ASSERT_EQ(result[0].size(), expected.size());
    // The ends are left out: there the filter runs into silence.
    for (std::size_t i = 2000; i + 2000 < expected.size(); ++i) ASSERT_NEAR(result[0][i], expected[i], 1e-4) << i;
  }
  EXPECT_EQ(resample({{}}, 44100.0, 48000.0)[0].size(), 0U);
  EXPECT_THROW(resample({{1.0f}}, 1000.0, 768000.0), RunError);
}

TEST(Levels, MeasureWhatIsFiniteAndCountTheRest) {
  const std::vector<std::vector<float>> channels = {{0.5f, -1.0f, NAN}, {0.0f, 0.5f, INFINITY}};
  const Levels levels = measureLevels(channels);
  EXPECT_EQ(levels.peak, 1.0);
  EXPECT_DOUBLE_EQ(levels.rms, std::sqrt(1.5 / 4.0));
  EXPECT_EQ(levels.notFinite, 2);
  EXPECT_EQ(decibelText(0.5), "-6.0 dB");
  EXPECT_EQ(decibelText(0.9999), "0.0 dB");
  EXPECT_EQ(decibelText(0.0), "-inf dB");
}

}  // namespace
}  // namespace modrift::cli
