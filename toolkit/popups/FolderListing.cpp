// SPDX-License-Identifier: MIT
#include "toolkit/popups/FolderListing.h"

#include <algorithm>
#include <cctype>

#include "toolkit/base/Utf8.h"

namespace VSTGUI {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxEntries = 20000;  // of a folder; more help nobody

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

bool fits(const fs::path& file, const FolderFilter& filter) {
  if (filter.foldersOnly) return false;
  return filter.extensions.empty() || std::any_of(filter.extensions.begin(), filter.extensions.end(),
                                                  [&](const std::string& e) { return hasExtension(file, e); });
}

}  // namespace

std::optional<std::vector<FolderEntry>> listFolder(const fs::path& folder, const FolderFilter& filter) {
  std::error_code error;
  fs::directory_iterator it(folder, error);
  if (error) return std::nullopt;
  std::vector<FolderEntry> entries;
  for (; it != fs::directory_iterator() && entries.size() < kMaxEntries; it.increment(error)) {
    const std::string name = it->path().filename().string();
    std::error_code unknown;
    const bool isFolder = it->is_directory(unknown);
    if (name.starts_with('.') || (!isFolder && !fits(it->path(), filter))) continue;
    entries.push_back({name, madeValidUtf8(name), isFolder});
  }
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) {
    return a.isFolder != b.isFolder ? a.isFolder : lowered(a.name) < lowered(b.name);
  });
  if (folder != folder.root_path()) entries.insert(entries.begin(), {kParentFolder, "Parent folder", true});
  return entries;
}

bool hasExtension(const fs::path& file, const std::string& extension) {
  return lowered(file.extension().string()) == "." + lowered(extension);
}

}  // namespace VSTGUI
