// SPDX-License-Identifier: MIT
// The program as a process, with a plug-in that is not ours: exit statuses, messages, and results on disk.
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/files/AudioFile.h"
#include "cli/files/MidiFile.h"
#include "cli/files/MidiFileWriter.h"
#include "model/ParameterIndex.h"
#include "tests/cli/ProgramRun.h"

using namespace model;

namespace modrift::cli {
namespace {

const std::string kModrift = " --plugin '" MODRIFT_BUNDLE "'";

class Program : public ProgramRun {
 protected:
  Program() : ProgramRun(FOREIGN_GAIN) {
    writeAudio(folder_ / "in.wav", {48000.0, {std::vector<float>(4800, 0.5f), std::vector<float>(4800, 0.25f)}});
    writeAudio(folder_ / "mono.wav", {48000.0, {std::vector<float>(4800, 0.5f)}});
  }

  [[nodiscard]] MidiSong songIn(const std::string& name) const {
    const std::string file = readText(folder_ / name);
    return std::get<MidiSong>(parseMidiFile({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}));
  }
};

TEST_F(Program, RendersWithSettingsAndAutomationAtExactFrames) {
  // A beat of 24000 frames; the render starts at beat 4.
  writeText(folder_ / "moves.csv", "beat,parameter,value\n4.05,gain,1.0\n4.1,0,0.25\n");
  done("render in.wav -o out.wav --set Gain=0.5 --automation moves.csv --start-beat 4 --block 511");
  std::vector<float> expected(4800, 0.25f);
  std::fill(expected.begin() + 1200, expected.end(), 0.5f);
  std::fill(expected.begin() + 2400, expected.end(), 0.125f);
  EXPECT_EQ(readAudio(folder_ / "out.wav").channels[0], expected);
}

TEST_F(Program, WritesMonoStereoTailAndRateAsAsked) {
  done("render mono.wav -o stereo.wav --tail 0.1");
  EXPECT_EQ(readAudio(folder_ / "stereo.wav").channels.size(), 2U);
  EXPECT_EQ(readAudio(folder_ / "stereo.wav").frames(), 9600U);
  done("render in.wav -o mono-out.wav --mono --rate 96000");
  const Audio mono = readAudio(folder_ / "mono-out.wav");
  EXPECT_EQ(mono.channels.size(), 1U);
  EXPECT_EQ(mono.sampleRateHz, 96000.0);
  EXPECT_NEAR(mono.channels[0][4800], 0.375f, 1e-3f);
}

TEST_F(Program, RendersSeveralFilesIntoANewFolderWithPictures) {
  const std::string told = done("render in.wav mono.wav -o results/ --picture results/");
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2);
  for (const char* name : {"results/in.wav", "results/mono.wav"}) EXPECT_EQ(readAudio(folder_ / name).frames(), 4800U);
  done("wave in.wav -o picture.png");
  for (const char* name : {"results/in.png", "results/mono.png", "picture.png"}) expectPicture(name);
}

TEST_F(Program, TellsAPluginsFactsAsTableAndAsJson) {
  EXPECT_NE(done("info").find("Foreign Gain"), std::string::npos);
  const auto facts = nlohmann::json::parse(done("info '" FOREIGN_GAIN "' --json"));
  EXPECT_EQ(facts["uniqueIdHex"], "0x4672676E");
  ASSERT_EQ(facts["parameters"].size(), 3U);
  EXPECT_EQ(facts["parameters"][0]["name"], "Gain");
  EXPECT_EQ(facts["parameters"][0]["value"], 1.0);
}

TEST_F(Program, ListsFilterTypesAndDrawsThem) {
  const std::string list = done("filters");
  EXPECT_NE(list.find("\n6       MG Low 24    ladder                              Fat\n"), std::string::npos) << list;
  EXPECT_EQ(nlohmann::json::parse(done("filters --json"))[92]["name"], "Bandreject");
  done("filters plot 'cmb -' -o pictures");
  done("filters plot 79 -o ring.png --res 1 --drive 0.5");
  for (const char* name : {"pictures/43-cmb-minus.png", "ring.png"}) expectPicture(name);
}

TEST_F(Program, PlaysMidiFilesIntoThePluginAndWritesWhatComesOut) {
  std::vector<host::MidiEvent> events = {{0, {0x93, 60, 99}}, {500, {0x93, 60, 0}}, {1500, {0xb1, 7, 100}},
                                         {1600, {0xc5, 4}},   {4100, {0xe0, 1, 2}}, {4800, {0x93, 61, 1}}};
  const std::vector<std::uint8_t> bytes = midiFileBytes(events, 120.0, 48000.0);
  writeText(folder_ / "in.mid", std::string(bytes.begin(), bytes.end()));
  done("render in.wav -o out.wav --midi-in in.mid --midi-out out.mid --block 111" + kModrift);
  events.pop_back();  // lies beyond the recording's 4800 frames
  EXPECT_EQ(eventsOf(songIn("out.mid"), 120.0, 48000.0), events);
}

TEST_F(Program, WritesTheControllerStreamFromItsFirstValueOnAndExportsTheGraph) {
  const std::string controller = "--set " + std::to_string(kCcNumber) + "=0.578125 ";
  done("render in.wav -o out.wav --midi-out out.mid --set F.Cutoff=1 " + controller + kModrift);
  const auto messages = songIn("out.mid").messages;
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages.front().tick, 0);
  EXPECT_EQ(messages.front().bytes[1], 74);
  done("export-midi -o graph.mid --set \"CC Out=0.578125\"" + kModrift);
  EXPECT_EQ(readText(folder_ / "graph.mid").substr(26, 7), "cc 074 ");
}

TEST_F(Program, DrawsTheEditorOfAPresetWithoutADisplay) {
  done("preset save -o bent.fxp --set PWM=0.9" + kModrift);
  done("screenshot -o plain.png" + kModrift);
  done("screenshot -o again.png --size 708x343" + kModrift);
  done("screenshot -o bent.png --preset bent.fxp" + kModrift);
  expectPicture("plain.png");
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
  EXPECT_FALSE(exists("out.wav"));
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
  for (const char* result : {"out.wav", "out.mid", "out.png", "out.fxp"}) EXPECT_FALSE(exists(result)) << result;
}

// The plug-in itself raises the signal in the middle of the render, and another that would end the process at once if
// the render went on. The other run is ended as soon as there is a draft, while the slow encoder has its work before
// it.
TEST_F(Program, RemovesUnfinishedFilesAndDiesOfTheSignalWhenInterrupted) {
  const std::string raise = ", Offbeat, " + std::to_string(SIGTERM) + "\n";
  writeText(folder_ / "raise.csv", "0.1" + raise + "0.15" + raise);
  for (const char* arguments :
       {"render in.wav -o out.ogg --automation raise.csv",
        "render in.wav -o out.ogg --tail 100 & until ls -A | grep -q '^[.]modrift'; do kill -0 $! || break; done; "
        "kill -TERM $!; wait $!"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 128 + SIGTERM) << outcome.errors;
    EXPECT_TRUE(outcome.errors.starts_with("modrift: interrupted: unfinished files were removed\n")) << outcome.errors;
    EXPECT_EQ(folder_.fileCount(), 5);  // three inputs and what the program printed
  }
}

}  // namespace
}  // namespace modrift::cli
