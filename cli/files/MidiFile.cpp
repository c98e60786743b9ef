// SPDX-License-Identifier: MIT
#include "cli/files/MidiFile.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "cli/values/Numbers.h"
#include "model/MidiBytes.h"

namespace modrift::cli {
namespace {

using model::MidiByteReader;

// SMPTE frames a second by the number in the file; 29 stands for the drop-frame count of colour television.
struct FrameRate {
  int number;
  double perSecond;
};
constexpr auto kFrameRates = std::to_array<FrameRate>({{24, 24.0}, {25, 25.0}, {29, 30000.0 / 1001.0}, {30, 30.0}});

class TrackParser {
 public:
  TrackParser(MidiByteReader track, std::vector<MidiFileMessage>& messages) : track_(track), messages_(messages) {}

  std::optional<MidiFileFault> parse() {
    while (!ended_ && !track_.atEnd()) {
      const auto delta = track_.variable();
      if (!delta) return fault("a time of at most four bytes");
      tick_ += *delta;
      if (auto broken = parseEvent()) return broken;
    }
    return std::nullopt;
  }

 private:
  [[nodiscard]] MidiFileFault fault(std::string expected) const { return {track_.offset(), std::move(expected)}; }

  std::optional<MidiFileFault> parseEvent() {
    const auto first = track_.peek();
    if (!first) return fault("a message behind the time");
    const bool hasStatus = *first >= 0x80;
    if (hasStatus) track_.byte();
    if (hasStatus && *first >= model::kMidiSystem) return skipSystemEvent(*first);
    if (hasStatus) runningStatus_ = *first;
    return runningStatus_ == 0 ? fault("a status byte") : parseMessage();
  }

  std::optional<MidiFileFault> parseMessage() {
    const int kind = runningStatus_ >> 4;
    MidiFileMessage message{tick_, {runningStatus_}, static_cast<std::uint8_t>(kind == 0xC || kind == 0xD ? 2 : 3)};
    for (std::size_t i = 1; i < message.length; ++i) {
      const auto data = track_.peek();
      if (!data || *data >= 0x80) return fault("a data byte below 128");
      message.bytes[i] = *data;
      track_.byte();
    }
    messages_.push_back(message);
    return std::nullopt;
  }

  std::optional<MidiFileFault> skipSystemEvent(std::uint8_t status) {
    if (status == model::kMidiMeta) {
      const auto type = track_.byte();
      ended_ = type == model::kMetaEndOfTrack;
    } else if (status != model::kMidiSysex && status != model::kMidiEscape) {
      return fault("a message to a channel, a dump or a meta event");
    }
    const auto length = track_.variable();
    if (!length || !track_.take(*length)) return fault("as many bytes as the event says");
    return std::nullopt;
  }

  MidiByteReader track_;
  std::vector<MidiFileMessage>& messages_;
  std::int64_t tick_ = 0;
  std::uint8_t runningStatus_ = 0;
  bool ended_ = false;
};

// The time unit of the division's two bytes. False if there is none such.
bool readDivision(std::span<const std::uint8_t> division, MidiSong& song) {
  if (division[0] < 0x80) {
    song.ticksPerUnit = model::bigEndian(division);
    return song.ticksPerUnit > 0.0;
  }
  const int number = 256 - division[0];  // stored as a negative number
  const auto* const rate = std::find_if(kFrameRates.begin(), kFrameRates.end(),
                                        [number](const FrameRate& known) { return known.number == number; });
  if (rate == kFrameRates.end() || division[1] == 0) return false;
  song.inSeconds = true;
  song.ticksPerUnit = rate->perSecond * division[1];
  return true;
}

// The tracks among the chunks; others are passed over.
std::optional<MidiFileFault> parseTracks(MidiByteReader file, std::uint32_t tracks, MidiSong& song) {
  while (tracks > 0) {
    const auto head = file.chunkHead();
    if (!head) return MidiFileFault{file.offset(), "as many tracks as the file says"};
    const std::size_t start = file.offset();
    const auto chunk = file.take(head->length);
    if (!chunk) return MidiFileFault{start, "as many bytes as the chunk says"};
    if (head->name != "MTrk") continue;
    --tracks;
    if (auto fault = TrackParser(MidiByteReader(*chunk, start), song.messages).parse()) return fault;
  }
  return std::nullopt;
}

}  // namespace

std::variant<MidiSong, MidiFileFault> parseMidiFile(std::span<const std::uint8_t> bytes) {
  if (bytes.size() > kMostMidiFileBytes) return MidiFileFault{0, "a MIDI file of at most 16 MiB"};
  MidiByteReader file(bytes);
  const auto head = file.chunkHead();
  if (!head || head->name != "MThd") return MidiFileFault{0, "a Standard MIDI File"};
  const std::size_t start = file.offset();
  const auto facts = file.take(head->length);
  if (!facts || facts->size() < model::kMidiFileHeadBytes) return MidiFileFault{start, "a head of six bytes"};
  if (model::bigEndian(facts->first(2)) > 1) return MidiFileFault{start, "format 0 or 1"};
  MidiSong song;
  if (!readDivision(facts->subspan(4, 2), song)) return MidiFileFault{start + 4, "a division into ticks"};
  if (auto fault = parseTracks(file, model::bigEndian(facts->subspan(2, 2)), song)) return std::move(*fault);
  std::stable_sort(song.messages.begin(), song.messages.end(),
                   [](const MidiFileMessage& a, const MidiFileMessage& b) { return a.tick < b.tick; });
  return song;
}

std::vector<host::MidiEvent> eventsOf(const MidiSong& song, double tempoBpm, double sampleRateHz) {
  const double unitSeconds = song.inSeconds ? 1.0 : 60.0 / tempoBpm;
  std::vector<host::MidiEvent> events;
  events.reserve(song.messages.size());
  for (const MidiFileMessage& message : song.messages) {
    const double frame = static_cast<double>(message.tick) / song.ticksPerUnit * unitSeconds * sampleRateHz;
    events.push_back({static_cast<std::int64_t>(std::min(std::round(frame), kMostFrames)),
                      {message.bytes.begin(), message.bytes.begin() + message.length}});
  }
  return events;
}

}  // namespace modrift::cli
