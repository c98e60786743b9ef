// SPDX-License-Identifier: MIT
#include "cli/files/InputFile.h"

#include <array>
#include <fstream>

#include "cli/terminal/Errors.h"

namespace modrift::cli {

std::string readInputFile(const std::string& path, std::size_t most, const std::string& what) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes;
  std::array<char, 65536> slice{};
  while (file && bytes.size() <= most) {
    file.read(slice.data(), slice.size());
    bytes.append(slice.data(), static_cast<std::size_t>(file.gcount()));
  }
  // Missing files fail at once; folders open, but cannot be read.
  if (file.bad() || (bytes.empty() && !file.eof())) throw RunError(path + ": " + what + " was expected");
  return bytes;
}

}  // namespace modrift::cli
