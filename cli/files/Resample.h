// SPDX-License-Identifier: MIT
// Sample rate conversion of whole files, at the best quality of libsamplerate.
#pragma once

#include "host/OfflineRunner.h"

namespace modrift::cli {

// Channels of the same length in, channels of round(length x to / from) out. Throws RunError when the ratio is beyond
// 1 : 256, and Interrupted.
[[nodiscard]] host::Planar resample(host::Planar channels, double fromHz, double toHz);

}  // namespace modrift::cli
