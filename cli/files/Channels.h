// SPDX-License-Identifier: MIT
// How the channels of files and plug-ins meet.
//
// Stereo result (the usual case): left and right feed the first two inputs, a mono file feeds both; a plug-in with one
// input gets the mean. The first two outputs are written; a single output goes to both sides.
// Mono result: the mean of the file's channels feeds the first two inputs, and the mean of the first two outputs is
// written, which is what a listener hears who plays the stereo result in mono.
#pragma once

#include "host/OfflineRunner.h"

namespace modrift::cli {

enum class ResultChannels { stereo, mono };

// `file` has one or two channels.
[[nodiscard]] host::Planar fitToInputs(host::Planar file, int pluginInputs, ResultChannels result);

// `outputs` has at least one channel.
[[nodiscard]] host::Planar fitToFile(host::Planar outputs, ResultChannels result);

}  // namespace modrift::cli
