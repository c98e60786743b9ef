// A result on its way: written beside its target under a name of its own, renamed into place when it is whole.
//
//   PendingFile pending(target);
//   write(pending.path());
//   pending.commit();          // without it the destructor removes what was written, and the target is as before
#pragma once

#include <filesystem>

namespace modrift::cli {

class PendingFile {
 public:
  // Throws RunError if the target's folder is missing or not writable, or the target is no regular file.
  explicit PendingFile(const std::filesystem::path& target);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
  void commit();  // throws RunError

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;
  bool committed_ = false;
};

}  // namespace modrift::cli
