// SPDX-License-Identifier: MIT
#include "cli/commands/ScreenshotCommand.h"

#include <array>
#include <fmt/core.h>
#include <memory>
#include <optional>
#include <string_view>

#include "cli/commands/ModriftCalls.h"
#include "cli/commands/PluginLocation.h"
#include "cli/commands/PresetState.h"
#include "cli/files/PendingFile.h"
#include "cli/files/RenderTargets.h"
#include "cli/terminal/Errors.h"
#include "cli/values/Numbers.h"
#include "host/Plugin.h"

namespace modrift::cli {
namespace {

// What the editor's window can have.
constexpr PictureSize kSmallest{576, 284};
constexpr PictureSize kLargest{8000, 8000};

// Nothing for an empty text.
std::optional<PictureSize> parseSize(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const std::string_view typed = text;
  const auto cross = typed.find('x');
  const auto width = parseInteger(typed.substr(0, cross));
  const auto height = cross == std::string_view::npos ? std::nullopt : parseInteger(typed.substr(cross + 1));
  const auto within = [](int n, int lowest, int highest) { return n >= lowest && n <= highest; };
  if (width && height && within(*width, kSmallest.widthPx, kLargest.widthPx) &&
      within(*height, kSmallest.heightPx, kLargest.heightPx))
    return PictureSize{*width, *height};
  throw UsageError(fmt::format("--size: WIDTHxHEIGHT from {}x{} to {}x{} was expected, not '{}'", kSmallest.widthPx,
                               kSmallest.heightPx, kLargest.widthPx, kLargest.heightPx, text));
}

}  // namespace

void runScreenshot(const ScreenshotOptions& options) {
  const std::optional<PictureSize> size = parseSize(options.size);
  const std::array inputs = {options.preset, options.plugin};
  const std::filesystem::path target = singleTarget(options.output, ".png", inputs);
  host::Plugin plugin(std::make_shared<host::Module>(pluginPath(options.plugin)));
  if (!options.preset.empty()) applyPreset(plugin, options.preset);
  PendingFile pending(target);
  drawModriftEditor(plugin, pending.path().string(), size);
  pending.commit();
  fmt::print("{}: the editor's picture\n", options.output);
}

}  // namespace modrift::cli
