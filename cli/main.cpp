// SPDX-License-Identifier: MIT
#include "cli/commands/CommandLine.h"
#include "cli/terminal/Interrupt.h"

int main(int argc, char** argv) {
  modrift::cli::catchInterrupts();
  const modrift::cli::ExitStatus status = modrift::cli::runCommandLine({argv + (argc > 0 ? 1 : 0), argv + argc});
  modrift::cli::dieOfInterrupt();
  return static_cast<int>(status);
}
