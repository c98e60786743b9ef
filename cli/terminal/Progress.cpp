// SPDX-License-Identifier: MIT
#include "cli/terminal/Progress.h"

#include <algorithm>
#include <cstdio>
#include <fmt/core.h>
#include <unistd.h>
#include <utility>

namespace modrift::cli {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kRefresh = std::chrono::milliseconds(100);
constexpr int kBarWidth = 40;
constexpr const char* kClearLine = "\r\x1b[K";

}  // namespace

// Drawn on standard error, so that it never mixes with results; but only if both are looked at.
Progress::Progress(std::string label)
    : label_(std::move(label)),
      enabled_(isatty(STDOUT_FILENO) == 1 && isatty(STDERR_FILENO) == 1),
      nextUpdate_(Clock::now() + kPatience) {}

Progress::~Progress() {
  if (shown_) std::fputs(kClearLine, stderr);
}

void Progress::update(std::int64_t done, std::int64_t total) {
  if (!enabled_ || total <= 0 || Clock::now() < nextUpdate_) return;
  nextUpdate_ = Clock::now() + kRefresh;
  shown_ = true;
  const double share = std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0);
  const auto filled = static_cast<int>(share * kBarWidth);
  std::fputs(fmt::format("{}{} [{:#<{}}{:.<{}}] {:3.0f} %", kClearLine, label_, "", filled, "", kBarWidth - filled,
                         share * 100.0)
                 .c_str(),
             stderr);
}

}  // namespace modrift::cli
