// SPDX-License-Identifier: MIT
// modrift_bench: what the pieces of the audio path cost, and the whole of it.
//
//   modrift_bench                                    all rows, then the comparison with our limits
//   modrift_bench --benchmark_filter=crossover       some of them
//   modrift_bench --benchmark_out=all.json           the counters of every repeat as well
//
// All options of the benchmark library work but for its own formats on the terminal.
#include <benchmark/benchmark.h>
#include <vector>

#include "bench/Subjects.h"
#include "bench/Summary.h"

int main(int argc, char** argv) {
  // Ahead of the user's options, so that those win.
  char repeats[] = "--benchmark_repetitions=7";
  char seconds[] = "--benchmark_min_time=0.1";
  std::vector<char*> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + (argc > 0 ? 1 : 0), {repeats, seconds});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  bench::addClockRows();
  bench::addCrossoverRows();
  bench::addRateChangeRows();
  bench::addGainsRows();
  bench::addRenderingRows();
  bench::addWholePathRows();
  bench::addGraphDisplayRows();
  bench::Summary summary;
  benchmark::RunSpecifiedBenchmarks(&summary);
  benchmark::Shutdown();
  return 0;
}
