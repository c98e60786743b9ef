// SPDX-License-Identifier: MIT
// Preset files (.fxp): a state chunk behind a header of 60 bytes, whose numbers are big-endian.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace model {

inline constexpr std::size_t kPresetHeaderBytes = 60;
inline constexpr std::size_t kLargestPresetChunk = 4048576;
inline constexpr std::size_t kLargestPresetFile = kPresetHeaderBytes + kLargestPresetChunk;

[[nodiscard]] std::vector<std::byte> writePreset(std::span<const std::byte> chunk);

// The chunk inside the file's bytes, or nothing when its size is 0, above the limit or more than the file holds. Marks
// and ids are not looked at, so that presets of relatives load too.
[[nodiscard]] std::optional<std::span<const std::byte>> chunkOfPreset(std::span<const std::byte> file) noexcept;

}  // namespace model
