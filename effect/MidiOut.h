// SPDX-License-Identifier: MIT
// The MIDI that leaves the effect: passed-through events and the controller stream of the cutoff, block by block.
//
// [audio] Allocates at construction only. The MIDI file export has one of its own, without the block's limits.
#pragma once

#include <memory>
#include <vector>

#include "threads/Shared.h"
#include "vst2/aeffect.h"

namespace effect {

inline constexpr int kControllerOnChannel1 = 0xb0;  // status byte

class MidiOut {
 public:
  static constexpr long kMostEvents = 2048;  // of a block, passed-through ones included

  enum class Limits {
    block,  // as hosts bear it: kMostEvents per block, one controller event per frame
    none,   // everything, for a file; memory grows
  };

  explicit MidiOut(Limits limits);

  // Appends an event as it came; false when the block is full, which `tellOverflow` tells.
  bool passThrough(const VstMidiEvent& event) noexcept;
  // Queues a controller event at `frame`. `thinning` is the least distance in frames from the one before; below 2
  // there is none, and the first two of a block always pass. A `data1` of 0 sends nothing.
  void send(int status, int data1, int data2, int frame, int thinning) noexcept;
  // The block's list as hosts take it, valid until `clear`; null when there are no events.
  [[nodiscard]] VstEvents* list() noexcept;
  // Puts all events at the first frame of the next block, for a block that could not send them.
  void moveToStart() noexcept;
  // Ends the block. Capacity stays.
  void clear() noexcept;
  // [host, ui] Says on standard error that blocks were full, once for all since the last time.
  void tellOverflow() noexcept;

  std::vector<VstMidiEvent> midiEvents;  // in order of arrival
  long midiEventLast = -1;               // index of the last event, -1 for none
  int lastMidiOffset = -1;               // frame of the last controller event, -1 at the start of a block

 private:
  // The head of VstEvents with room for a whole block.
  struct EventList {
    VstInt32 numEvents = 0;
    VstIntPtr reserved = 0;
    VstEvent* events[kMostEvents] = {};
  };

  bool hasRoom() noexcept;

  Limits limits_;
  Shared<long> untoldOverflow_{0};  // the count of events at the last full block that nobody has told of; 0 for none
  std::unique_ptr<EventList> list_;
  std::vector<VstMidiEvent> outgoing_;
};

}  // namespace effect
