// SPDX-License-Identifier: MIT
// `modrift preset` and `modrift shape` as a process: what is stored comes back, in every form that files have had.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/values/GraphText.h"
#include "model/AtomicFile.h"
#include "model/ParameterIndex.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "tests/cli/ProgramRun.h"
#include "tests/model/ChunkBuilder.h"

using namespace model;

namespace modrift::cli {
namespace {

using Json = nlohmann::json;

class StoredFiles : public ProgramRun {
 protected:
  StoredFiles() : ProgramRun(MODRIFT_BUNDLE) {}

  Json json(const std::string& arguments) const { return Json::parse(done(arguments + " --json"), nullptr, false); }
  void write(const std::string& name, std::span<const std::byte> bytes) const {
    ASSERT_FALSE(model::replaceFile(folder_ / name, bytes));
  }
};

TEST_F(StoredFiles, PresetsKeepSettingsPointsAndShapesThroughSaveShowAndConvert) {
  done("shape save -o fall.shp --points '0 1 0.25; 0.3 0.125; 1 0'");
  done("preset save -o first.fxp --set Rate=0.1 --set 'In>Gate=1' --shape 3=fall.shp --set " +
       std::to_string(kPoint1 + 3) + "=0.75");
  const Json first = json("preset show first.fxp");
  EXPECT_EQ(first["version"].get<float>(), model::kStateVersion);
  EXPECT_EQ(first["layout"], "current");
  EXPECT_EQ(first["fields"]["rate"]["value"].get<double>(), static_cast<double>(0.1f));  // to the last bit
  EXPECT_EQ(first["fields"]["rate"]["parameterName"], "Rate");
  EXPECT_EQ(first["fields"]["bGateMode"]["value"], true);
  EXPECT_EQ(first["graphs"][0]["points"][1], Json({{"x", 0.5}, {"y", 0.75}, {"curve", kStraightCurve}}));
  EXPECT_EQ(first["graphs"][1]["fresh"], true);
  EXPECT_EQ(first["graphs"][2]["points"], json("shape show fall.shp")["points"]);
  for (const model::Field& field : model::stateFields())
    EXPECT_TRUE(field.name == "version" || first["fields"].contains(field.name)) << field.name;

  done("preset convert first.fxp copy.fxp");
  EXPECT_EQ(readText(folder_ / "copy.fxp"), readText(folder_ / "first.fxp"));
  done("preset save -o next.fxp --preset first.fxp --set Rate=0.2");
  EXPECT_EQ(json("preset show next.fxp")["graphs"], first["graphs"]);
  const std::string text = done("preset show next.fxp");
  EXPECT_NE(text.find("\nrate            0          Rate                0.2\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\nGraph 3\npoint  x    y      curve\n1      0    1      0.25\n"), std::string::npos) << text;
}

// Each text in the state that the settings before it have made, and what the plug-in then shows of it.
TEST_F(StoredFiles, ParametersTakeTheTextsThatTheyShow) {
  done(
      "preset save -o a.fxp --set 'FilType=mg low 24' --set 'F.Cutoff=\"440\"' --set BPMSync=Free --set 'Rate=2 Hz' "
      "--set 'In>Rerig=Env' --set 'LFO Depth=\"100\"' --set 'Point Y1=25%' --set 'CC Out=\"74\"'");
  const Json fields = json("preset show a.fxp")["fields"];
  EXPECT_EQ(std::lround(fields["filterType"]["value"].get<double>() * 92.0), 6);
  EXPECT_NEAR(fields["filterCutoff"]["value"].get<double>(), 69.0 / 128, 1e-4);  // MIDI note 69, for this type
  EXPECT_NEAR(std::pow(fields["rate"]["value"].get<double>(), 4.0) * 440.0, 2.0, 6e-4);
  EXPECT_EQ(fields["bOneShot"]["value"], true);
  EXPECT_EQ(fields["depthKnob"]["value"], 1.0);
  EXPECT_EQ(fields["ccNumber"]["value"], 74);
  EXPECT_NEAR(json("preset show a.fxp")["graphs"][0]["points"][1]["y"].get<double>(), 0.25, 1e-3);
  expectFailure(1, "preset save -o b.fxp --set 'FilType=MG Low 25'",
                "--set: FilType: a number or a text that the plug");
  expectFailure(1, "preset save -o b.fxp --set 'CC Out=off'", "--set: CC Out: a number was expected, as 'off' stands");
  expectFailure(1, "preset save -o b.fxp --set " + std::to_string(kExportMidi) + "=x",
                "--set: a number was expected, not 'x'");
}

TEST_F(StoredFiles, OldLayoutsAndVersionsAreShownAndConvertedInPlace) {
  model::State state;
  state.rate = 0.625f;
  state.filterCutoff = 0.3f;
  write("old.fxp", model::writePreset(ChunkBuilder::old(state, 0.93f).bytes()));
  write("pixels.fxp", model::writePreset(ChunkBuilder::current(state, 1.0f).bytes()));
  EXPECT_EQ(json("preset show old.fxp")["layout"], "old");
  EXPECT_EQ(json("preset show old.fxp")["version"].get<float>(), 0.93f);
  EXPECT_NE(done("preset show old.fxp").find("version  0.93\nlayout   old\n"), std::string::npos);
  for (const std::string name : {"old.fxp", "pixels.fxp"}) {
    const Json before = json("preset show " + name);
    done("preset convert " + name + " " + name);
    const Json after = json("preset show " + name);
    EXPECT_EQ(after["version"].get<float>(), model::kStateVersion) << name;
    EXPECT_EQ(after["layout"], "current") << name;
    EXPECT_EQ(after["fields"], before["fields"]) << name;
    EXPECT_EQ(after["fields"]["rate"]["value"], 0.625) << name;
  }
}

TEST_F(StoredFiles, ShapesComeFromPointsAndPresetsAndAreDrawn) {
  done("shape save -o two.shp --points '0 0; 1 0;'");
  const auto points = model::readShape(*model::readFile(folder_ / "two.shp", model::kLargestShapeFile));
  ASSERT_TRUE(points);
  EXPECT_EQ(points->lastPoint, 1);
  EXPECT_EQ(points->y[2], 1.0);  // what a project makes the last point must not bend the line
  done("preset save -o a.fxp --shape 12=two.shp");
  done("shape save -o back.shp --from a.fxp --graph 12");
  EXPECT_EQ(json("shape show back.shp")["points"][1], Json({{"x", 1.0}, {"y", 0.0}, {"curve", kStraightCurve}}));
  done("shape plot two.shp -o two.png");
  done("shape plot a.fxp --graph 12 -o graphs/");
  for (const char* name : {"two.png", "graphs/a.png"}) expectPicture(name);
}

TEST_F(StoredFiles, GarbageIsRefusedInOneLineAndNothingIsWritten) {
  writeText(folder_ / "text", std::string(100, 'x'));
  write("cut.fxp", model::writePreset(std::vector<std::byte>(18000)));
  write("whole.fxp", model::writePreset(model::writeChunk({})));
  struct Row {
    int status;
    const char *arguments, *message;
  };
  const Row kRows[] = {
      {1, "preset show none", "none: a preset file was expected"},
      {1, "preset show text", "text: a preset file was expected"},
      {1, "preset convert cut.fxp new.fxp", "cut.fxp: a state of Modrift was expected"},
      {1, "preset save -o no/new.fxp", "no/new.fxp: a place to write to was expected"},
      {1, "preset save -o new.fxp --plugin '" FOREIGN_GAIN "'", FOREIGN_GAIN ": the plug-in Modrift was"},
      {1, "preset save -o new.fxp --set Nope=1", "--set: a parameter of the plug-in was expected"},
      {1, "shape show text", "text: a shape file was expected"},
      {1, "shape plot whole.fxp -o new.png", "whole.fxp: a shape file was expected, not a preset"},
      {1, "shape plot text --graph 1 -o new.png", "text: a preset file was expected"},
      {2, "preset convert whole.fxp new.txt", "NEW: a name ending in .fxp was expected"},
      {2, "preset", "preset: show, save or convert was expected"},
      {2, "shape save -o new.shp --from whole.fxp", "--graph: "},
      {2, "shape save -o new.shp --points '0 0; 2 0'", "--points: \"x y [curve]\""},
      {2, "shape plot whole.fxp --graph 13 -o new.png", "--graph: "}};
  for (const auto& [status, arguments, message] : kRows) expectFailure(status, arguments, message);
  for (const char* name : {"new.fxp", "new.shp", "new.png"}) EXPECT_FALSE(exists(name));
}

TEST(ParsePoints, TakesGraphsOfTwoToSixtyFourRisingPointsOnly) {
  const auto chain = [](int count) {
    std::string text = "0 1;";
    for (int i = 2; i < count; ++i) text += " 0.5 0.5 0.5;";
    return text + "1 0 1";
  };
  const auto longest = parsePoints(chain(64));
  ASSERT_TRUE(std::holds_alternative<GraphPoints>(longest));
  EXPECT_EQ(std::get<GraphPoints>(longest).lastPoint, 63);
  EXPECT_EQ(std::get<GraphPoints>(longest).curve[63], 1.0);
  for (const std::string& wrong : {chain(65), std::string(), std::string("0 0"), std::string("0.1 0; 1 0"),
                                   std::string("0 0; 0.9 0"), std::string("0 0; 0.6 1; 0.5 1; 1 0"),
                                   std::string("0 0;; 1 0"), std::string("0 nan; 1 0"), std::string("0 0 0 0; 1 0")})
    EXPECT_TRUE(std::holds_alternative<std::string>(parsePoints(wrong))) << wrong;
}

}  // namespace
}  // namespace modrift::cli
