// SPDX-License-Identifier: MIT
#include "model/PresetFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace model {
namespace {

constexpr std::size_t kSizeOffset = 4;  // of the bytes behind this field
constexpr std::size_t kBehindSize = kPresetHeaderBytes - 8;
constexpr std::size_t kChunkSizeOffset = 56;

// Mark, size, format mark and version, id, plug-in version, program count; the program's name in 28 bytes; chunk size.
constexpr std::string_view kHeader{
    "CcnK\0\0\0\0FPCh\0\0\0\1AMBa\0\0\0\1\0\0\0\1"
    "(Custom)            \0\0\0\0\0\0\0\0"
    "\0\0\0\0",
    kPresetHeaderBytes};

void putBigEndian(std::span<std::byte> bytes, std::size_t offset, std::size_t value) noexcept {
  for (std::size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<std::byte>(value >> (8 * (3 - i)));
}

std::uint32_t bigEndianAt(std::span<const std::byte> bytes, std::size_t offset) noexcept {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | std::to_integer<std::uint32_t>(bytes[offset + i]);
  return value;
}

}  // namespace

std::vector<std::byte> writePreset(std::span<const std::byte> chunk) {
  std::vector<std::byte> file(kPresetHeaderBytes + chunk.size());
  std::ranges::copy(std::as_bytes(std::span(kHeader)), file.begin());
  putBigEndian(file, kSizeOffset, chunk.size() + kBehindSize);
  putBigEndian(file, kChunkSizeOffset, chunk.size());
  std::ranges::copy(chunk, file.begin() + kPresetHeaderBytes);
  return file;
}

std::optional<std::span<const std::byte>> chunkOfPreset(std::span<const std::byte> file) noexcept {
  if (file.size() < kPresetHeaderBytes) return std::nullopt;
  const std::size_t size = bigEndianAt(file, kChunkSizeOffset);
  if (size < 1 || size > kLargestPresetChunk || size > file.size() - kPresetHeaderBytes) return std::nullopt;
  return file.subspan(kPresetHeaderBytes, size);
}

}  // namespace model
