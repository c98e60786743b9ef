// Whole files in one step: a reader gets all bytes or nothing, a writer leaves the old file or the new one, never a
// part of either, whatever happens in between: a full disk, a crash, the end of the process. Not for the audio thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

namespace model {

// Nothing when it is no regular file, is larger than `most` bytes, or cannot be read.
[[nodiscard]] std::optional<std::vector<std::byte>> readFile(const std::filesystem::path& path, std::size_t most);

// Writes beside `path` and renames. An error leaves what was there. Behind a symbolic link the file it leads to is
// replaced; what is no regular file is refused.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::span<const std::byte> bytes);

}  // namespace model
