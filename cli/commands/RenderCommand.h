// SPDX-License-Identifier: MIT
// `modrift render`: audio files through a plug-in into audio files.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace modrift::cli {

// As given on the command line, numbers checked for their ranges.
struct RenderOptions {
  std::vector<std::string> inputs;
  std::string output;
  std::string plugin;                 // empty: the program's own
  std::string picture;                // empty: none
  std::string automation;             // empty: none
  std::string preset;                 // empty: none
  std::string midiIn;                 // empty: none
  std::string midiOut;                // empty: none
  std::vector<std::string> shapes;    // "GRAPH=FILE"
  std::vector<std::string> settings;  // "NAME|INDEX=VALUE"
  double tempoBpm = 120.0;
  double startBeat = 0.0;
  double tailSeconds = 0.0;
  int blockFrames = 512;
  std::optional<int> rateHz;  // nothing: the file's own
  bool stopped = false;
  bool noTime = false;
  bool mono = false;
};

// Prints one line per file. Throws UsageError, RunError, host::Error and Interrupted.
void runRender(const RenderOptions& options);

}  // namespace modrift::cli
