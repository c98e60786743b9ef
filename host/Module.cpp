// SPDX-License-Identifier: MIT
#include "host/Module.h"

#include <algorithm>
#include <array>
#include <dlfcn.h>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/Error.h"

namespace modrift::host {
namespace {

namespace fs = std::filesystem;

#if defined(__x86_64__)
constexpr const char* kMachineFolder = "x86_64-linux";
#elif defined(__aarch64__)
constexpr const char* kMachineFolder = "aarch64-linux";
#else
#error "Name the bundle's folder for this machine."
#endif

// "main" is what plug-ins exported before the present name; some still do.
constexpr std::array<const char*, 2> kEntryNames = {"VSTPluginMain", "main"};

std::vector<fs::path> sharedObjectsIn(const fs::path& folder) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (entry->path().extension() == ".so" && entry->is_regular_file(error)) found.push_back(entry->path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

// dlerror() starts with the path in most cases; ours does too, so the path is taken off.
std::string loaderMessage(const fs::path& path) {
  const char* text = dlerror();
  std::string message = text == nullptr ? "unknown reason" : text;
  const std::string prefix = path.string() + ": ";
  if (message.starts_with(prefix)) message.erase(0, prefix.size());
  return message;
}

}  // namespace

fs::path sharedObjectOf(const fs::path& fileOrBundle) {
  std::error_code error;
  const fs::path path = fs::absolute(fileOrBundle, error).lexically_normal();
  if (!fs::exists(path, error))
    throw Error(fileOrBundle.string() + ": a plug-in was expected, but there is no such file");
  if (!fs::is_directory(path, error)) return fs::path(path);
  const fs::path bundle = path.has_filename() ? path : path.parent_path();
  for (const fs::path& folder : {bundle / "Contents" / kMachineFolder, bundle}) {
    const std::vector<fs::path> found = sharedObjectsIn(folder);
    if (found.size() == 1) return found.front();
    for (const fs::path& object : found) {
      if (object.stem() == bundle.stem()) return object;
    }
  }
  throw Error(fileOrBundle.string() + ": a bundle with one shared object in Contents/" + kMachineFolder +
              " was expected");
}

Module::Module(const fs::path& fileOrBundle) : path_(sharedObjectOf(fileOrBundle)) {
  handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    throw Error(path_.string() + ": a shared object for this machine was expected (" + loaderMessage(path_) + ")");
  }
  for (const char* name : kEntryNames) {
    entry_ = reinterpret_cast<EntryFunction>(dlsym(handle_, name));
    if (entry_ != nullptr) return;
  }
  dlclose(handle_);
  throw Error(path_.string() + ": a VST 2 plug-in was expected, but it exports neither VSTPluginMain nor main");
}

Module::Module(EntryFunction linkedEntry, fs::path shownPath) : path_(std::move(shownPath)), entry_(linkedEntry) {
  if (entry_ == nullptr) throw Error(path_.string() + ": an effect with an entry function was expected");
}

Module::~Module() {
  if (handle_ != nullptr) dlclose(handle_);
}

}  // namespace modrift::host
