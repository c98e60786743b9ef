// SPDX-License-Identifier: MIT
// The definition files' format: what lines mean, and where faults are reported.
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "effect/LfoClock.h"
#include "effect/ParameterTable.h"
#include "model/WarpTable.h"
#include "presets/generator/Application.h"
#include "presets/generator/Definitions.h"

using namespace model;
using namespace effect;

namespace {

using namespace modrift::factory;

constexpr const char* kFile = "somewhere/Things.txt";

std::vector<float> tableOf(const std::string& lines) {
  const Shape shape = readShapes(kFile, "shape One\n" + lines).at(0);
  std::vector<Shared<float>> table(kGraphTableSize);
  renderGraph(shape.points, std::span<Shared<float>, kGraphTableSize>(table.data(), table.size()));
  return {table.begin(), table.end()};
}

// The height of a shape at a place from 0 to 1.
double heightAt(const std::vector<float>& table, double place) {
  return static_cast<double>(table[static_cast<std::size_t>(place * kGraphWidth)]);
}

const std::vector<Shape>& someShapes() {
  static const std::vector<Shape> shapes = readShapes("Basic.txt", "shape Saw\n0 0\n1 1\n");
  return shapes;
}

// Faults are told as "Things.txt:3: ..."; the rows are what stands there and what is said.
struct Fault {
  std::string text, told;
};

template <class Read>
void expectFaults(const std::vector<Fault>& faults, const Read& read) {
  for (const auto& [text, told] : faults) {
    try {
      read(text);
      ADD_FAILURE() << "taken: " << text;
    } catch (const DefinitionError& fault) {
      EXPECT_EQ(fault.what(), "Things.txt:" + told);
    }
  }
}

Preset presetWith(const std::string& lines) {
  return readPresets(kFile, "preset One\nabout it\nmoves = volume, period 1/4, depth 20 dB\n" + lines, someShapes())
      .at(0);
}

float settingOf(const std::string& line) { return presetWith(line).settings.at(0).value; }

TEST(ShapeDefinitions, DrawLinesCurvesJumpsAndPatternsOnTheGrid) {
  struct Row {
    const char* lines;
    std::vector<std::pair<double, double>> heights;  // place, height
  };
  const Row kRows[] = {
      {"0 0\n0.5 1   # a comment\n\n0.5 0.25\n1 0.75 0.3\n",
       {{0.25, 0.5}, {0.4999, 1.0}, {0.5001, 0.25}, {0.9999, 0.75}}},
      {"gate x5-. 0.5\n", {{0.1, 1.0}, {0.13, 0.0}, {0.6, 0.5}, {0.63, 0.0}}},  // the second hit is held over
      {"pluck .x.. 0.5\nupside down\n", {{0.2, 1.0}, {0.2502, 0.0}, {0.625, 0.5}}},
      {"steps 0 1/3 1\n", {{0.5, 1.0 / 3.0}, {0.99, 1.0}}}};
  for (const auto& [lines, heights] : kRows) {
    const auto table = tableOf(lines);
    for (const auto& [place, height] : heights) EXPECT_NEAR(heightAt(table, place), height, 1e-3) << lines << place;
  }
  EXPECT_GT(heightAt(tableOf(kRows[0].lines), 0.6), 0.45) << "a curve below 0.5 leaves fast";
}

TEST(ShapeDefinitions, SineIsASine) {
  const auto table = tableOf("sine 0.25");
  for (int i = 0; i < 300; ++i) {
    const double place = i / 300.0;
    EXPECT_NEAR(heightAt(table, place), 0.5 + 0.5 * std::cos(2.0 * std::numbers::pi * place), 0.007) << place;
  }
}

TEST(ShapeDefinitions, FaultsNameFileAndLine) {
  const std::vector<Fault> faults = {
      {"\n0 1\n", "2: a shape starts with a line \"shape NAME\""},
      {"shape A\n0 1\n0.5 x\n", "3: \"x\" is no number"},
      {"shape A\n0 0\n0.6 0\n0.5 0\n", "4: the points must go from left to right"},
      {"shape A\n0 0\n1 1.5\n", "3: places and heights run from 0 to 1"},
      {"shape A\n# none\nshape B\n", "3: shape \"A\" has no points yet"},
      {"shape A\n0 0\n1 0\nshape A\n", "4: \"A\" is there already"},
      {"shape A_B\n", "1: the name has a character that is not allowed"},
      {"shape A\ngate x.q 0.5\n", "2: a pattern has the marks x, 1 to 9, - and ."},
      {"shape A\npluck " + std::string(32, 'x') + " 0.4\n", "2: a shape has at most 64 points"},
  };
  expectFaults(faults, [](const std::string& text) { (void)readShapes(kFile, text); });
}

TEST(PresetDefinitions, ValuesAreWrittenAsMusiciansReadThem) {
  const std::pair<const char*, float> rows[] = {
      {">vol = 100%", 1.0f},    {">vol = -50 %", 0.25f},          {"Smooth = 0.3", 0.3f},
      {"LFOn>Pan = 12", 1.0f},  {"BPMSync = off", 0.0f},          {"In>Rerig = Trig", 0.5f},
      {"Rate = 27.5 Hz", 0.5f}, {"Xov Freq = 632.4555 Hz", 0.5f}, {"FilType = MG Low 24", 6.0f / 92.0f}};
  for (const auto& [line, value] : rows) EXPECT_NEAR(settingOf(line), value, 1e-6f) << line;
  EXPECT_EQ(warpMultiplier(settingOf("Warp 12 = 1/16")), 1.0 / 16.0);
  EXPECT_EQ(64.0 / rateDivider(settingOf("Rate = bar"), true, true), 4.0);
  EXPECT_EQ(64.0 / rateDivider(settingOf("Rate = 1/16 t"), true, true), 1.0 / 3.0);
}

TEST(PresetDefinitions, ReachTheEffect) {
  const auto effect = freshEffect();
  apply(presetWith("graph 2 = Shapes/Basic/Saw\nLFOn>Vol = 2\nCC Out = 74\nGrid = 16\nAnchor = off\nIn>Cutoff = on\n"),
        *effect);
  EXPECT_EQ(effect->routeVol, 1);
  EXPECT_EQ(effect->envNumPoints[1], 2);
  EXPECT_NEAR(static_cast<double>(effect->graphTable[1][32768]), 0.5, 1e-3);
  EXPECT_EQ(effect->ccNumber, 74);
  EXPECT_FLOAT_EQ(effect->gridSize, 1.0f);
  EXPECT_FALSE(effect->bAnchor);
  EXPECT_TRUE(effect->bNoteToCutoff);
}

TEST(PresetDefinitions, MovementsAreRead) {
  const auto presets = readPresets(kFile, "preset A\nabout it\nmoves = pan, once 3 beats, depth 40%, at 100 Hz\n", {});
  const Movement& movement = presets.at(0).movements.at(0);
  EXPECT_EQ(movement.of, Movement::Of::pan);
  EXPECT_TRUE(movement.once);
  EXPECT_EQ(movement.period.beats, 3.0);
  EXPECT_EQ(movement.depth, 40.0);
  EXPECT_EQ(movement.toneHz, 100.0);
}

TEST(PresetDefinitions, FaultsNameFileAndLine) {
  const std::string head = "preset A\nabout it\n", whole = head + "moves = pan, period bar, depth 5%\n";
  const std::vector<Fault> faults = {
      {"preset A\n\nmoves = pan, period bar, depth 5%\n", "3: preset \"A\" has no line \"about\""},
      {head + "preset B\n", "3: preset \"A\" has no line \"moves = \""},
      {head + "Loudness = 3\n", "3: there is no parameter \"Loudness\""},
      {head + "F.On Off = 1\n", "3: \"1\" is no value of F.On Off; expected on or off"},
      {whole + "Smooth = 1\nSmooth = 1\n", "5: Smooth is set already"},
      {head + "graph 13 = Shapes/Basic/Saw\n", "3: graphs have numbers from 1 to 12"},
      {head + "graph 1 = Shapes/Basic/Sew\n", "3: there is no shape \"Shapes/Basic/Sew\""},
      {head + "moves = colour, period bar, depth 5%\n", "3: \"colour\" is nothing that moves"},
      {head + "moves = pan, period bar, depth 5 dB\n", "3: \"5 dB\" is no number of %"},
      {head + "moves = pan, period bar\n", "3: a movement has a period (or once) and a depth"},
  };
  expectFaults(faults, [](const std::string& text) { (void)readPresets(kFile, text, someShapes()); });
}

}  // namespace
