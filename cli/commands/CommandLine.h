// SPDX-License-Identifier: MIT
// The program's command line, from the arguments to the exit status.
#pragma once

#include <string>
#include <vector>

namespace modrift::cli {

// 0 done, 1 a file or a plug-in was not what was needed, 2 the command line is wrong. Prints one line on standard error
// when it is not 0.
enum class ExitStatus : int { done = 0, failed = 1, misused = 2 };

// `arguments` without the program's name. Lets no exception out.
[[nodiscard]] ExitStatus runCommandLine(const std::vector<std::string>& arguments) noexcept;

}  // namespace modrift::cli
