// SPDX-License-Identifier: MIT
// A plug-in written straight against the binary interface: out = in x "Gain" + "Offset", and a third parameter
// "Offbeat" that is the number of a signal to raise in the next block. Its record's `object` is one of these: tests
// look into it, and give it the bad manners of plug-ins in the field.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "vst2/aeffect.h"

struct ForeignPlugin {
  struct Told {
    VstInt32 opcode = 0;
    VstIntPtr value = 0;
    float opt = 0.0f;
    bool operator==(const Told&) const = default;
  };
  struct Block {
    VstInt32 frames = 0;
    VstTimeInfo time;
    VstIntPtr processLevel = 0;
    float gain = 0.0f;
    std::vector<VstMidiEvent> notes;  // that came for this block
  };

  AEffect record;
  audioMasterCallback host = nullptr;
  std::array<float, 3> values = {1.0f, 0.0f, 0.0f};
  std::array<std::vector<float>, 2> delayed;
  std::string chunk = "state";
  bool writesLongTexts = false;  // of 300 characters
  VstEvents* toSend = nullptr;   // to the host in the next block
  std::vector<VstMidiEvent> notes;

  VstIntPtr versionWithoutEffect = 0;  // asked in the entry function
  VstIntPtr blockSizeInEntry = 0;      // the same, with the record that the host has not seen yet
  std::vector<Told> told;              // in order, process calls apart
  std::vector<Block> blocks;

  VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, float opt = 0.0f) {
    return host(&record, opcode, index, 0, nullptr, opt);
  }
};
