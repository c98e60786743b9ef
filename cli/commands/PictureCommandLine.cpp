// SPDX-License-Identifier: MIT
#include "cli/commands/PictureCommandLine.h"

#include "cli/commands/CommonOptions.h"

namespace modrift::cli {
namespace {

void addFiltersPlot(CLI::App& filters, FilterPlotOptions& options) {
  CLI::App* plot = filters.add_subcommand("plot", "Draw a type's response as it runs, 20 Hz to 20 kHz");
  plot->footer(
      "\nA small impulse goes through the filter at twice 44.1 kHz, as in the plug-in, for five cutoffs or, with "
      "--over,\n"
      "for five positions of another control. Types that make new tones (ring modulators, sample and hold, the bass\n"
      "enhancer) have no response; their pictures show what they make of a sine.\n"
      "\nExamples:\n"
      "  modrift filters plot \"MG Low 24\" -o pictures/ --res 0.8\n"
      "  modrift filters plot \"L/B/H 12\" -o morph.png --over var\n"
      "  modrift filters plot all -o pictures/");
  plot->add_option("TYPE", options.type, "A type's name or number, or all")->required()->type_name("");
  plot->add_option("-o,--output", options.output, "A folder, or for one type a picture")
      ->required()
      ->type_name("FOLDER|PICTURE.png");
  plot->add_option("--over", options.over,
                   "The control that differs between the lines; else cutoff, or Var where that makes the sound")
      ->type_name("CONTROL")
      ->check(CLI::IsMember({"cutoff", "res", "var"}));
  const auto addControl = [plot](const char* option, double& value, const char* description) {
    plot->add_option(option, value, description)
        ->type_name("0-1")
        ->capture_default_str()
        ->check(numberWithin(0.0, 1.0));
  };
  addControl("--cutoff", options.cutoff, "The cutoff, with --over res or var");
  addControl("--res", options.resonance, "The resonance");
  addControl("--var", options.var, "The third control; 'modrift filters' tells what it is");
  addControl("--drive", options.drive, "The drive");
}

}  // namespace

void addWaveCommand(CLI::App& app, PictureOptions& options) {
  CLI::App* wave = app.add_subcommand("wave", "Draw an audio file's waveform and spectrogram");
  wave->footer("\nExample:\n  modrift wave loop.wav -o loop.png");
  wave->add_option("IN", options.wave.input, "An audio file, mono or stereo")->required()->type_name("FILE");
  wave->add_option("-o,--output", options.wave.output, "The picture, or a folder ending in /")
      ->required()
      ->type_name("PICTURE.png");
}

void addFiltersCommand(CLI::App& app, PictureOptions& options) {
  CLI::App* filters = app.add_subcommand("filters", "List Modrift's filter types, and draw what they do");
  filters->footer(
      "\nExamples:\n  modrift filters\n  modrift filters plot \"MG Low 24\" -o pictures/\n'modrift filters plot "
      "--help' "
      "tells more.");
  filters->add_flag("--json", options.filtersAsJson, "The list as JSON instead of a table");
  filters->require_subcommand(0, 1);
  addFiltersPlot(*filters, options.filterPlot);
}

void runPictureCommand(const CLI::App& app, const PictureOptions& options) {
  if (app.got_subcommand("wave")) runWave(options.wave);
  if (!app.got_subcommand("filters")) return;
  if (app.get_subcommand("filters")->got_subcommand("plot")) return runFilterPlot(options.filterPlot);
  runFilterList(options.filtersAsJson);
}

}  // namespace modrift::cli
