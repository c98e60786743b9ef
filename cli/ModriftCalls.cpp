#include "cli/ModriftCalls.h"

#include <fmt/format.h>

#include "cli/Errors.h"

namespace modrift::cli {
namespace {

constexpr VstInt32 kModriftId = CCONST('V', 'r', 'l', 'q');
constexpr VstInt32 kSetPath = CCONST('m', 'P', 't', 'h');  // [ptr] the path; answers 1
constexpr std::size_t kLongestPath = 511;

}  // namespace

bool isModrift(const host::Plugin& plugin) noexcept { return plugin.record().uniqueID == kModriftId; }

void setModriftPath(const host::Plugin& plugin, const std::string& path, const std::string& option) {
  if (!isModrift(plugin)) {
    throw RunError(fmt::format("{}: the plug-in Modrift was expected for {}", plugin.path().string(), option));
  }
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

}  // namespace modrift::cli
