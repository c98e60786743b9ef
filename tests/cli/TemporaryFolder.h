// A folder of a test's own, gone after it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <unistd.h>

namespace modrift::cli {

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

inline void writeText(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

inline std::string readText(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

}  // namespace modrift::cli
