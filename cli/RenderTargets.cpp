#include "cli/RenderTargets.h"

#include <fmt/format.h>
#include <set>
#include <system_error>

#include "cli/AudioFile.h"
#include "cli/Errors.h"

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

fs::path pictureFor(const fs::path& input, const std::string& picture) {
  if (picture.empty() || !isFolder(picture)) return picture;
  return picture / input.filename().replace_extension(".png");
}

void refuseReplacing(const fs::path& target, std::span<const std::string> inputs, const char* option) {
  for (const std::string& input : inputs) {
    if (isSameFile(target, input)) {
      throw UsageError(fmt::format("{}: a file other than the input {} was expected", option, input));
    }
  }
}

void requirePng(const fs::path& picture, const char* option) {
  if (picture.extension() == ".png") return;
  throw UsageError(fmt::format("{}: a name ending in .png was expected, not {}", option, picture.string()));
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

std::vector<RenderTarget> renderTargets(std::span<const std::string> inputs, const std::string& output,
                                        const std::string& picture, std::span<const std::string> otherInputs) {
  if (inputs.size() > 1) {
    if (!isFolder(output)) throw UsageError("-o: a folder (a name ending in /) was expected for several inputs");
    if (!picture.empty() && !isFolder(picture)) {
      throw UsageError("--picture: a folder (a name ending in /) was expected for several inputs");
    }
  }
  std::vector<RenderTarget> targets;
  NameCheck names(inputs, otherInputs);
  for (const std::string& input : inputs) {
    RenderTarget target{input, outputFor(input, output), pictureFor(input, picture)};
    if (!isWritableExtension(target.output.extension().string())) {
      throw UsageError(
          fmt::format("-o: a name ending in {} was expected, not {}", writableExtensions(), target.output.string()));
    }
    names.check(target.output, "-o");
    if (!target.picture.empty()) {
      requirePng(target.picture, "--picture");
      names.check(target.picture, "--picture");
    }
    targets.push_back(std::move(target));
  }
  return targets;
}

fs::path pictureTarget(const std::string& input, const std::string& output) {
  fs::path target = pictureFor(input, output);
  requirePng(target, "-o");
  refuseReplacing(target, std::span(&input, 1), "-o");
  return target;
}

void makeFolder(const std::string& name) {
  if (!name.ends_with('/')) return;
  std::error_code error;
  fs::create_directories(name, error);
  if (error) throw RunError(fmt::format("{}: a folder was expected ({})", name, error.message()));
}

}  // namespace modrift::cli
