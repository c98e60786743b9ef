// SPDX-License-Identifier: MIT
#include "cli/commands/PluginCommandLine.h"

#include "cli/commands/CommonOptions.h"
#include "cli/files/AudioFile.h"

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

}  // namespace

void addPluginCommands(CLI::App& app, PluginOptions& options) {
  addRender(app, options.render);
  addExportMidi(app, options.exportMidi);
  addEdit(app, options.edit);
  addScreenshot(app, options.screenshot);
  addInfo(app, options.info);
}

void runPluginCommand(const CLI::App& app, const PluginOptions& options) {
  if (app.got_subcommand("render")) runRender(options.render);
  if (app.got_subcommand("export-midi")) runExportMidi(options.exportMidi);
  if (app.got_subcommand("edit")) runEdit(options.edit);
  if (app.got_subcommand("screenshot")) runScreenshot(options.screenshot);
  if (app.got_subcommand("info")) runInfo(options.info);
}

}  // namespace modrift::cli
