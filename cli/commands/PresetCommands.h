// SPDX-License-Identifier: MIT
// `modrift preset`: preset files shown, made and brought to the present version. One function a command, each in a file
// of its own.
#pragma once

#include <string>
#include <vector>

namespace modrift::cli {

struct PresetShowOptions {
  std::string input;
  bool json = false;
};

struct PresetSaveOptions {
  std::string output;
  std::string plugin;                 // empty: the program's own
  std::string preset;                 // to begin with; empty: none
  std::vector<std::string> shapes;    // "GRAPH=FILE"
  std::vector<std::string> settings;  // "NAME|INDEX=VALUE"
};

struct PresetConvertOptions {
  std::string input;
  std::string output;  // may be the input
};

// Prints what the file holds, also in the versions and layouts before the present one. Throws RunError.
void runPresetShow(const PresetShowOptions& options);

// Sets Modrift up as a host does, and stores what a host would store. Throws UsageError, RunError and host::Error.
void runPresetSave(const PresetSaveOptions& options);

// Throws UsageError and RunError.
void runPresetConvert(const PresetConvertOptions& options);

}  // namespace modrift::cli
