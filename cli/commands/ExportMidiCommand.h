// SPDX-License-Identifier: MIT
// `modrift export-midi`: the cutoff's graph as a MIDI file, made by the plug-in itself.
#pragma once

#include <string>
#include <vector>

namespace modrift::cli {

struct ExportMidiOptions {
  std::string output;
  std::string plugin;                 // empty: the program's own
  std::string preset;                 // empty: none
  std::vector<std::string> shapes;    // "GRAPH=FILE"
  std::vector<std::string> settings;  // "NAME|INDEX=VALUE"
  double tempoBpm = 120.0;
  int mode = 1;  // 0: as high as the cutoff's depth makes it; 1: at full height
};

// Prints one line. Throws UsageError, RunError and host::Error.
void runExportMidi(const ExportMidiOptions& options);

}  // namespace modrift::cli
