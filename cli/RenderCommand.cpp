#include "cli/RenderCommand.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fmt/format.h>
#include <fstream>
#include <memory>
#include <utility>
#include <variant>

#include "cli/AudioFile.h"
#include "cli/Automation.h"
#include "cli/Channels.h"
#include "cli/Errors.h"
#include "cli/Interrupt.h"
#include "cli/Levels.h"
#include "cli/Numbers.h"
#include "cli/ParameterNames.h"
#include "cli/PendingFile.h"
#include "cli/PluginLocation.h"
#include "cli/Progress.h"
#include "cli/RenderTargets.h"
#include "cli/Resample.h"
#include "cli/WavePicture.h"
#include "host/OfflineRunner.h"

namespace modrift::cli {
namespace {

struct Setting {
  std::string typed;  // the whole "NAME=VALUE", for messages
  std::string parameter;
  float value = 0.0f;
};

// Everything of the command line that does not depend on the file being rendered.
struct Plan {
  RenderOptions options;
  std::vector<Setting> settings;
  std::vector<AutomationPoint> automation;
  std::shared_ptr<const host::Module> module;
};

struct Rendered {
  Audio before;  // as the plug-in heard it
  Audio after;
  double renderSeconds = 0.0;  // of work
};

std::vector<Setting> parseSettings(const std::vector<std::string>& typed) {
  std::vector<Setting> settings;
  for (const std::string& text : typed) {
    const std::size_t equals = text.rfind('=');  // the last one, as names may hold others
    if (equals == std::string::npos || equals == 0) {
      throw UsageError(fmt::format("--set: NAME=VALUE or INDEX=VALUE was expected, not '{}'", text));
    }
    const std::optional<float> value = parseParameterValue(std::string_view(text).substr(equals + 1));
    if (!value) throw UsageError(fmt::format("--set: a finite number after the = was expected, not '{}'", text));
    settings.push_back({text, text.substr(0, equals), *value});
  }
  return settings;
}

// Stops one byte beyond what the parser takes, so that an endless file is refused and not read.
std::string readText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text;
  std::array<char, 65536> slice{};
  while (file && text.size() <= kMostAutomationBytes) {
    file.read(slice.data(), slice.size());
    text.append(slice.data(), static_cast<std::size_t>(file.gcount()));
  }
  // Missing files fail at once; folders open, but cannot be read.
  if (file.bad() || (text.empty() && !file.eof())) throw RunError(path + ": a readable automation file was expected");
  return text;
}

std::vector<AutomationPoint> readAutomation(const std::string& path) {
  if (path.empty()) return {};
  auto parsed = parseAutomation(readText(path));
  if (const auto* fault = std::get_if<AutomationFault>(&parsed)) {
    throw RunError(fmt::format("{}:{}: {} was expected", path, fault->line, fault->expected));
  }
  return std::get<std::vector<AutomationPoint>>(std::move(parsed));
}

std::vector<std::string> parameterNames(const host::Plugin& plugin) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(plugin.parameterCount()));
  for (VstInt32 index = 0; index < plugin.parameterCount(); ++index) names.push_back(plugin.parameterName(index));
  return names;
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
  for (const Setting& setting : plan.settings) {
    const auto found = findParameter(names, setting.parameter);
    if (const auto* expected = std::get_if<std::string>(&found)) throw RunError("--set: " + *expected);
    job.settings.push_back({0, std::get<int>(found), setting.value});
  }
  for (const AutomationPoint& point : plan.automation) {
    const auto found = findParameter(names, point.parameter);
    if (const auto* expected = std::get_if<std::string>(&found)) {
      throw RunError(fmt::format("{}:{}: {}", options.automation, point.line, *expected));
    }
    const std::int64_t frame = frameAtBeat(point.beat, options.startBeat, options.tempoBpm, sampleRateHz);
    job.changes.push_back({frame, std::get<int>(found), point.value});
  }
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
  host::Plugin plugin(plan.module);  // a fresh one, so that no file hears the end of the one before
  if (plugin.outputCount() == 0) throw RunError(plugin.path().string() + ": a plug-in with audio outputs was expected");
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
  std::vector<std::string> otherInputs;
  for (const std::string& path : {options.automation, options.plugin}) {
    if (!path.empty()) otherInputs.push_back(path);
  }
  const std::vector<RenderTarget> targets = renderTargets(options.inputs, options.output, options.picture, otherInputs);
  const Plan plan{options, parseSettings(options.settings), readAutomation(options.automation),
                  std::make_shared<host::Module>(pluginPath(options.plugin))};
  makeFolder(options.output);
  makeFolder(options.picture);
  for (const RenderTarget& target : targets) {
    const Rendered rendered = renderFile(plan, target.input);
    writeAudio(target.output, rendered.after);
    if (!target.picture.empty()) drawPicture(target.picture, rendered, options);
    printSummary(target, rendered);
  }
}

}  // namespace modrift::cli
