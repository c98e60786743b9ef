// SPDX-License-Identifier: MIT
#include "host/EventBlock.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>
#include <utility>

namespace modrift::host {
namespace {

// More in one list than any block can hold; a larger count is a broken list.
constexpr VstInt32 kMostEvents = 65536;
constexpr VstInt32 kMostDumpBytes = 1 << 20;

// Bytes of a short message by the high half of its status byte; below 8 there is no status and nothing to send.
constexpr std::array<std::size_t, 16> kLengths = {0, 0, 0, 0, 0, 0, 0, 0, 3, 3, 3, 3, 2, 2, 3, 1};

std::size_t messageLength(std::uint8_t status) noexcept {
  if (status == 0xF1 || status == 0xF3) return 2;
  if (status == 0xF2) return 3;
  return kLengths[status >> 4];
}

MidiEvent copyShort(const VstEvent& event, std::int64_t blockStart) {
  VstMidiEvent midi;
  std::memcpy(&midi, static_cast<const void*>(&event), sizeof midi);
  std::array<std::uint8_t, 4> bytes;
  std::memcpy(bytes.data(), midi.midiData, bytes.size());
  const auto length = static_cast<std::ptrdiff_t>(messageLength(bytes[0]));
  return {blockStart + midi.deltaFrames, {bytes.begin(), bytes.begin() + length}};
}

MidiEvent copyDump(const VstEvent& event, std::int64_t blockStart) {
  VstMidiSysexEvent dump;
  // The record is longer than the common head that `event` names; the plug-in's own is this long.
  std::memcpy(&dump, static_cast<const void*>(&event), sizeof dump);
  if (dump.sysexDump == nullptr || dump.dumpBytes <= 0 || dump.dumpBytes > kMostDumpBytes) return {};
  const auto* first = reinterpret_cast<const std::uint8_t*>(dump.sysexDump);
  return {blockStart + dump.deltaFrames, {first, first + dump.dumpBytes}};
}

}  // namespace

EventBlock::EventBlock(std::span<const MidiEvent> events) {
  const auto isShort = [](const MidiEvent& event) { return event.bytes.size() <= 3; };
  notes_.reserve(events.size());  // the list points into these three, so they must never move
  dumps_.reserve(events.size());
  dumpBytes_.reserve(events.size());
  // Bytes and not an array of records, because the list's true length stands only in its count.
  const std::size_t entryBytes = events.size() * sizeof(VstEvent*);
  list_ = std::make_unique<std::byte[]>(sizeof(VstEvents) + entryBytes);
  auto* head = new (list_.get()) VstEvents;
  auto** entries = reinterpret_cast<VstEvent**>(list_.get() + offsetof(VstEvents, events));
  for (const MidiEvent& event : events) {
    if (event.bytes.empty()) continue;
    VstEvent*& entry = entries[head->numEvents++];
    if (isShort(event)) {
      VstMidiEvent& note = notes_.emplace_back();
      note.deltaFrames = static_cast<VstInt32>(event.frame);
      std::memcpy(note.midiData, event.bytes.data(), event.bytes.size());
      entry = reinterpret_cast<VstEvent*>(&note);
    } else {
      std::vector<std::uint8_t>& bytes = dumpBytes_.emplace_back(event.bytes);
      VstMidiSysexEvent& dump = dumps_.emplace_back();
      dump.deltaFrames = static_cast<VstInt32>(event.frame);
      dump.dumpBytes = static_cast<VstInt32>(bytes.size());
      dump.sysexDump = reinterpret_cast<char*>(bytes.data());
      entry = reinterpret_cast<VstEvent*>(&dump);
    }
  }
}

EventBlock::~EventBlock() = default;
EventBlock::EventBlock(EventBlock&&) noexcept = default;
EventBlock& EventBlock::operator=(EventBlock&&) noexcept = default;

VstEvents* EventBlock::list() noexcept { return std::launder(reinterpret_cast<VstEvents*>(list_.get())); }

std::vector<MidiEvent> copyEvents(const VstEvents* events, std::int64_t blockStart) {
  std::vector<MidiEvent> copies;
  if (events == nullptr || events->numEvents < 0 || events->numEvents > kMostEvents) return copies;
  const auto* entries =
      reinterpret_cast<VstEvent* const*>(reinterpret_cast<const std::byte*>(events) + offsetof(VstEvents, events));
  for (const VstEvent* event : std::span(entries, static_cast<std::size_t>(events->numEvents))) {
    if (event == nullptr) continue;
    MidiEvent copy;
    if (event->type == kVstMidiType) copy = copyShort(*event, blockStart);
    if (event->type == kVstSysExType) copy = copyDump(*event, blockStart);
    if (!copy.bytes.empty()) copies.push_back(std::move(copy));
  }
  return copies;
}

}  // namespace modrift::host
