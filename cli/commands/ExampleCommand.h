// SPDX-License-Identifier: MIT
// `modrift` without arguments: shows what the plug-in does, with the loop that comes with it.
#pragma once

namespace modrift::cli {

// Writes modrift-example.wav and modrift-example.png into the current folder. Throws RunError, host::Error and
// Interrupted.
void runExample();

}  // namespace modrift::cli
