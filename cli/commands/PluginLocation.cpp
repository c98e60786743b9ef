// SPDX-License-Identifier: MIT
#include "cli/commands/PluginLocation.h"

#include <cstdlib>
#include <system_error>

#include "cli/terminal/Errors.h"

namespace modrift::cli {
namespace {

namespace fs = std::filesystem;

// The folder that holds `bin/`, and with it everything that is shipped together. The link's target follows the program
// wherever it is moved.
fs::path installation() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) throw RunError("/proc/self/exe: the program's own place was expected (" + error.message() + ")");
  return program.parent_path().parent_path();
}

}  // namespace

fs::path pluginPath(const std::string& named) {
  if (!named.empty()) return named;
  const char* chosen = std::getenv("MODRIFT_PLUGIN");
  if (chosen != nullptr && *chosen != '\0') return chosen;
  fs::path bundle = installation() / "Modrift.vst";
  std::error_code error;
  if (fs::exists(bundle, error)) return bundle;
  throw RunError(bundle.string() + ": the plug-in was expected here; name one with --plugin or MODRIFT_PLUGIN");
}

fs::path exampleLoop() {
  fs::path loop = installation() / "share" / "modrift" / "example-loop.wav";
  std::error_code error;
  if (fs::exists(loop, error)) return loop;
  throw RunError(loop.string() + ": the example loop was expected here, it is made when the program is built");
}

}  // namespace modrift::cli
