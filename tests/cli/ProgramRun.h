// SPDX-License-Identifier: MIT
// The program as a process in a folder of the test's own: exit status, what it printed, and the files that it left.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "tests/TemporaryFolder.h"

namespace modrift::cli {

class ProgramRun : public testing::Test {
 protected:
  struct Outcome {
    int status = 0;
    std::string output, errors;
  };

  // `plugin` is the one to use unless arguments name another.
  explicit ProgramRun(std::string plugin) : plugin_(std::move(plugin)) {
    unsetenv("DISPLAY");  // NOLINT(concurrency-mt-unsafe): one thread
  }

  // What the shell makes of the arguments; it runs in the test's folder.
  Outcome run(const std::string& arguments) const {
    const std::string command = "cd '" + folder_.path() + "' && export MODRIFT_PLUGIN='" + plugin_ +
                                "' && { '" MODRIFT_PROGRAM "' " + arguments + "; } >stdout 2>stderr";
    const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe): one thread
    return {WEXITSTATUS(status), readText(folder_ / "stdout"), readText(folder_ / "stderr")};
  }

  // Answers what it printed.
  std::string done(const std::string& arguments) const {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_EQ(outcome.errors, "") << arguments;
    return outcome.output;
  }

  // In one line that has `message` in it.
  void expectFailure(int status, const std::string& arguments, const std::string& message) const {
    const auto [found, output, errors] = run(arguments);
    EXPECT_EQ(found, status) << arguments << "\n" << errors;
    EXPECT_TRUE(errors.starts_with("modrift: ") && errors.find(message) != std::string::npos &&
                std::count(errors.begin(), errors.end(), '\n') == 1)
        << arguments << "\n"
        << errors;
  }

  void expectPicture(const std::string& name) const { EXPECT_EQ(readText(folder_ / name).substr(1, 3), "PNG") << name; }
  [[nodiscard]] bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

  TemporaryFolder folder_;

 private:
  std::string plugin_;
};

}  // namespace modrift::cli
