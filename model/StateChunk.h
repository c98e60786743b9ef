// SPDX-License-Identifier: MIT
// The state as the block of bytes that hosts keep in their projects and presets carry: little-endian, without a mark,
// told apart by size. Today's layout is written; today's and the one before it are read, in every version.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <variant>

#include "model/State.h"

namespace model {

inline constexpr std::size_t kChunkBytes = 18824;

enum class Layout { current, old };

// What a load leaves as it is.
struct Locks {
  bool controller = false;  // ccNumber
  bool timing = false;
};

struct LoadedState {
  State state;    // upgraded to the present version
  float version;  // the chunk's own
  Layout layout;
};

enum class Refusal {
  empty,      // below 10 bytes: no chunk at all
  cutShort,   // too short for the old layout, and no size of today's
  noVersion,  // the old layout, with a version below 0.01
};

using ChunkReading = std::variant<LoadedState, Refusal>;

[[nodiscard]] std::array<std::byte, kChunkBytes> writeChunk(const State& state) noexcept;

[[nodiscard]] bool hasCurrentSize(std::size_t bytes) noexcept;

// Any bytes give a usable state or a refusal: numbers are finite, X rises from 0 to kGraphWidth, curves, Y and warps
// are 0 to 1, routes name graphs. What the chunk does not hold stays as it is in `present`.
[[nodiscard]] ChunkReading readChunk(std::span<const std::byte> chunk, const State& present = {},
                                     Locks locks = {}) noexcept;
// The same with the layout decided by the caller.
[[nodiscard]] ChunkReading readChunk(Layout layout, std::span<const std::byte> chunk, const State& present,
                                     Locks locks) noexcept;

}  // namespace model
