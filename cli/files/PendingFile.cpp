#include "cli/files/PendingFile.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/core.h>
#include <system_error>
#include <unistd.h>

#include "cli/terminal/Errors.h"

namespace modrift::cli {
namespace {

namespace fs = std::filesystem;

// The file behind a symbolic link is what gets replaced, not the link.
fs::path resolved(const fs::path& target) {
  std::error_code error;
  fs::path path = fs::weakly_canonical(target, error);
  return error ? fs::absolute(target) : path;
}

// Creates an empty file under a free name; opening with O_EXCL makes sure that it is ours.
fs::path createBeside(const fs::path& target, const fs::path& shownName) {
  constexpr int kMostTries = 1000;
  for (int attempt = 0; attempt < kMostTries; ++attempt) {
    fs::path path = target.parent_path() / fmt::format(".{}.{}-{}", target.filename().string(), getpid(), attempt);
    const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (file >= 0) {
      close(file);
      return path;
    }
    if (errno != EEXIST) break;
  }
  throw RunError(fmt::format("{}: a place to write to was expected ({})", shownName.string(),
                             std::generic_category().message(errno)));
}

}  // namespace

PendingFile::PendingFile(const fs::path& target) : target_(resolved(target)) {
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  // Renaming over a device or a pipe would replace it.
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw RunError(target.string() + ": a regular file was expected to write to");
  }
  path_ = createBeside(target_, target);
}

PendingFile::~PendingFile() {
  if (committed_) return;
  std::error_code error;
  fs::remove(path_, error);
}

void PendingFile::commit() {
  std::error_code error;
  fs::rename(path_, target_, error);
  if (error) throw RunError(fmt::format("{}: a file to replace was expected ({})", target_.string(), error.message()));
  committed_ = true;
}

}  // namespace modrift::cli
