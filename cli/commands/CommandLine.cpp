// SPDX-License-Identifier: MIT
#include "cli/commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fmt/core.h>
#include <string_view>

#include "cli/commands/ExampleCommand.h"
#include "cli/commands/FileCommandLine.h"
#include "cli/commands/PictureCommandLine.h"
#include "cli/commands/PluginCommandLine.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"

namespace modrift::cli {
namespace {

constexpr const char* kOverview =
    "Modrift from the command line: moves the filter, volume and pan of audio files with drawn LFO graphs.\n"
    "Without arguments it renders a short example into the current folder.";

constexpr const char* kOverviewFooter =
    "\nExamples:\n"
    "  modrift render loop.wav -o out.wav --tempo 128 --set \">vol=1\" --set Rate=0.43\n"
    "  modrift render drums/*.flac -o rendered/ --picture rendered/\n"
    "  modrift render pad.wav -o out.wav --midi-in notes.mid --set \"In>Rerig=1\" --set \">vol=1\"\n"
    "  modrift export-midi -o cutoff.mid --tempo 128 --set \"CC Out=0.58\"\n"
    "  modrift preset show duck.fxp\n"
    "  modrift shape plot duck.shp -o duck.png\n"
    "  modrift filters plot \"MG Low 24\" -o pictures/\n"
    "  modrift edit --preset duck.fxp --play loop.wav\n"
    "  modrift screenshot --preset duck.fxp -o editor.png\n"
    "  modrift info --json\n"
    "  modrift wave out.wav -o out.png\n"
    "'modrift COMMAND --help' tells the options of a command.\n"
    "\nThe plug-in is --plugin, else what MODRIFT_PLUGIN names, else the bundle that came with the program.\n"
    "Exit status: 0 done, 1 a file or plug-in is not what was needed, 2 the command line is wrong.";

void run(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return runExample();
  CLI::App app(kOverview, "modrift");
  app.footer(kOverviewFooter);
  app.set_version_flag("--version", "modrift " MODRIFT_VERSION);
  app.require_subcommand(0, 1);  // none is answered below, with a better sentence than the library's
  PluginOptions plugin;
  PictureOptions pictures;
  FileOptions files;
  addPluginCommands(app, plugin);  // in the order of the help's list
  addWaveCommand(app, pictures);
  addFileCommands(app, files);
  addFiltersCommand(app, pictures);
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::Success& request) {  // --help or --version
    app.exit(request);
    return;
  }
  if (app.get_subcommands().empty())
    throw UsageError(
        "modrift: render, export-midi, edit, screenshot, preset, shape, filters, info or wave was expected as a "
        "command");
  runPluginCommand(app, plugin);
  runPictureCommand(app, pictures);
  runFileCommand(app, files);
}

// The library's sentences in the form of ours.
std::string usageMessage(const CLI::ParseError& error) {
  const std::string_view text = error.what();
  const auto colon = text.rfind(": ");
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && colon != std::string_view::npos) {
    return fmt::format("{}: a known command or option was expected (see modrift --help)", text.substr(colon + 2));
  }
  constexpr std::string_view kRequired = " is required";
  if (text.ends_with(kRequired)) {
    return fmt::format("{}: was expected, but is missing (see modrift --help)",
                       text.substr(0, text.size() - kRequired.size()));
  }
  return std::string(text);
}

// One line, whatever a library or a file name put into the text.
ExitStatus fail(ExitStatus status, std::string message) noexcept {
  std::replace_if(
      message.begin(), message.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  std::fprintf(stderr, "modrift: %s\n", message.c_str());
  return status;
}

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments) noexcept {
  try {
    run(arguments);
    if (std::fflush(stdout) != 0) return fail(ExitStatus::failed, "standard output: room to write to was expected");
    return ExitStatus::done;
  } catch (const CLI::ParseError& error) {
    return fail(ExitStatus::misused, usageMessage(error));
  } catch (const UsageError& error) {
    return fail(ExitStatus::misused, error.what());
  } catch (const Interrupted&) {
    return fail(ExitStatus::failed, "interrupted: unfinished files were removed");
  } catch (const std::bad_alloc&) {
    return fail(ExitStatus::failed, "memory: more was expected than this machine has");
  } catch (const std::exception& error) {
    return fail(ExitStatus::failed, error.what());
  } catch (...) {
    return fail(ExitStatus::failed, "the plug-in: results were expected, but it threw something unknown");
  }
}

}  // namespace modrift::cli
