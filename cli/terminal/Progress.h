// SPDX-License-Identifier: MIT
// A bar on the terminal for work that takes over a second. Silent when the output is not a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace modrift::cli {

class Progress {
 public:
  explicit Progress(std::string label);
  ~Progress();  // takes the bar away again
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void update(std::int64_t done, std::int64_t total);

 private:
  using Clock = std::chrono::steady_clock;

  std::string label_;
  bool enabled_;
  bool shown_ = false;
  Clock::time_point nextUpdate_;
};

}  // namespace modrift::cli
