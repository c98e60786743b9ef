// SPDX-License-Identifier: MIT
// Shape files (.shp): one graph's points. Today's form has 2056 bytes and a mark; any other size is the form before it,
// with points in pixels.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "model/Graph.h"

namespace model {

inline constexpr std::size_t kShapeBytes = 2056;
inline constexpr std::size_t kSmallestOldShape = 1544;
inline constexpr std::size_t kLargestShapeFile = 65536;  // far beyond both forms

[[nodiscard]] std::array<std::byte, kShapeBytes> writeShape(const GraphPoints& points) noexcept;

// Values out of range are mended one by one; nothing is read from fewer bytes than the form has.
[[nodiscard]] std::optional<GraphPoints> readShape(std::span<const std::byte> file) noexcept;

}  // namespace model
