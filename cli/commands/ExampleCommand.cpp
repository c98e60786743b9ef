// SPDX-License-Identifier: MIT
#include "cli/commands/ExampleCommand.h"

#include <cstdlib>
#include <filesystem>
#include <fmt/core.h>
#include <string>
#include <vector>

#include "cli/commands/PluginLocation.h"
#include "cli/commands/RenderCommand.h"

namespace modrift::cli {
namespace {

constexpr const char* kAudioName = "modrift-example.wav";
constexpr const char* kPictureName = "modrift-example.png";

// The clock runs one cycle a bar: the 12th of the rate's 42 steps, taken a little above its lower edge. Graph 1, read
// four times a cycle, pumps the volume on every beat; graph 2, read once, sweeps the pan over the bar.
const std::vector<std::string> kSettings = {"Rate=0.2905", ">vol=0.95", "Warp 01=0.8824", ">pan=0.9",
                                            "LFOn>Pan=0.0909"};

}  // namespace

void runExample() {
  RenderOptions options;
  options.inputs = {exampleLoop().lexically_normal().string()};
  options.output = kAudioName;
  options.picture = kPictureName;
  options.tempoBpm = 120.0;  // of the loop
  options.settings = kSettings;
  fmt::print("Rendering the example loop: one graph moves the volume on every beat, another the pan over each bar.\n");
  runRender(options);
  const std::filesystem::path folder = std::filesystem::current_path();
  fmt::print("Listen to  {}\nLook at    {}\n\nNext, try\n", (folder / kAudioName).string(),
             (folder / kPictureName).string());
  // A script that sets everything up and starts the program says how it was called itself.
  const char* const typed = std::getenv("MODRIFT_COMMAND");
  const std::string command = typed != nullptr && *typed != '\0' ? typed : "modrift";
  fmt::print("  {} render YOUR.wav -o RESULT.wav --tempo 120 --set \">vol=1\" --picture RESULT.png\n", command);
  fmt::print("  {} info\n", command);
}

}  // namespace modrift::cli
