// SPDX-License-Identifier: MIT
#include "model/MidiBytes.h"

namespace model {
namespace {

constexpr std::size_t kChunkNameBytes = 4;
constexpr std::size_t kChunkLengthBytes = 4;

}  // namespace

void append(MidiBytes& bytes, std::span<const std::uint8_t> more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

void append(MidiBytes& bytes, std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

void appendBigEndian(MidiBytes& bytes, std::uint32_t number, int byteCount) {
  for (int shift = 8 * (byteCount - 1); shift >= 0; shift -= 8)
    bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

void appendVariable(MidiBytes& bytes, std::uint32_t number) {
  for (int shift = 21; shift > 0; shift -= 7)
    if (number >> shift != 0) bytes.push_back(static_cast<std::uint8_t>(0x80 | (number >> shift & 0x7F)));
  bytes.push_back(number & 0x7F);
}

void appendDelta(MidiBytes& track, std::int64_t ticks) {
  for (; ticks > kLongestDelta; ticks -= kLongestDelta) {
    appendVariable(track, kLongestDelta);
    appendMeta(track, kMetaText, {});
  }
  appendVariable(track, static_cast<std::uint32_t>(ticks));
}

void appendMeta(MidiBytes& track, std::uint8_t type, std::span<const std::uint8_t> content) {
  track.push_back(kMidiMeta);
  track.push_back(type);
  appendVariable(track, static_cast<std::uint32_t>(content.size()));
  append(track, content);
}

MidiBytes midiFile(std::uint32_t ticksPerBeat, MidiBytes track) {
  appendDelta(track, 0);
  appendMeta(track, kMetaEndOfTrack, {});
  MidiBytes file;
  file.reserve(2 * (kChunkNameBytes + kChunkLengthBytes) + kMidiFileHeadBytes + track.size());
  append(file, "MThd");
  appendBigEndian(file, kMidiFileHeadBytes, 4);
  appendBigEndian(file, 0, 2);  // format
  appendBigEndian(file, 1, 2);  // tracks
  appendBigEndian(file, ticksPerBeat, 2);
  append(file, "MTrk");
  appendBigEndian(file, static_cast<std::uint32_t>(track.size()), 4);
  append(file, track);
  return file;
}

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) noexcept {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : bytes) number = number << 8 | byte;
  return number;
}

std::optional<std::uint8_t> MidiByteReader::peek() const noexcept {
  return atEnd() ? std::nullopt : std::optional(bytes_[at_]);
}

std::optional<std::uint8_t> MidiByteReader::byte() noexcept {
  return atEnd() ? std::nullopt : std::optional(bytes_[at_++]);
}

std::optional<std::span<const std::uint8_t>> MidiByteReader::take(std::size_t count) noexcept {
  if (count > bytes_.size() - at_) return std::nullopt;
  at_ += count;
  return bytes_.subspan(at_ - count, count);
}

std::optional<std::uint32_t> MidiByteReader::variable() noexcept {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) {
    const auto next = byte();
    if (!next) return std::nullopt;
    number = number << 7 | (*next & 0x7FU);
    if (*next < 0x80) return number;
  }
  return std::nullopt;
}

std::optional<MidiByteReader::ChunkHead> MidiByteReader::chunkHead() noexcept {
  const auto head = take(kChunkNameBytes + kChunkLengthBytes);
  if (!head) return std::nullopt;
  return ChunkHead{{reinterpret_cast<const char*>(head->data()), kChunkNameBytes},
                   bigEndian(head->subspan(kChunkNameBytes))};
}

}  // namespace model
