// The set as a whole: what the build made of it, and the page that lists it.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "model/StateChunk.h"
#include "presets/generator/Listing.h"
#include "tests/TemporaryFolder.h"
#include "tests/presets/Motion.h"

namespace {

namespace fs = std::filesystem;
using namespace modrift::factory;

// The files with this ending below the built set, as "Folder/Name".
std::set<std::string> builtFiles(const fs::path& folder, const std::string& ending) {
  std::set<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ending) continue;
    files.insert((entry.path().parent_path().filename() / entry.path().stem()).string());
  }
  return files;
}

template <class T>
std::set<std::string> namesOf(const std::vector<T>& things) {
  std::set<std::string> names;
  for (const T& thing : things) names.insert(thing.folder + "/" + thing.name);
  return names;
}

const fs::path kBuilt = MODRIFT_PRESETS;
std::vector<std::byte> bytesOf(const char* name) { return model::readFile(kBuilt / name, 100000).value(); }

TEST(FactorySet, IsBuiltWhole) {
  EXPECT_EQ(builtFiles(kBuilt / "Shapes", ".shp"), namesOf(factorySet().shapes));
  EXPECT_EQ(builtFiles(kBuilt, ".fxp"), namesOf(factorySet().presets));
  EXPECT_GE(factorySet().presets.size(), 40u);
  EXPECT_GE(factorySet().shapes.size(), 60u);
}

TEST(FactorySet, ShapesAreDistinctCloseTheirCycleAndRunFromLeftToRight) {
  std::set<std::string> contents;
  for (const Shape& shape : factorySet().shapes) {
    SCOPED_TRACE(shape.name);
    EXPECT_TRUE(contents.insert(readText(kBuilt / "Shapes" / shape.folder / (shape.name + ".shp"))).second);
    const GraphPoints& p = shape.points;
    const auto last = static_cast<std::size_t>(p.lastPoint);
    EXPECT_EQ(p.x[last], kGraphWidth);
    EXPECT_EQ(p.y[last], p.y[0]);
    EXPECT_TRUE(std::ranges::is_sorted(p.x) && p.x[0] == 0.0);
  }
}

TEST(FactorySet, FilesHoldWhatTheirDefinitionsSay) {
  const auto saw = model::readShape(bytesOf("Shapes/Basic/Saw Up.shp"));
  ASSERT_TRUE(saw);
  EXPECT_EQ(saw->lastPoint, 2);
  EXPECT_EQ(saw->curve[0], kStraightCurve);
  EXPECT_EQ(saw->x[1], 65536.0);
  EXPECT_EQ(saw->y[0], 1.0) << "the bottom";
  EXPECT_EQ(saw->y[1], 0.0) << "the top";

  const auto pump = bytesOf("Sidechain/Classic Pump.fxp");
  const auto reading = model::readChunk(model::chunkOfPreset(pump).value());
  const model::State& state = std::get<model::LoadedState>(reading).state;
  EXPECT_EQ(state.version, model::kStateVersion);
  EXPECT_EQ(state.depthVol, 0.925f);
  EXPECT_EQ(state.lfoSmooth, 0.1f);
  EXPECT_EQ(state.envX[0][1], std::round(0.12 * 65536.0));
  EXPECT_EQ(state.envNumPoints[0], 4);
  EXPECT_EQ(state.envNumPoints[1], 2);
  EXPECT_TRUE(state.bAnchor);
}

TEST(FactorySet, IsListedInTheManual) {
  const std::string page = readText(MODRIFT_PRESETS_PAGE);
  EXPECT_NE(page.find(listing(factorySet())), std::string::npos)
      << "put the output of modrift_factory --list into docs/presets.md";
}

}  // namespace
