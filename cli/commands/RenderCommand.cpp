// SPDX-License-Identifier: MIT
#include "cli/commands/RenderCommand.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fmt/core.h>
#include <memory>
#include <span>
#include <utility>
#include <variant>

#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetState.h"
#include "cli/commands/Settings.h"
#include "cli/files/AudioFile.h"
#include "cli/files/Automation.h"
#include "cli/files/Channels.h"
#include "cli/files/InputFile.h"
#include "cli/files/MidiFile.h"
#include "cli/files/MidiFileWriter.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/Resample.h"
#include "cli/pictures/Levels.h"
#include "cli/pictures/WavePicture.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"
#include "cli/terminal/Progress.h"
#include "cli/values/ParameterNames.h"
#include "host/HostListener.h"
#include "host/OfflineRunner.h"

namespace modrift::cli {
namespace {

// Everything of the command line that does not depend on the file being rendered.
struct Plan {
  RenderOptions options;
  std::vector<Setting> settings;
  std::vector<AutomationPoint> automation;
  std::vector<ShapeFile> shapes;
  std::optional<MidiSong> song;
  std::shared_ptr<const host::Module> module;
};

struct Rendered {
  Audio before;  // as the plug-in heard it
  Audio after;
  std::vector<host::MidiEvent> midi;  // that the plug-in sent
  double renderSeconds = 0.0;         // of work
};

std::vector<AutomationPoint> readAutomation(const std::string& path) {
  if (path.empty()) return {};
  auto parsed = parseAutomation(readInputFile(path, kMostAutomationBytes, "a readable automation file"));
  if (const auto* fault = std::get_if<AutomationFault>(&parsed)) {
    throw RunError(fmt::format("{}:{}: {} was expected", path, fault->line, fault->expected));
  }
  return std::get<std::vector<AutomationPoint>>(std::move(parsed));
}

// An empty name is no song.
std::optional<MidiSong> readMidi(const std::string& path) {
  if (path.empty()) return std::nullopt;
  const std::string bytes = readInputFile(path, kMostMidiFileBytes, "a readable MIDI file");
  auto parsed = parseMidiFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  if (const auto* fault = std::get_if<MidiFileFault>(&parsed)) {
    throw RunError(fmt::format("{}: {} was expected at byte {}", path, fault->expected, fault->offset));
  }
  return std::get<MidiSong>(std::move(parsed));
}

// In the order of their beats, as a text may mean what the changes before have made of it.
std::vector<host::ParameterChange> makeChanges(const Plan& plan, const std::vector<std::string>& names,
                                               ValueFinder& values, double sampleRateHz) {
  const RenderOptions& options = plan.options;
  std::vector<host::ParameterChange> changes;
  std::vector<AutomationPoint> points = plan.automation;
  const auto byBeat = [](const AutomationPoint& a, const AutomationPoint& b) { return a.beat < b.beat; };
  std::stable_sort(points.begin(), points.end(), byBeat);
  for (const AutomationPoint& point : points) {
    const auto orFault = [&](const auto& found) {
      const auto* const expected = std::get_if<std::string>(&found);
      if (expected) throw RunError(fmt::format("{}:{}: {}", options.automation, point.line, *expected));
      return std::get<0>(found);
    };
    const int index = orFault(findParameter(names, point.parameter));
    const float value = orFault(values.take(index, names[static_cast<std::size_t>(index)], point.value));
    changes.push_back({frameAtBeat(point.beat, options.startBeat, options.tempoBpm, sampleRateHz), index, value});
  }
  return changes;
}

host::RenderJob makeJob(const Plan& plan, const host::Plugin& plugin, double sampleRateHz) {
  const RenderOptions& options = plan.options;
  host::RenderJob job;
  job.sampleRateHz = sampleRateHz;
  job.blockFrames = options.blockFrames;
  job.transport.tempoBpm = options.tempoBpm;
  job.transport.startBeat = options.startBeat;
  job.transport.playing = !options.stopped;
  job.transport.givesTime = !options.noTime;
  job.tailFrames = std::llround(options.tailSeconds * sampleRateHz);
  const std::vector<std::string> names = parameterNames(plugin);
  ValueFinder values(plugin);
  job.settings = findSettings(plan.settings, names, values);
  if (plan.song) job.events = eventsOf(*plan.song, options.tempoBpm, sampleRateHz);
  job.changes = makeChanges(plan, names, values, sampleRateHz);
  return job;
}

Audio readInput(const std::filesystem::path& path, const RenderOptions& options) {
  Audio audio = readAudio(path);
  if (options.rateHz && *options.rateHz != audio.sampleRateHz) {
    audio.channels = resample(std::move(audio.channels), audio.sampleRateHz, *options.rateHz);
    audio.sampleRateHz = *options.rateHz;
  }
  return audio;
}

Rendered renderFile(const Plan& plan, const std::filesystem::path& input) {
  const ResultChannels result = plan.options.mono ? ResultChannels::mono : ResultChannels::stereo;
  host::RecordingListener listener;
  host::Plugin plugin(plan.module, &listener);  // a fresh one, so that no file hears the end of the one before
  if (plugin.outputCount() == 0) throw RunError(plugin.path().string() + ": a plug-in with audio outputs was expected");
  if (!plan.options.preset.empty()) applyPreset(plugin, plan.options.preset);
  for (const ShapeFile& shape : plan.shapes) applyShape(plugin, shape);
  Audio audio = readInput(input, plan.options);
  host::RenderJob job = makeJob(plan, plugin, audio.sampleRateHz);
  Progress progress(input.filename().string());
  job.progress = [&](std::int64_t done, std::int64_t total) {
    progress.update(done, total);
    return !isInterrupted();
  };
  Rendered rendered;
  rendered.before = {audio.sampleRateHz, fitToInputs(std::move(audio.channels), plugin.inputCount(), result)};
  const auto start = std::chrono::steady_clock::now();
  try {
    rendered.after = {audio.sampleRateHz, fitToFile(renderOffline(plugin, rendered.before.channels, job), result)};
  } catch (const host::Cancelled&) {
    throw Interrupted();
  }
  rendered.renderSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  rendered.midi = listener.midi();
  if (plan.options.mono) rendered.before.channels.resize(1);
  return rendered;
}

void drawPicture(const std::filesystem::path& target, const Rendered& rendered, const RenderOptions& options) {
  std::vector<WaveTrack> tracks;
  tracks.push_back({"Before", rendered.before.sampleRateHz, rendered.before.channels});
  tracks.push_back({"After", rendered.after.sampleRateHz, rendered.after.channels});
  std::optional<BeatGrid> beats;
  if (!options.stopped && !options.noTime) beats = BeatGrid{options.tempoBpm, options.startBeat};
  PendingFile pending(target);
  writeWavePicture(pending.path(), tracks, beats);
  pending.commit();
}

void writeMidi(const std::filesystem::path& target, const Rendered& rendered, const RenderOptions& options) {
  const std::vector<std::uint8_t> bytes = midiFileBytes(rendered.midi, options.tempoBpm, rendered.after.sampleRateHz);
  writeFile(target, std::as_bytes(std::span(bytes)));
}

void printSummary(const RenderTarget& target, const Rendered& rendered) {
  const Levels before = measureLevels(rendered.before.channels);
  const Levels after = measureLevels(rendered.after.channels);
  const double speed = rendered.after.seconds() / std::max(rendered.renderSeconds, 1e-9);
  std::string line = fmt::format("{} -> {}: {:.2f} s at {:.0f} Hz, peak {} -> {}, RMS {} -> {}, {:.0f} x real time",
                                 target.input.string(), target.output.string(), rendered.after.seconds(),
                                 rendered.after.sampleRateHz, decibelText(before.peak), decibelText(after.peak),
                                 decibelText(before.rms), decibelText(after.rms), speed);
  if (after.notFinite > 0) line += fmt::format(", {} samples are no finite numbers", after.notFinite);
  if (after.peak > 1.0 && !holdsAnyLevel(target.output.extension().string())) line += ", clipped";
  fmt::print("{}\n", line);
  std::fflush(stdout);
}

}  // namespace

void runRender(const RenderOptions& options) {
  const std::vector<ShapeFile> shapes = parseShapes(options.shapes);
  std::vector<std::string> otherInputs = {options.automation, options.plugin, options.preset, options.midiIn};
  for (const ShapeFile& shape : shapes) otherInputs.push_back(shape.path);
  const std::vector<RenderTarget> targets =
      renderTargets(options.inputs, {options.output, options.picture, options.midiOut}, otherInputs);
  const Plan plan{options, parseSettings(options.settings), readAutomation(options.automation),
                  shapes,  readMidi(options.midiIn),        std::make_shared<host::Module>(pluginPath(options.plugin))};
  for (const std::string& name : {options.output, options.picture, options.midiOut}) makeFolder(name);
  for (const RenderTarget& target : targets) {
    const Rendered rendered = renderFile(plan, target.input);
    writeAudio(target.output, rendered.after);
    if (!target.picture.empty()) drawPicture(target.picture, rendered, options);
    if (!target.midi.empty()) writeMidi(target.midi, rendered, options);
    printSummary(target, rendered);
  }
}

}  // namespace modrift::cli
