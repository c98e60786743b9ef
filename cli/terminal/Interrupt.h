// SPDX-License-Identifier: MIT
// A polite end on Ctrl-C and on a request to terminate: the work in progress is given up at its next step, unfinished
// files are removed, and the process then dies of the signal, as shells expect.
#pragma once

#include <exception>

namespace modrift::cli {

class Interrupted : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "interrupted"; }
};

void catchInterrupts() noexcept;
[[nodiscard]] bool isInterrupted() noexcept;
void throwIfInterrupted();  // Interrupted

// Ends the process with the signal that came; returns if none did.
void dieOfInterrupt() noexcept;

}  // namespace modrift::cli
