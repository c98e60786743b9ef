// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/files/MidiFile.h"
#include "cli/files/MidiFileWriter.h"

namespace modrift::cli {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes join(std::initializer_list<Bytes> parts) {
  Bytes whole;
  for (const Bytes& part : parts) whole.insert(whole.end(), part.begin(), part.end());
  return whole;
}

Bytes head(std::uint8_t format, std::uint8_t tracks, std::uint8_t division1 = 0x01, std::uint8_t division2 = 0xe0) {
  return {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, format, 0, tracks, division1, division2};
}

Bytes chunk(const char* name, const Bytes& content) {
  return join({Bytes(name, name + 4),
               {0, 0, static_cast<std::uint8_t>(content.size() >> 8), static_cast<std::uint8_t>(content.size())},
               content});
}

Bytes track(const Bytes& content) { return chunk("MTrk", content); }

MidiSong songOf(const Bytes& bytes) {
  const auto result = parseMidiFile(bytes);
  if (const auto* fault = std::get_if<MidiFileFault>(&result)) {
    ADD_FAILURE() << fault->offset << ": " << fault->expected;
    return {};
  }
  return std::get<MidiSong>(result);
}

TEST(MidiFile, ReadsRunningStatusDumpsAndMetaEvents) {
  const Bytes content = {0,    0xff, 0x51, 3,  7,    0xa1, 0x20,                 // a tempo
                         0x81, 0x00, 0x90, 60, 100,                              // at 128
                         5,    60,   0,                                          // the same status
                         0,    0xf0, 3,    1,  2,    0xf7, 0,    0xf7, 1, 0xfe,  // a dump and an escape
                         1,    64,   1,                                          // and the status once more
                         2,    0xc3, 9,    0,  0xff, 0x2f, 0,    99,   99};
  const MidiSong song = songOf(join({head(0, 1), chunk("Xtra", {1, 2, 3}), track(content), {7, 7}}));
  EXPECT_FALSE(song.inSeconds);
  EXPECT_EQ(song.ticksPerUnit, 480.0);
  const std::vector<host::MidiEvent> expected = {
      {128, {0x90, 60, 100}}, {133, {0x90, 60, 0}}, {134, {0x90, 64, 1}}, {136, {0xc3, 9}}};
  EXPECT_EQ(eventsOf(song, 60.0, 480.0), expected);  // a frame a tick
}

TEST(MidiFile, MergesTracksInTimeAndInTheFilesOrder) {
  const MidiSong song = songOf(join(
      {head(1, 2), track({0, 0x90, 1, 1, 10, 0x90, 2, 1}), track({5, 0x91, 3, 1, 5, 0x91, 4, 1, 0, 0xff, 0x2f, 0})}));
  ASSERT_EQ(song.messages.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(song.messages[i].bytes[1], (std::array{1, 3, 2, 4})[i]);
}

TEST(MidiFile, CountsBeatsByTheGivenTempoAndFramesOfFilmByTheClock) {
  const Bytes note = track({0x83, 0x60, 0x90, 60, 1});  // tick 480
  EXPECT_EQ(eventsOf(songOf(join({head(0, 1), note})), 90.0, 44100.0)[0].frame, 29400);
  for (const auto& [number, frame] : {std::pair{24, 22050}, {25, 21168}, {29, 17658}, {30, 17640}}) {
    const MidiSong song = songOf(join({head(0, 1, static_cast<std::uint8_t>(256 - number), 40), note}));
    EXPECT_TRUE(song.inSeconds);
    EXPECT_EQ(eventsOf(song, 90.0, 44100.0)[0].frame, frame) << number;
  }
}

TEST(MidiFile, IsRefusedWithAReason) {
  const Bytes note = track({0, 0x90, 60, 1}), one = head(0, 1);
  const std::pair<Bytes, const char*> rows[] = {
      {{}, "a Standard MIDI File"},
      {Bytes(100, 'M'), "a Standard MIDI File"},
      {{'M', 'T', 'h', 'd', 255, 255, 255, 255, 0, 0, 0, 1, 1, 1}, "a head of six bytes"},
      {join({head(2, 1), note}), "format 0 or 1"},
      {join({head(0, 1, 0, 0), note}), "a division into ticks"},
      {join({head(0, 1, 0xe8, 0), note}), "a division into ticks"},
      {join({head(0, 1, 0xe9, 40), note}), "a division into ticks"},
      {join({head(1, 2), note}), "as many tracks as the file says"},
      {join({one, {'M', 'T', 'r', 'k', 0x7f, 255, 255, 255}}), "as many bytes as the chunk says"},
      {join({one, track({0, 60, 1})}), "a status byte"},
      {join({one, track({0, 0x90, 60})}), "a data byte below 128"},
      {join({one, track({0, 0x90, 0x90, 1})}), "a data byte below 128"},
      {join({one, track({0})}), "a message behind the time"},
      {join({one, track({128, 128, 128, 128, 0, 0x90, 1, 1})}), "a time of at most four bytes"},
      {join({one, track({0, 0xf8})}), "a message to a channel, a dump or a meta event"},
      {join({one, track({0, 0xf0, 0xff, 0xff, 0xff, 0x7f})}), "as many bytes as the event says"},
      {Bytes(kMostMidiFileBytes + 1), "a MIDI file of at most 16 MiB"}};
  for (const auto& [bytes, expected] : rows) {
    const auto result = parseMidiFile(bytes);
    const auto* const fault = std::get_if<MidiFileFault>(&result);
    EXPECT_EQ(fault ? fault->expected : "none", expected);
  }
  EXPECT_TRUE(songOf(head(1, 0)).messages.empty());
}

TEST(MidiFileWriter, KeepsEveryFrameWhereTheFormatCan) {
  for (const auto& [tempoBpm, rateHz] : {std::pair{87.0, 44100.0}, {200.0, 96000.0}, {999.0, 22050.0}}) {
    std::vector<host::MidiEvent> events;
    for (std::int64_t frame = 0; frame < 3000; ++frame) events.push_back({frame * 7, {0xb0, 74, 1}});
    EXPECT_TRUE(eventsOf(songOf(midiFileBytes(events, tempoBpm, rateHz)), tempoBpm, rateHz) == events) << tempoBpm;
  }
}

TEST(MidiFileWriter, WritesOddMessagesLongRestsAndWhatCameBeforeTheStart) {
  const std::vector<host::MidiEvent> events = {{50, {0xf0, 1, 2, 0xf7}},    {-20, {0x90, 1, 1}}, {60, {0xf8}}, {70, {}},
                                               {40'000'000'000, {0xc1, 5}}, {80, {5, 5}}};
  const MidiSong song = songOf(midiFileBytes(events, 10000.0, 44100.0));
  ASSERT_EQ(song.messages.size(), 2U);
  EXPECT_EQ(song.messages[0].tick, 0);
  EXPECT_EQ(eventsOf(song, 10000.0, 44100.0)[1].frame, 40'000'000'000);
}

}  // namespace
}  // namespace modrift::cli
