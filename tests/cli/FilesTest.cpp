// SPDX-License-Identifier: MIT
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numbers>
#include <sndfile.h>

#include "cli/files/AudioFile.h"
#include "cli/files/Channels.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/Resample.h"
#include "cli/pictures/Levels.h"
#include "cli/terminal/Errors.h"
#include "tests/TemporaryFolder.h"

namespace modrift::cli {
namespace {

namespace fs = std::filesystem;

std::vector<float> sine(double hz, double rateHz) {
  std::vector<float> samples(static_cast<std::size_t>(rateHz));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double phase = 2.0 * std::numbers::pi * hz * static_cast<double>(i) / rateHz;
    samples[i] = static_cast<float>(0.5 * std::sin(phase));
  }
  return samples;
}

TEST(WriteAudio, IsReadBackTheSameInEveryFormat) {
  const TemporaryFolder folder;
  const Audio audio{44100.0, {sine(440.0, 44100.0), sine(220.0, 44100.0)}};
  // Vorbis is lossy: what must hold is that channels, length and scale are right.
  const std::pair<const char*, double> kFormats[] = {
      {"a.wav", 0.0}, {"a.WAV", 0.0}, {"a.aiff", 0.0}, {"a.flac", 2.5e-7}, {"a.ogg", 0.1}};
  for (const auto& [name, tolerance] : kFormats) {
    writeAudio(folder / name, audio);
    const Audio back = readAudio(folder / name);
    EXPECT_EQ(back.sampleRateHz, 44100.0) << name;
    ASSERT_EQ(back.channels.size(), 2U) << name;
    ASSERT_EQ(back.frames(), audio.frames()) << name;
    for (std::size_t i = 0; i < 2 * audio.frames(); ++i)
      ASSERT_NEAR(back.channels[i % 2][i / 2], audio.channels[i % 2][i / 2], tolerance) << name << " " << i;
  }
}

TEST(WriteAudio, ClipsInsteadOfWrappingRoundWhereTheFormatHasAnEndAndRefusesRatesThatItHasNot) {
  const TemporaryFolder folder;
  writeAudio(folder / "a.flac", {44100.0, {{1.5f, -1.5f}}});
  EXPECT_NEAR(readAudio(folder / "a.flac").channels[0][0], 1.0f, 1e-6f);
  EXPECT_NEAR(readAudio(folder / "a.flac").channels[0][1], -1.0f, 1e-6f);
  EXPECT_THROW(writeAudio(folder / "a.ogg", {1000000.0, {{0.5f}}}), RunError);
  EXPECT_EQ(folder.fileCount(), 1);
}

TEST(ReadAudio, RefusesMoreThanTwoChannelsAndWhatIsNoAudio) {
  const TemporaryFolder folder;
  SF_INFO info{};
  info.channels = 3;
  info.samplerate = 44100;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  sf_close(sf_open((folder / "three.wav").c_str(), SFM_WRITE, &info));
  writeText(folder / "text.wav", "not audio");
  for (const char* name : {"three.wav", "text.wav", "none.wav"})
    EXPECT_THROW(static_cast<void>(readAudio(folder / name)), RunError) << name;
}

TEST(PendingFile, SaysWhereItCannotWrite) {
  const std::pair<const char*, const char*> kRows[] = {
      {"/dev/null", "/dev/null: a regular file was expected to write to"},
      {".", ".: a regular file was expected to write to"},
      {"missing/file", "missing/file: a place to write to was expected (No such file or directory)"}};
  for (const auto& [target, sentence] : kRows) {
    const auto open = [&] { const PendingFile pending(target); };
    EXPECT_THAT(open, testing::ThrowsMessage<RunError>(sentence));
  }
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
  const std::vector<std::string> one = {folder / "a.wav"}, twins = {"x/a.wav", "y/a.wav"};
  const std::vector<std::string> automation = {folder / "c.wav"};
  const std::string out = folder / "out.wav";
  const std::pair<std::vector<std::string>, RenderNames> kRows[] = {
      {one, {folder / "b.wav"}},           {one, {folder.path()}},         {one, {folder / "./x/../a.wav"}},
      {one, {folder / "c.wav"}},           {twins, {folder / "out/"}},     {twins, {out}},
      {one, {folder / "out.mp4"}},         {one, {out, folder / "o.gif"}}, {one, {out, "", out}},
      {one, {out, "", folder / "out.mp3"}}};
  for (const auto& [inputs, names] : kRows)
    EXPECT_THROW(renderTargets(inputs, names, automation), UsageError) << names.output;
  EXPECT_EQ(renderTargets(one, {out}, automation)[0].output, out);
}

TEST(Channels, AreMixedAndDoubledAsTheHelpSays) {
  const host::Planar stereo = {{1.0f}, {0.5f}}, mono = {{1.0f}}, twice = {{1.0f}, {1.0f}};
  EXPECT_EQ(fitToInputs(mono, 2, ResultChannels::stereo), twice);
  EXPECT_EQ(fitToInputs(stereo, 1, ResultChannels::stereo), (host::Planar{{0.75f}}));
  EXPECT_EQ(fitToFile({{1.0f}, {0.5f}, {9.0f}}, ResultChannels::stereo), stereo);
  EXPECT_EQ(fitToFile(mono, ResultChannels::stereo), twice);
}

TEST(Resample, KeepsASineASine) {
  for (const double to : {48000.0, 22050.0}) {
    const host::Planar result = resample({sine(1000.0, 44100.0)}, 44100.0, to);
    const std::vector<float> expected = sine(1000.0, to);
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
  EXPECT_EQ(decibelText(0.9999) + decibelText(0.1), "0.0 dB-20.0 dB");
  EXPECT_EQ(decibelText(0.0), "-inf dB");
}

}  // namespace
}  // namespace modrift::cli
