// SPDX-License-Identifier: MIT
// The state chunk: where everything lies, both layouts there and back, what each version means, hostile bytes.
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <ranges>

#include "tests/model/ChunkBuilder.h"

namespace {

using model::FieldType;
using model::Refusal;
using model::State;

// Projects rely on every one of these numbers.
TEST(StateChunk, HasEveryFieldWhereProjectsHaveIt) {
  struct Row {
    FieldType type;
    int count, now, old;
  };
  using enum FieldType;
  const std::map<std::string_view, Row> expected = {
      {"envCurve", {f64, 768, 0, 40}},          {"envX", {f64, 768, 6144, 6184}},
      {"envY", {f64, 768, 12288, 12328}},       {"bLfoOpen", {u8, 1, 18432, 18480}},
      {"graphOut", {f32, 12, 18436, 18484}},    {"graphWarp", {f32, 12, 18484, 18532}},
      {"rate", {f32, 1, 18536, 18584}},         {"pwm", {f32, 1, 18540, 18588}},
      {"swing", {f32, 1, 18544, 18592}},        {"depthPan", {f32, 1, 18548, 18596}},
      {"depthCut", {f32, 1, 18552, 18600}},     {"depthVol", {f32, 1, 18556, 18604}},
      {"depthRes", {f32, 1, 18560, 18608}},     {"reserved132", {i32, 1, 18564, 18612}},
      {"depthKnob", {f32, 1, 18572, 18620}},    {"depthVar", {f32, 1, 18576, 18624}},
      {"cyclePos", {f32, 1, 18584, 18632}},     {"phase", {f32, 1, 18588, 18636}},
      {"bTriplet", {u8, 1, 18592, 18640}},      {"bDotted", {u8, 1, 18593, 18641}},
      {"reserved164", {i32, 1, 18596, 18644}},  {"bFreeRun", {u8, 1, 18600, 18648}},
      {"filterType", {f32, 1, 18736, 18784}},   {"filterVar", {f32, 1, 18740, 18788}},
      {"filterMix", {f32, 1, 18744, 18792}},    {"xoverFrequency", {f32, 1, 18748, -1}},
      {"filterCutoff", {f32, 1, 18752, 16}},    {"filterReso", {f32, 1, 18756, 20}},
      {"filterOn", {f32, 1, 18760, 24}},        {"lfoSmooth", {f32, 1, 18764, 28}},
      {"filterDrive", {f32, 1, 18768, 32}},     {"version", {f32, 1, 18772, 18804}},
      {"gridSize", {f32, 1, 18776, 18808}},     {"timing", {f32, 1, 18780, -1}},
      {"envNumPoints", {i8, 12, 18784, 0}},     {"ccNumber", {i8, 1, 18796, 12}},
      {"currentGraph", {i8, 1, 18797, 13}},     {"routeCut", {i8, 1, 18798, 18800}},
      {"routeRes", {i8, 1, 18799, 18801}},      {"routeVol", {i8, 1, 18800, 18802}},
      {"routePan", {i8, 1, 18801, 18803}},      {"routeVar", {i8, 1, 18802, -1}},
      {"bXoverOn", {flag, 1, 18803, -1}},       {"bXoverInvert", {flag, 1, 18804, -1}},
      {"bAnchor", {flag, 1, 18808, 18812}},     {"bRetrig", {flag, 1, 18809, 18472}},
      {"bGateMode", {flag, 1, 18810, 18473}},   {"bVelToPwm", {flag, 1, 18811, 18474}},
      {"bNoteToRate", {flag, 1, 18812, 18475}}, {"bScopeOn", {flag, 1, 18813, -1}},
      {"bNoteToCutoff", {flag, 1, 18814, -1}},  {"bOneShot", {flag, 1, 18815, -1}},
      {"editorWidth", {i16, 1, 18816, -1}},     {"editorHeight", {i16, 1, 18818, -1}},
  };
  for (const auto& [name, row] : expected) {
    const model::Field* const field = model::findField(name);
    ASSERT_NE(field, nullptr) << name;
    EXPECT_EQ(field->type, row.type) << name;
    EXPECT_EQ(field->count, row.count) << name;
    EXPECT_EQ(field->now.offset, row.now) << name;
    EXPECT_EQ(field->old.offset, row.old) << name;
  }
  int covered = 0;
  for (const model::Field& field : model::stateFields())
    covered += field.count * static_cast<int>(model::widthOf(field.type));
  EXPECT_EQ(covered, 18824 - 3 - 4);  // all bytes have one owner, but the two reserved places
}

TEST(StateChunk, ComesBackAsItWasFromBothLayouts) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    const State state = randomState(seed);
    const State present = randomState(seed + 100);
    const auto chunk = model::writeChunk(state);
    for (const std::size_t reserved : {18805u, 18806u, 18807u, 18820u, 18821u, 18822u, 18823u})
      EXPECT_EQ(chunk[reserved], std::byte{0});
    const auto reading = model::readChunk(chunk, present);
    EXPECT_EQ(firstDifference(std::get<model::LoadedState>(reading).state, state), "") << "seed " << seed;

    State mixed = state;  // what the old layout does not have stays
    for (const model::Field& f : model::stateFields()) {
      for (int i = 0; f.old.offset < 0 && i < f.count; ++i) f.put(mixed, i, f.get(present, i));
    }
    mixed.bRetrig = mixed.bRetrig || mixed.bOneShot;
    EXPECT_EQ(firstDifference(ChunkBuilder::old(state).state(present), mixed), "") << "seed " << seed;
  }
  EXPECT_EQ(ChunkBuilder::current({}).at<std::uint32_t>(18772), 0x3F9EBB99u);
  EXPECT_EQ(firstDifference(ChunkBuilder::current({}).state(), State()), "");
}

// --- Versions

// One row of what a chunk older than `version` gets, in fields of a state that has 0.25, 1 or the like everywhere.
struct Row {
  float version;
  std::string_view field;
  double older, younger;  // what the field reads as just below `version`, and at it
  bool oldLayout;         // holds there as well
};

State everywhereOdd() {
  State s;
  for (const model::Field& f : model::stateFields()) {
    const bool isFraction = f.type == FieldType::f32;
    for (int i = 0; i < f.count && f.type != FieldType::f64; ++i) model::store(s, f, i, isFraction ? 0.25 : 1.0);
  }
  s.envNumPoints.fill(2);
  s.bAnchor = false;
  return s;
}

const Row kRows[] = {
    {0.91f, "gridSize", static_cast<double>(7.0f / 15.0f), static_cast<double>(4.0f / 15.0f), true},
    {0.93f, "bAnchor", 1, 0, true},
    {0.94f, "lfoSmooth", 0, 0.25, true},
    {0.95f, "graphWarp", static_cast<double>(0.46666667f), 0.25, true},
    {0.96f, "depthKnob", 1, 0.25, false},
    {0.97f, "bGateMode", 0, 1, false},
    {0.98f, "filterType", 0, static_cast<double>(0.25f * 88.0f / 92.0f * 91.0f / 92.0f), false},
    {0.98f, "filterMix", 1, 0.25, false},  // the switch at 0.25 means the first filter
    {0.98f, "filterVar", 0.5, 0.25, false},
    {0.98f, "filterOn", 1, 0.25, false},
    {0.99f, "depthVar", 0.5, 0.25, false},
    {0.99f, "routeVar", 0, 1, false},
    {1.1f, "bScopeOn", 0, 1, false},
    {1.11f, "bNoteToCutoff", 0, 1, false},
    {1.12f, "timing", 0.75, 0.25, false},  // the present one stays
    {1.14f, "bOneShot", 0, 1, false},
    {1.15f, "bXoverOn", 0, 1, false},
    {1.15f, "bXoverInvert", 0, 1, false},
    {1.15f, "xoverFrequency", 0.5, 0.25, false},
    {1.16f, "filterType", static_cast<double>(0.25f * 88.0f / 92.0f * 91.0f / 92.0f),
     static_cast<double>(0.25f * 91.0f / 92.0f), false},
    {1.21f, "editorWidth", 708, 1, false},
    {1.21f, "editorHeight", 343, 1, false},
    {1.22f, "gridSize", static_cast<double>(4.0f / 15.0f), 0.25, true},
    {1.23f, "filterType", static_cast<double>(0.25f * 91.0f / 92.0f), 0.25, false},
    {1.24f, "filterType", static_cast<double>((0.25f * 89.0f + 3.0f) / 92.0f), 0.25, false},
};

TEST(StateChunk, OfEachOlderVersionGetsWhatThatVersionLacks) {
  State present;
  present.timing = 0.75f;
  for (const Row& row : kRows) {
    SCOPED_TRACE(std::string(row.field) + " around " + std::to_string(row.version));
    const model::Field& field = *model::findField(row.field);
    const float older = std::nextafter(row.version, 0.0f);
    EXPECT_EQ(field.get(ChunkBuilder::current(everywhereOdd(), older).state(present), 0), row.older);
    EXPECT_EQ(field.get(ChunkBuilder::current(everywhereOdd(), row.version).state(present), 0), row.younger);
    if (field.old.offset < 0) continue;
    const double inOld = field.get(ChunkBuilder::old(everywhereOdd(), older).state(present), 0);
    EXPECT_EQ(inOld, row.oldLayout ? row.older : field.get(everywhereOdd(), 0));
  }
}

TEST(StateChunk, BetweenTwoVersionsKeepsTheLastFilterType) {
  for (const float stored : {1.0f, 1.5f}) {
    State s;
    s.filterType = stored;
    EXPECT_EQ(ChunkBuilder::current(s, 1.235f).state().filterType, 1.0f) << stored;
  }
}

TEST(StateChunk, BeforeFilterTypesReadsThemOffTheSwitch) {
  struct {
    float stored, type, on, mix, var;
  } const rows[] = {{0.0f, 0.0f, 0.0f, 0.125f, 0.875f},  // off, it says nothing of the mix
                    {0.667f, 1.0f / 92.0f, 1.0f, 1.0f, 0.5f},
                    {1.0f, 2.0f / 92.0f, 1.0f, 1.0f, 0.5f}};
  State present;
  present.filterMix = 0.125f;
  present.filterVar = 0.875f;
  for (const auto& row : rows) {
    State s;
    s.filterOn = row.stored;
    const State loaded = ChunkBuilder::current(s, 0.97f).state(present);
    EXPECT_EQ((std::array{loaded.filterType, loaded.filterOn, loaded.filterMix, loaded.filterVar}),
              (std::array{row.type, row.on, row.mix, row.var}))
        << row.stored;
  }
}

TEST(StateChunk, BeforeTheResizableWindowHasPointsInPixels) {
  auto chunk = ChunkBuilder::current({}, 1.19f);
  chunk.put(6144 + 8, 97.0).put(6144 + 16, 388.0).put(12288 + 8, 60.0).put(12288 + 16, 240.0);
  State state = chunk.state();
  EXPECT_EQ(state.envX[0][1], 97.0 * 168.90721130371094);
  EXPECT_EQ(state.envX[0][2], 65536.0);
  EXPECT_EQ(state.envY[0][1], 60.0 * 0.004166666883975267);
  EXPECT_EQ(state.envY[0][2], 1.0);
  chunk.put(18772, 1.2f);
  state = chunk.state();
  EXPECT_EQ(state.envX[0][1], 97.0);
  EXPECT_EQ(state.envY[0][1], 1.0);
}

// --- Hostile bytes

TEST(StateChunk, IsToldApartAndRefusedBySize) {
  const auto refusalOf = [](std::size_t size, float version) -> std::optional<Refusal> {
    const auto reading = ChunkBuilder::old({}, version, size).read();
    return reading.index() == 0 ? std::nullopt : std::optional(std::get<Refusal>(reading));
  };
  for (const std::size_t size : {0u, 1u, 9u}) EXPECT_EQ(refusalOf(size, 1.0f), Refusal::empty);
  for (const std::size_t size : {10u, 18804u, 18812u}) EXPECT_EQ(refusalOf(size, 1.0f), Refusal::cutShort);
  for (const std::size_t size : {18813u, 18815u, 18825u, 4048576u}) {
    for (const float none : {0.0f, 0.01f, -7.0f}) EXPECT_EQ(refusalOf(size, none), Refusal::noVersion) << none;
    EXPECT_EQ(refusalOf(size, 0.0101f), std::nullopt);
  }
  State stored;
  stored.editorWidth = 900;
  stored.editorHeight = 600;
  for (std::size_t size = 18816; size <= 18824; ++size) {
    const State loaded = ChunkBuilder::current(stored, 1.2401f, size).state();
    EXPECT_EQ(loaded.editorWidth, size >= 18818 ? 900 : 708) << size;
    EXPECT_EQ(loaded.editorHeight, size >= 18820 ? 600 : 343) << size;
  }
}

TEST(StateChunk, BringsNaNAndInfinitiesToTheirDefaults) {
  for (const float broken : {std::nanf(""), HUGE_VALF, -HUGE_VALF}) {
    auto chunk = ChunkBuilder::current(everywhereOdd());
    const auto isFraction = [](const model::Field& f) { return f.type == FieldType::f32 || f.type == FieldType::f64; };
    for (const model::Field& f : model::stateFields() | std::views::filter(isFraction)) {
      for (int i = 0; i < f.count; ++i) chunk.putTyped(f.type, f.now.offset, i, static_cast<double>(broken));
    }
    const State loaded = chunk.state(randomState(3));
    for (const model::Field& f : model::stateFields() | std::views::filter(isFraction)) {
      for (int i = 0; i < f.count; ++i) EXPECT_EQ(f.get(loaded, i), model::defaultOf(f, i)) << f.name << i;
    }
  }
}

TEST(StateChunk, BringsValuesInsideTheirLimits) {
  auto chunk = ChunkBuilder::current({});
  for (std::size_t route = 18797; route <= 18802; ++route) chunk.put(route, std::uint8_t(route % 2 ? 200 : 12));
  chunk.put(18784, std::int8_t{-3}).put(18785, std::int8_t{0}).put(18786, std::int8_t{65}).put(18787, std::int8_t{64});
  chunk.put(18484, 1.5f).put(18488, -0.5f).put(18776, 1.01f);
  const State s = chunk.state();
  EXPECT_EQ((std::array{s.currentGraph, s.routeCut, s.routeRes, s.routeVol, s.routePan, s.routeVar}),
            (std::array<std::int8_t, 6>{0, 11, 0, 11, 0, 11}));
  EXPECT_EQ((std::array{s.envNumPoints[0], s.envNumPoints[1], s.envNumPoints[2], s.envNumPoints[3]}),
            (std::array<std::int8_t, 4>{2, 2, 64, 64}));
  EXPECT_EQ(model::pointsOf(s, 3).x[64], 65536.0);
  EXPECT_EQ((std::array{s.graphWarp[0], s.graphWarp[1], s.gridSize}), (std::array{1.0f, 0.0f, 0.45f}));
}

TEST(StateChunk, LiftsPointsThatFallBack) {
  auto chunk = ChunkBuilder::current({});
  chunk.put(18784, std::int8_t{5});
  const double x[] = {77.0, 30000.0, 20000.0, 1e300, -5.0, 123.0, 99.0};
  for (std::size_t i = 0; i < std::size(x); ++i) chunk.put(6144 + 8 * i, x[i]);
  chunk.put(12288 + 8, 1.5).put(8, -0.5).put(16, 1.0 / 3.0);
  const State s = chunk.state();
  const double lifted[] = {0.0, 30000.0, 30000.0, 65536.0, 65536.0, 65536.0, 99.0};  // the last slot is no point
  for (std::size_t i = 0; i < std::size(lifted); ++i) EXPECT_EQ(s.envX[0][i], lifted[i]) << i;
  EXPECT_EQ(s.envY[0][1], 1.0);
  EXPECT_EQ(s.envCurve[0][1], 0.0);
  EXPECT_EQ(s.envCurve[0][2], static_cast<double>(1.0f / 3.0f));
}

}  // namespace
