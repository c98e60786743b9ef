// SPDX-License-Identifier: MIT
// The two ways in which the program fails. Each carries one sentence of the form "FILE or OPTION: what was expected".
#pragma once

#include <stdexcept>

namespace modrift::cli {

// A file, a plug-in or a device was not what was needed: exit status 1.
class RunError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The command line itself is wrong: exit status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace modrift::cli
