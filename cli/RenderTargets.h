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
};

// A name that ends in a slash, or a folder that is there, takes results under the inputs' names: `loop.flac` stays
// `loop.flac` where the format can be written and becomes `loop.wav` where not; pictures are `loop.png`. Any other name
// is a file and takes one result. `picture` may be empty. Throws UsageError for several results in one file, unknown
// extensions, and results that would replace an input or one of `otherInputs`.
[[nodiscard]] std::vector<RenderTarget> renderTargets(std::span<const std::string> inputs, const std::string& output,
                                                      const std::string& picture,
                                                      std::span<const std::string> otherInputs = {});

// The picture file of one input by the same rules, `-o` being the option that names it.
[[nodiscard]] std::filesystem::path pictureTarget(const std::string& input, const std::string& output);

// Makes the folder that a name ending in a slash asks for; leaves other names alone. Throws RunError.
void makeFolder(const std::string& name);

}  // namespace modrift::cli
