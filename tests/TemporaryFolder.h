// SPDX-License-Identifier: MIT
// A folder of a test's own, gone after it, and texts in files.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>

class TemporaryFolder {
 public:
  TemporaryFolder()
      : path_(std::filesystem::path(testing::TempDir()) /
              ("modrift-" + std::to_string(getpid()) + "-" +
               testing::UnitTest::GetInstance()->current_test_info()->name())) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  [[nodiscard]] std::string path() const { return path_.string(); }
  [[nodiscard]] std::ptrdiff_t fileCount() const {
    return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path path_;
};

// The folders on the way are made.
inline void writeText(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

inline std::string readText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
