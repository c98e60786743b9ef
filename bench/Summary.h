// SPDX-License-Identifier: MIT
// The report on the terminal: a line a row, at the end the comparison with our limits.
#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace bench {

class Summary : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;  // all repeats of a row at once
  void Finalize() override;

 private:
  // Medians over the repeats.
  struct Figures {
    double ns;          // a stereo frame
    double xYardstick;  // the same as a multiple of the yardstick
  };
  std::map<std::string, Figures> rows_;
};

}  // namespace bench
