// SPDX-License-Identifier: MIT
// Whole files as bytes.
#pragma once

#include <cstddef>
#include <string>

namespace modrift::cli {

// At most `most` bytes and one more, so that an endless file is read no further and its parser refuses it. `what`
// names the kind of file that was expected, as in "a MIDI file". Throws RunError.
[[nodiscard]] std::string readInputFile(const std::string& path, std::size_t most, const std::string& what);

}  // namespace modrift::cli
