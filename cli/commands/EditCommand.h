// SPDX-License-Identifier: MIT
// `modrift edit`: a plug-in's editor in a window of its own, with sound running through the plug-in.
#pragma once

#include <string>

namespace modrift::cli {

struct EditOptions {
  std::string plugin;  // empty: the program's own
  std::string preset;  // empty: none
  std::string play;    // empty: the example loop
  std::string save;    // the preset to write at the end; empty: none
  bool jack = false;   // what JACK brings instead of a recording
  double tempoBpm = 120.0;
};

// Returns when the window is closed, the display goes, or an interrupt comes; what is to be saved is saved then. Throws
// UsageError, RunError, host::Error and Interrupted.
void runEdit(const EditOptions& options);

}  // namespace modrift::cli
