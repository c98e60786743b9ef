// SPDX-License-Identifier: MIT
// The editor's side of the VST 2.4 frame: what a host's editor opcodes reach. All calls come on the user-interface
// thread, except `setParameter`, which comes on whatever thread changed the parameter.
#pragma once

#include "vst2/aeffect.h"

class AudioEffect;

class AEffEditor {
 public:
  explicit AEffEditor(AudioEffect* owner = nullptr) : effect(owner) {}
  virtual ~AEffEditor() = default;
  AEffEditor(const AEffEditor&) = delete;
  AEffEditor& operator=(const AEffEditor&) = delete;

  virtual AudioEffect* getEffect() { return effect; }
  // Points `rect` at the window's size; the rectangle belongs to the editor.
  virtual bool getRect(ERect** rect) {
    *rect = nullptr;
    return false;
  }
  // `parent` is the platform's window: an X11 window number on Linux.
  virtual bool open(void* parent) {
    systemWindow = parent;
    return false;
  }
  virtual void close() { systemWindow = nullptr; }
  virtual bool isOpen() { return systemWindow != nullptr; }
  virtual void idle() {}
  virtual bool onKeyDown(VstKeyCode&) { return false; }
  virtual bool onKeyUp(VstKeyCode&) { return false; }
  virtual bool onWheel(float) { return false; }
  virtual bool setKnobMode(VstInt32) { return false; }

  // [any] A parameter changed, or a notice of the effect came; must neither draw nor wait.
  virtual void setParameter(VstInt32 /*index*/, float /*value*/) {}

 protected:
  AudioEffect* effect;
  void* systemWindow = nullptr;
};
