// SPDX-License-Identifier: MIT
// The command lines of the commands that work with a plug-in: `render`, `export-midi`, `edit`, `screenshot`, `info`.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/commands/EditCommand.h"
#include "cli/commands/ExportMidiCommand.h"
#include "cli/commands/InfoCommand.h"
#include "cli/commands/RenderCommand.h"
#include "cli/commands/ScreenshotCommand.h"

namespace modrift::cli {

struct PluginOptions {
  RenderOptions render;
  ExportMidiOptions exportMidi;
  EditOptions edit;
  ScreenshotOptions screenshot;
  InfoOptions info;
};

// `options` must live as long as `app`.
void addPluginCommands(CLI::App& app, PluginOptions& options);

// Runs the one that was typed, if any. Throws what the commands throw.
void runPluginCommand(const CLI::App& app, const PluginOptions& options);

}  // namespace modrift::cli
