// SPDX-License-Identifier: MIT
// Construction, life cycle and the effect's answers to the host.
#include "effect/LfoDSP.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "messages/Messages.h"
#include "model/PrivateCalls.h"
#include "model/WarpTable.h"

using namespace model;

namespace {

constexpr float kLowestSafeRate = 44000.0f;
constexpr float kHighestSafeRate = 1e7f;  // beyond it the crossover's coefficients leave the range of float
constexpr float kFallbackRate = 44100.0f;

constexpr char kEffectName[] = "Modrift";
constexpr char kVendorName[] = "Ambrel Works";
constexpr char kProgramListName[] = "DefaultProgram  ";

constexpr std::array<std::string_view, 10> kAbilities = {
    "receiveVstEvents", "receiveVstMidiEvent", "plugAsChannelInsert", "2in2out",       "1in2out", "sendVstMidiEvent",
    "sendVstEvents",    "FileSelector",        "receiveVstTimeInfo",  "wantsUTF8Paths"};

struct SpeakerPair {
  VstInt32 in, out;
  void (*tell)() noexcept;
};
constexpr SpeakerPair kSpeakerPairs[] = {
    {2, 2, messages::stereoTaken}, {1, 1, messages::monoTaken}, {1, 2, messages::monoToStereoTaken}};

bool isSane(float rate) { return rate >= kLowestSafeRate && rate <= kHighestSafeRate; }

float safeRate(float rate) { return isSane(rate) ? rate : kFallbackRate; }

// Labels the pin `before`, its number, `after`.
bool describePin(VstInt32 index, VstInt32 count, const char* before, const char* after, VstPinProperties* pin) {
  if (index < 0 || index >= count) return false;
  std::snprintf(pin->label, sizeof pin->label, "%s%1d%s", before, index + 1, after);
  pin->flags = kVstPinIsActive;
  if (index == 0 && count >= 2) pin->flags |= kVstPinIsStereo;
  return true;
}

}  // namespace

LfoDSP::LfoDSP(audioMasterCallback host) : AudioEffectX(host, 1, kHostParameters) {
  LfoDSP::setNumInputs(2);
  LfoDSP::setNumOutputs(2);
  LfoDSP::canProcessReplacing(true);
  LfoDSP::programsAreChunks(true);
  LfoDSP::setUniqueID(model::kUniqueId);
  if (!host) messages::noHost();
  for (auto& table : graphTable) table = std::make_unique<Shared<float>[]>(kGraphTableSize);
  sampleRateSafe = safeRate(sampleRate);
  for (CrossoverState* const state : {&xoverLeft_, &xoverRight_}) state->setFrequency(xoverMapper_.getValue());
  initFilters();
  initClipboard();
  LfoDSP::canMono(true);
  initPadLFO();
  for (int g = 0; g < kGraphs; ++g) initEnv(g);
  RenderEnvsInCaseGUIClosed(false);
  LfoDSP::resume();
}

// What the fields' own defaults leave open.
void LfoDSP::initPadLFO() noexcept {
  for (int g = 0; g < kGraphs; ++g) {
    padLFO.graphWarp[static_cast<std::size_t>(g)] = kWarpOne;
    warpMult[static_cast<std::size_t>(g)] = 1.0;
  }
}

void LfoDSP::initFilters() {
  filterCoeffs_.init(filters::kTuningHz, sampleRateSafe);
  textFilter_ = std::make_unique<VFilter>(&filterCoeffs_);
}

void LfoDSP::setIOCount() noexcept {
  numIn = numOut = 2;
  lastIn = lastOut = 1;
}

void LfoDSP::suspend() {
  bSuspended = true;
  sampleRateSafe = safeRate(sampleRate);
}

// The host is called outside of the gate: it may hold locks of its own that another of its threads has when it comes
// here.
void LfoDSP::resume() {
  bSuspended = false;
  wantEvents(1);
  rebuildForSampleRate();
  setInitialDelay(0);
  ioChanged();
}

void LfoDSP::rebuildForSampleRate() {
  const AudioGate::Hold hold(gate);
  sampleRateSafe = safeRate(sampleRate);
  setIOCount();
  const bool usable = sampleRate > 0.0f && sampleRate <= kHighestSafeRate;
  VGlobalCoeffs::announce(filters::kTuningHz, sampleRateSafe);
  filterStage_.prepare(filterCoeffs_, usable ? sampleRate : static_cast<float>(sampleRateSafe));
  for (CrossoverState* const state : {&xoverLeft_, &xoverRight_}) {
    state->sampleRate = sampleRateSafe;
    state->clear();
    state->setFrequency(xoverMapper_.getValue());
  }
  setFreeLFOTime();
}

void LfoDSP::setProgram(VstInt32 program) { curProgram = program; }

void LfoDSP::setProgramName(char* name) { std::snprintf(programName_.data(), programName_.size(), "%s", name); }

void LfoDSP::getProgramName(char* name) { std::strcpy(name, programName_.data()); }

bool LfoDSP::getProgramNameIndexed(VstInt32 /*category*/, VstInt32 index, char* text) {
  if (index != 0) return false;
  std::strcpy(text, kProgramListName);
  return true;
}

bool LfoDSP::getInputProperties(VstInt32 index, VstPinProperties* pin) {
  return describePin(index, numIn, "", " In", pin);
}

bool LfoDSP::getOutputProperties(VstInt32 index, VstPinProperties* pin) {
  return describePin(index, numOut, "LFOOut ", "", pin);
}

bool LfoDSP::setSpeakerArrangement(VstSpeakerArrangement* in, VstSpeakerArrangement* out) {
  messages::speakersAsked();
  if (!in || !out) return false;
  for (const SpeakerPair& pair : kSpeakerPairs) {
    if (in->numChannels != pair.in || out->numChannels != pair.out) continue;
    pair.tell();
    return true;
  }
  return false;
}

VstInt32 LfoDSP::getNumMidiInputChannels() { return 1; }

VstInt32 LfoDSP::getNumMidiOutputChannels() { return 1; }

VstInt32 LfoDSP::getGetTailSize() { return 1; }

bool LfoDSP::getEffectName(char* name) {
  std::strcpy(name, kEffectName);
  return true;
}

bool LfoDSP::getVendorString(char* text) {
  std::strcpy(text, kVendorName);
  return true;
}

bool LfoDSP::getProductString(char* text) { return getEffectName(text); }

VstInt32 LfoDSP::getVendorVersion() { return effect::kVendorVersion; }

VstPlugCategory LfoDSP::getPlugCategory() { return kPlugCategEffect; }

VstInt32 LfoDSP::canDo(char* text) {
  return std::find(kAbilities.begin(), kAbilities.end(), text) != kAbilities.end() ? 1 : -1;
}

// Two input channels or one; the output is always a pair.
void LfoDSP::setChannels(VstInt32 inputs) {
  constexpr VstInt32 kOutputs = 2;
  messages::channelsSet(inputs, kOutputs);
  const AudioGate::Hold hold(gate);
  numIn = inputs == 2 ? 2 : 1;
  numOut = kOutputs;
  lastIn = numIn - 1;
  lastOut = kOutputs - 1;
  setNumInputs(numIn);
  setNumOutputs(kOutputs);
}

// Of all calls through the dispatcher only events come on the audio thread.
VstIntPtr LfoDSP::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
  if (opcode != effProcessEvents) midiOut.tellOverflow();
  return AudioEffectX::dispatcher(opcode, index, value, ptr, opt);
}

VstIntPtr LfoDSP::vendorSpecific(VstInt32 tag, VstIntPtr value, void* ptr, float /*opt*/) {
  switch (tag) {
    case model::kCallSetIoCount:
      setChannels(static_cast<VstInt32>(value));
      return 0;
    case model::kCallHello:
      return 1;
    case model::kCallValueToText: {
      float number = 0.0f;
      if (!ptr) return 0;
      std::memcpy(&number, ptr, sizeof number);  // the same memory receives the text
      convertParameterValueToString(static_cast<int>(value), number, static_cast<char*>(ptr));
      return 1;
    }
    case model::kCallSetPath:
      return ptr && setLoadPath(static_cast<const char*>(ptr));
    default:
      return 0;
  }
}

// Keys have no names of their own.
bool LfoDSP::getMidiKeyName(VstInt32 /*channel*/, MidiKeyName* key) {
  std::strcpy(key->keyName, "    ");
  key->reserved = 0;
  key->flags = 0;
  return true;
}

float LfoDSP::getRecentFilterParam(int index) const noexcept {
  if (index < 0 || index >= filters::kFilterParams) return 0.0f;
  return filterParams[static_cast<std::size_t>(index)];
}
