// SPDX-License-Identifier: MIT
#include "cli/files/Channels.h"

#include <algorithm>
#include <cstddef>

namespace modrift::cli {
namespace {

// Leaves one channel: the mean of the first two, or the only one.
void mixDown(host::Planar& channels) {
  if (channels.size() > 1) {
    std::transform(channels[0].begin(), channels[0].end(), channels[1].begin(), channels[0].begin(),
                   [](float left, float right) { return 0.5f * (left + right); });
  }
  channels.resize(1);
}

}  // namespace

host::Planar fitToInputs(host::Planar file, int pluginInputs, ResultChannels result) {
  if (result == ResultChannels::mono || pluginInputs == 1) mixDown(file);
  if (file.size() == 1 && pluginInputs > 1) file.push_back(file.front());
  return file;
}

host::Planar fitToFile(host::Planar outputs, ResultChannels result) {
  if (result == ResultChannels::mono) {
    mixDown(outputs);
  } else if (outputs.size() == 1) {
    outputs.push_back(outputs.front());
  } else {
    outputs.resize(2);
  }
  return outputs;
}

}  // namespace modrift::cli
