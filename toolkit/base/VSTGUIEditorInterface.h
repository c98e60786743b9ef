// SPDX-License-Identifier: MIT
// What a frame asks of the editor that owns it. [ui]
#pragma once

#include <cstdint>

namespace VSTGUI {

class CFrame;
struct CRect;

enum CKnobMode : std::int32_t { kCircularMode = 0, kRelativCircularMode = 1, kLinearMode = 2 };

class VSTGUIEditorInterface {
 public:
  virtual ~VSTGUIEditorInterface() = default;

  // Lets waiting events run while something takes long.
  virtual void doIdleStuff() {}
  [[nodiscard]] virtual std::int32_t getKnobMode() const { return kCircularMode; }
  virtual void beginEdit(std::int32_t /*tag*/) {}
  virtual void endEdit(std::int32_t /*tag*/) {}
  // Before the frame and the host's window change their size; false refuses.
  virtual bool beforeSizeChange(const CRect& /*newSize*/, const CRect& /*oldSize*/) { return true; }
  [[nodiscard]] virtual CFrame* getFrame() const { return nullptr; }
};

}  // namespace VSTGUI
