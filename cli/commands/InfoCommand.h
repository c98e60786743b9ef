// SPDX-License-Identifier: MIT
// `modrift info`: what a plug-in says of itself.
#pragma once

#include <string>

namespace modrift::cli {

struct InfoOptions {
  std::string plugin;  // empty: the program's own
  bool json = false;
};

// Throws RunError and host::Error.
void runInfo(const InfoOptions& options);

}  // namespace modrift::cli
