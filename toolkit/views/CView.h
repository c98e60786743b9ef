// SPDX-License-Identifier: MIT
// Everything on screen. [ui] but setDirty and isDirty, which any thread may call.
//
// A view's rectangle, the points of its events and what it draws are in the coordinates of its parent, whose top left
// corner is (0, 0). A view gets into a container with `addView`, which takes it over, is drawn from then on, and leaves
// with `removeView`.
#pragma once

#include <atomic>

#include "threads/Shared.h"
#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/Events.h"
#include "toolkit/base/Geometry.h"
#include "toolkit/drawing/CBitmap.h"

namespace VSTGUI {

class CDrawContext;
class CFrame;
class CViewContainer;
class IDataPackage;

class CView : public CBaseObject {
 public:
  explicit CView(const CRect& size);
  CView(const CView& other);  // the copy stands in no container
  CView& operator=(const CView&) = delete;
  ~CView() override = default;

  virtual void draw(CDrawContext* context);
  // A press that is answered with kMouseEventHandled brings the moves and the release here too, wherever they happen.
  virtual CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons);
  virtual CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons);
  virtual CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons);
  virtual CMouseEventResult onMouseEntered(CPoint& where, const CButtonState& buttons);
  virtual CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons);
  // `distance` is 1 for a notch away from the user, -1 for one towards. True when handled.
  virtual bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons);
  virtual bool onDrop(IDataPackage* drag, const CPoint& where);
  virtual void onDragEnter(IDataPackage* drag, const CPoint& where);
  virtual void onDragLeave(IDataPackage* drag, const CPoint& where);
  virtual void onDragMove(IDataPackage* drag, const CPoint& where);
  // kKeyHandled or kKeyNotHandled.
  virtual std::int32_t onKeyDown(VstKeyCode& key);
  virtual void looseFocus() {}
  virtual void takeFocus() {}

  virtual std::int32_t onKeyUp(VstKeyCode& key);
  virtual void setViewSize(const CRect& size, bool invalidate = true);
  virtual void invalidRect(const CRect& rect);
  virtual void setDirty(bool dirty = true);
  [[nodiscard]] virtual bool isDirty() const;
  virtual void setVisible(bool visible);
  virtual void setMouseEnabled(bool enabled = true);
  virtual void setBackground(CBitmap* background);
  // Whether `where` is a place at which this view wants the mouse.
  [[nodiscard]] virtual bool hitTest(const CPoint& where) const;
  virtual void attached(CViewContainer* parent);
  virtual void removed();
  // Where a child's (0, 0) lies in this view's own coordinates. The same point for views without children.
  [[nodiscard]] virtual CPoint childOrigin() const { return {}; }
  // Differs after each setDirty(true) and each change of what a drawing shows, so that none that comes from another
  // thread while it is being drawn is lost.
  [[nodiscard]] virtual std::uint32_t shownState() const;

  void invalid() { invalidRect(size_); }
  [[nodiscard]] const CRect& getViewSize() const { return size_; }
  CRect& getViewSize(CRect& rect) const { return rect = size_; }
  [[nodiscard]] CCoord getWidth() const { return size_.getWidth(); }
  [[nodiscard]] CCoord getHeight() const { return size_.getHeight(); }
  // The part that takes the mouse; `setViewSize` leaves it as it is.
  void setMouseableArea(const CRect& area) { mouseableArea_ = area; }
  [[nodiscard]] const CRect& getMouseableArea() const { return mouseableArea_; }
  [[nodiscard]] bool getMouseEnabled() const { return mouseEnabled_; }
  [[nodiscard]] bool isVisible() const { return visible_; }
  // A transparent view leaves what is below it where its background doesn't cover it.
  void setTransparency(bool transparent) { transparent_ = transparent; }
  [[nodiscard]] bool getTransparency() const { return transparent_; }
  void setWantsFocus(bool wants) { wantsFocus_ = wants; }
  [[nodiscard]] bool wantsFocus() const { return wantsFocus_; }
  [[nodiscard]] CBitmap* getBackground() const { return background_; }
  // Shown in place of the background while the mouse is disabled.
  void setDisabledBackground(CBitmap* background);
  [[nodiscard]] CBitmap* getDisabledBackground() const { return disabledBackground_; }
  // The one of the two that is to be drawn now.
  [[nodiscard]] CBitmap* getDrawBackground() const;

  // In a container, which need not be in a frame itself.
  [[nodiscard]] bool isAttached() const { return parent_ != nullptr; }
  [[nodiscard]] CViewContainer* getParentView() const { return parent_; }
  // Null while the view is in no frame.
  [[nodiscard]] virtual CFrame* getFrame() const;
  // From the coordinates of this view's rectangle to those of the frame, and back.
  CPoint& localToFrame(CPoint& point) const;
  CPoint& frameToLocal(CPoint& point) const;

  VSTGUI_CLASS_WITH_COPY(CView, CBaseObject)

 private:
  CRect size_;
  CRect mouseableArea_;
  CViewContainer* parent_ = nullptr;
  Counted<CBitmap> background_;
  Counted<CBitmap> disabledBackground_;
  std::atomic<std::uint32_t> dirtyMarks_ = 0;  // how often setDirty(true) was called
  Shared<std::uint32_t> drawnMarks_ = 0;       // how many of these have been seen to
  bool visible_ = true;
  bool mouseEnabled_ = true;
  bool transparent_ = false;
  bool wantsFocus_ = false;
};

}  // namespace VSTGUI
