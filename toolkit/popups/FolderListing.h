// SPDX-License-Identifier: MIT
// What a folder holds, for choosing among it; knows nothing of views.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace VSTGUI {

struct FolderEntry {
  std::string name;   // in the file system's bytes
  std::string title;  // as it can be drawn
  bool isFolder = false;
};

// The way up, which stands first in all folders but the root.
inline constexpr const char* kParentFolder = "..";

// What files to list: those with one of these endings (without the dot, in either case), or all of them where there are
// none; or folders alone.
struct FolderFilter {
  std::vector<std::string> extensions;
  bool foldersOnly = false;
};

// Folders come first, then files, each in the order of their names; hidden ones are left out. None when the folder
// can't be read.
[[nodiscard]] std::optional<std::vector<FolderEntry>> listFolder(const std::filesystem::path& folder,
                                                                 const FolderFilter& filter);

// Whether the file has that ending, in either case.
[[nodiscard]] bool hasExtension(const std::filesystem::path& file, const std::string& extension);

}  // namespace VSTGUI
