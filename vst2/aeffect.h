// SPDX-License-Identifier: MIT
// The binary interface of VST 2.4: the records, opcodes and flags that a plug-in and its host exchange.
//
// Field order, widths and numbers are fixed by every host and plug-in in the field; names are the published ones, so
// that code on either side of the interface reads the way people know it. The records have C layout with the platform's
// natural alignment of up to 8 bytes. `aeffect_layout.cpp` pins every size and offset at compile time.
#pragma once

#include <cstdint>

#if defined(_WIN32)
#define VSTCALLBACK __cdecl
#define VST_EXPORT __declspec(dllexport)
#else
#define VSTCALLBACK
#define VST_EXPORT __attribute__((visibility("default")))
#endif

using VstInt16 = std::int16_t;
using VstInt32 = std::int32_t;
using VstIntPtr = std::intptr_t;  // carries a pointer or an integer
struct AEffect;

// Host entry [any thread]: `effect` may be null for the version request.
using audioMasterCallback = VstIntPtr(VSTCALLBACK*)(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                                    void* ptr, float opt);
// Plug-in entries, the plain functions of an AEffect.
using AEffectDispatcherProc = VstIntPtr(VSTCALLBACK*)(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                                      void* ptr, float opt);
using AEffectProcessProc = void(VSTCALLBACK*)(AEffect* effect, float** inputs, float** outputs, VstInt32 sampleFrames);
using AEffectProcessDoubleProc = void(VSTCALLBACK*)(AEffect* effect, double** inputs, double** outputs,
                                                    VstInt32 sampleFrames);
using AEffectSetParameterProc = void(VSTCALLBACK*)(AEffect* effect, VstInt32 index, float parameter);
using AEffectGetParameterProc = float(VSTCALLBACK*)(AEffect* effect, VstInt32 index);

// Four characters as one number, first character in the highest byte.
constexpr VstInt32 CCONST(char a, char b, char c, char d) {
  return static_cast<VstInt32>((static_cast<std::uint32_t>(static_cast<unsigned char>(a)) << 24) |
                               (static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 16) |
                               (static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 8) |
                               static_cast<std::uint32_t>(static_cast<unsigned char>(d)));
}

inline constexpr VstInt32 kEffectMagic = CCONST('V', 's', 't', 'P');
inline constexpr VstInt32 kVstVersion = 2400;

// What a plug-in is to its host. Lives inside the plug-in's object from the entry call to effClose.
struct AEffect {
  VstInt32 magic = kEffectMagic;
  AEffectDispatcherProc dispatcher = nullptr;
  AEffectProcessProc process = nullptr;  // adds to the outputs; kept for hosts older than 2.4
  AEffectSetParameterProc setParameter = nullptr;
  AEffectGetParameterProc getParameter = nullptr;
  VstInt32 numPrograms = 0;
  VstInt32 numParams = 0;
  VstInt32 numInputs = 0;
  VstInt32 numOutputs = 0;
  VstInt32 flags = 0;         // VstAEffectFlags
  VstIntPtr resvd1 = 0;       // the host's own
  VstIntPtr resvd2 = 0;       // the host's own
  VstInt32 initialDelay = 0;  // latency in samples
  VstInt32 realQualities = 0;
  VstInt32 offQualities = 0;
  float ioRatio = 1.0f;
  void* object = nullptr;  // the plug-in's own
  void* user = nullptr;
  VstInt32 uniqueID = 0;
  VstInt32 version = 1;
  AEffectProcessProc processReplacing = nullptr;
  AEffectProcessDoubleProc processDoubleReplacing = nullptr;
  char future[56] = {};
};

enum VstAEffectFlags : VstInt32 {
  effFlagsHasEditor = 1 << 0,
  effFlagsCanMono = 1 << 3,
  effFlagsCanReplacing = 1 << 4,
  effFlagsProgramChunks = 1 << 5,
  effFlagsIsSynth = 1 << 8,
  effFlagsNoSoundInStop = 1 << 9,
  effFlagsCanDoubleReplacing = 1 << 12,
};

// Host to plug-in. [index], [value], [ptr], [opt] name the arguments in use.
enum AEffectOpcodes : VstInt32 {
  effOpen = 0,
  effClose = 1,       // the plug-in's object is gone afterwards
  effSetProgram = 2,  // [value]
  effGetProgram = 3,
  effSetProgramName = 4,   // [ptr] char*, up to kVstMaxProgNameLen
  effGetProgramName = 5,   // [ptr] char*
  effGetParamLabel = 6,    // [index] [ptr] char*
  effGetParamDisplay = 7,  // [index] [ptr] char*
  effGetParamName = 8,     // [index] [ptr] char*
  effSetSampleRate = 10,   // [opt] hertz
  effSetBlockSize = 11,    // [value] the largest block to come
  effMainsChanged = 12,    // [value] 0 suspend, else resume
  effEditGetRect = 13,     // [ptr] ERect**
  effEditOpen = 14,        // [ptr] parent window
  effEditClose = 15,
  effEditIdle = 19,
  effIdentify = 22,          // answers kEffectIdentifyTag
  effGetChunk = 23,          // [ptr] void** [index] 0 bank, 1 program; answers bytes
  effSetChunk = 24,          // [ptr] data [value] bytes [index] 0 bank, 1 program
  effProcessEvents = 25,     // [ptr] VstEvents*
  effCanBeAutomated = 26,    // [index]
  effString2Parameter = 27,  // [index] [ptr] char*
  effGetNumProgramCategories = 28,
  effGetProgramNameIndexed = 29,  // [index] [value] category [ptr] char*
  effGetInputProperties = 33,     // [index] [ptr] VstPinProperties*
  effGetOutputProperties = 34,    // [index] [ptr] VstPinProperties*
  effGetPlugCategory = 35,
  effOfflineNotify = 38,
  effOfflinePrepare = 39,
  effOfflineRun = 40,
  effProcessVarIo = 41,
  effSetSpeakerArrangement = 42,  // [value] in VstSpeakerArrangement* [ptr] out VstSpeakerArrangement*
  effSetBypass = 44,              // [value]
  effGetEffectName = 45,          // [ptr] char*, up to kVstMaxEffectNameLen
  effGetVendorString = 47,        // [ptr] char*, up to kVstMaxVendorStrLen
  effGetProductString = 48,       // [ptr] char*, up to kVstMaxProductStrLen
  effGetVendorVersion = 49,
  effVendorSpecific = 50,          // [index] [value] [ptr] [opt]
  effCanDo = 51,                   // [ptr] char*; answers 1 yes, -1 no, 0 unknown
  effGetTailSize = 52,             // samples; 1 means none
  effGetParameterProperties = 56,  // [index] [ptr] VstParameterProperties*
  effGetVstVersion = 58,
  effEditKeyDown = 59,
  effEditKeyUp = 60,
  effSetEditKnobMode = 61,
  effGetMidiProgramName = 62,
  effGetCurrentMidiProgram = 63,
  effGetMidiProgramCategory = 64,
  effHasMidiProgramsChanged = 65,
  effGetMidiKeyName = 66,  // [index] channel [ptr] MidiKeyName*
  effBeginSetProgram = 67,
  effEndSetProgram = 68,
  effGetSpeakerArrangement = 69,  // [value] VstSpeakerArrangement** [ptr] VstSpeakerArrangement**
  effShellGetNextPlugin = 70,
  effStartProcess = 71,
  effStopProcess = 72,
  effSetTotalSampleToProcess = 73,
  effSetPanLaw = 74,
  effBeginLoadBank = 75,
  effBeginLoadProgram = 76,
  effSetProcessPrecision = 77,  // [value] VstProcessPrecision
  effGetNumMidiInputChannels = 78,
  effGetNumMidiOutputChannels = 79,
};

inline constexpr VstInt32 kEffectIdentifyTag = CCONST('N', 'v', 'E', 'f');

// Plug-in to host.
enum AudioMasterOpcodes : VstInt32 {
  audioMasterAutomate = 0,  // [index] [opt]
  audioMasterVersion = 1,
  audioMasterCurrentId = 2,
  audioMasterIdle = 3,
  audioMasterPinConnected = 4,
  audioMasterWantMidi = 6,
  audioMasterGetTime = 7,        // [value] flags that matter; answers VstTimeInfo* or 0
  audioMasterProcessEvents = 8,  // [ptr] VstEvents*
  audioMasterIOChanged = 13,
  audioMasterSizeWindow = 15,  // [index] width [value] height
  audioMasterGetSampleRate = 16,
  audioMasterGetBlockSize = 17,
  audioMasterGetInputLatency = 18,
  audioMasterGetOutputLatency = 19,
  audioMasterGetCurrentProcessLevel = 23,
  audioMasterGetAutomationState = 24,
  audioMasterOfflineStart = 25,
  audioMasterOfflineRead = 26,
  audioMasterOfflineWrite = 27,
  audioMasterOfflineGetCurrentPass = 28,
  audioMasterOfflineGetCurrentMetaPass = 29,
  audioMasterGetVendorString = 32,   // [ptr] char*
  audioMasterGetProductString = 33,  // [ptr] char*
  audioMasterGetVendorVersion = 34,
  audioMasterVendorSpecific = 35,
  audioMasterCanDo = 37,  // [ptr] char*
  audioMasterGetLanguage = 38,
  audioMasterGetDirectory = 41,
  audioMasterUpdateDisplay = 42,
  audioMasterBeginEdit = 43,  // [index]
  audioMasterEndEdit = 44,    // [index]
  audioMasterOpenFileSelector = 45,
  audioMasterCloseFileSelector = 46,
};

// Lengths that hosts allow for texts, the closing zero not counted.
enum VstStringConstants : VstInt32 {
  kVstMaxProgNameLen = 24,
  kVstMaxParamStrLen = 8,
  kVstMaxVendorStrLen = 64,
  kVstMaxProductStrLen = 64,
  kVstMaxEffectNameLen = 32,
  kVstMaxNameLen = 64,
  kVstMaxLabelLen = 64,
  kVstMaxShortLabelLen = 8,
  kVstMaxCategLabelLen = 24,
};

enum VstPlugCategory : VstInt32 {
  kPlugCategUnknown = 0,
  kPlugCategEffect,
  kPlugCategSynth,
  kPlugCategAnalysis,
  kPlugCategMastering,
  kPlugCategSpacializer,
  kPlugCategRoomFx,
  kPlugSurroundFx,
  kPlugCategRestoration,
  kPlugCategOfflineProcess,
  kPlugCategShell,
  kPlugCategGenerator,
};

enum VstProcessPrecision : VstInt32 { kVstProcessPrecision32 = 0, kVstProcessPrecision64 };

enum VstProcessLevels : VstInt32 {
  kVstProcessLevelUnknown = 0,
  kVstProcessLevelUser,
  kVstProcessLevelRealtime,
  kVstProcessLevelPrefetch,
  kVstProcessLevelOffline,
};

enum VstAutomationStates : VstInt32 {
  kVstAutomationUnsupported = 0,
  kVstAutomationOff,
  kVstAutomationRead,
  kVstAutomationWrite,
  kVstAutomationReadWrite,
};

enum VstHostLanguage : VstInt32 { kVstLangEnglish = 1 };

// The editor's rectangle in pixels.
struct ERect {
  VstInt16 top = 0;
  VstInt16 left = 0;
  VstInt16 bottom = 0;
  VstInt16 right = 0;
};

// Head of every event; events of a given type are at least byteSize + 8 bytes long.
struct VstEvent {
  VstInt32 type = 0;  // VstEventTypes
  VstInt32 byteSize = 0;
  VstInt32 deltaFrames = 0;  // frame in the block to come
  VstInt32 flags = 0;
  char data[16] = {};
};

enum VstEventTypes : VstInt32 { kVstMidiType = 1, kVstSysExType = 6 };

// A list of events for one block; `events` has numEvents entries.
struct VstEvents {
  VstInt32 numEvents = 0;
  VstIntPtr reserved = 0;
  VstEvent* events[2] = {};
};

struct VstMidiEvent {
  VstInt32 type = kVstMidiType;
  VstInt32 byteSize = 32;
  VstInt32 deltaFrames = 0;
  VstInt32 flags = 0;       // VstMidiEventFlags
  VstInt32 noteLength = 0;  // frames, 0 if unknown
  VstInt32 noteOffset = 0;  // frames into the note
  char midiData[4] = {};    // up to three MIDI bytes and a zero
  char detune = 0;          // -64 to 63 cents
  char noteOffVelocity = 0;
  char reserved1 = 0;
  char reserved2 = 0;
};

enum VstMidiEventFlags : VstInt32 { kVstMidiEventIsRealtime = 1 << 0 };

struct VstMidiSysexEvent {
  VstInt32 type = kVstSysExType;
  VstInt32 byteSize = 48;
  VstInt32 deltaFrames = 0;
  VstInt32 flags = 0;
  VstInt32 dumpBytes = 0;
  VstIntPtr resvd1 = 0;
  char* sysexDump = nullptr;
  VstIntPtr resvd2 = 0;
};

// The host's clock at the first frame of a block. Fields without their flag are undefined.
struct VstTimeInfo {
  double samplePos = 0.0;
  double sampleRate = 0.0;
  double nanoSeconds = 0.0;
  double ppqPos = 0.0;  // quarter notes since the song's start
  double tempo = 0.0;   // quarter notes per minute
  double barStartPos = 0.0;
  double cycleStartPos = 0.0;
  double cycleEndPos = 0.0;
  VstInt32 timeSigNumerator = 0;
  VstInt32 timeSigDenominator = 0;
  VstInt32 smpteOffset = 0;
  VstInt32 smpteFrameRate = 0;
  VstInt32 samplesToNextClock = 0;
  VstInt32 flags = 0;  // VstTimeInfoFlags
};

enum VstTimeInfoFlags : VstInt32 {
  kVstTransportChanged = 1 << 0,
  kVstTransportPlaying = 1 << 1,
  kVstTransportCycleActive = 1 << 2,
  kVstTransportRecording = 1 << 3,
  kVstAutomationWriting = 1 << 6,
  kVstAutomationReading = 1 << 7,
  kVstNanosValid = 1 << 8,
  kVstPpqPosValid = 1 << 9,
  kVstTempoValid = 1 << 10,
  kVstBarsValid = 1 << 11,
  kVstCyclePosValid = 1 << 12,
  kVstTimeSigValid = 1 << 13,
  kVstSmpteValid = 1 << 14,
  kVstClockValid = 1 << 15,
};

struct VstParameterProperties {
  float stepFloat = 0.0f;
  float smallStepFloat = 0.0f;
  float largeStepFloat = 0.0f;
  char label[kVstMaxLabelLen] = {};
  VstInt32 flags = 0;
  VstInt32 minInteger = 0;
  VstInt32 maxInteger = 0;
  VstInt32 stepInteger = 0;
  VstInt32 largeStepInteger = 0;
  char shortLabel[kVstMaxShortLabelLen] = {};
  VstInt16 displayIndex = 0;
  VstInt16 category = 0;
  VstInt16 numParametersInCategory = 0;
  VstInt16 reserved = 0;
  char categoryLabel[kVstMaxCategLabelLen] = {};
  char future[16] = {};
};

struct VstPinProperties {
  char label[kVstMaxLabelLen] = {};
  VstInt32 flags = 0;  // VstPinPropertiesFlags
  VstInt32 arrangementType = 0;
  char shortLabel[kVstMaxShortLabelLen] = {};
  char future[48] = {};
};

enum VstPinPropertiesFlags : VstInt32 {
  kVstPinIsActive = 1 << 0,
  kVstPinIsStereo = 1 << 1,
  kVstPinUseSpeaker = 1 << 2,
};

struct VstSpeakerProperties {
  float azimuth = 0.0f;
  float elevation = 0.0f;
  float radius = 0.0f;
  float reserved = 0.0f;
  char name[kVstMaxNameLen] = {};
  VstInt32 type = 0;
  char future[28] = {};
};

struct VstSpeakerArrangement {
  VstInt32 type = 0;
  VstInt32 numChannels = 0;
  VstSpeakerProperties speakers[8] = {};  // numChannels entries
};

struct MidiKeyName {
  VstInt32 thisProgramIndex = 0;
  VstInt32 thisKeyNumber = 0;
  char keyName[kVstMaxNameLen] = {};
  VstInt32 reserved = 0;
  VstInt32 flags = 0;
};

struct MidiProgramName {
  VstInt32 thisProgramIndex = 0;
  char name[kVstMaxNameLen] = {};
  char midiProgram = 0;
  char midiBankMsb = 0;
  char midiBankLsb = 0;
  char reserved = 0;
  VstInt32 parentCategoryIndex = 0;
  VstInt32 flags = 0;
};

struct MidiProgramCategory {
  VstInt32 thisCategoryIndex = 0;
  char name[kVstMaxNameLen] = {};
  VstInt32 parentCategoryIndex = 0;
  VstInt32 flags = 0;
};

struct VstPatchChunkInfo {
  VstInt32 version = 1;
  VstInt32 pluginUniqueID = 0;
  VstInt32 pluginVersion = 0;
  VstInt32 numElements = 0;
  char future[48] = {};
};

struct VstKeyCode {
  VstInt32 character = 0;
  unsigned char virt = 0;
  unsigned char modifier = 0;
};
