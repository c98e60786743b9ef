// SPDX-License-Identifier: MIT
// A view that holds others. The one added last is on top. [ui]
#pragma once

#include <vector>

#include "toolkit/base/CColor.h"
#include "toolkit/views/CView.h"

namespace VSTGUI {

class CViewContainer : public CView {
 public:
  explicit CViewContainer(const CRect& size);
  CViewContainer(const CViewContainer& other);  // with copies of the views
  ~CViewContainer() override;

  // Takes over the caller's reference. False, and nothing changes, for a view that is in a container already.
  virtual bool addView(CView* view);
  // Without `forget` the container's reference goes back to the caller. False for a view that isn't here.
  virtual bool removeView(CView* view, bool forget = true);
  virtual bool removeAll(bool forget = true);

  [[nodiscard]] std::uint32_t getNbViews() const { return static_cast<std::uint32_t>(views_.size()); }
  // From the lowest; null past the end.
  [[nodiscard]] CView* getView(std::uint32_t index) const;
  // Also views further down, with `deep`.
  [[nodiscard]] bool isChild(const CView* view, bool deep = false) const;
  // The topmost visible view under the point (in child coordinates) that takes the mouse; null for none. With `deep` it
  // goes down into containers and gives one of these only where none of its views lies.
  [[nodiscard]] CView* getViewAt(const CPoint& where, bool deep = false) const;

  void setBackgroundColor(const CColor& color);
  [[nodiscard]] const CColor& getBackgroundColor() const { return backgroundColor_; }
  // Asks for a repaint of all visible views that are dirty, here and further down.
  void invalidateDirtyViews();

  void draw(CDrawContext* context) override;
  [[nodiscard]] bool hitTest(const CPoint& where) const override;
  [[nodiscard]] CPoint childOrigin() const override { return getViewSize().getTopLeft(); }

  VSTGUI_CLASS_WITH_COPY(CViewContainer, CView)

 protected:
  // A view here, or one further down, is about to leave.
  virtual void viewWillBeRemoved(CView* view);

 private:
  void drawView(CDrawContext& context, CView& view);

  std::vector<CView*> views_;
  CColor backgroundColor_ = kTransparentCColor;
};

}  // namespace VSTGUI
