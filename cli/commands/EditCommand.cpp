// SPDX-License-Identifier: MIT
#include "cli/commands/EditCommand.h"

#include <algorithm>
#include <cstdio>
#include <fmt/core.h>
#include <memory>
#include <utility>

#include "cli/commands/EditorWindow.h"
#include "cli/commands/ModriftCalls.h"
#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetState.h"
#include "cli/files/AudioFile.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/files/Resample.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"
#include "devices/LoopPlayer.h"
#include "devices/RunningSound.h"
#include "devices/SoundDevice.h"
#include "host/LiveStream.h"
#include "host/Plugin.h"

namespace modrift::cli {
namespace {

constexpr int kMillisecondsBetweenIdles = 16;
constexpr int kLongestPieceFrames = 4096;  // longer blocks of a device reach the plug-in in pieces

// What the plug-in may ask of the window.
class EditHost : public host::HostListener {
 public:
  bool wantsWindowSize(VstInt32 widthPx, VstInt32 heightPx) override {
    if (window == nullptr) return false;
    window->resize(widthPx, heightPx);
    return true;
  }
  EditorWindow* window = nullptr;
};

// The editor in its window, by the calls that music programs make.
class OpenEditor {
 public:
  OpenEditor(const host::Plugin& plugin, EditHost& host)
      : plugin_(plugin), host_(host), window_(sizeOf(plugin).first, sizeOf(plugin).second, title(plugin)) {
    host_.window = &window_;
    if (plugin_.dispatch(effEditOpen, 0, 0, window_.parent()) == 0) {
      host_.window = nullptr;
      throw RunError(plugin_.path().string() + ": an editor that opens in an X11 window was expected");
    }
    const auto [widthPx, heightPx] = sizeOf(plugin_);  // some plug-ins know only now
    window_.resize(widthPx, heightPx);
    window_.show();
  }
  ~OpenEditor() {
    plugin_.dispatch(effEditClose);
    host_.window = nullptr;
  }
  OpenEditor(const OpenEditor&) = delete;
  OpenEditor& operator=(const OpenEditor&) = delete;

  // False once the window is closed or the display is gone.
  [[nodiscard]] bool idle() {
    const bool goesOn = window_.processEvents(kMillisecondsBetweenIdles);
    if (goesOn) plugin_.dispatch(effEditIdle);
    return goesOn;
  }

 private:
  static std::string title(const host::Plugin& plugin) {
    const std::string name = plugin.effectName();
    return name.empty() ? plugin.path().stem().string() : name;
  }

  static std::pair<int, int> sizeOf(const host::Plugin& plugin) {
    constexpr std::pair kUnknown{640, 480};
    ERect* rect = nullptr;
    plugin.dispatch(effEditGetRect, 0, 0, &rect);
    if (rect == nullptr || rect->right <= rect->left || rect->bottom <= rect->top) return kUnknown;
    return {rect->right - rect->left, rect->bottom - rect->top};
  }

  const host::Plugin& plugin_;
  EditHost& host_;
  EditorWindow window_;
};

std::unique_ptr<devices::SoundDevice> openDevice(bool jackOnly) {
  if (!jackOnly) return devices::openOutput();
  if (auto jack = devices::openJack(devices::JackPorts::inputsAndOutputs)) return jack;
  throw RunError("--jack: a running JACK server was expected");
}

// Nothing for the device's own inputs.
host::Planar loopFor(const EditOptions& options, double sampleRateHz) {
  if (options.jack) return {};
  Audio audio = readAudio(options.play.empty() ? exampleLoop().string() : options.play);
  if (audio.frames() == 0) throw RunError(options.play + ": a recording with sound in it was expected");
  if (audio.sampleRateHz == sampleRateHz) return std::move(audio.channels);
  return resample(std::move(audio.channels), audio.sampleRateHz, sampleRateHz);
}

// At once, as the program goes on for long.
void say(const std::string& line) {
  fmt::print("{}\n", line);
  std::fflush(stdout);
}

// Before the user has put any work into it.
void checkTarget(const std::string& path) {
  if (path.empty()) return;
  requireEnding(path, ".fxp", "--save");
  const PendingFile placeToWriteTo(path);
}

void prepare(host::Plugin& plugin, const EditOptions& options) {
  if ((plugin.record().flags & effFlagsHasEditor) == 0)
    throw RunError(plugin.path().string() + ": a plug-in with an editor was expected");
  if (!options.save.empty() && !isModrift(plugin))
    throw RunError(plugin.path().string() + ": the plug-in Modrift was expected for --save");
  if (!options.preset.empty()) applyPreset(plugin, options.preset);
}

void playUntilTheEnd(host::Plugin& plugin, EditHost& host, const EditOptions& options) {
  OpenEditor editor(plugin, host);
  auto device = openDevice(options.jack);
  const double rate = device->sampleRateHz();
  host::Planar loop = loopFor(options, rate);
  say(fmt::format("Sound: {}. Close the window to end.", device->description()));
  host::LiveStream stream(plugin, {.tempoBpm = options.tempoBpm}, rate, kLongestPieceFrames);
  devices::LoopPlayer player(stream, std::move(loop));
  devices::RunningSound sound(std::move(device), player);
  while (!isInterrupted() && editor.idle()) {
    if (sound.fallsSilent()) say("The sound device has gone; the song goes on silently.");
  }
}

}  // namespace

void runEdit(const EditOptions& options) {
  checkTarget(options.save);
  EditHost host;
  host::Plugin plugin(std::make_shared<host::Module>(pluginPath(options.plugin)), &host);
  prepare(plugin, options);
  playUntilTheEnd(plugin, host, options);
  if (!options.save.empty()) savePreset(plugin, options.save);
}

}  // namespace modrift::cli
