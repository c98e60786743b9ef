// SPDX-License-Identifier: MIT
#include "effect/MidiOut.h"

#include <cstddef>
#include <cstdlib>

#include "messages/Messages.h"

namespace effect {

MidiOut::MidiOut(Limits limits)
    : limits_(limits), list_(std::make_unique<EventList>()), outgoing_(static_cast<std::size_t>(kMostEvents)) {
  static_assert(offsetof(EventList, events) == offsetof(VstEvents, events));
  midiEvents.reserve(static_cast<std::size_t>(kMostEvents));
}

// Raises the count for one more event, or notes that the block is full.
bool MidiOut::hasRoom() noexcept {
  ++midiEventLast;
  if (limits_ == Limits::none || midiEventLast < kMostEvents) return true;
  untoldOverflow_ = midiEventLast;
  --midiEventLast;
  return false;
}

bool MidiOut::passThrough(const VstMidiEvent& event) noexcept {
  if (!hasRoom()) return false;
  midiEvents.push_back(event);
  return true;
}

void MidiOut::send(int status, int data1, int data2, int frame, int thinning) noexcept {
  const bool limited = limits_ == Limits::block;
  if (data1 == 0 || (limited && frame == lastMidiOffset)) return;
  const bool thins = thinning >= 2 && midiEventLast >= 1;
  if (thins && std::abs(frame - lastMidiOffset) < thinning) return;
  if (!hasRoom()) return;
  lastMidiOffset = frame;
  VstMidiEvent event;
  event.deltaFrames = frame;
  event.midiData[0] = static_cast<char>(status);
  event.midiData[1] = static_cast<char>(data1);
  event.midiData[2] = static_cast<char>(data2);
  midiEvents.push_back(event);
}

void MidiOut::tellOverflow() noexcept {
  if (untoldOverflow_ == 0) return;
  if (const long events = untoldOverflow_.take(0); events != 0) messages::eventsExceeded(events);
}

VstEvents* MidiOut::list() noexcept {
  if (midiEvents.empty()) return nullptr;
  for (std::size_t i = 0; i < midiEvents.size(); ++i) {
    const VstMidiEvent& from = midiEvents[i];
    VstMidiEvent& to = outgoing_[i];
    to = VstMidiEvent{};  // whatever else a passed-through event carried is dropped
    to.deltaFrames = from.deltaFrames;
    for (int byte = 0; byte < 3; ++byte) to.midiData[byte] = from.midiData[byte];
    list_->events[i] = reinterpret_cast<VstEvent*>(&to);
  }
  list_->numEvents = static_cast<VstInt32>(midiEvents.size());
  return reinterpret_cast<VstEvents*>(list_.get());
}

void MidiOut::moveToStart() noexcept {
  for (VstMidiEvent& event : midiEvents) event.deltaFrames = 0;
}

void MidiOut::clear() noexcept {
  midiEvents.clear();
  midiEventLast = -1;
  lastMidiOffset = -1;
}

}  // namespace effect
