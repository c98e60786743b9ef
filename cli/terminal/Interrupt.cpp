// SPDX-License-Identifier: MIT
#include "cli/terminal/Interrupt.h"

#include <csignal>

namespace modrift::cli {
namespace {

volatile std::sig_atomic_t receivedSignal = 0;

extern "C" void noteSignal(int signal) { receivedSignal = signal; }

}  // namespace

void catchInterrupts() noexcept {
  struct sigaction action = {};
  action.sa_handler = noteSignal;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);  // a second one ends the process at once
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

bool isInterrupted() noexcept { return receivedSignal != 0; }

void throwIfInterrupted() {
  if (isInterrupted()) throw Interrupted();
}

void dieOfInterrupt() noexcept {
  const int signal = receivedSignal;
  if (signal == 0) return;
  static_cast<void>(std::signal(signal, SIG_DFL));
  static_cast<void>(std::raise(signal));
}

}  // namespace modrift::cli
