// SPDX-License-Identifier: MIT
// What a plug-in says to its host of its own accord. The program derives from HostListener to hear it; every function
// does nothing by default.
//
// Calls come on whatever thread the plug-in uses: automation and MIDI mostly inside a block on the audio thread, window
// and display requests on the user-interface thread. A function that throws loses what it had to say: exceptions do not
// pass into the plug-in.
#pragma once

#include <cstdint>
#include <mutex>
#include <vector>

#include "host/MidiEvent.h"
#include "vst2/aeffect.h"

namespace modrift::host {

class HostListener {
 public:
  virtual ~HostListener() = default;

  // `frame` is the first frame of the block in process, or of the next one between blocks; below 0 before the stream.
  virtual void automated(std::int64_t /*frame*/, VstInt32 /*parameter*/, float /*value*/) {}
  virtual void editBegins(VstInt32 /*parameter*/) {}
  virtual void editEnds(VstInt32 /*parameter*/) {}
  // The list is the plug-in's and gone after the call; copyEvents() copies it.
  virtual void eventsSent(std::int64_t /*frame*/, const VstEvents* /*events*/) {}
  virtual bool wantsWindowSize(VstInt32 /*widthPx*/, VstInt32 /*heightPx*/) { return false; }  // true: done
  virtual void ioChanged() {}       // channel counts or latency are new
  virtual void displayChanged() {}  // texts, names or programs are new
  virtual void idle() {}
};

// Keeps everything in memory. For offline work and tests; it locks and allocates, so not for live audio.
class RecordingListener : public HostListener {
 public:
  struct Automation {
    std::int64_t frame = 0;
    VstInt32 parameter = 0;
    float value = 0.0f;
  };

  void automated(std::int64_t frame, VstInt32 parameter, float value) override;
  void eventsSent(std::int64_t frame, const VstEvents* events) override;
  bool wantsWindowSize(VstInt32 widthPx, VstInt32 heightPx) override;

  // Copies, because the plug-in may have threads that go on talking.
  [[nodiscard]] std::vector<Automation> automation() const;
  [[nodiscard]] std::vector<MidiEvent> midi() const;

 private:
  mutable std::mutex mutex_;
  std::vector<Automation> automation_;
  std::vector<MidiEvent> midi_;
};

}  // namespace modrift::host
