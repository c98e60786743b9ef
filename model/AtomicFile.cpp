// SPDX-License-Identifier: MIT
#include "model/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace model {
namespace {

namespace fs = std::filesystem;

std::error_code lastError() { return {errno, std::generic_category()}; }

class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int get() const noexcept { return number_; }
  // False when the last bytes did not reach the file.
  bool close() noexcept {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_;
};

// Its descriptor; below 0 for an error, which errno tells. Opening with O_EXCL makes sure that the file is ours.
int createBeside(const fs::path& target, mode_t permissions, fs::path& created) {
  constexpr int kMostTries = 1000;
  for (int attempt = 0; attempt < kMostTries; ++attempt) {
    fs::path path =
        target.parent_path() / (".modrift-" + std::to_string(getpid()) + "-" + std::to_string(attempt) + ".tmp");
    const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permissions);
    if (file >= 0) created = std::move(path);
    if (file >= 0 || errno != EEXIST) return file;
  }
  return -1;
}

bool writeAll(int file, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

// So that the rename outlives a loss of power; where a folder cannot be synced, the file is whole all the same.
void syncFolder(const fs::path& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.get() >= 0) fsync(descriptor.get());
}

}  // namespace

std::optional<std::vector<std::byte>> readFile(const fs::path& path, std::size_t most) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));  // a pipe must not keep us waiting
  struct stat facts {};
  if (file.get() < 0 || fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
  if (static_cast<std::size_t>(facts.st_size) > most) return std::nullopt;
  std::vector<std::byte> bytes(static_cast<std::size_t>(facts.st_size));
  for (std::size_t have = 0; have < bytes.size();) {
    const ssize_t count = read(file.get(), bytes.data() + have, bytes.size() - have);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;  // an error, or somebody made it shorter meanwhile
    have += static_cast<std::size_t>(count);
  }
  return bytes;
}

FileDraft::FileDraft(const fs::path& target, std::error_code& error) {
  target_ = fs::weakly_canonical(target, error);
  if (!error) target_ = fs::absolute(target_, error);
  if (error) return;
  struct stat before {};
  const bool exists = stat(target_.c_str(), &before) == 0;
  if (exists && !S_ISREG(before.st_mode)) {
    error = std::make_error_code(std::errc::not_supported);
    return;
  }
  if (exists) permissions_ = before.st_mode & 0777;
  // What others may not read in the old file they must not read in the new one meanwhile.
  const Descriptor file(createBeside(target_, exists ? 0600 : 0666, path_));
  if (file.get() < 0) error = lastError();
}

FileDraft::~FileDraft() {
  if (!path_.empty()) unlink(path_.c_str());
}

std::error_code FileDraft::write(std::span<const std::byte> bytes) {
  Descriptor file(open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  if (file.get() < 0 || !writeAll(file.get(), bytes) || !file.close()) return lastError();
  return {};
}

std::error_code FileDraft::commit() {
  // Opened anew: others may have written it by its name, or put another file in its place.
  Descriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) return lastError();
  if (permissions_ && fchmod(file.get(), *permissions_) != 0) return lastError();
  if (fsync(file.get()) != 0 || !file.close()) return lastError();
  if (std::rename(path_.c_str(), target_.c_str()) != 0) return lastError();
  path_.clear();
  syncFolder(target_.parent_path());
  return {};
}

std::error_code replaceFile(const fs::path& path, std::span<const std::byte> bytes) {
  std::error_code error;
  FileDraft draft(path, error);
  if (!error) error = draft.write(bytes);
  return error ? error : draft.commit();
}

}  // namespace model
