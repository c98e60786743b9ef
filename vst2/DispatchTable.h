// SPDX-License-Identifier: MIT
// How the frame serves opcodes: a table of rows, looked up by number.
#pragma once

#include <algorithm>
#include <array>
#include <optional>

#include "vst2/aeffect.h"

namespace vst2 {

// One call of the host's, as it came.
struct Call {
  VstInt32 index;
  VstIntPtr value;
  void* ptr;
  float opt;

  char* text() const { return static_cast<char*>(ptr); }
  template <class Record>
  Record* as() const {
    return static_cast<Record*>(ptr);
  }
};

enum class Needs { nothing, pointer };  // what a call must bring along to be served

template <class Effect>
struct OpcodeRow {
  VstInt32 opcode;
  Needs needs;
  VstIntPtr (*serve)(Effect&, const Call&);
};

// The answer of the row for `opcode`, or nothing when the table has none.
template <class Effect, std::size_t N>
std::optional<VstIntPtr> serve(const std::array<OpcodeRow<Effect>, N>& table, Effect& effect, VstInt32 opcode,
                               const Call& call) {
  const auto row = std::find_if(table.begin(), table.end(), [opcode](const auto& r) { return r.opcode == opcode; });
  if (row == table.end()) return std::nullopt;
  if (row->needs == Needs::pointer && !call.ptr) return 0;
  return row->serve(effect, call);
}

}  // namespace vst2
