// SPDX-License-Identifier: MIT
// The parameters' fields by pointer to member, of the effect or of its LFO record: tables name them as template
// arguments. Internal to the parameter table.
#pragma once

#include "effect/LfoDSP.h"

namespace effect {

using namespace model;

template <auto Field, class AnyEffect>
[[nodiscard]] auto& field(AnyEffect& effect) noexcept {
  if constexpr (requires { effect.*Field; }) {
    return effect.*Field;
  } else {
    return effect.padLFO.*Field;
  }
}

}  // namespace effect
