// SPDX-License-Identifier: MIT
// Pins the VST 2.4 records of 64-bit builds: one wrong byte here and no host understands us.
#include <cstddef>
#include <type_traits>

#include "vst2/aeffect.h"

static_assert(sizeof(void*) == 8, "the offsets below are those of 64-bit builds");

#define PIN_SIZE(record, bytes) \
  static_assert(sizeof(record) == (bytes) && std::is_standard_layout_v<record> && std::is_trivially_copyable_v<record>)
#define PIN_FIELD(record, field, offset) static_assert(offsetof(record, field) == (offset))

PIN_SIZE(AEffect, 192);
PIN_FIELD(AEffect, magic, 0);
PIN_FIELD(AEffect, dispatcher, 8);
PIN_FIELD(AEffect, process, 16);
PIN_FIELD(AEffect, setParameter, 24);
PIN_FIELD(AEffect, getParameter, 32);
PIN_FIELD(AEffect, numPrograms, 40);
PIN_FIELD(AEffect, numParams, 44);
PIN_FIELD(AEffect, numInputs, 48);
PIN_FIELD(AEffect, numOutputs, 52);
PIN_FIELD(AEffect, flags, 56);
PIN_FIELD(AEffect, resvd1, 64);
PIN_FIELD(AEffect, resvd2, 72);
PIN_FIELD(AEffect, initialDelay, 80);
PIN_FIELD(AEffect, realQualities, 84);
PIN_FIELD(AEffect, offQualities, 88);
PIN_FIELD(AEffect, ioRatio, 92);
PIN_FIELD(AEffect, object, 96);
PIN_FIELD(AEffect, user, 104);
PIN_FIELD(AEffect, uniqueID, 112);
PIN_FIELD(AEffect, version, 116);
PIN_FIELD(AEffect, processReplacing, 120);
PIN_FIELD(AEffect, processDoubleReplacing, 128);
PIN_FIELD(AEffect, future, 136);

PIN_SIZE(ERect, 8);
PIN_FIELD(ERect, top, 0);
PIN_FIELD(ERect, left, 2);
PIN_FIELD(ERect, bottom, 4);
PIN_FIELD(ERect, right, 6);

PIN_SIZE(VstEvent, 32);
PIN_FIELD(VstEvent, type, 0);
PIN_FIELD(VstEvent, byteSize, 4);
PIN_FIELD(VstEvent, deltaFrames, 8);
PIN_FIELD(VstEvent, flags, 12);
PIN_FIELD(VstEvent, data, 16);

PIN_SIZE(VstEvents, 32);
PIN_FIELD(VstEvents, numEvents, 0);
PIN_FIELD(VstEvents, reserved, 8);
PIN_FIELD(VstEvents, events, 16);

PIN_SIZE(VstMidiEvent, 32);
PIN_FIELD(VstMidiEvent, type, 0);
PIN_FIELD(VstMidiEvent, byteSize, 4);
PIN_FIELD(VstMidiEvent, deltaFrames, 8);
PIN_FIELD(VstMidiEvent, flags, 12);
PIN_FIELD(VstMidiEvent, noteLength, 16);
PIN_FIELD(VstMidiEvent, noteOffset, 20);
PIN_FIELD(VstMidiEvent, midiData, 24);
PIN_FIELD(VstMidiEvent, detune, 28);
PIN_FIELD(VstMidiEvent, noteOffVelocity, 29);
PIN_FIELD(VstMidiEvent, reserved1, 30);
PIN_FIELD(VstMidiEvent, reserved2, 31);

PIN_SIZE(VstMidiSysexEvent, 48);
PIN_FIELD(VstMidiSysexEvent, type, 0);
PIN_FIELD(VstMidiSysexEvent, byteSize, 4);
PIN_FIELD(VstMidiSysexEvent, deltaFrames, 8);
PIN_FIELD(VstMidiSysexEvent, flags, 12);
PIN_FIELD(VstMidiSysexEvent, dumpBytes, 16);
PIN_FIELD(VstMidiSysexEvent, resvd1, 24);
PIN_FIELD(VstMidiSysexEvent, sysexDump, 32);
PIN_FIELD(VstMidiSysexEvent, resvd2, 40);

PIN_SIZE(VstTimeInfo, 88);
PIN_FIELD(VstTimeInfo, samplePos, 0);
PIN_FIELD(VstTimeInfo, sampleRate, 8);
PIN_FIELD(VstTimeInfo, nanoSeconds, 16);
PIN_FIELD(VstTimeInfo, ppqPos, 24);
PIN_FIELD(VstTimeInfo, tempo, 32);
PIN_FIELD(VstTimeInfo, barStartPos, 40);
PIN_FIELD(VstTimeInfo, cycleStartPos, 48);
PIN_FIELD(VstTimeInfo, cycleEndPos, 56);
PIN_FIELD(VstTimeInfo, timeSigNumerator, 64);
PIN_FIELD(VstTimeInfo, timeSigDenominator, 68);
PIN_FIELD(VstTimeInfo, smpteOffset, 72);
PIN_FIELD(VstTimeInfo, smpteFrameRate, 76);
PIN_FIELD(VstTimeInfo, samplesToNextClock, 80);
PIN_FIELD(VstTimeInfo, flags, 84);

PIN_SIZE(VstParameterProperties, 152);
PIN_FIELD(VstParameterProperties, stepFloat, 0);
PIN_FIELD(VstParameterProperties, smallStepFloat, 4);
PIN_FIELD(VstParameterProperties, largeStepFloat, 8);
PIN_FIELD(VstParameterProperties, label, 12);
PIN_FIELD(VstParameterProperties, flags, 76);
PIN_FIELD(VstParameterProperties, minInteger, 80);
PIN_FIELD(VstParameterProperties, maxInteger, 84);
PIN_FIELD(VstParameterProperties, stepInteger, 88);
PIN_FIELD(VstParameterProperties, largeStepInteger, 92);
PIN_FIELD(VstParameterProperties, shortLabel, 96);
PIN_FIELD(VstParameterProperties, displayIndex, 104);
PIN_FIELD(VstParameterProperties, category, 106);
PIN_FIELD(VstParameterProperties, numParametersInCategory, 108);
PIN_FIELD(VstParameterProperties, reserved, 110);
PIN_FIELD(VstParameterProperties, categoryLabel, 112);
PIN_FIELD(VstParameterProperties, future, 136);

PIN_SIZE(VstPinProperties, 128);
PIN_FIELD(VstPinProperties, label, 0);
PIN_FIELD(VstPinProperties, flags, 64);
PIN_FIELD(VstPinProperties, arrangementType, 68);
PIN_FIELD(VstPinProperties, shortLabel, 72);
PIN_FIELD(VstPinProperties, future, 80);

PIN_SIZE(VstSpeakerProperties, 112);
PIN_FIELD(VstSpeakerProperties, azimuth, 0);
PIN_FIELD(VstSpeakerProperties, elevation, 4);
PIN_FIELD(VstSpeakerProperties, radius, 8);
PIN_FIELD(VstSpeakerProperties, reserved, 12);
PIN_FIELD(VstSpeakerProperties, name, 16);
PIN_FIELD(VstSpeakerProperties, type, 80);
PIN_FIELD(VstSpeakerProperties, future, 84);

PIN_SIZE(VstSpeakerArrangement, 904);
PIN_FIELD(VstSpeakerArrangement, type, 0);
PIN_FIELD(VstSpeakerArrangement, numChannels, 4);
PIN_FIELD(VstSpeakerArrangement, speakers, 8);

PIN_SIZE(MidiKeyName, 80);
PIN_FIELD(MidiKeyName, thisProgramIndex, 0);
PIN_FIELD(MidiKeyName, thisKeyNumber, 4);
PIN_FIELD(MidiKeyName, keyName, 8);
PIN_FIELD(MidiKeyName, reserved, 72);
PIN_FIELD(MidiKeyName, flags, 76);

PIN_SIZE(MidiProgramName, 80);
PIN_FIELD(MidiProgramName, thisProgramIndex, 0);
PIN_FIELD(MidiProgramName, name, 4);
PIN_FIELD(MidiProgramName, midiProgram, 68);
PIN_FIELD(MidiProgramName, midiBankMsb, 69);
PIN_FIELD(MidiProgramName, midiBankLsb, 70);
PIN_FIELD(MidiProgramName, reserved, 71);
PIN_FIELD(MidiProgramName, parentCategoryIndex, 72);
PIN_FIELD(MidiProgramName, flags, 76);

PIN_SIZE(MidiProgramCategory, 76);
PIN_FIELD(MidiProgramCategory, thisCategoryIndex, 0);
PIN_FIELD(MidiProgramCategory, name, 4);
PIN_FIELD(MidiProgramCategory, parentCategoryIndex, 68);
PIN_FIELD(MidiProgramCategory, flags, 72);

PIN_SIZE(VstPatchChunkInfo, 64);
PIN_FIELD(VstPatchChunkInfo, version, 0);
PIN_FIELD(VstPatchChunkInfo, pluginUniqueID, 4);
PIN_FIELD(VstPatchChunkInfo, pluginVersion, 8);
PIN_FIELD(VstPatchChunkInfo, numElements, 12);
PIN_FIELD(VstPatchChunkInfo, future, 16);

PIN_SIZE(VstKeyCode, 8);
PIN_FIELD(VstKeyCode, character, 0);
PIN_FIELD(VstKeyCode, virt, 4);
PIN_FIELD(VstKeyCode, modifier, 5);
