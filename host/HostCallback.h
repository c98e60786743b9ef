// SPDX-License-Identifier: MIT
// The host's end of the interface: what a plug-in may ask of its host, and the facts the answers come from.
//
// Every Plugin owns one HostFacts and hangs it on the effect's record, where the callback finds it again. While the
// entry function runs there is no record yet; then the thread remembers which instance is being made.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

#include "host/HostListener.h"
#include "vst2/aeffect.h"

namespace modrift::host {

// Written between blocks by the thread that runs them, read by the callback.
struct HostFacts {
  HostListener* listener = nullptr;  // never null once a Plugin owns the record
  double sampleRateHz = 44100.0;
  VstInt32 blockFrames = 512;
  VstInt32 inputLatencyFrames = 0;  // of the audio device; offline there is none
  VstInt32 outputLatencyFrames = 0;
  VstProcessLevels processLevel = kVstProcessLevelUser;
  VstAutomationStates automationState = kVstAutomationOff;
  std::optional<VstTimeInfo> time;      // at the first frame of the block; nothing: the host gives no time
  std::atomic<std::int64_t> frame = 0;  // of the stream, where the block in process starts; also asked for by editors
  std::string directory;                // the folder that holds the plug-in
};

// Says whose calls those without a record are, on this thread and in this object's lifetime.
class InTheMaking {
 public:
  explicit InTheMaking(HostFacts& facts) noexcept;
  ~InTheMaking();
  InTheMaking(const InTheMaking&) = delete;
  InTheMaking& operator=(const InTheMaking&) = delete;

 private:
  HostFacts* outer_;  // a plug-in that hosts others may make one inside its own entry function
};

// [any thread] Handed to every plug-in. Lets no exception out; answers 0 to what it does not know.
VstIntPtr VSTCALLBACK hostCallback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) noexcept;

}  // namespace modrift::host
