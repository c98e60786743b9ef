// SPDX-License-Identifier: MIT
// The frame's 2.x half: pins, names, events, host queries. Effects derive from this class.
#pragma once

#include "vst2/audioeffect.h"

class AudioEffectX : public AudioEffect {
 public:
  using AudioEffect::AudioEffect;

  VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) override;

  virtual bool canParameterBeAutomated(VstInt32 /*index*/) { return true; }
  virtual bool string2parameter(VstInt32 /*index*/, char* /*text*/) { return false; }
  virtual bool getParameterProperties(VstInt32 /*index*/, VstParameterProperties* /*p*/) { return false; }
  virtual bool beginEdit(VstInt32 index);
  virtual bool endEdit(VstInt32 index);

  virtual bool getProgramNameIndexed(VstInt32 /*category*/, VstInt32 /*index*/, char* /*text*/) { return false; }
  virtual bool beginLoadBank(VstPatchChunkInfo* /*info*/) { return false; }
  virtual bool beginLoadProgram(VstPatchChunkInfo* /*info*/) { return false; }
  virtual bool ioChanged();

  virtual double updateSampleRate();
  virtual VstInt32 updateBlockSize();
  virtual VstInt32 getInputLatency();
  virtual VstInt32 getOutputLatency();

  virtual bool getInputProperties(VstInt32 /*index*/, VstPinProperties* /*pin*/) { return false; }
  virtual bool getOutputProperties(VstInt32 /*index*/, VstPinProperties* /*pin*/) { return false; }
  virtual bool setSpeakerArrangement(VstSpeakerArrangement* /*in*/, VstSpeakerArrangement* /*out*/) { return false; }
  virtual bool getSpeakerArrangement(VstSpeakerArrangement** in, VstSpeakerArrangement** out) {
    *in = *out = nullptr;
    return false;
  }
  virtual bool setBypass(bool /*on*/) { return false; }
  virtual bool setPanLaw(VstInt32 /*type*/, float /*value*/) { return false; }
  virtual bool setProcessPrecision(VstInt32 /*precision*/) { return false; }
  virtual VstInt32 getNumMidiInputChannels() { return 0; }
  virtual VstInt32 getNumMidiOutputChannels() { return 0; }

  // [audio] The host's clock at the first frame of the block, or null. `filter` names the flags that matter.
  virtual VstTimeInfo* getTimeInfo(VstInt32 filter);
  virtual VstInt32 getCurrentProcessLevel();
  virtual VstInt32 getAutomationState();
  virtual void wantEvents(VstInt32 filter = 1);
  virtual VstInt32 processEvents(VstEvents* /*events*/) { return 0; }
  // [audio] Hands MIDI to the host; true when it took it.
  bool sendVstEventsToHost(VstEvents* events);
  virtual VstInt32 startProcess() { return 0; }
  virtual VstInt32 stopProcess() { return 0; }

  virtual bool getHostVendorString(char* text);
  virtual bool getHostProductString(char* text);
  virtual VstInt32 getHostVendorVersion();
  virtual VstIntPtr hostVendorSpecific(VstInt32 tag, VstIntPtr value, void* ptr, float opt);
  // Above 0 for yes, 0 for an unknown text, below 0 for no.
  virtual VstInt32 canHostDo(const char* text);
  virtual VstInt32 getHostLanguage();

  virtual void isSynth(bool state = true) { setFlag(effFlagsIsSynth, state); }
  virtual void canMono(bool state = true) { setFlag(effFlagsCanMono, state); }
  // Samples that ring on after the input ends; 0 unknown, 1 none.
  virtual VstInt32 getGetTailSize() { return 0; }
  virtual void* getDirectory();
  virtual bool getEffectName(char* /*name*/) { return false; }
  virtual bool getVendorString(char* /*text*/) { return false; }
  virtual bool getProductString(char* /*text*/) { return false; }
  virtual VstInt32 getVendorVersion() { return 0; }
  virtual VstIntPtr vendorSpecific(VstInt32 /*tag*/, VstIntPtr /*value*/, void* /*ptr*/, float /*opt*/) { return 0; }
  virtual VstInt32 canDo(char* /*text*/) { return 0; }
  virtual VstInt32 getVstVersion() { return kVstVersion; }
  virtual VstPlugCategory getPlugCategory() { return kPlugCategUnknown; }

  virtual VstInt32 getMidiProgramName(VstInt32 /*channel*/, MidiProgramName* /*name*/) { return 0; }
  virtual VstInt32 getCurrentMidiProgram(VstInt32 /*channel*/, MidiProgramName* /*program*/) { return -1; }
  virtual VstInt32 getMidiProgramCategory(VstInt32 /*channel*/, MidiProgramCategory* /*category*/) { return 0; }
  virtual bool hasMidiProgramsChanged(VstInt32 /*channel*/) { return false; }
  virtual bool getMidiKeyName(VstInt32 /*channel*/, MidiKeyName* /*key*/) { return false; }

  virtual bool updateDisplay();
  // Asks the host to give the editor's window a new size in pixels.
  virtual bool sizeWindow(VstInt32 width, VstInt32 height);
};
