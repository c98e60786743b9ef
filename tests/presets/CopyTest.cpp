// SPDX-License-Identifier: MIT
// scripts/presets: brings the built set to the user and leaves alone what is the user's.
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

class PresetCopy : public testing::Test {
 protected:
  PresetCopy() {
    build("Gates/Eighth Gate.fxp", "gate 1");
    build("Shapes/Basic/Sine.shp", "sine 1");
    build("notes.txt", "no preset");
  }

  void build(const std::string& name, const std::string& text) { writeText(folder_ / ("built set/" + name), text); }
  void user(const std::string& name, const std::string& text) { writeText(users() / name, text); }
  std::string users(const std::string& name) const { return readText(users() / name); }
  fs::path users() const { return folder_ / "user's data/Modrift Presets"; }

  // The script's exit status; what it says goes to `said`.
  int copy() { return copy(users().string()); }
  int copy(const std::string& to) {
    const std::string command = std::string("'") + MODRIFT_PRESETS_SCRIPT + "' '" + (folder_ / "built set") + "' \"" +
                                to + "\" 2>'" + (folder_ / "said") + "'";
    const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe): one thread
    said = readText(folder_ / "said");
    return status;
  }

  TemporaryFolder folder_;
  std::string said;
};

TEST_F(PresetCopy, BringsWhatIsMissingAndThenRests) {
  ASSERT_EQ(copy(), 0) << said;
  EXPECT_EQ(users("Gates/Eighth Gate.fxp"), "gate 1");
  EXPECT_EQ(users("Shapes/Basic/Sine.shp"), "sine 1");
  EXPECT_FALSE(fs::exists(users() / "notes.txt"));
  const auto time = fs::last_write_time(users() / "Gates/Eighth Gate.fxp");
  fs::remove(users() / "Shapes/Basic/Sine.shp");
  ASSERT_EQ(copy(), 0) << said;
  EXPECT_EQ(users("Shapes/Basic/Sine.shp"), "sine 1");
  EXPECT_EQ(fs::last_write_time(users() / "Gates/Eighth Gate.fxp"), time);
}

TEST_F(PresetCopy, RenewsItsOwnFilesOnly) {
  user("Gates/Late Gate.fxp", "the user's own");
  user("Gates/New Gate.fxp", "the user's own, too");
  ASSERT_EQ(copy(), 0) << said;
  user("Shapes/Basic/Sine.shp", "changed by the user");
  build("Gates/Eighth Gate.fxp", "gate 2");
  build("Gates/New Gate.fxp", "new gate");
  build("Shapes/Basic/Sine.shp", "sine 2");
  for (int run = 0; run < 2; ++run) {
    ASSERT_EQ(copy(), 0) << said;
    EXPECT_EQ(users("Gates/Eighth Gate.fxp"), "gate 2");
    EXPECT_EQ(users("Gates/Late Gate.fxp"), "the user's own");
    EXPECT_EQ(users("Gates/New Gate.fxp"), "the user's own, too");
    EXPECT_EQ(users("Shapes/Basic/Sine.shp"), "changed by the user");
  }
}

TEST_F(PresetCopy, SaysInOneLineWhereItCannotWrite) {
  EXPECT_NE(copy("/dev/null/Modrift Presets"), 0);
  EXPECT_EQ(said, "presets: the presets could not be copied to /dev/null/Modrift Presets; is this place writable?\n");
}

}  // namespace
