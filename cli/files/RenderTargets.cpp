// SPDX-License-Identifier: MIT
#include "cli/files/RenderTargets.h"

#include <fmt/core.h>
#include <set>
#include <system_error>
#include <utility>

#include "cli/files/AudioFile.h"
#include "cli/terminal/Errors.h"

namespace modrift::cli {
namespace {

namespace fs = std::filesystem;

bool isFolder(const std::string& name) {
  std::error_code error;
  return name.ends_with('/') || fs::is_directory(name, error);
}

bool isSameFile(const fs::path& a, const fs::path& b) {
  std::error_code error;
  if (fs::equivalent(a, b, error)) return true;
  return fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error);
}

fs::path outputFor(const fs::path& input, const std::string& output) {
  if (!isFolder(output)) return output;
  const fs::path extension = isWritableExtension(input.extension().string()) ? input.extension() : fs::path(".wav");
  return output / input.filename().replace_extension(extension);
}

// A file that goes with the result: `name`, or one of its own ending in that folder; empty if none is wanted.
fs::path companionFor(const fs::path& input, const std::string& name, const char* extension) {
  if (name.empty() || !isFolder(name)) return name;
  return name / input.filename().replace_extension(extension);
}

void refuseReplacing(const fs::path& target, std::span<const std::string> inputs, const char* option) {
  for (const std::string& input : inputs) {
    if (!input.empty() && isSameFile(target, input)) {
      throw UsageError(fmt::format("{}: a file other than the input {} was expected", option, input));
    }
  }
}

void requireFolders(const RenderNames& names) {
  if (!isFolder(names.output)) throw UsageError("-o: a folder (a name ending in /) was expected for several inputs");
  for (const auto& [name, option] : {std::pair(names.picture, "--picture"), std::pair(names.midi, "--midi-out")}) {
    if (name.empty() || isFolder(name)) continue;
    throw UsageError(fmt::format("{}: a folder (a name ending in /) was expected for several inputs", option));
  }
}

class NameCheck {
 public:
  explicit NameCheck(std::span<const std::string> inputs, std::span<const std::string> others)
      : inputs_(inputs), others_(others) {}

  void check(const fs::path& target, const char* option) {
    refuseReplacing(target, inputs_, option);
    refuseReplacing(target, others_, option);
    std::error_code error;
    if (!taken_.insert(fs::weakly_canonical(target, error)).second) {
      throw UsageError(
          fmt::format("{}: one file for each result was expected, but two would be {}", option, target.string()));
    }
  }

 private:
  std::span<const std::string> inputs_;
  std::span<const std::string> others_;
  std::set<fs::path> taken_;
};

}  // namespace

void requireEnding(const fs::path& target, const char* ending, const char* option) {
  if (target.extension() == ending) return;
  throw UsageError(fmt::format("{}: a name ending in {} was expected, not {}", option, ending, target.string()));
}

std::vector<RenderTarget> renderTargets(std::span<const std::string> inputs, const RenderNames& names,
                                        std::span<const std::string> otherInputs) {
  if (inputs.size() > 1) requireFolders(names);
  std::vector<RenderTarget> targets;
  NameCheck check(inputs, otherInputs);
  const auto checkCompanion = [&check](const fs::path& target, const char* ending, const char* option) {
    if (target.empty()) return;
    requireEnding(target, ending, option);
    check.check(target, option);
  };
  for (const std::string& input : inputs) {
    RenderTarget target{input, outputFor(input, names.output), companionFor(input, names.picture, ".png"),
                        companionFor(input, names.midi, ".mid")};
    if (!isWritableExtension(target.output.extension().string())) {
      throw UsageError(
          fmt::format("-o: a name ending in {} was expected, not {}", writableExtensions(), target.output.string()));
    }
    check.check(target.output, "-o");
    checkCompanion(target.picture, ".png", "--picture");
    checkCompanion(target.midi, ".mid", "--midi-out");
    targets.push_back(std::move(target));
  }
  return targets;
}

fs::path pictureTarget(const std::string& input, const std::string& output) {
  fs::path target = companionFor(input, output, ".png");
  requireEnding(target, ".png", "-o");
  refuseReplacing(target, std::span(&input, 1), "-o");
  return target;
}

fs::path singleTarget(const std::string& output, const char* ending, std::span<const std::string> inputs) {
  requireEnding(output, ending, "-o");
  refuseReplacing(output, inputs, "-o");
  return output;
}

void makeFolder(const std::string& name) {
  if (!name.ends_with('/')) return;
  std::error_code error;
  fs::create_directories(name, error);
  if (error) throw RunError(fmt::format("{}: a folder was expected ({})", name, error.message()));
}

}  // namespace modrift::cli
