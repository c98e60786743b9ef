// SPDX-License-Identifier: MIT
// An editor of the host's kind on one frame of the widget layer: what the host asks goes to the frame, what the frame
// asks goes to the effect and its host. [ui]
//
// Hosts count in device pixels, views in frame units; this is where the two meet. Derived editors make `frame` in their
// `open` and forget it in their `close`.
#pragma once

#include <cstdint>

#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/views/CFrame.h"
#include "vst2/aeffeditor.h"
#include "vst2/audioeffectx.h"

class AEffGUIEditor : public AEffEditor, public VSTGUI::VSTGUIEditorInterface {
 public:
  // Becomes the effect's editor, which then owns it.
  explicit AEffGUIEditor(AudioEffectX* effect);
  ~AEffGUIEditor() override;

  bool getRect(ERect** editorRect) override;
  bool open(void* window) override;
  bool isOpen() override { return frame != nullptr; }
  void idle() override;
  // Repaints a rectangle of device pixels, or all of the frame for null.
  virtual void draw(ERect* area);
  bool onKeyDown(VstKeyCode& key) override;
  bool onKeyUp(VstKeyCode& key) override;
  // At the pointer's position; `distance` is 1 for a notch away from the user.
  bool onWheel(float distance) override;
  // For the knobs of all editors, a VSTGUI::CKnobMode.
  bool setKnobMode(VstInt32 mode) override;

  void doIdleStuff() override;
  [[nodiscard]] std::int32_t getKnobMode() const override;
  void beginEdit(std::int32_t index) override;
  void endEdit(std::int32_t index) override;
  bool beforeSizeChange(const VSTGUI::CRect& newSize, const VSTGUI::CRect& oldSize) override;
  [[nodiscard]] VSTGUI::CFrame* getFrame() const override { return frame; }

 protected:
  [[nodiscard]] AudioEffectX& host() const { return *static_cast<AudioEffectX*>(effect); }
  // Device pixels a unit: of the window, or of one that would open now.
  [[nodiscard]] double scaleFactor() const;
  // Tells the host the window's size in units; false when it doesn't resize.
  bool sizeWindow(double width, double height);
  // The window's size in units as hosts are told it.
  void setRect(double width, double height);

  VSTGUI::CFrame* frame = nullptr;  // null while closed
  ERect rect;                       // of the window, in device pixels

 private:
  std::uint32_t lastTicks_;  // ms, of the last turn given to the host
  bool inIdleStuff_ = false;
};
