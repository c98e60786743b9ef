// SPDX-License-Identifier: MIT
#include "host/HostCallback.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>
#include <utility>

namespace modrift::host {
namespace {

constexpr std::string_view kVendor = "Ambrel Works";
constexpr std::string_view kProduct = "Modrift Host";
constexpr VstIntPtr kVendorVersion = MODRIFT_VERSION_NUMBER;

constexpr auto kCanDo = std::to_array<std::string_view>({
    "sendVstEvents",
    "sendVstMidiEvent",
    "sendVstTimeInfo",
    "receiveVstEvents",
    "receiveVstMidiEvent",
    "sizeWindow",
    "offline",
    "startStopProcess",
    "acceptIOChanges",
});

thread_local HostFacts* inTheMaking = nullptr;

struct Call {
  HostFacts* facts;  // null if the effect is none of ours or unknown
  AEffect* effect;
  VstInt32 index;
  VstIntPtr value;
  void* ptr;
  float opt;
};
using Answer = VstIntPtr (*)(const Call&);

VstIntPtr writeText(void* target, std::string_view text) {
  if (target == nullptr) return 0;
  std::memcpy(target, text.data(), text.size());
  static_cast<char*>(target)[text.size()] = '\0';
  return 1;
}

VstIntPtr canDo(const Call& call) {
  if (call.ptr == nullptr) return 0;
  const std::string_view asked(static_cast<const char*>(call.ptr));
  return std::find(kCanDo.begin(), kCanDo.end(), asked) == kCanDo.end() ? 0 : 1;
}

VstIntPtr automate(const Call& call) {
  call.facts->listener->automated(call.facts->frame.load(std::memory_order_relaxed), call.index, call.opt);
  return 1;
}

VstIntPtr currentId(const Call& call) { return call.effect == nullptr ? 0 : call.effect->uniqueID; }

VstIntPtr idle(const Call& call) {
  call.facts->listener->idle();
  return 1;
}

VstIntPtr time(const Call& call) { return call.facts->time ? reinterpret_cast<VstIntPtr>(&*call.facts->time) : 0; }

VstIntPtr eventsSent(const Call& call) {
  call.facts->listener->eventsSent(call.facts->frame.load(std::memory_order_relaxed),
                                   static_cast<const VstEvents*>(call.ptr));
  return 1;
}

VstIntPtr ioChanged(const Call& call) {
  call.facts->listener->ioChanged();
  return 1;
}

VstIntPtr sizeWindow(const Call& call) {
  return call.facts->listener->wantsWindowSize(call.index, static_cast<VstInt32>(call.value)) ? 1 : 0;
}

VstIntPtr updateDisplay(const Call& call) {
  call.facts->listener->displayChanged();
  return 1;
}

VstIntPtr beginEdit(const Call& call) {
  call.facts->listener->editBegins(call.index);
  return 1;
}

VstIntPtr endEdit(const Call& call) {
  call.facts->listener->editEnds(call.index);
  return 1;
}

// Rows that need facts answer 0 for an effect that is not known.
enum class Needs { nothing, facts };
struct Row {
  AudioMasterOpcodes opcode;
  Needs needs;
  Answer answer;
};

// Opcodes without a row are answered with 0, which is also the right answer to audioMasterPinConnected (0 means
// connected), the offline family and the file selector (not offered).
constexpr auto kRows = std::to_array<Row>({
    {audioMasterAutomate, Needs::facts, automate},
    {audioMasterVersion, Needs::nothing, [](const Call&) { return VstIntPtr{kVstVersion}; }},
    {audioMasterCurrentId, Needs::nothing, currentId},
    {audioMasterIdle, Needs::facts, idle},
    {audioMasterWantMidi, Needs::facts, [](const Call&) { return VstIntPtr{1}; }},
    {audioMasterGetTime, Needs::facts, time},
    {audioMasterProcessEvents, Needs::facts, eventsSent},
    {audioMasterIOChanged, Needs::facts, ioChanged},
    {audioMasterSizeWindow, Needs::facts, sizeWindow},
    {audioMasterGetSampleRate, Needs::facts,
     [](const Call& call) { return static_cast<VstIntPtr>(std::lround(call.facts->sampleRateHz)); }},
    {audioMasterGetBlockSize, Needs::facts, [](const Call& call) { return VstIntPtr{call.facts->blockFrames}; }},
    {audioMasterGetInputLatency, Needs::facts,
     [](const Call& call) { return VstIntPtr{call.facts->inputLatencyFrames}; }},
    {audioMasterGetOutputLatency, Needs::facts,
     [](const Call& call) { return VstIntPtr{call.facts->outputLatencyFrames}; }},
    {audioMasterGetCurrentProcessLevel, Needs::facts,
     [](const Call& call) { return VstIntPtr{call.facts->processLevel}; }},
    {audioMasterGetAutomationState, Needs::facts,
     [](const Call& call) { return VstIntPtr{call.facts->automationState}; }},
    {audioMasterGetVendorString, Needs::nothing, [](const Call& call) { return writeText(call.ptr, kVendor); }},
    {audioMasterGetProductString, Needs::nothing, [](const Call& call) { return writeText(call.ptr, kProduct); }},
    {audioMasterGetVendorVersion, Needs::nothing, [](const Call&) { return kVendorVersion; }},
    {audioMasterCanDo, Needs::nothing, canDo},
    {audioMasterGetLanguage, Needs::nothing, [](const Call&) { return VstIntPtr{kVstLangEnglish}; }},
    {audioMasterGetDirectory, Needs::facts,
     [](const Call& call) { return reinterpret_cast<VstIntPtr>(call.facts->directory.c_str()); }},
    {audioMasterUpdateDisplay, Needs::facts, updateDisplay},
    {audioMasterBeginEdit, Needs::facts, beginEdit},
    {audioMasterEndEdit, Needs::facts, endEdit},
});

constexpr std::size_t kOpcodeCount = audioMasterCloseFileSelector + 1;

// The rows by opcode, so that a call costs one look-up.
constexpr auto kByOpcode = [] {
  std::array<const Row*, kOpcodeCount> table{};
  for (const Row& row : kRows) table[static_cast<std::size_t>(row.opcode)] = &row;
  return table;
}();

// The thread's instance comes first: a plug-in in construction may already pass a record whose reserved fields hold
// anything.
HostFacts* factsOf(const AEffect* effect) noexcept {
  if (inTheMaking != nullptr) return inTheMaking;
  if (effect == nullptr) return nullptr;
  return reinterpret_cast<HostFacts*>(effect->resvd1);
}

}  // namespace

InTheMaking::InTheMaking(HostFacts& facts) noexcept : outer_(std::exchange(inTheMaking, &facts)) {}

InTheMaking::~InTheMaking() { inTheMaking = outer_; }

VstIntPtr VSTCALLBACK hostCallback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) noexcept {
  if (opcode < 0 || static_cast<std::size_t>(opcode) >= kOpcodeCount) return 0;
  const Row* row = kByOpcode[static_cast<std::size_t>(opcode)];
  HostFacts* facts = factsOf(effect);
  if (row == nullptr || (row->needs == Needs::facts && facts == nullptr)) return 0;
  try {
    return row->answer({facts, effect, index, value, ptr, opt});
  } catch (...) {
    return 0;  // the plug-in's stack is no place for an exception of ours
  }
}

}  // namespace modrift::host
