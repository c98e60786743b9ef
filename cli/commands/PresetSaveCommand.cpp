// SPDX-License-Identifier: MIT
#include <memory>

#include "cli/commands/ModriftCalls.h"
#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetCommands.h"
#include "cli/commands/PresetState.h"
#include "cli/commands/Settings.h"
#include "cli/files/RenderTargets.h"
#include "cli/terminal/Errors.h"
#include "host/OfflineRunner.h"

namespace modrift::cli {
namespace {

constexpr double kTempoBpm = 120.0;
constexpr double kSampleRateHz = 44100.0;
constexpr VstInt32 kFrames = 64;

}  // namespace

void runPresetSave(const PresetSaveOptions& options) {
  requireEnding(options.output, ".fxp", "-o");
  const std::vector<ShapeFile> shapes = parseShapes(options.shapes);
  const std::vector<Setting> settings = parseSettings(options.settings);
  host::Plugin plugin(std::make_shared<host::Module>(pluginPath(options.plugin)));
  if (!isModrift(plugin)) throw RunError(plugin.path().string() + ": the plug-in Modrift was expected for preset save");
  if (!options.preset.empty()) applyPreset(plugin, options.preset);
  for (const ShapeFile& shape : shapes) applyShape(plugin, shape);
  ValueFinder values(plugin);
  const std::vector<host::ParameterChange> changes = findSettings(settings, parameterNames(plugin), values);
  host::playSilence(plugin, kTempoBpm, kSampleRateHz, kFrames);  // points can be set as parameters only then
  for (const host::ParameterChange& setting : changes) plugin.setUnlistedParameter(setting.parameter, setting.value);
  savePreset(plugin, options.output);
}

}  // namespace modrift::cli
