// SPDX-License-Identifier: MIT
// `modrift screenshot`: Modrift's editor as a picture, without a display.
#pragma once

#include <string>

namespace modrift::cli {

struct ScreenshotOptions {
  std::string output;
  std::string plugin;  // empty: the program's own
  std::string preset;  // empty: none
  std::string size;    // "WIDTHxHEIGHT" in pixels; empty: what the preset says
};

// Throws UsageError, RunError, host::Error and Interrupted.
void runScreenshot(const ScreenshotOptions& options);

}  // namespace modrift::cli
