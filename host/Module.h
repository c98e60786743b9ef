// A loaded VST 2 shared object: the file mapped into the process and its entry function. It makes instances (Plugin)
// and must outlive them, which is why they share ownership of it.
#pragma once

#include <filesystem>

#include "vst2/aeffect.h"

namespace modrift::host {

// Answers the effect's record, or null when the plug-in does not want to live in this host.
using EntryFunction = AEffect*(VSTCALLBACK*)(audioMasterCallback);

// The shared object that a path stands for: the path itself, or for a bundle folder the shared object inside
// (`Contents/<machine>/` first, then the folder itself; the one named like the bundle if there are several).
// Throws Error.
[[nodiscard]] std::filesystem::path sharedObjectOf(const std::filesystem::path& fileOrBundle);

class Module {
 public:
  explicit Module(const std::filesystem::path& fileOrBundle);  // throws Error
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  [[nodiscard]] EntryFunction entry() const noexcept { return entry_; }
  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }  // absolute

 private:
  std::filesystem::path path_;
  void* handle_ = nullptr;
  EntryFunction entry_ = nullptr;
};

}  // namespace modrift::host
