// The set as a whole: what the build made of it, and the page that lists it.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

#include "presets/generator/Definitions.h"
#include "presets/generator/Listing.h"

namespace {

namespace fs = std::filesystem;
using namespace modrift::factory;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

template <class T>
T valueAt(const std::string& bytes, std::size_t offset) {
  std::array<char, sizeof(T)> raw{};
  std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset), sizeof(T), raw.begin());
  return std::bit_cast<T>(raw);
}

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

template <class T>
std::set<std::string> foldersOf(const std::vector<T>& things) {
  std::set<std::string> folders;
  for (const T& thing : things) folders.insert(thing.folder);
  return folders;
}

const fs::path kBuilt = MODRIFT_PRESETS;
const FactorySet& factorySet() {
  static const FactorySet set = readFactorySet(MODRIFT_DEFINITIONS);
  return set;
}

TEST(FactorySet, IsBuiltWhole) {
  EXPECT_EQ(builtFiles(kBuilt / "Shapes", ".shp"), namesOf(factorySet().shapes));
  EXPECT_EQ(builtFiles(kBuilt, ".fxp"), namesOf(factorySet().presets));
  EXPECT_GE(factorySet().presets.size(), 40u);
  EXPECT_GE(factorySet().shapes.size(), 60u);
  EXPECT_EQ(foldersOf(factorySet().presets),
            (std::set<std::string>{"Sidechain", "Gates", "Sweeps", "Rhythmic filters", "Stereo", "MIDI CC",
                                   "One-shot envelopes", "Textures"}));
  EXPECT_EQ(foldersOf(factorySet().shapes),
            (std::set<std::string>{"Basic", "Ramps", "Steps", "Curves", "Rhythms", "Envelopes"}));
}

TEST(FactorySet, HasNoShapeTwice) {
  std::set<std::string> contents;
  for (const Shape& shape : factorySet().shapes)
    EXPECT_TRUE(contents.insert(contentOf(kBuilt / "Shapes" / shape.folder / (shape.name + ".shp"))).second)
        << shape.name;
}

TEST(FactorySet, ShapesCloseTheirCycleAndRunFromLeftToRight) {
  for (const Shape& shape : factorySet().shapes) {
    const GraphPoints& p = shape.points;
    const auto last = static_cast<std::size_t>(p.lastPoint);
    EXPECT_EQ(p.x[0], 0.0) << shape.name;
    EXPECT_EQ(p.x[last], kGraphWidth) << shape.name;
    EXPECT_EQ(p.y[last], p.y[0]) << shape.name;
    EXPECT_TRUE(std::ranges::is_sorted(p.x)) << shape.name;
  }
}

TEST(FactorySet, FilesHaveTheirBytes) {
  const std::string saw = contentOf(kBuilt / "Shapes/Basic/Saw Up.shp");
  ASSERT_EQ(saw.size(), 2056u);
  EXPECT_EQ(valueAt<double>(saw, 0), 0.4999999701976776);
  EXPECT_EQ(valueAt<double>(saw, 512 + 8), 65536.0);
  EXPECT_EQ(valueAt<double>(saw, 1024), 1.0) << "the bottom";
  EXPECT_EQ(valueAt<double>(saw, 1024 + 8), 0.0) << "the top";
  EXPECT_EQ(saw[2048], 2);
  EXPECT_EQ(saw[2049], 8);

  const std::string pump = contentOf(kBuilt / "Sidechain/Classic Pump.fxp");
  constexpr std::size_t kChunk = 60;
  ASSERT_EQ(pump.size(), kChunk + 18824u);
  EXPECT_EQ(pump.substr(0, 28), std::string("CcnK\0\0\x49\xbc"
                                            "FPCh\0\0\0\1AMBa\0\0\0\1\0\0\0\1",
                                            28));
  EXPECT_EQ(pump.substr(28, 28), "(Custom)            " + std::string(8, '\0'));
  EXPECT_EQ(pump.substr(56, 4), std::string("\0\0\x49\x88", 4));
  EXPECT_EQ(valueAt<std::uint32_t>(pump, kChunk + 18772), 0x3F9EBB99u);
  EXPECT_EQ(valueAt<float>(pump, kChunk + 18432 + 124), 0.925f) << "volume depth";
  EXPECT_EQ(valueAt<float>(pump, kChunk + 18764), 0.1f) << "smoothing";
  EXPECT_EQ(valueAt<double>(pump, kChunk + 6144 + 8), std::round(0.12 * 65536.0)) << "graph 1, second point";
  EXPECT_EQ(pump[kChunk + 18784], 4) << "graph 1, index of the last point";
  EXPECT_EQ(pump[kChunk + 18785], 2) << "graph 2, index of the last point";
  EXPECT_EQ(pump[kChunk + 18808], 1) << "follows the song";
}

TEST(FactorySet, IsListedInTheManual) {
  const std::string page = contentOf(MODRIFT_PRESETS_PAGE);
  EXPECT_NE(page.find(listing(factorySet())), std::string::npos)
      << "put the output of modrift_factory --list into docs/presets.md";
}

}  // namespace
