// SPDX-License-Identifier: MIT
#include "vst2/audioeffect.h"

#include "vst2/DispatchTable.h"

namespace {

using vst2::Call;
using vst2::Needs;
using Row = vst2::OpcodeRow<AudioEffect>;

AudioEffect* effectOf(AEffect* e) { return e ? static_cast<AudioEffect*>(e->object) : nullptr; }

template <void (AudioEffect::*Member)()>
VstIntPtr plainCall(AudioEffect& effect, const Call&) {
  (effect.*Member)();
  return 0;
}

template <void (AudioEffect::*Member)(VstInt32, char*)>
VstIntPtr indexedText(AudioEffect& effect, const Call& c) {
  (effect.*Member)(c.index, c.text());
  return 0;
}

VstIntPtr selectProgram(AudioEffect& effect, const Call& c) {
  if (c.value >= 0 && c.value < effect.getAeffect()->numPrograms) effect.setProgram(static_cast<VstInt32>(c.value));
  return 0;
}

VstIntPtr storeChunk(AudioEffect& effect, const Call& c) {
  constexpr VstIntPtr kLargest = 0x7fffffff;
  if (c.value < 0 || c.value > kLargest) return 0;
  return effect.setChunk(c.ptr, static_cast<VstInt32>(c.value), c.index != 0);
}

// Lets the editor serve the call, if there is one.
template <class Action>
VstIntPtr withEditor(AudioEffect& effect, Action action) {
  AEffEditor* const editor = effect.getEditor();
  return editor ? static_cast<VstIntPtr>(action(*editor)) : 0;
}

constexpr auto kOpcodes = std::to_array<Row>({
    {effOpen, Needs::nothing, plainCall<&AudioEffect::open>},
    {effClose, Needs::nothing, plainCall<&AudioEffect::close>},
    {effSetProgram, Needs::nothing, selectProgram},
    {effGetProgram, Needs::nothing, [](AudioEffect& e, const Call&) -> VstIntPtr { return e.getProgram(); }},
    {effSetProgramName, Needs::pointer,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return e.setProgramName(c.text()), 0; }},
    {effGetProgramName, Needs::pointer,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return e.getProgramName(c.text()), 0; }},
    {effGetParamLabel, Needs::pointer, indexedText<&AudioEffect::getParameterLabel>},
    {effGetParamDisplay, Needs::pointer, indexedText<&AudioEffect::getParameterDisplay>},
    {effGetParamName, Needs::pointer, indexedText<&AudioEffect::getParameterName>},
    {effSetSampleRate, Needs::nothing,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return e.setSampleRate(c.opt), 0; }},
    {effSetBlockSize, Needs::nothing,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return e.setBlockSize(static_cast<VstInt32>(c.value)), 0; }},
    {effMainsChanged, Needs::nothing,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return c.value ? e.resume() : e.suspend(), 0; }},
    {effEditGetRect, Needs::pointer,
     [](AudioEffect& e, const Call& c) {
       return withEditor(e, [&c](AEffEditor& editor) { return editor.getRect(c.as<ERect*>()); });
     }},
    {effEditOpen, Needs::nothing,
     [](AudioEffect& e, const Call& c) {
       return withEditor(e, [&c](AEffEditor& editor) { return editor.open(c.ptr); });
     }},
    {effEditClose, Needs::nothing,
     [](AudioEffect& e, const Call&) { return withEditor(e, [](AEffEditor& editor) { return editor.close(), 0; }); }},
    {effEditIdle, Needs::nothing,
     [](AudioEffect& e, const Call&) { return withEditor(e, [](AEffEditor& editor) { return editor.idle(), 0; }); }},
    {effIdentify, Needs::nothing, [](AudioEffect&, const Call&) -> VstIntPtr { return kEffectIdentifyTag; }},
    {effGetChunk, Needs::pointer,
     [](AudioEffect& e, const Call& c) -> VstIntPtr { return e.getChunk(c.as<void*>(), c.index != 0); }},
    {effSetChunk, Needs::pointer, storeChunk},
});

}  // namespace

AudioEffect::AudioEffect(audioMasterCallback host, VstInt32 programs, VstInt32 params)
    : audioMaster(host), numPrograms(programs), numParams(params) {
  cEffect.dispatcher = dispatchEffectClass;
  cEffect.process = processClass;
  cEffect.setParameter = setParameterClass;
  cEffect.getParameter = getParameterClass;
  cEffect.processReplacing = processClassReplacing;
  cEffect.processDoubleReplacing = processClassDoubleReplacing;
  cEffect.numPrograms = programs;
  cEffect.numParams = params;
  cEffect.numInputs = 1;
  cEffect.numOutputs = 2;
  cEffect.object = this;
}

AudioEffect::~AudioEffect() { delete editor; }

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
  return vst2::serve(kOpcodes, *this, opcode, Call{index, value, ptr, opt}).value_or(0);
}

void AudioEffect::setParameterAutomated(VstInt32 index, float value) {
  setParameter(index, value);
  callHost(audioMasterAutomate, index, 0, nullptr, value);
}

void AudioEffect::setEditor(AEffEditor* newEditor) {
  editor = newEditor;
  setFlag(effFlagsHasEditor, newEditor != nullptr);
}

VstInt32 AudioEffect::getMasterVersion() {
  const VstIntPtr version = callHost(audioMasterVersion);
  return version ? static_cast<VstInt32>(version) : 1;  // hosts of the first days answer nothing
}

VstInt32 AudioEffect::getCurrentUniqueId() { return static_cast<VstInt32>(callHost(audioMasterCurrentId)); }

void AudioEffect::masterIdle() { callHost(audioMasterIdle); }

VstIntPtr AudioEffect::callHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
  return audioMaster ? audioMaster(&cEffect, opcode, index, value, ptr, opt) : 0;
}

void AudioEffect::setFlag(VstAEffectFlags flag, bool state) {
  cEffect.flags = state ? (cEffect.flags | flag) : (cEffect.flags & ~static_cast<VstInt32>(flag));
}

VstIntPtr AudioEffect::dispatchEffectClass(AEffect* e, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                           float opt) noexcept try {
  AudioEffect* const effect = effectOf(e);
  if (!effect) return 0;
  const VstIntPtr answer = effect->dispatcher(opcode, index, value, ptr, opt);
  if (opcode == effClose) delete effect;  // closing the effect is its end
  return answer;
} catch (...) {
  return 0;
}

void AudioEffect::processClass(AEffect* e, float** inputs, float** outputs, VstInt32 sampleFrames) noexcept {
  if (AudioEffect* const effect = effectOf(e)) effect->process(inputs, outputs, sampleFrames);
}

void AudioEffect::processClassReplacing(AEffect* e, float** inputs, float** outputs, VstInt32 sampleFrames) noexcept {
  if (AudioEffect* const effect = effectOf(e)) effect->processReplacing(inputs, outputs, sampleFrames);
}

void AudioEffect::processClassDoubleReplacing(AEffect* e, double** inputs, double** outputs,
                                              VstInt32 sampleFrames) noexcept {
  if (AudioEffect* const effect = effectOf(e)) effect->processDoubleReplacing(inputs, outputs, sampleFrames);
}

void AudioEffect::setParameterClass(AEffect* e, VstInt32 index, float value) noexcept try {
  if (AudioEffect* const effect = effectOf(e)) effect->setParameter(index, value);
} catch (...) {
  return;  // a command that found no memory, say: nothing has happened
}

float AudioEffect::getParameterClass(AEffect* e, VstInt32 index) noexcept {
  AudioEffect* const effect = effectOf(e);
  return effect ? effect->getParameter(index) : 0.0f;
}
