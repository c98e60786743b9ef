// SPDX-License-Identifier: MIT
// Which result goes to which file, settled before anything is rendered.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace modrift::cli {

struct RenderTarget {
  std::filesystem::path input;
  std::filesystem::path output;
  std::filesystem::path picture;  // empty: none wanted
  std::filesystem::path midi;     // empty: none wanted
};

// As typed; all but the output may be empty.
struct RenderNames {
  std::string output;
  std::string picture{};
  std::string midi{};
};

// A name that ends in a slash, or a folder that is there, takes results under the inputs' names: `loop.flac` stays
// `loop.flac` where the format can be written and becomes `loop.wav` where not; pictures are `loop.png`, MIDI files
// `loop.mid`. Any other name is a file and takes one result. Throws UsageError for several results in one file, unknown
// extensions, and results that would replace an input or one of `otherInputs`.
[[nodiscard]] std::vector<RenderTarget> renderTargets(std::span<const std::string> inputs, const RenderNames& names,
                                                      std::span<const std::string> otherInputs = {});

// The picture file of one input by the same rules, `-o` being the option that names it.
[[nodiscard]] std::filesystem::path pictureTarget(const std::string& input, const std::string& output);

// The one file that `-o` names, with the ending that it must have. Empty names among the inputs do not count.
[[nodiscard]] std::filesystem::path singleTarget(const std::string& output, const char* ending,
                                                 std::span<const std::string> inputs);

// Throws UsageError, naming `option`, for a target with another ending, as ".png".
void requireEnding(const std::filesystem::path& target, const char* ending, const char* option);

// Makes the folder that a name ending in a slash asks for; leaves other names alone. Throws RunError.
void makeFolder(const std::string& name);

}  // namespace modrift::cli
