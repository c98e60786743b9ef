// SPDX-License-Identifier: MIT
// Where instances (Plugin) come from: an entry function, in a VST 2 shared object that is mapped into the process or in
// the process itself. A module must outlive its instances, which is why they share ownership of it.
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
  // An effect that this program is linked with. `shownPath` stands for it in messages, and its folder is the one that
  // the effect is told to lie in. Throws Error.
  Module(EntryFunction linkedEntry, std::filesystem::path shownPath);
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  [[nodiscard]] EntryFunction entry() const noexcept { return entry_; }
  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }  // absolute for a file

 private:
  std::filesystem::path path_;
  void* handle_ = nullptr;  // of the file; null in the process itself
  EntryFunction entry_ = nullptr;
};

}  // namespace modrift::host
