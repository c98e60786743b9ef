// SPDX-License-Identifier: MIT
// The base of every effect: keeps the AEffect record that the host holds and leads its plain functions to virtuals.
//
// Life, all by the host: construction; `dispatcher(effOpen)`; sample rate and block size; `resume`; blocks; `suspend`;
// `dispatcher(effClose)`, after which `dispatchEffectClass` deletes the object. The order of the virtual functions is
// the published one.
#pragma once

#include "vst2/aeffect.h"
#include "vst2/aeffeditor.h"

class AudioEffect {
 public:
  AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams);
  virtual ~AudioEffect();
  AudioEffect(const AudioEffect&) = delete;
  AudioEffect& operator=(const AudioEffect&) = delete;

  // Serves one opcode of the host; unknown opcodes and missing pointers answer 0.
  virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt);

  virtual void open() {}
  virtual void close() {}
  virtual void suspend() {}
  virtual void resume() {}

  virtual void setSampleRate(float hertz) { sampleRate = hertz; }
  virtual void setBlockSize(VstInt32 frames) { blockSize = frames; }
  virtual void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) = 0;
  virtual void processDoubleReplacing(double** /*inputs*/, double** /*outputs*/, VstInt32 /*sampleFrames*/) {}

  virtual void setParameter(VstInt32 /*index*/, float /*value*/) {}
  virtual float getParameter(VstInt32 /*index*/) { return 0.0f; }
  // Sets the parameter and reports it to the host as automation.
  virtual void setParameterAutomated(VstInt32 index, float value);

  virtual VstInt32 getProgram() { return curProgram; }
  virtual void setProgram(VstInt32 program) { curProgram = program; }
  virtual void setProgramName(char* /*name*/) {}
  virtual void getProgramName(char* name) { *name = 0; }
  virtual void getParameterLabel(VstInt32 /*index*/, char* label) { *label = 0; }
  virtual void getParameterDisplay(VstInt32 /*index*/, char* text) { *text = 0; }
  virtual void getParameterName(VstInt32 /*index*/, char* text) { *text = 0; }
  // Points `data` at the state and answers its length in bytes, 0 for none. The bytes stay the effect's.
  virtual VstInt32 getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }
  virtual VstInt32 setChunk(void* /*data*/, VstInt32 /*byteSize*/, bool /*isPreset*/) { return 0; }

  virtual void setUniqueID(VstInt32 id) { cEffect.uniqueID = id; }
  virtual void setNumInputs(VstInt32 count) { cEffect.numInputs = count; }
  virtual void setNumOutputs(VstInt32 count) { cEffect.numOutputs = count; }
  virtual void canProcessReplacing(bool state = true) { setFlag(effFlagsCanReplacing, state); }
  virtual void canDoubleReplacing(bool state = true) { setFlag(effFlagsCanDoubleReplacing, state); }
  virtual void programsAreChunks(bool state = true) { setFlag(effFlagsProgramChunks, state); }
  virtual void setInitialDelay(VstInt32 samples) { cEffect.initialDelay = samples; }

  // Takes the editor over; it is deleted with the effect.
  void setEditor(AEffEditor* newEditor);
  virtual AEffEditor* getEditor() { return editor; }

  virtual AEffect* getAeffect() { return &cEffect; }
  virtual float getSampleRate() { return sampleRate; }
  virtual VstInt32 getBlockSize() { return blockSize; }

  virtual VstInt32 getMasterVersion();
  virtual VstInt32 getCurrentUniqueId();
  virtual void masterIdle();

  // The record's plain functions. They take any pointer and let no exception out.
  static VstIntPtr VSTCALLBACK dispatchEffectClass(AEffect* e, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                                   void* ptr, float opt) noexcept;
  static void VSTCALLBACK processClass(AEffect* e, float** inputs, float** outputs, VstInt32 sampleFrames) noexcept;
  static void VSTCALLBACK processClassReplacing(AEffect* e, float** inputs, float** outputs,
                                                VstInt32 sampleFrames) noexcept;
  static void VSTCALLBACK processClassDoubleReplacing(AEffect* e, double** inputs, double** outputs,
                                                      VstInt32 sampleFrames) noexcept;
  static void VSTCALLBACK setParameterClass(AEffect* e, VstInt32 index, float value) noexcept;
  static float VSTCALLBACK getParameterClass(AEffect* e, VstInt32 index) noexcept;

  // Adds to the outputs; hosts older than 2.4 only. No current effect serves it.
  virtual void process(float** /*inputs*/, float** /*outputs*/, VstInt32 /*sampleFrames*/) {}

 protected:
  // Asks the host; 0 without one.
  VstIntPtr callHost(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f);
  void setFlag(VstAEffectFlags flag, bool state);

  audioMasterCallback audioMaster;
  AEffEditor* editor = nullptr;
  float sampleRate = 44100.0f;
  VstInt32 blockSize = 1024;
  VstInt32 numPrograms;
  VstInt32 numParams;
  VstInt32 curProgram = 0;
  AEffect cEffect;
};
