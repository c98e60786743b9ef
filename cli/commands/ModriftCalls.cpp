// SPDX-License-Identifier: MIT
#include "cli/commands/ModriftCalls.h"

#include <fmt/core.h>

#include "cli/terminal/Errors.h"
#include "model/PrivateCalls.h"

namespace modrift::cli {
namespace {

void requireModrift(const host::Plugin& plugin, const std::string& option) {
  if (!isModrift(plugin))
    throw RunError(fmt::format("{}: the plug-in Modrift was expected for {}", plugin.path().string(), option));
}

}  // namespace

bool isModrift(const host::Plugin& plugin) noexcept { return plugin.record().uniqueID == model::kUniqueId; }

void setModriftPath(const host::Plugin& plugin, const std::string& path, const std::string& option) {
  requireModrift(plugin, option);
  if (path.size() > model::kLongestPath) {
    throw RunError(
        fmt::format("{}: a path of at most {} bytes was expected for {}", path, model::kLongestPath, option));
  }
  std::string copy = path;  // the interface hands over writable memory
  if (plugin.dispatch(effVendorSpecific, model::kCallSetPath, 0, copy.data()) != 1) {
    throw RunError(fmt::format("{}: a newer Modrift was expected for {}", plugin.path().string(), option));
  }
}

void command(host::Plugin& plugin, Command command, float value) {
  plugin.setUnlistedParameter(static_cast<VstInt32>(command), value);
}

void drawModriftEditor(const host::Plugin& plugin, const std::string& path, std::optional<PictureSize> size) {
  requireModrift(plugin, "screenshot");
  const VstIntPtr sides = size ? VstIntPtr{size->widthPx} << 16 | size->heightPx : 0;
  std::string copy = path;  // the interface hands over writable memory
  if (plugin.dispatch(effVendorSpecific, model::kCallDrawEditor, sides, copy.data()) != 1)
    throw RunError(plugin.path().string() + ": a Modrift that draws its editor was expected, and room to write to");
}

}  // namespace modrift::cli
