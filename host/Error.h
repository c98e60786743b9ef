// SPDX-License-Identifier: MIT
// The one exception of the host library: a sentence that starts with the file it is about and says what was expected,
// ready to be shown to a user. Never crosses a C callback.
#pragma once

#include <stdexcept>

namespace modrift::host {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace modrift::host
