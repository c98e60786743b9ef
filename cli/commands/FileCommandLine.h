// SPDX-License-Identifier: MIT
// The command lines of `preset` and `shape`, the commands that work on stored files.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/commands/PresetCommands.h"
#include "cli/commands/ShapeCommands.h"

namespace modrift::cli {

struct FileOptions {
  PresetShowOptions presetShow;
  PresetSaveOptions presetSave;
  PresetConvertOptions presetConvert;
  ShapeShowOptions shapeShow;
  ShapeSaveOptions shapeSave;
  ShapePlotOptions shapePlot;
};

// `options` must live as long as `app`.
void addFileCommands(CLI::App& app, FileOptions& options);

// Runs the one that was typed, if any. Throws what the commands throw, and UsageError for `preset` or `shape` alone.
void runFileCommand(const CLI::App& app, const FileOptions& options);

}  // namespace modrift::cli
