// SPDX-License-Identifier: MIT
#include "host/HostListener.h"

#include <iterator>

#include "host/EventBlock.h"

namespace modrift::host {

void RecordingListener::automated(std::int64_t frame, VstInt32 parameter, float value) {
  const std::lock_guard lock(mutex_);
  automation_.push_back({frame, parameter, value});
}

void RecordingListener::eventsSent(std::int64_t frame, const VstEvents* events) {
  std::vector<MidiEvent> copies = copyEvents(events, frame);
  const std::lock_guard lock(mutex_);
  midi_.insert(midi_.end(), std::make_move_iterator(copies.begin()), std::make_move_iterator(copies.end()));
}

bool RecordingListener::wantsWindowSize(VstInt32 /*widthPx*/, VstInt32 /*heightPx*/) { return true; }

std::vector<RecordingListener::Automation> RecordingListener::automation() const {
  const std::lock_guard lock(mutex_);
  return automation_;
}

std::vector<MidiEvent> RecordingListener::midi() const {
  const std::lock_guard lock(mutex_);
  return midi_;
}

}  // namespace modrift::host
