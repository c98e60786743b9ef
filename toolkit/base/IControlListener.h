// SPDX-License-Identifier: MIT
// Who is told what the user does with a control. [ui]
#pragma once

#include <cstdint>

namespace VSTGUI {

class CControl;
class CButtonState;
class IDataPackage;
struct CPoint;

class IControlListener {
 public:
  virtual ~IControlListener() = default;

  virtual void valueChanged(CControl* control) = 0;
  // A press with a modifier on one of the toolkit's own buttons and switches; 1 keeps it from the control.
  virtual std::int32_t controlModifierClicked(CControl* /*control*/, CButtonState /*buttons*/);
  virtual void controlBeginEdit(CControl* /*control*/) {}
  virtual void controlEndEdit(CControl* /*control*/) {}
  virtual void controlTagWillChange(CControl* /*control*/) {}
  virtual void controlTagDidChange(CControl* /*control*/) {}
  // `dragOut` is true when a drag is to begin at the control, false when something was dropped on it.
  virtual void HandleDragDrop(CControl* /*control*/, IDataPackage* /*drag*/, bool /*dragOut*/,
                              const CPoint& /*where*/) {}
  virtual void HandleDragEnterLeave(CControl* /*control*/, IDataPackage* /*drag*/, bool /*enter*/,
                                    const CPoint& /*where*/) {}
  virtual void MouseOver(CControl* /*control*/) {}
  virtual void MouseExit(CControl* /*control*/) {}
};

}  // namespace VSTGUI
