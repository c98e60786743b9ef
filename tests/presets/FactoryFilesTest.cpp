// SPDX-License-Identifier: MIT
// The set as a whole: what the build made of it, and the page that lists it.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "model/AtomicFile.h"
#include "model/ShapeFile.h"
#include "presets/generator/Listing.h"
#include "tests/TemporaryFolder.h"
#include "tests/presets/Motion.h"

using namespace model;

namespace {

namespace fs = std::filesystem;
using namespace modrift::factory;

const fs::path kBuilt = MODRIFT_PRESETS;

// That each definition has its file shows where the file is read.
TEST(FactorySet, HasNoFilesBesidesThoseOfItsDefinitions) {
  const auto count = [](const char* ending) {
    const auto files = fs::recursive_directory_iterator(kBuilt);
    return static_cast<std::size_t>(
        std::count_if(begin(files), end(files), [&](const auto& file) { return file.path().extension() == ending; }));
  };
  EXPECT_EQ(count(".shp"), factorySet().shapes.size());
  EXPECT_EQ(count(".fxp"), factorySet().presets.size());
  EXPECT_GE(factorySet().presets.size(), 40u);
  EXPECT_GE(factorySet().shapes.size(), 60u);
}

TEST(FactorySet, ShapesAreDistinctCloseTheirCycleAndAreInTheirFiles) {
  std::set<std::string> contents;
  for (const Shape& shape : factorySet().shapes) {
    SCOPED_TRACE(shape.name);
    const GraphPoints& p = shape.points;
    const auto last = static_cast<std::size_t>(p.lastPoint);
    EXPECT_EQ(p.x[last], kGraphWidth);
    EXPECT_EQ(p.y[last], p.y[0]);
    EXPECT_TRUE(std::ranges::is_sorted(p.x) && p.x[0] == 0.0);
    const fs::path path = kBuilt / "Shapes" / shape.folder / (shape.name + ".shp");
    EXPECT_TRUE(contents.insert(readText(path)).second);
    const GraphPoints file = model::readShape(model::readFile(path, model::kLargestShapeFile).value()).value();
    EXPECT_EQ(file.lastPoint, p.lastPoint);
    for (std::size_t i = 0; i <= last; ++i) {
      EXPECT_EQ(file.x[i], p.x[i]);
      EXPECT_NEAR(file.y[i], p.y[i], 1e-6);
      EXPECT_NEAR(file.curve[i], p.curve[i], 1e-6);
    }
  }
}

TEST(FactorySet, IsListedInTheManual) {
  const std::string page = readText(MODRIFT_PRESETS_PAGE);
  EXPECT_NE(page.find(listing(factorySet())), std::string::npos)
      << "put the output of modrift_factory --list into docs/presets.md";
}

}  // namespace
