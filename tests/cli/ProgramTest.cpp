// The program as a process, with a plug-in that is not ours: exit statuses, messages, and results on disk.
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include "cli/files/AudioFile.h"
#include "cli/files/MidiFile.h"
#include "model/ParameterIndex.h"
#include "tests/cli/TemporaryFolder.h"

namespace modrift::cli {
namespace {

struct Outcome {
  int status = 0;
  std::string output;
  std::string errors;
};

class Program : public testing::Test {
 protected:
  void SetUp() override {
    unsetenv("DISPLAY");  // NOLINT(concurrency-mt-unsafe): one thread
    writeAudio(folder_ / "in.wav", {48000.0, {std::vector<float>(4800, 0.5f), std::vector<float>(4800, 0.25f)}});
    writeAudio(folder_ / "mono.wav", {48000.0, {std::vector<float>(4800, 0.5f)}});
  }

  // In the test's own folder. The plug-in is the foreign one unless `arguments` name another.
  Outcome run(const std::string& arguments) const {
    const std::string command = "cd '" + folder_.path() +
                                "' && export MODRIFT_PLUGIN='" FOREIGN_GAIN "' && { '" MODRIFT_PROGRAM "' " +
                                arguments + "; } >stdout 2>stderr";
    const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe): one thread
    return {WEXITSTATUS(status), readText(folder_ / "stdout"), readText(folder_ / "stderr")};
  }

  void expectFailure(int status, const std::string& arguments, const std::string& message) const {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, status) << arguments << "\n" << outcome.errors;
    EXPECT_EQ(outcome.errors.substr(0, 9), "modrift: ") << arguments;
    EXPECT_NE(outcome.errors.find(message), std::string::npos) << arguments << "\n" << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << arguments;
  }

  [[nodiscard]] MidiSong songIn(const std::string& name) const {
    const std::string file = readText(folder_ / name);
    return std::get<MidiSong>(parseMidiFile({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}));
  }

  TemporaryFolder folder_;
};

TEST_F(Program, RendersWithSettingsAndAutomationAtExactFrames) {
  // A beat of 24000 frames; the render starts at beat 4.
  writeText(folder_ / "moves.csv", "beat,parameter,value\n4.05,gain,1.0\n4.1,0,0.25\n");
  const Outcome outcome =
      run("render in.wav -o out.wav --set Gain=0.5 --automation moves.csv --start-beat 4 --block 511");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "");
  std::vector<float> expected(4800, 0.25f);
  std::fill(expected.begin() + 1200, expected.end(), 0.5f);
  std::fill(expected.begin() + 2400, expected.end(), 0.125f);
  EXPECT_EQ(readAudio(folder_ / "out.wav").channels[0], expected);
}

TEST_F(Program, WritesMonoStereoTailAndRateAsAsked) {
  EXPECT_EQ(run("render mono.wav -o stereo.wav --tail 0.1").status, 0);
  EXPECT_EQ(readAudio(folder_ / "stereo.wav").channels.size(), 2U);
  EXPECT_EQ(readAudio(folder_ / "stereo.wav").frames(), 9600U);
  EXPECT_EQ(run("render in.wav -o mono-out.wav --mono --rate 96000").status, 0);
  const Audio mono = readAudio(folder_ / "mono-out.wav");
  EXPECT_EQ(mono.channels.size(), 1U);
  EXPECT_EQ(mono.sampleRateHz, 96000.0);
  EXPECT_NEAR(mono.channels[0][4800], 0.375f, 1e-3f);
}

TEST_F(Program, RendersSeveralFilesIntoANewFolderWithPictures) {
  const Outcome outcome = run("render in.wav mono.wav -o results/ --picture results/");
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  for (const char* name : {"in.wav", "mono.wav", "in.png", "mono.png"}) {
    EXPECT_GT(std::filesystem::file_size(folder_ / (std::string("results/") + name)), 0U) << name;
  }
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 2);
  EXPECT_EQ(run("wave in.wav -o picture.png").status, 0);
  EXPECT_EQ(readText(folder_ / "picture.png").substr(1, 3), "PNG");
}

TEST_F(Program, TellsAPluginsFactsAsTableAndAsJson) {
  EXPECT_NE(run("info").output.find("Foreign Gain"), std::string::npos);
  const auto facts = nlohmann::json::parse(run("info '" FOREIGN_GAIN "' --json").output);
  EXPECT_EQ(facts["uniqueIdHex"], "0x4672676E");
  ASSERT_EQ(facts["parameters"].size(), 3U);
  EXPECT_EQ(facts["parameters"][0]["name"], "Gain");
  EXPECT_EQ(facts["parameters"][0]["value"], 1.0);
}

TEST_F(Program, ListsFilterTypesAndDrawsThem) {
  const std::string list = run("filters").output;
  EXPECT_NE(list.find("\n6       MG Low 24    ladder                              Fat\n"), std::string::npos) << list;
  EXPECT_EQ(nlohmann::json::parse(run("filters --json").output)[92]["name"], "Bandreject");
  EXPECT_EQ(run("filters plot 'cmb -' -o pictures").status, 0);
  EXPECT_EQ(run("filters plot 79 -o ring.png --res 1 --drive 0.5").status, 0);
  for (const char* name : {"pictures/43-cmb-minus.png", "ring.png"})
    EXPECT_EQ(readText(folder_ / name).substr(1, 3), "PNG") << name;
}

// 120 beats a minute: a beat of 24000 frames, 480 ticks of 50 frames.
TEST_F(Program, PlaysMidiFilesIntoThePluginAndWritesWhatComesOut) {
  const std::vector<std::uint8_t> file = {'M', 'T',  'h', 'd', 0, 0,    0,  6,  0,    0,  0,  1,  0x01, 0xe0, 'M',
                                          'T', 'r',  'k', 0,   0, 0,    19, 0,  0x93, 60, 99, 10, 0x93, 60,   0,
                                          20,  0xb1, 7,   100, 2, 0xc5, 4,  50, 0xe0, 1,  2,  0,  0xff};
  // The last event lies beyond the recording's 4800 frames; behind the status byte 0xff the file is whole again.
  std::string bytes(file.begin(), file.end());
  bytes += std::string("\x2f\0", 2);
  bytes[21] = static_cast<char>(bytes.size() - 22);
  writeText(folder_ / "in.mid", bytes);
  const Outcome outcome =
      run("render in.wav -o out.wav --midi-in in.mid --midi-out out.mid --block 111 --plugin '" MODRIFT_BUNDLE "'");
  ASSERT_EQ(outcome.status, 0) << outcome.errors;
  const auto events = eventsOf(songIn("out.mid"), 120.0, 48000.0);
  const std::vector<std::pair<std::int64_t, std::uint8_t>> expected = {
      {0, 0x93}, {500, 0x93}, {1500, 0xb1}, {1600, 0xc5}, {4100, 0xe0}};
  ASSERT_EQ(events.size(), expected.size());
  for (std::size_t i = 0; i < events.size(); ++i) {
    EXPECT_EQ(events[i].frame, expected[i].first);
    EXPECT_EQ(events[i].bytes[0], expected[i].second);
  }
}

TEST_F(Program, WritesTheControllerStreamFromItsFirstValueOn) {
  const std::string settings =
      " --set " + std::to_string(kCcNumber) + "=0.578125 --set F.Cutoff=1 --plugin '" MODRIFT_BUNDLE "'";
  ASSERT_EQ(run("render in.wav -o out.wav --midi-out out.mid" + settings).status, 0);
  const auto messages = songIn("out.mid").messages;
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages.front().tick, 0);
  EXPECT_EQ(messages.front().bytes[1], 74);
}

TEST_F(Program, ExportsModriftsGraph) {
  const Outcome outcome = run("export-midi -o out.mid --set \"CC Out=0.578125\" --plugin '" MODRIFT_BUNDLE "'");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(readText(folder_ / "out.mid").substr(26, 7), "cc 074 ");
}

TEST_F(Program, DrawsTheEditorOfAPresetWithoutADisplay) {
  const std::string bundle = " --plugin '" MODRIFT_BUNDLE "'";
  ASSERT_EQ(run("preset save -o bent.fxp --set PWM=0.9" + bundle).status, 0);
  ASSERT_EQ(run("screenshot -o plain.png" + bundle).errors, "");
  EXPECT_EQ(run("screenshot -o again.png --size 708x343" + bundle).status, 0);
  EXPECT_EQ(run("screenshot -o bent.png --preset bent.fxp" + bundle).status, 0);
  EXPECT_EQ(readText(folder_ / "plain.png").substr(1, 3), "PNG");
  EXPECT_EQ(readText(folder_ / "plain.png"), readText(folder_ / "again.png"));
  EXPECT_NE(readText(folder_ / "plain.png"), readText(folder_ / "bent.png"));
}

TEST_F(Program, AnswersAWrongCommandLineWithStatusTwo) {
  const std::pair<const char*, const char*> kRows[] = {
      {"foo", "foo: "},
      {"render", "IN: "},
      {"render in.wav", "--output: "},
      {"render in.wav -o in.wav", "-o: a file other than the input in.wav was expected"},
      {"render in.wav -o out.xyz", "-o: a name ending in .wav, .flac, .ogg, .aiff or .aif was expected"},
      {"render in.wav -o out.wav --picture out.gif", "--picture: a name ending in .png"},
      {"render in.wav mono.wav -o out.wav", "-o: a folder"},
      {"render in.wav -o out.wav --midi-in a.mid --midi-out a.mid", "--midi-out: a file other than"},
      {"export-midi -o out.mid --mode 2", "--mode: "},
      {"filters plot 'MG Low' -o out",
       "TYPE: the name or number of a filter type, or all, was expected, not 'MG Low'; "
       "near it are 'MG Low 6', "},
      {"filters plot 93 -o out", "TYPE: a number from 0 to 92"},
      {"filters plot all -o out.png", "-o: a folder"},
      {"filters plot 6 -o out --over drive", "--over: "},
      {"export-midi -o out.wav", "-o: a name ending in .mid was expected"},
      {"screenshot -o out.gif", "-o: a name ending in .png was expected"},
      {"screenshot -o out.png --size 708", "--size: WIDTHxHEIGHT"},
      {"screenshot -o out.png --size 575x343", "--size: WIDTHxHEIGHT"},
      {"edit --jack --play in.wav", "--jack"},
      {"edit --save out.fxb", "--save: a name ending in .fxp was expected"}};
  for (const auto& [arguments, message] : kRows) expectFailure(2, arguments, message);
  for (const std::string option :
       {"--bogus", "--tempo 0", "--tempo nan", "--tempo 1e999", "--start-beat inf", "--block 0", "--block 1000001",
        "--block 1.5", "--rate -1", "--tail -1", "--set Gain", "--set =1", "--set Gain=", "--set Gain=1e99",
        "--shape 0=x", "--shape 13=x", "--shape x=1", "--shape 1=", "--shape 1"}) {
    expectFailure(2, "render in.wav -o out.wav " + option, option.substr(0, option.find(' ')) + ": ");
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out.wav"));
}

TEST_F(Program, AnswersUnusableFilesWithStatusOneAndWritesNothing) {
  writeText(folder_ / "broken.csv", "0,Gain,1\n1,Gain\n");
  writeText(folder_ / "unknown.csv", "\n0,Gian,1\n");
  writeText(folder_ / "broken", std::string(100, '\1'));
  writeText(folder_ / "short.fxp", std::string(59, '\0') + '\x0b' + std::string(10, '\0'));  // one byte too few
  const std::pair<const char*, const char*> kRows[] = {
      {"render none.wav -o out.wav", "none.wav: an audio file was expected"},
      {"render in.wav -o none/out.wav", "none/out.wav: a place to write to was expected"},
      {"render in.wav -o out.wav --plugin in.wav", "in.wav: a shared object"},
      {"render in.wav -o out.wav --automation broken.csv", "broken.csv:2: three fields"},
      {"render in.wav -o out.wav --automation unknown.csv", "unknown.csv:2: a parameter of the plug-in"},
      {"render in.wav -o out.wav --automation .", ".: a readable automation file"},
      {"render in.wav -o out.wav --set Off=1", "'Off' may be Offset (1), Offbeat (2)"},
      {"render in.wav -o out.wav --midi-in broken", "broken: a Standard MIDI File was expected at byte 0"},
      {"render in.wav -o out.wav --midi-in none", "none: a readable MIDI file"},
      {"render in.wav -o out.wav --preset short.fxp", "short.fxp: a preset file was expected"},
      {"render in.wav -o out.wav --preset none", "none: a preset file was expected"},
      {"render in.wav -o out.wav --shape 1=broken", "the plug-in Modrift was expected for --shape"},
      {"render in.wav -o out.wav --shape 1=broken --plugin '" MODRIFT_BUNDLE "'", "broken: a shape file"},
      {"export-midi -o out.mid", "the plug-in Modrift was expected for export-midi"},
      {"export-midi -o none/out.mid --plugin '" MODRIFT_BUNDLE "'", "a place to write to was expected"},
      {"screenshot -o out.png", "the plug-in Modrift was expected for screenshot"},
      {"screenshot -o none/out.png --plugin '" MODRIFT_BUNDLE "'", "a place to write to was expected"},
      {"edit", "a plug-in with an editor was expected"},
      {"edit --save none/out.fxp --plugin '" MODRIFT_BUNDLE "'", "none/out.fxp: a place to write to was expected"},
      {"edit --save out.fxp --plugin '" MODRIFT_BUNDLE "'", "DISPLAY: an X server to open a window on was expected"},
      {"info none.so", "none.so: "},
      {"wave none.wav -o out.png", "none.wav: "}};
  for (const auto& [arguments, message] : kRows) expectFailure(1, arguments, message);
  for (const char* result : {"out.wav", "out.mid", "out.png", "out.fxp"})
    EXPECT_FALSE(std::filesystem::exists(folder_ / result)) << result;
}

TEST_F(Program, RemovesUnfinishedFilesAndDiesOfTheSignalWhenInterrupted) {
  // Long enough to be caught in the middle, one frame a block.
  const Outcome outcome = run("render in.wav -o out.flac --tail 600 --block 1 & sleep 0.5; kill -TERM $!; wait $!");
  EXPECT_EQ(outcome.status, 128 + SIGTERM) << outcome.errors;
  EXPECT_EQ(folder_.fileCount(), 4);  // two inputs and what the program printed
}

}  // namespace
}  // namespace modrift::cli
