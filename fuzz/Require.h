// SPDX-License-Identifier: MIT
// What must hold for every input; where it does not, the program stops there and then, so that the fuzzer keeps the
// input.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}
