#include "effect/ScopeCapture.h"

void ScopeTrace::captureInput(int index, float x) noexcept {
  for (int i = mark; i <= index; ++i) (*this)[i] = x;
  mark = index;
}

void ScopeTrace::captureOutput(int index, float x) noexcept {
  if (mark > index) mark = -1;
  for (int i = mark + 1; i < index; ++i) (*this)[i] = x;
  (*this)[index] = x;
  mark = index;
}
