// SPDX-License-Identifier: MIT
#include "cli/commands/ExportMidiCommand.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fmt/core.h>
#include <memory>
#include <unistd.h>
#include <variant>

#include "cli/commands/ModriftCalls.h"
#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetState.h"
#include "cli/commands/Settings.h"
#include "cli/files/InputFile.h"
#include "cli/files/MidiFile.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/terminal/Errors.h"
#include "host/OfflineRunner.h"

namespace modrift::cli {
namespace {

constexpr double kSampleRateHz = 44100.0;  // the step in which the plug-in plays the graph

// Standard error leads nowhere while this lives: the plug-in tells its developers of every event there.
class Silence {
 public:
  Silence() : kept_(dup(STDERR_FILENO)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    std::fflush(stderr);
    if (kept_ >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
    if (nowhere >= 0) close(nowhere);
  }
  ~Silence() {
    std::fflush(stderr);
    if (kept_ >= 0) dup2(kept_, STDERR_FILENO);
    if (kept_ >= 0) close(kept_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  int kept_;
};

void setUp(host::Plugin& plugin, const ExportMidiOptions& options, const std::vector<host::ParameterChange>& settings) {
  for (const host::ParameterChange& setting : settings) plugin.setUnlistedParameter(setting.parameter, setting.value);
  host::playSilence(plugin, options.tempoBpm, kSampleRateHz, 1);
  for (const host::ParameterChange& setting : settings) plugin.setUnlistedParameter(setting.parameter, setting.value);
}

// How many messages the plug-in wrote. Throws RunError if it wrote no MIDI file.
std::size_t countMessages(const std::filesystem::path& written, const std::string& target) {
  const std::string bytes = readInputFile(written.string(), kMostMidiFileBytes, "a MIDI file of the plug-in");
  const auto parsed = parseMidiFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  const auto* song = std::get_if<MidiSong>(&parsed);
  if (song == nullptr) throw RunError(target + ": a MIDI file of the plug-in was expected, but it wrote none");
  return song->messages.size();
}

}  // namespace

void runExportMidi(const ExportMidiOptions& options) {
  const std::vector<std::string> inputs = {options.preset, options.plugin};
  const std::filesystem::path target = singleTarget(options.output, ".mid", inputs);
  const std::vector<ShapeFile> shapes = parseShapes(options.shapes);
  const std::vector<Setting> settings = parseSettings(options.settings);
  host::Plugin plugin(std::make_shared<host::Module>(pluginPath(options.plugin)));
  PendingFile pending(target);
  setModriftPath(plugin, pending.path().string(), "export-midi");
  if (!options.preset.empty()) applyPreset(plugin, options.preset);
  for (const ShapeFile& shape : shapes) applyShape(plugin, shape);
  ValueFinder values(plugin);
  setUp(plugin, options, findSettings(settings, parameterNames(plugin), values));
  setModriftPath(plugin, pending.path().string(), "export-midi");  // shapes have used it
  {
    const Silence silence;
    command(plugin, Command::exportMidi, static_cast<float>(options.mode));
  }
  const std::size_t messages = countMessages(pending.path(), options.output);
  pending.commit();
  fmt::print("{}: {} controller messages for a song of {} beats a minute\n", options.output, messages,
             options.tempoBpm);
}

}  // namespace modrift::cli
