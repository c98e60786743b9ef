// SPDX-License-Identifier: MIT
// Preset and shape files as bytes, and files that are written in one step.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "model/AtomicFile.h"
#include "model/Bytes.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"
#include "tests/model/ChunkBuilder.h"

using namespace model;

namespace {

namespace fs = std::filesystem;

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

// --- Presets

TEST(PresetFile, HasItsHeaderBeforeTheChunk) {
  const auto chunk = model::writeChunk(randomState(1));
  const auto file = model::writePreset(chunk);
  ASSERT_EQ(file.size(), 18884u);
  constexpr std::string_view kHeader(
      "CcnK\x00\x00\x49\xbc"
      "FPCh\0\0\0\1AMBa\0\0\0\1\0\0\0\1(Custom)            \0\0\0\0\0\0\0\0\x00\x00\x49\x88",
      60);
  EXPECT_TRUE(std::ranges::equal(std::span(file).first(60), bytesOf(kHeader)));
  EXPECT_TRUE(std::ranges::equal(std::span(file).subspan(60), chunk));
  EXPECT_EQ(model::chunkOfPreset(file)->data(), file.data() + 60);
}

TEST(PresetFile, IsTakenBySizeAlone) {
  std::vector<std::byte> file(60 + 4048577, std::byte{7});  // no mark, no id
  const auto sizeOfChunk = [&](std::uint32_t size) {
    for (std::size_t i = 0; i < 4; ++i) file[56 + i] = static_cast<std::byte>(size >> (24 - 8 * i));
    const auto chunk = model::chunkOfPreset(file);
    return chunk ? chunk->size() : 0;
  };
  for (const std::uint32_t size : {1u, 4048576u}) EXPECT_EQ(sizeOfChunk(size), size);
  for (const std::uint32_t size : {0u, 4048577u, 0x80000000u, 0xffffffffu}) EXPECT_EQ(sizeOfChunk(size), 0u);
  file.resize(60 + 4048575);
  EXPECT_EQ(sizeOfChunk(4048576), 0u);  // more than the file holds
  for (const std::size_t length : {0u, 4u, 59u}) EXPECT_FALSE(model::chunkOfPreset(std::span(file).first(length)));
}

// --- Shapes

using Shape = std::array<std::byte, model::kShapeBytes>;

TEST(ShapeFile, ComesBackAsItWas) {
  const GraphPoints points = model::pointsOf(randomState(5), 3);
  const Shape file = model::writeShape(points);
  EXPECT_EQ(model::load<std::int8_t>(file, 2048), points.lastPoint);
  EXPECT_EQ(model::load<std::int8_t>(file, 2049), 8);
  EXPECT_EQ(model::load<double>(file, 512 + 8), points.x[1]);
  for (std::size_t i = 1536; i < 2048; ++i) EXPECT_EQ(file[i], std::byte{0});
  const auto read = model::readShape(file);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->lastPoint, points.lastPoint);
  EXPECT_EQ(read->x, points.x);
  EXPECT_EQ(read->curve[63], points.curve[63]);
  EXPECT_EQ(read->y[63], points.y[63]);
}

TEST(ShapeFile, BelowMarkEightHasItsPointsInPixels) {
  Shape file = model::writeShape(freshGraph());
  model::put(std::span<std::byte>(file), 2049, std::int8_t{7});
  model::put(std::span<std::byte>(file), 512 + 8, 97.0);
  model::put(std::span<std::byte>(file), 1024 + 8, 60.0);
  const auto read = model::readShape(file);
  EXPECT_EQ(read->x[1], static_cast<double>(97.0f * 168.90721f));
  EXPECT_EQ(read->y[1], static_cast<double>(60.0f * 0.0041666669f));
}

TEST(ShapeFile, OfTheOldFormIsReadFromPixelsAndRefusedWhenShort) {
  std::vector<std::byte> file(1544);
  model::put(std::span(file), 0, std::int8_t{2});
  model::put(std::span(file), 8, 0.25);
  model::put(std::span(file), 520 + 8, 100.0);
  model::put(std::span(file), 1032 + 8, 180.0);
  const auto read = model::readShape(file);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->lastPoint, 2);
  EXPECT_EQ(read->curve[0], 0.25);
  EXPECT_EQ(read->x[1], static_cast<double>(100.0f / 388.0f * 65536.0f));
  EXPECT_EQ(read->y[1], 0.75);
  for (const std::size_t size : {std::size_t{0}, std::size_t{1543}, model::kLargestShapeFile + 1})
    EXPECT_FALSE(model::readShape(std::vector<std::byte>(size))) << size;
  EXPECT_TRUE(model::readShape(std::vector<std::byte>(2057)));
}

TEST(ShapeFile, MendsValuesOneByOne) {
  Shape file = model::writeShape(freshGraph());
  const std::span<std::byte> bytes(file);
  model::put(bytes, 2048, std::int8_t{6});
  const double x[] = {5.0, 40000.0, 30000.0, -1.0, 65537.0, std::numeric_limits<double>::quiet_NaN(), 7.0};
  for (std::size_t i = 0; i < std::size(x); ++i) model::put(bytes, 512 + 8 * i, x[i]);
  for (const std::size_t base : {0u, 1024u}) {
    model::put(bytes, base, 1.0001);
    model::put(bytes, base + 8, -0.0001);
    model::put(bytes, base + 16, std::numeric_limits<double>::infinity());
    model::put(bytes, base + 24, 1e-300);
  }
  const auto read = model::readShape(file);
  const double lifted[] = {0.0, 40000.0, 40000.0, 40000.0, 40000.0, 40000.0, 65536.0};
  for (std::size_t i = 0; i < std::size(lifted); ++i) EXPECT_EQ(read->x[i], lifted[i]) << i;
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(read->curve[i], 0.4999999701976776);
    EXPECT_EQ(read->y[i], 0.0);
  }
  for (const int count : {65, 127, -1, 0}) {
    model::put(bytes, 2048, static_cast<std::int8_t>(count));
    EXPECT_EQ(model::readShape(file)->lastPoint, 1) << count;
    EXPECT_EQ(model::readShape(file)->x[1], 65536.0);
  }
  model::put(bytes, 2048, std::int8_t{64});
  EXPECT_EQ(model::readShape(file)->lastPoint, 64);
  EXPECT_EQ(model::readShape(file)->x[64], 65536.0);
}

// --- Whole files

class AtomicFile : public testing::Test {
 protected:
  AtomicFile() : folder(fs::temp_directory_path() / ("modrift-files-" + std::to_string(getpid()))) {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  ~AtomicFile() override { fs::remove_all(folder); }

  std::string textAt(const fs::path& path) {
    const auto bytes = model::readFile(path, 1000000);
    return bytes ? std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()) : "(none)";
  }
  std::ptrdiff_t filesInFolder() { return std::distance(fs::directory_iterator(folder), fs::directory_iterator()); }

  fs::path folder;
};

TEST_F(AtomicFile, ReplacesWhatWasThereAndLeavesNothingBesides) {
  const fs::path path = folder / std::string(255, 'x');  // the longest name there is
  EXPECT_FALSE(model::replaceFile(path, bytesOf("first")));
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_FALSE(model::replaceFile(path, bytesOf("second, longer")));
  EXPECT_EQ(textAt(path), "second, longer");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  fs::create_symlink(path, folder / "link");
  EXPECT_FALSE(model::replaceFile(folder / "link", bytesOf("third")));
  EXPECT_EQ(textAt(path), "third");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(AtomicFile, RefusesWhatIsNoFile) {
  for (const fs::path& path :
       {folder, fs::path(), fs::path("/dev/null"), folder / "missing" / "file", folder / std::string(256, 'x')})
    EXPECT_TRUE(model::replaceFile(path, bytesOf("x"))) << path;
  EXPECT_EQ(filesInFolder(), 0);
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);  // a reader must not wait for its writer
  for (const fs::path& path : {folder, folder / "missing", fs::path("/dev/zero"), folder / "pipe"})
    EXPECT_FALSE(model::readFile(path, 100)) << path;
  std::ofstream(folder / "file") << "12345";
  EXPECT_FALSE(model::readFile(folder / "file", 4));
  EXPECT_TRUE(model::readFile(folder / "file", 5));
}

TEST_F(AtomicFile, LeavesAFolderAloneThatMayOnlyBeRead) {
  const fs::path path = folder / "file";
  ASSERT_FALSE(model::replaceFile(path, bytesOf("old")));
  fs::permissions(folder,
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  constexpr uid_t kNobody = 65534;  // since root may write everywhere
  const uid_t self = geteuid();
  ASSERT_EQ(seteuid(self == 0 ? kNobody : self), 0);
  const std::error_code error = model::replaceFile(path, bytesOf("new"));
  ASSERT_EQ(seteuid(self), 0);
  fs::permissions(folder, fs::perms::owner_all);
  EXPECT_EQ(error, std::errc::permission_denied);
  EXPECT_EQ(textAt(path), "old");
  EXPECT_EQ(filesInFolder(), 1);
}

// A library writes by the draft's name; what the old file hid stays hidden while it does.
TEST_F(AtomicFile, IsADraftUntilItIsCommitted) {
  const fs::path path = folder / std::string(250, 'x');
  ASSERT_FALSE(model::replaceFile(path, bytesOf("old")));
  fs::permissions(path, fs::perms::owner_read);
  for (const bool commits : {false, true}) {
    std::error_code error;
    model::FileDraft draft(path, error);
    ASSERT_FALSE(error);
    EXPECT_EQ(draft.path().parent_path(), folder);  // one file system, so that the rename is atomic
    EXPECT_EQ(fs::status(draft.path()).permissions() & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
    std::ofstream(draft.path()) << "something longer";
    EXPECT_FALSE(draft.write(bytesOf("new")));
    EXPECT_FALSE(commits && draft.commit());
    EXPECT_EQ(textAt(path), commits ? "new" : "old");
  }
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read);
  EXPECT_EQ(filesInFolder(), 1);
}

// A child may write so many bytes and no more: the system kills it in the middle of the save, or lets the save fail.
TEST_F(AtomicFile, IsWholeWhenTheWriterIsKilledAndNothingIsLeftWhenItFails) {
  const fs::path path = folder / "state";
  const std::string old(200000, 'a'), young(300000, 'b');
  ASSERT_FALSE(model::replaceFile(path, bytesOf(old)));
  for (const bool killed : {false, true}) {
    for (const rlim_t most : {rlim_t{0}, rlim_t{1}, rlim_t{250000}, rlim_t{299999}}) {
      const pid_t child = fork();
      if (child == 0) {
        const rlimit noCore{0, 0}, limit{most, most};
        setrlimit(RLIMIT_CORE, &noCore);
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, killed ? SIG_DFL : SIG_IGN);
        _exit(model::replaceFile(path, bytesOf(young)) ? 1 : 0);
      }
      int status = 0;
      waitpid(child, &status, 0);
      EXPECT_EQ(WIFSIGNALED(status), killed) << most;
      EXPECT_TRUE(killed || WEXITSTATUS(status) == 1) << most;
      EXPECT_TRUE(textAt(path) == old) << most;
      EXPECT_TRUE(killed || filesInFolder() == 1) << most;
    }
  }
}

}  // namespace
