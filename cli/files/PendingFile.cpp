// SPDX-License-Identifier: MIT
#include "cli/files/PendingFile.h"

#include <fmt/core.h>

#include "cli/terminal/Errors.h"

namespace modrift::cli {
namespace {

void check(const std::filesystem::path& target, const char* expected, std::error_code error) {
  if (error) throw RunError(fmt::format("{}: {} was expected ({})", target.string(), expected, error.message()));
}

}  // namespace

PendingFile::PendingFile(const std::filesystem::path& target) : target_(target), draft_(target, error_) {
  if (error_ == std::errc::not_supported) throw RunError(target.string() + ": a regular file was expected to write to");
  check(target_, "a place to write to", error_);
}

void PendingFile::write(std::span<const std::byte> bytes) { check(target_, "room to write to", draft_.write(bytes)); }

void PendingFile::commit() { check(target_, "a file to replace", draft_.commit()); }

void writeFile(const std::filesystem::path& target, std::span<const std::byte> bytes) {
  PendingFile pending(target);
  pending.write(bytes);
  pending.commit();
}

}  // namespace modrift::cli
