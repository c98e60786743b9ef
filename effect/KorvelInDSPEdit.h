// SPDX-License-Identifier: MIT
// The effect as hosts get it: `LfoDSP` with a link to its editor.
#pragma once

#include <cmath>

#include "effect/LfoDSP.h"

class KorvelInDSPEdit final : public LfoDSP {
 public:
  using LfoDSP::LfoDSP;

  // [any] Every change of a parameter, by whomever, is also a message to the editor.
  void setParameter(VstInt32 index, float value) override {
    if (!std::isfinite(value)) return;
    LfoDSP::setParameter(index, value);
    if (AEffEditor* const e = getEditor()) e->setParameter(index, value);
  }
};
