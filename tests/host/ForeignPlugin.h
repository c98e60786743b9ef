// What the test plug-in and the tests say to each other behind the interface's back, by effVendorSpecific.
#pragma once

#include <cstdint>
#include <vector>

#include "vst2/aeffect.h"

namespace foreign {

enum Request : VstInt32 {
  askReport = 1,   // answers a Report*
  writeLongTexts,  // texts of 300 characters from now on
  dropReplacing,   // leaves only the adding process function
  dropProcessing,  // leaves none
  askHost,         // [ptr] HostQuestion*: the plug-in asks the host and writes the answer
  sendNextBlock,   // [ptr] VstEvents* to send to the host in the next block
};

struct HostQuestion {
  VstInt32 opcode = 0;
  VstInt32 index = 0;
  VstIntPtr value = 0;
  void* ptr = nullptr;
  float opt = 0.0f;
  bool withoutEffect = false;
  VstIntPtr answer = 0;
};

struct Told {
  VstInt32 opcode = 0;
  VstIntPtr value = 0;
  float opt = 0.0f;
};

struct Block {
  VstInt32 frames = 0;
  VstTimeInfo time;
  VstIntPtr processLevel = 0;
  float gain = 0.0f;
  std::vector<VstMidiEvent> notes;  // that came for this block
};

struct Report {
  VstIntPtr versionWithoutEffect = 0;  // asked in the entry function
  VstIntPtr blockSizeInEntry = 0;      // the same, with the record that the host has not seen yet
  std::vector<Told> told;              // in order, process calls apart
  std::vector<Block> blocks;
};

}  // namespace foreign
