// SPDX-License-Identifier: MIT
// A result on its way: written beside its target, renamed into place when it is whole, and otherwise removed. It is
// model::FileDraft with the program's sentences.
//
//   PendingFile pending(target);
//   write(pending.path());     // or pending.write(bytes)
//   pending.commit();
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>

#include "model/AtomicFile.h"

namespace modrift::cli {

class PendingFile {
 public:
  // Throws RunError if the target's folder is missing or not writable, or the target is no regular file.
  explicit PendingFile(const std::filesystem::path& target);

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return draft_.path(); }
  void write(std::span<const std::byte> bytes);  // throws RunError
  void commit();                                 // throws RunError

 private:
  std::filesystem::path target_;  // as it was named
  std::error_code error_;
  model::FileDraft draft_;
};

// All of it in one step. Throws RunError.
void writeFile(const std::filesystem::path& target, std::span<const std::byte> bytes);

}  // namespace modrift::cli
