// SPDX-License-Identifier: MIT
// A view with a value and a listener.
//
// [ui] but setValue, getValue, setDirty and isDirty, which any thread may call: they write and read one aligned value
// or flag, and the frame's idle finds what has to be drawn anew.
#pragma once

#include <cstdint>
#include <vector>

#include "threads/Shared.h"
#include "toolkit/base/IControlListener.h"
#include "toolkit/views/CView.h"
#include "toolkit/views/IFocusDrawing.h"

namespace VSTGUI {

// An object whose changes others want to hear of; they must take themselves off before they go.
class IDependency {
 public:
  virtual ~IDependency() = default;
  void addDependent(CBaseObject* dependent);
  void removeDependent(CBaseObject* dependent);

 protected:
  IDependency() = default;
  IDependency(const IDependency&) {}  // nobody listens to the copy yet
  IDependency& operator=(const IDependency&) = delete;
  void notifyDependents(CBaseObject* sender, IdStringPtr message);

 private:
  std::vector<CBaseObject*> dependents_;
};

extern const std::int32_t kDefaultValueModifier;  // Control: a left press with it brings the default value
extern const std::int32_t kZoomModifier;          // Shift: a drag with it is finer
extern const IdStringPtr kMsgValueChanged;        // to the dependents of a control

class CControl : public CView, public IFocusDrawing, public IDependency {
 public:
  explicit CControl(const CRect& size, IControlListener* listener = nullptr, std::int32_t tag = 0,
                    CBitmap* background = nullptr);
  CControl(const CControl& other);  // values as they stand, the same listener, no dependents

  virtual void setValue(float newValue) { value = newValue; }
  [[nodiscard]] virtual float getValue() const { return value; }
  // 0 at the minimum, 1 at the maximum; limited to that range.
  virtual void setValueNormalized(float normalized);
  [[nodiscard]] virtual float getValueNormalized() const;
  virtual void setMin(float minimum);
  [[nodiscard]] virtual float getMin() const { return vmin; }
  virtual void setMax(float maximum);
  [[nodiscard]] virtual float getMax() const { return vmax; }
  virtual void setOldValue(float previous) { oldValue = previous; }
  [[nodiscard]] virtual float getOldValue() const { return oldValue; }
  virtual void setDefaultValue(float newDefault) { defaultValue = newDefault; }
  [[nodiscard]] virtual float getDefaultValue() const { return defaultValue; }
  // Limits the value to minimum and maximum.
  virtual void bounceValue();
  // True for the left button with Control alone. The value then goes to the default and is reported as one edit; where
  // it stands there already nothing is reported.
  virtual bool checkDefaultValue(CButtonState buttons);
  // Tells the listener.
  virtual void valueChanged();
  virtual void setModulatorRanges(float /*low*/, float /*high*/, bool /*toggle*/, bool /*flag*/) {}
  virtual void setModulatorIsAssigned(std::uint8_t /*assigned*/) {}
  virtual void setPostMatrixValue(float /*value*/) {}
  virtual void setTag(std::int32_t newTag);
  [[nodiscard]] virtual std::int32_t getTag() const { return tag; }
  // Told to the listener and to the frame's editor.
  virtual void beginEdit();
  virtual void endEdit();
  [[nodiscard]] virtual IControlListener* getListener() const { return listener; }
  virtual void setListener(IControlListener* newListener) { listener = newListener; }
  // Where the part of the background that is drawn starts.
  virtual void setBackOffset(const CPoint& offset);
  [[nodiscard]] virtual const CPoint& getBackOffset() const { return backOffset; }
  // Draws the background's part into the view.
  virtual void copyBackOffset(CDrawContext* context);
  // Part of the range that one notch of the wheel moves.
  virtual void setWheelInc(float increment) { wheelInc = increment; }
  [[nodiscard]] virtual float getWheelInc() const { return wheelInc; }
  // Lets the editor's waiting events run.
  virtual void doIdleStuff();
  [[nodiscard]] bool drawFocusOnTop() override { return false; }
  bool getFocusPath(CGraphicsPath& path) override;

  void draw(CDrawContext* context) override;
  // The listener's MouseOver and MouseExit.
  CMouseEventResult onMouseEntered(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons) override;
  // Clearing takes the value as shown: the old value becomes the value.
  void setDirty(bool dirty = true) override;
  // True also when the value is no longer the old value.
  [[nodiscard]] bool isDirty() const override;
  [[nodiscard]] std::uint32_t shownState() const override;

  VSTGUI_CLASS_WITH_COPY(CControl, CView)

 protected:
  // The listener's controlModifierClicked, where a modifier is held; true if the listener keeps the press.
  bool modifierClicked(CButtonState buttons);

  Shared<std::int32_t> tag;
  Shared<float> oldValue = 1.0f;
  Shared<float> defaultValue = 0.5f;
  Shared<float> value = 0.0f;
  Shared<float> vmin = 0.0f;
  Shared<float> vmax = 1.0f;
  IControlListener* listener;
  CPoint backOffset;
  float wheelInc = 0.1f;
};

// A control whose bitmap holds several images, one below the other.
class IMultiBitmapControl {
 public:
  virtual ~IMultiBitmapControl() = default;
  virtual void setHeightOfOneImage(CCoord height) { heightOfOneImage = height; }
  [[nodiscard]] virtual CCoord getHeightOfOneImage() const { return heightOfOneImage; }
  // How many whole images a bitmap holds, at least 1.
  [[nodiscard]] std::int32_t imageCount(const CBitmap* bitmap) const;

 protected:
  explicit IMultiBitmapControl(CCoord height) : heightOfOneImage(height) {}
  CCoord heightOfOneImage;
};

}  // namespace VSTGUI
