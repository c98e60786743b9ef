// SPDX-License-Identifier: MIT
// Translation between MidiEvent and the event lists of the plug-in interface.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "host/MidiEvent.h"
#include "vst2/aeffect.h"

namespace modrift::host {

// The events of one block in the form that effProcessEvents takes. A plug-in may read the list until its process call
// has returned, so the block must live that long; it owns everything it points to.
class EventBlock {
 public:
  // `frame` counts from the start of the block. Messages without a byte are left out.
  explicit EventBlock(std::span<const MidiEvent> events);
  ~EventBlock();
  EventBlock(EventBlock&&) noexcept;
  EventBlock& operator=(EventBlock&&) noexcept;

  [[nodiscard]] VstEvents* list() noexcept;

 private:
  std::vector<VstMidiEvent> notes_;
  std::vector<VstMidiSysexEvent> dumps_;
  std::vector<std::vector<std::uint8_t>> dumpBytes_;
  std::unique_ptr<std::byte[]> list_;  // a VstEvents with as many entries as there are events
};

// Copies of the MIDI messages in a plug-in's list, `frame` counted from `blockStart`. Broken lists (null entries,
// negative counts, dumps without bytes) lose what is broken.
[[nodiscard]] std::vector<MidiEvent> copyEvents(const VstEvents* events, std::int64_t blockStart);

}  // namespace modrift::host
