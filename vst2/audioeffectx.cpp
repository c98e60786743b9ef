// SPDX-License-Identifier: MIT
#include "vst2/audioeffectx.h"

#include "vst2/DispatchTable.h"

namespace {

using vst2::Call;
using vst2::Needs;
using Row = vst2::OpcodeRow<AudioEffectX>;

template <VstInt32 (AudioEffectX::*Member)()>
VstIntPtr number(AudioEffectX& effect, const Call&) {
  return (effect.*Member)();
}

template <bool (AudioEffectX::*Member)(char*)>
VstIntPtr text(AudioEffectX& effect, const Call& c) {
  return (effect.*Member)(c.text());
}

template <bool (AudioEffectX::*Member)(VstInt32, VstPinProperties*)>
VstIntPtr pin(AudioEffectX& effect, const Call& c) {
  return (effect.*Member)(c.index, c.as<VstPinProperties>());
}

// Two records come with this call, one of them in place of the number.
VstIntPtr speakers(AudioEffectX& effect, const Call& c) {
  auto* const in = reinterpret_cast<VstSpeakerArrangement*>(c.value);
  return in && effect.setSpeakerArrangement(in, c.as<VstSpeakerArrangement>());
}

constexpr auto kOpcodes = std::to_array<Row>({
    {effProcessEvents, Needs::pointer,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.processEvents(c.as<VstEvents>()); }},
    {effCanBeAutomated, Needs::nothing,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.canParameterBeAutomated(c.index); }},
    {effString2Parameter, Needs::pointer,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.string2parameter(c.index, c.text()); }},
    {effGetNumProgramCategories, Needs::nothing, [](AudioEffectX&, const Call&) -> VstIntPtr { return 1; }},
    {effGetProgramNameIndexed, Needs::pointer,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr {
       return e.getProgramNameIndexed(static_cast<VstInt32>(c.value), c.index, c.text());
     }},
    {effGetInputProperties, Needs::pointer, pin<&AudioEffectX::getInputProperties>},
    {effGetOutputProperties, Needs::pointer, pin<&AudioEffectX::getOutputProperties>},
    {effGetPlugCategory, Needs::nothing, [](AudioEffectX& e, const Call&) -> VstIntPtr { return e.getPlugCategory(); }},
    {effSetSpeakerArrangement, Needs::pointer, speakers},
    {effSetBypass, Needs::nothing,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.setBypass(c.value != 0); }},
    {effGetEffectName, Needs::pointer, text<&AudioEffectX::getEffectName>},
    {effGetVendorString, Needs::pointer, text<&AudioEffectX::getVendorString>},
    {effGetProductString, Needs::pointer, text<&AudioEffectX::getProductString>},
    {effGetVendorVersion, Needs::nothing, number<&AudioEffectX::getVendorVersion>},
    {effVendorSpecific, Needs::nothing,
     [](AudioEffectX& e, const Call& c) { return e.vendorSpecific(c.index, c.value, c.ptr, c.opt); }},
    {effCanDo, Needs::pointer, [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.canDo(c.text()); }},
    {effGetTailSize, Needs::nothing, number<&AudioEffectX::getGetTailSize>},
    {effGetVstVersion, Needs::nothing, number<&AudioEffectX::getVstVersion>},
    {effGetMidiKeyName, Needs::pointer,
     [](AudioEffectX& e, const Call& c) -> VstIntPtr { return e.getMidiKeyName(c.index, c.as<MidiKeyName>()); }},
    {effStartProcess, Needs::nothing, number<&AudioEffectX::startProcess>},
    {effStopProcess, Needs::nothing, number<&AudioEffectX::stopProcess>},
    {effGetNumMidiInputChannels, Needs::nothing, number<&AudioEffectX::getNumMidiInputChannels>},
    {effGetNumMidiOutputChannels, Needs::nothing, number<&AudioEffectX::getNumMidiOutputChannels>},
});

}  // namespace

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
  const auto answer = vst2::serve(kOpcodes, *this, opcode, Call{index, value, ptr, opt});
  return answer ? *answer : AudioEffect::dispatcher(opcode, index, value, ptr, opt);
}

bool AudioEffectX::beginEdit(VstInt32 index) { return callHost(audioMasterBeginEdit, index) != 0; }

bool AudioEffectX::endEdit(VstInt32 index) { return callHost(audioMasterEndEdit, index) != 0; }

bool AudioEffectX::ioChanged() { return callHost(audioMasterIOChanged) != 0; }

double AudioEffectX::updateSampleRate() {
  const VstIntPtr hertz = callHost(audioMasterGetSampleRate);
  if (hertz > 0) sampleRate = static_cast<float>(hertz);
  return static_cast<double>(sampleRate);
}

VstInt32 AudioEffectX::updateBlockSize() {
  const VstIntPtr frames = callHost(audioMasterGetBlockSize);
  if (frames > 0) blockSize = static_cast<VstInt32>(frames);
  return blockSize;
}

VstInt32 AudioEffectX::getInputLatency() { return static_cast<VstInt32>(callHost(audioMasterGetInputLatency)); }

VstInt32 AudioEffectX::getOutputLatency() { return static_cast<VstInt32>(callHost(audioMasterGetOutputLatency)); }

VstTimeInfo* AudioEffectX::getTimeInfo(VstInt32 filter) {
  const VstIntPtr answer = callHost(audioMasterGetTime, 0, filter);
  return reinterpret_cast<VstTimeInfo*>(answer);
}

VstInt32 AudioEffectX::getCurrentProcessLevel() {
  return static_cast<VstInt32>(callHost(audioMasterGetCurrentProcessLevel));
}

VstInt32 AudioEffectX::getAutomationState() { return static_cast<VstInt32>(callHost(audioMasterGetAutomationState)); }

void AudioEffectX::wantEvents(VstInt32 filter) { callHost(audioMasterWantMidi, 0, filter); }

bool AudioEffectX::sendVstEventsToHost(VstEvents* events) {
  return callHost(audioMasterProcessEvents, 0, 0, events) == 1;
}

bool AudioEffectX::getHostVendorString(char* text) { return callHost(audioMasterGetVendorString, 0, 0, text) != 0; }

bool AudioEffectX::getHostProductString(char* text) { return callHost(audioMasterGetProductString, 0, 0, text) != 0; }

VstInt32 AudioEffectX::getHostVendorVersion() { return static_cast<VstInt32>(callHost(audioMasterGetVendorVersion)); }

VstIntPtr AudioEffectX::hostVendorSpecific(VstInt32 tag, VstIntPtr value, void* ptr, float opt) {
  return callHost(audioMasterVendorSpecific, tag, value, ptr, opt);
}

VstInt32 AudioEffectX::canHostDo(const char* text) {
  return static_cast<VstInt32>(callHost(audioMasterCanDo, 0, 0, const_cast<char*>(text)));
}

VstInt32 AudioEffectX::getHostLanguage() { return static_cast<VstInt32>(callHost(audioMasterGetLanguage)); }

void* AudioEffectX::getDirectory() { return reinterpret_cast<void*>(callHost(audioMasterGetDirectory)); }

bool AudioEffectX::updateDisplay() { return callHost(audioMasterUpdateDisplay) != 0; }

bool AudioEffectX::sizeWindow(VstInt32 width, VstInt32 height) {
  return callHost(audioMasterSizeWindow, width, height) != 0;
}
