#include "cli/ModriftCalls.h"

#include <fmt/core.h>

#include "cli/Errors.h"

namespace modrift::cli {
namespace {

constexpr VstInt32 kModriftId = CCONST('V', 'r', 'l', 'q');
constexpr VstInt32 kSetPath = CCONST('m', 'P', 't', 'h');     // [ptr] the path; answers 1
constexpr VstInt32 kDrawEditor = CCONST('m', 'P', 'i', 'c');  // [value] width * 65536 + height, [ptr] the path
constexpr std::size_t kLongestPath = 511;

void requireModrift(const host::Plugin& plugin, const std::string& option) {
  if (!isModrift(plugin))
    throw RunError(fmt::format("{}: the plug-in Modrift was expected for {}", plugin.path().string(), option));
}

}  // namespace

bool isModrift(const host::Plugin& plugin) noexcept { return plugin.record().uniqueID == kModriftId; }

void setModriftPath(const host::Plugin& plugin, const std::string& path, const std::string& option) {
  requireModrift(plugin, option);
  if (path.size() > kLongestPath) {
    throw RunError(fmt::format("{}: a path of at most {} bytes was expected for {}", path, kLongestPath, option));
  }
  std::string copy = path;  // the interface hands over writable memory
  if (plugin.dispatch(effVendorSpecific, kSetPath, 0, copy.data()) != 1) {
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
  if (plugin.dispatch(effVendorSpecific, kDrawEditor, sides, copy.data()) != 1)
    throw RunError(plugin.path().string() + ": a Modrift that draws its editor was expected, and room to write to");
}

}  // namespace modrift::cli
