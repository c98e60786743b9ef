// SPDX-License-Identifier: MIT
// Any bytes as a MIDI file: parsed, its promises checked, and written and read once more.
#include "cli/files/MidiFile.h"
#include "cli/files/MidiFileWriter.h"
#include "fuzz/Require.h"

namespace {

using namespace modrift;

void checkMessages(const cli::MidiSong& song) {
  std::int64_t last = 0;
  for (const cli::MidiFileMessage& message : song.messages) {
    require(message.tick >= last, "time rises");
    require(message.length == 2 || message.length == 3, "a message has two or three bytes");
    require(message.bytes[0] >= 0x80 && message.bytes[0] < 0xF0 && message.bytes[1] < 0x80 && message.bytes[2] < 0x80,
            "status and data bytes are such");
    last = message.tick;
  }
}

// What is written is read back, message by message.
void checkRoundTrip(const cli::MidiSong& song) {
  const auto events = cli::eventsOf(song, 120.0, 44100.0);
  const auto again = cli::parseMidiFile(cli::midiFileBytes(events, 120.0, 44100.0));
  const auto* read = std::get_if<cli::MidiSong>(&again);
  require(read != nullptr, "what was written is a MIDI file");
  require(cli::eventsOf(*read, 120.0, 44100.0) == events, "messages come back as they were");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto parsed = cli::parseMidiFile({data, size});
  if (const auto* fault = std::get_if<cli::MidiFileFault>(&parsed)) {
    require(fault->offset <= size && !fault->expected.empty(), "a fault has a place and a reason");
    return 0;
  }
  const auto& song = std::get<cli::MidiSong>(parsed);
  require(song.ticksPerUnit > 0.0, "time has a unit");
  checkMessages(song);
  constexpr std::int64_t kNear = 1'000'000'000;  // farther rests make long files, and there frames lose their last bits
  if (song.messages.empty() || song.messages.back().tick < kNear) checkRoundTrip(song);
  return 0;
}
