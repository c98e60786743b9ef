#include "cli/commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fmt/core.h>
#include <string_view>

#include "cli/commands/CommonOptions.h"
#include "cli/commands/EditCommand.h"
#include "cli/commands/ExampleCommand.h"
#include "cli/commands/ExportMidiCommand.h"
#include "cli/commands/FileCommandLine.h"
#include "cli/commands/FiltersCommand.h"
#include "cli/commands/InfoCommand.h"
#include "cli/commands/RenderCommand.h"
#include "cli/commands/ScreenshotCommand.h"
#include "cli/commands/WaveCommand.h"
#include "cli/files/AudioFile.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"

namespace modrift::cli {
namespace {

// Ranges of the options. Wide, because odd values are what people try out; limits keep frame counts countable.
constexpr double kLowestTempo = 1.0;
constexpr double kHighestTempo = 10000.0;
constexpr double kFarthestBeat = 1e9;
constexpr double kLongestTailSeconds = 3600.0;
constexpr int kLargestBlock = 1000000;
constexpr int kLowestRate = 1000;
constexpr int kHighestRate = 768000;

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

constexpr const char* kRenderFooter =
    "\nMono and stereo: a mono file feeds both inputs, and the result is stereo. With --mono the mean of a file's\n"
    "channels feeds the plug-in, and the mean of its two outputs is written as one channel: what the stereo result\n"
    "sounds like on one loudspeaker. The plug-in's reported latency is taken off, so results line up with inputs.\n"
    "\nParameters: a name (exact, then in any case, then an unambiguous beginning) or an index; 'modrift info' lists\n"
    "them. A value is a plain number, 0 to 1 for most parameters, or the text that the plug-in shows for it, as\n"
    "  --set FilType=\"MG Low 24\" --set Rate=1/8. --set \"In>Rerig=Env\" --set BPMSync=Free --set \"Rate=2 Hz\"\n"
    "each in the state that those before it have made. What is a number is meant as one; in quotes of its own it is a\n"
    "text: --set 'CC Out=\"74\"'. A text that stands for a range of values means its middle, or the end of the "
    "parameter\n"
    "where it reaches that.\n"
    "\nAutomation is a text file of lines \"beat, parameter, value\", for example\n"
    "  # the volume depth falls over one bar\n"
    "  0, >vol, 1\n"
    "  4, >vol, 0.5\n"
    "  8, FilType, Low 24\n"
    "Values jump at the exact frame of their beat; beats before --start-beat are made at the start.\n"
    "\nMIDI: the start of both files is the first frame of the recording. Notes and controllers of --midi-in come at\n"
    "the frames of their beats by --tempo; the file's own tempo does not count. --midi-out holds what the plug-in "
    "sent.\n"
    "\nThe order is: preset, shapes, --set, automation.\n"
    "\nExamples:\n"
    "  modrift render loop.wav -o out.wav --tempo 128 --set \">pan=1\" --picture out.png\n"
    "  modrift render loop.wav -o out.flac --automation moves.csv --rate 96000 --tail 2\n"
    "  modrift render a.wav b.ogg -o results/";

void addTempo(CLI::App& command, double& tempoBpm) {
  command.add_option("--tempo", tempoBpm, "Beats a minute")
      ->type_name("BPM")
      ->capture_default_str()
      ->check(numberWithin(kLowestTempo, kHighestTempo));
}

void addRender(CLI::App& app, RenderOptions& options) {
  CLI::App* render = app.add_subcommand("render", "Render audio files through a plug-in");
  render->footer(kRenderFooter);
  render->add_option("IN", options.inputs, "Audio files, mono or stereo (WAV, FLAC, OGG, AIFF and more)")
      ->required()
      ->type_name("FILE");
  render
      ->add_option("-o,--output", options.output,
                   "The result (" + writableExtensions() + "), or a folder ending in / for several")
      ->required()
      ->type_name("OUT");
  render->add_option("--plugin", options.plugin, "Another VST 2 plug-in: a shared object or a bundle folder")
      ->type_name("FILE");
  addTempo(*render, options.tempoBpm);
  render->add_option("--start-beat", options.startBeat, "Song position of the first frame")
      ->type_name("BEAT")
      ->capture_default_str()
      ->check(numberWithin(-kFarthestBeat, kFarthestBeat));
  render->add_flag("--stopped", options.stopped, "The host's transport stands still");
  render->add_flag("--no-time", options.noTime, "The host gives no tempo and position");
  addState(*render, options.preset, options.shapes, options.settings);
  render->add_option("--midi-in", options.midiIn, "Notes and controllers for the plug-in, a Standard MIDI File")
      ->type_name("FILE.mid");
  render->add_option("--midi-out", options.midiOut, "The MIDI that the plug-in sent, or a folder ending in /")
      ->type_name("FILE.mid");
  render->add_option("--automation", options.automation, "Parameter values at beats, see below")->type_name("FILE");
  render->add_option("--block", options.blockFrames, "Frames a call of the plug-in")
      ->type_name("FRAMES")
      ->capture_default_str()
      ->check(wholeNumberWithin(1, kLargestBlock));
  render->add_option("--rate", options.rateHz, "Sample rate to run and write at; else the file's own")
      ->type_name("HZ")
      ->check(wholeNumberWithin(kLowestRate, kHighestRate));
  render->add_option("--tail", options.tailSeconds, "Silence to render after the input")
      ->type_name("SECONDS")
      ->capture_default_str()
      ->check(numberWithin(0.0, kLongestTailSeconds));
  render->add_flag("--mono", options.mono, "One channel in, one channel out, see below");
  render->add_option("--picture", options.picture, "Waveform and spectrogram before and after, or a folder ending in /")
      ->type_name("PNG");
}

void addExportMidi(CLI::App& app, ExportMidiOptions& options) {
  CLI::App* command = app.add_subcommand("export-midi", "Write Modrift's cutoff graph as controllers in a MIDI file");
  command->footer(
      "\nThe graph that moves the cutoff, over one bar, or over eight where a cycle is longer than that or runs free.\n"
      "The controller's number is CC Out, n/128, or 1 where that is off.\n"
      "\nExample:\n  modrift export-midi -o cutoff.mid --tempo 128 --set \"CC Out=0.58\" --set Rate=0.44");
  command->add_option("-o,--output", options.output, "The MIDI file")->required()->type_name("FILE.mid");
  command->add_option("--plugin", options.plugin, "Another Modrift: a shared object or a bundle folder")
      ->type_name("FILE");
  addTempo(*command, options.tempoBpm);
  command->add_option("--mode", options.mode, "1: the graph at full height; 0: as high as >cut makes it")
      ->type_name("0|1")
      ->capture_default_str()
      ->check(wholeNumberWithin(0, 1));
  addState(*command, options.preset, options.shapes, options.settings);
}

void addPreset(CLI::App& command, std::string& preset) {
  command.add_option("--preset", preset, "A preset file to begin with")->type_name("FILE.fxp");
}

void addEdit(CLI::App& app, EditOptions& options) {
  CLI::App* edit = app.add_subcommand("edit", "Open the editor in a window, with sound running through the plug-in");
  edit->footer(
      "\nThe song plays on for as long as the window is open. The sound goes to a JACK server if one runs, else to "
      "the\n"
      "ALSA device; without either the song runs silently. With --jack the sound to process comes from JACK too, from\n"
      "whatever you connect to the inputs of the client \"Modrift\". Close the window or press Ctrl-C to end.\n"
      "\nExamples:\n  modrift edit\n  modrift edit --preset duck.fxp --play loop.wav --tempo 96\n"
      "  modrift edit --preset duck.fxp --save duck.fxp");
  edit->add_option("--plugin", options.plugin, "Another VST 2 plug-in: a shared object or a bundle folder")
      ->type_name("FILE");
  addPreset(*edit, options.preset);
  CLI::Option* play =
      edit->add_option("--play", options.play, "A recording to play again and again; else the example loop")
          ->type_name("FILE");
  edit->add_flag("--jack", options.jack, "Process what JACK brings")->excludes(play);
  edit->add_option("--save", options.save, "A preset file to write at the end, which may be the one to begin with")
      ->type_name("FILE.fxp");
  addTempo(*edit, options.tempoBpm);
}

void addScreenshot(CLI::App& app, ScreenshotOptions& options) {
  CLI::App* screenshot = app.add_subcommand("screenshot", "Draw Modrift's editor as a picture; needs no display");
  screenshot->footer("\nExample:\n  modrift screenshot --preset duck.fxp --size 1416x686 -o editor.png");
  screenshot->add_option("-o,--output", options.output, "The picture")->required()->type_name("PICTURE.png");
  screenshot->add_option("--plugin", options.plugin, "Another Modrift: a shared object or a bundle folder")
      ->type_name("FILE");
  addPreset(*screenshot, options.preset);
  screenshot->add_option("--size", options.size, "Pixels of the window; else what the preset says")
      ->type_name("WIDTHxHEIGHT");
}

void addInfo(CLI::App& app, InfoOptions& options) {
  CLI::App* info = app.add_subcommand("info", "Tell what a plug-in is and what parameters it has");
  info->footer("\nExamples:\n  modrift info\n  modrift info SomeOther.so --json");
  info->add_option("PLUGIN", options.plugin, "A shared object or a bundle folder; else the one that came along")
      ->type_name("FILE");
  info->add_flag("--json", options.json, "As JSON instead of tables");
}

void addWave(CLI::App& app, WaveOptions& options) {
  CLI::App* wave = app.add_subcommand("wave", "Draw an audio file's waveform and spectrogram");
  wave->footer("\nExample:\n  modrift wave loop.wav -o loop.png");
  wave->add_option("IN", options.input, "An audio file, mono or stereo")->required()->type_name("FILE");
  wave->add_option("-o,--output", options.output, "The picture, or a folder ending in /")
      ->required()
      ->type_name("PICTURE.png");
}

struct FiltersOptions {
  bool json = false;
  FilterPlotOptions plot;
};

void addFilters(CLI::App& app, FiltersOptions& options) {
  CLI::App* filters = app.add_subcommand("filters", "List Modrift's filter types, and draw what they do");
  filters->footer(
      "\nExamples:\n  modrift filters\n  modrift filters plot \"MG Low 24\" -o pictures/\n'modrift filters plot "
      "--help' "
      "tells more.");
  filters->add_flag("--json", options.json, "The list as JSON instead of a table");
  filters->require_subcommand(0, 1);
  CLI::App* plot = filters->add_subcommand("plot", "Draw a type's response as it runs, 20 Hz to 20 kHz");
  plot->footer(
      "\nA small impulse goes through the filter at twice 44.1 kHz, as in the plug-in, for five cutoffs or, with "
      "--over,\n"
      "for five positions of another control. Types that make new tones (ring modulators, sample and hold, the bass\n"
      "enhancer) have no response; their pictures show what they make of a sine.\n"
      "\nExamples:\n"
      "  modrift filters plot \"MG Low 24\" -o pictures/ --res 0.8\n"
      "  modrift filters plot \"L/B/H 12\" -o morph.png --over var\n"
      "  modrift filters plot all -o pictures/");
  plot->add_option("TYPE", options.plot.type, "A type's name or number, or all")->required()->type_name("");
  plot->add_option("-o,--output", options.plot.output, "A folder, or for one type a picture")
      ->required()
      ->type_name("FOLDER|PICTURE.png");
  plot->add_option("--over", options.plot.over,
                   "The control that differs between the lines; else cutoff, or Var where that makes the sound")
      ->type_name("CONTROL")
      ->check(CLI::IsMember({"cutoff", "res", "var"}));
  const auto addControl = [plot](const char* option, double& value, const char* description) {
    plot->add_option(option, value, description)
        ->type_name("0-1")
        ->capture_default_str()
        ->check(numberWithin(0.0, 1.0));
  };
  addControl("--cutoff", options.plot.cutoff, "The cutoff, with --over res or var");
  addControl("--res", options.plot.resonance, "The resonance");
  addControl("--var", options.plot.var, "The third control; 'modrift filters' tells what it is");
  addControl("--drive", options.plot.drive, "The drive");
}

void runFilters(const CLI::App& filters, const FiltersOptions& options) {
  if (filters.got_subcommand("plot")) return runFilterPlot(options.plot);
  runFilterList(options.json);
}

void run(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return runExample();
  CLI::App app(kOverview, "modrift");
  app.footer(kOverviewFooter);
  app.set_version_flag("--version", "modrift " MODRIFT_VERSION);
  app.require_subcommand(0, 1);  // none is answered below, with a better sentence than the library's
  RenderOptions render;
  ExportMidiOptions exportMidi;
  EditOptions edit;
  ScreenshotOptions screenshot;
  InfoOptions info;
  WaveOptions wave;
  FileOptions files;
  FiltersOptions filters;
  addRender(app, render);
  addExportMidi(app, exportMidi);
  addEdit(app, edit);
  addScreenshot(app, screenshot);
  addInfo(app, info);
  addWave(app, wave);
  addFileCommands(app, files);
  addFilters(app, filters);
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
  if (app.got_subcommand("render")) runRender(render);
  if (app.got_subcommand("export-midi")) runExportMidi(exportMidi);
  if (app.got_subcommand("edit")) runEdit(edit);
  if (app.got_subcommand("screenshot")) runScreenshot(screenshot);
  if (app.got_subcommand("info")) runInfo(info);
  if (app.got_subcommand("wave")) runWave(wave);
  if (app.got_subcommand("filters")) runFilters(*app.get_subcommand("filters"), filters);
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
