// SPDX-License-Identifier: MIT
// The bytes of Standard MIDI Files, shared by all that read and write them: chunks, big-endian numbers, and numbers of
// seven bits a byte. Pure, and safe for any bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace model {

using MidiBytes = std::vector<std::uint8_t>;

// Status bytes from kMidiSystem on go to no channel; the three behind it are the ones that a file has a form for.
inline constexpr std::uint8_t kMidiSystem = 0xF0;
inline constexpr std::uint8_t kMidiSysex = 0xF0, kMidiEscape = 0xF7, kMidiMeta = 0xFF;
inline constexpr std::uint8_t kMetaText = 0x01, kMetaTrackName = 0x03, kMetaEndOfTrack = 0x2F, kMetaTempo = 0x51;

inline constexpr std::size_t kMidiFileHeadBytes = 6;        // format, tracks, division
inline constexpr std::uint32_t kLongestDelta = 0x0FFFFFFF;  // four bytes of seven bits

// --- Writing

void append(MidiBytes& bytes, std::span<const std::uint8_t> more);
void append(MidiBytes& bytes, std::string_view text);
// The lowest `byteCount` bytes, highest first.
void appendBigEndian(MidiBytes& bytes, std::uint32_t number, int byteCount);
// Seven bits a byte, highest first; all but the last byte have the top bit set. At most kLongestDelta.
void appendVariable(MidiBytes& bytes, std::uint32_t number);
// The ticks before an event. Rests beyond kLongestDelta are made of empty texts, which mean nothing.
void appendDelta(MidiBytes& track, std::int64_t ticks);
void appendMeta(MidiBytes& track, std::uint8_t type, std::span<const std::uint8_t> content);

// The whole file of format 0 round the events of its track, which get their end here. `ticksPerBeat` is below 32768.
[[nodiscard]] MidiBytes midiFile(std::uint32_t ticksPerBeat, MidiBytes track);

// --- Reading

// `bytes` are at most four, highest first.
[[nodiscard]] std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) noexcept;

// Takes bytes off the front of a span, and never more than there are.
class MidiByteReader {
 public:
  // `offset` is where the span starts in the file.
  explicit MidiByteReader(std::span<const std::uint8_t> bytes, std::size_t offset = 0) noexcept
      : bytes_(bytes), offset_(offset) {}

  [[nodiscard]] bool atEnd() const noexcept { return at_ == bytes_.size(); }
  [[nodiscard]] std::size_t offset() const noexcept { return offset_ + at_; }  // in the file

  [[nodiscard]] std::optional<std::uint8_t> peek() const noexcept;
  std::optional<std::uint8_t> byte() noexcept;
  std::optional<std::span<const std::uint8_t>> take(std::size_t count) noexcept;
  // As appendVariable writes it; nothing beyond four bytes.
  std::optional<std::uint32_t> variable() noexcept;

  struct ChunkHead {
    std::string_view name;  // four letters
    std::uint32_t length;   // of what follows, as the file says
  };
  std::optional<ChunkHead> chunkHead() noexcept;

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t offset_;
  std::size_t at_ = 0;
};

}  // namespace model
