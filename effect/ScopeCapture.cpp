// SPDX-License-Identifier: MIT
#include "effect/ScopeCapture.h"

namespace effect {

void ScopeTrace::captureInput(int index, float x) noexcept {
  for (int i = mark; i <= index; ++i) (*this)[i] = x;
  mark = index;
}

}  // namespace effect
