// SPDX-License-Identifier: MIT
// Whole files in one step: a reader gets all bytes or nothing, a writer leaves the old file or the new one, never a
// part of either, whatever happens in between: a full disk, a crash, the end of the process. Not for the audio thread.
//
//   std::error_code error;
//   FileDraft draft(path, error);                    // an empty file beside the target
//   if (!error) error = draft.write(bytes);          // or a library writes to draft.path()
//   if (!error) error = draft.commit();              // renamed over the target; without it the draft is removed
//
// replaceFile() is the three of them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <sys/types.h>
#include <system_error>
#include <vector>

namespace model {

// Nothing when it is no regular file, is larger than `most` bytes, or cannot be read.
[[nodiscard]] std::optional<std::vector<std::byte>> readFile(const std::filesystem::path& path, std::size_t most);

class FileDraft {
 public:
  // On an error there is no draft, and only the destructor may follow. Behind a symbolic link the file it leads to is
  // what will be replaced; errc::not_supported stands for a target that is no regular file, since a rename would put
  // an end to a device or a pipe.
  FileDraft(const std::filesystem::path& target, std::error_code& error);
  ~FileDraft();
  FileDraft(const FileDraft&) = delete;
  FileDraft& operator=(const FileDraft&) = delete;

  // Under a short name that does not depend on the target's, which may be as long as names can be. Whoever writes may
  // also replace it as a whole.
  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

  [[nodiscard]] std::error_code write(std::span<const std::byte> bytes);  // instead of what is in it
  // The target's permissions stay. On an error the target is as it was, and the destructor removes the draft.
  [[nodiscard]] std::error_code commit();

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;         // empty: no draft
  std::optional<mode_t> permissions_;  // of the file to be replaced
};

[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::span<const std::byte> bytes);

}  // namespace model
