#include "model/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

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

// A file that nobody has seen yet; gone with the object unless it was renamed.
struct Draft {
  fs::path path;
  bool keep = false;

  ~Draft() {
    if (!keep && !path.empty()) unlink(path.c_str());
  }
};

// The name does not depend on the target's, which may be as long as names can be.
int createDraft(const fs::path& folder, Draft& draft) {
  constexpr int kMostTries = 1000;
  for (int attempt = 0; attempt < kMostTries; ++attempt) {
    const fs::path path = folder / (".modrift-" + std::to_string(getpid()) + "-" + std::to_string(attempt) + ".tmp");
    const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (file >= 0) draft.path = path;
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

std::error_code replaceFile(const fs::path& path, std::span<const std::byte> bytes) {
  std::error_code error;
  fs::path target = fs::weakly_canonical(path, error);
  if (!error) target = fs::absolute(target, error);
  if (error) return error;
  struct stat before {};
  const bool exists = stat(target.c_str(), &before) == 0;
  if (exists && !S_ISREG(before.st_mode)) return std::make_error_code(std::errc::not_supported);

  const fs::path folder = target.parent_path();
  Draft draft;
  Descriptor file(createDraft(folder, draft));
  if (file.get() < 0) return lastError();
  if (exists && fchmod(file.get(), before.st_mode & 0777) != 0) return lastError();
  if (!writeAll(file.get(), bytes) || fsync(file.get()) != 0 || !file.close()) return lastError();
  if (std::rename(draft.path.c_str(), target.c_str()) != 0) return lastError();
  draft.keep = true;
  syncFolder(folder);
  return {};
}

}  // namespace model
