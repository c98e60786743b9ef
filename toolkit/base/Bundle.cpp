// SPDX-License-Identifier: MIT
#include "toolkit/base/Bundle.h"

#include <cstdio>
#include <dlfcn.h>
#include <string>

namespace VSTGUI {

namespace fs = std::filesystem;

namespace {

constexpr int kComponentsAboveFolder = 3;  // Contents, the machine's folder, the module

int bundleUsers = 0;

}  // namespace

Bundle* gBundleRef = nullptr;

fs::path Bundle::findResource(std::string_view name, std::string_view type) const {
  if (name.empty()) return {};
  fs::path path = name.front() == '/' ? fs::path(name) : folder_ / "Contents" / "Resources" / name;
  std::error_code error;
  if (fs::is_regular_file(path, error)) return path;
  if (type.empty()) return {};
  path += ".";
  path += type;
  return fs::is_regular_file(path, error) ? path : fs::path();
}

Bundle* GetPluginBundle() {
  Dl_info module{};
  std::string path;
  if (dladdr(reinterpret_cast<const void*>(&GetPluginBundle), &module) && module.dli_fname) {
    std::error_code error;
    path = fs::absolute(module.dli_fname, error).string();
  }
  for (int i = 0; i < kComponentsAboveFolder; ++i) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) {
      std::printf("Could not determine bundle location.\n");
      return nullptr;
    }
    path.resize(slash);
  }
  return new Bundle(path.empty() ? "/" : path);
}

void acquirePluginBundle() {
  if (bundleUsers++ == 0) gBundleRef = GetPluginBundle();
}

void releasePluginBundle() {
  if (bundleUsers == 0 || --bundleUsers > 0) return;
  if (gBundleRef) gBundleRef->forget();
  gBundleRef = nullptr;
}

}  // namespace VSTGUI
