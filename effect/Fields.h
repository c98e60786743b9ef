// The parameters' fields by pointer to member, of the effect or of its LFO record: tables name them as template
// arguments. Internal to the parameter tables.
#pragma once

#include "effect/LfoDSP.h"

template <auto Field, class Effect>
[[nodiscard]] auto& field(Effect& effect) noexcept {
  if constexpr (requires { effect.*Field; }) {
    return effect.*Field;
  } else {
    return effect.padLFO.*Field;
  }
}
