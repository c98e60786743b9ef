// SPDX-License-Identifier: MIT
// The popup of a menu while it is open: layout, drawing, pointer, keyboard. Internal to `COptionMenu`. [ui]
//
// Each open menu is a level with a popup window of its own; the first is the menu's, each further one a sub-menu of the
// level before. Points are in frame coordinates, item rectangles in those of their popup.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/popups/COptionMenu.h"
#include "toolkit/views/FramePopup.h"

namespace VSTGUI {

class CDrawContext;
class CFrame;

class MenuPopup : public FramePopup {
 public:
  // The menu that was used, this or a sub-menu, and the index in it; null and -1 for none.
  using Done = std::function<void(COptionMenu* menu, std::int32_t index)>;

  // Will open at `at`, the place of the menu's own view, which has just been pressed.
  MenuPopup(CFrame& frame, COptionMenu* menu, const CRect& at, Done done);
  MenuPopup(const MenuPopup&) = delete;
  MenuPopup& operator=(const MenuPopup&) = delete;
  ~MenuPopup() override;

  void open() override;
  void mouseDown(const CPoint& where) override;
  void mouseUp(const CPoint& where) override;
  void mouseMoved(const CPoint& where) override;
  void keyDown(const VstKeyCode& key) override;
  void draw(PopupId popup, CDrawContext& context) const override;
  void dismiss() override { finished_ = true; }
  // Once an item was chosen or the menu was left.
  [[nodiscard]] bool isFinished() const override { return finished_; }
  [[nodiscard]] const CView* getOwner() const override { return menu_; }
  [[nodiscard]] std::function<void()> takeReport() override;

 private:
  struct Choice {
    Counted<COptionMenu> menu;
    std::int32_t index = -1;
  };
  struct Level {
    Counted<COptionMenu> menu;
    PopupId popup = 0;
    CRect rect;                // of the popup, in frame coordinates
    std::vector<CRect> items;  // in the popup
    std::int32_t hover = -1;   // the highlighted item
    std::int32_t opened = -1;  // the item whose sub-menu is the next level
  };
  struct Place {
    std::size_t level;
    std::int32_t item;
  };
  class HoverDelay;

  [[nodiscard]] CRect layOut(Level& level, double maxHeight) const;
  void openLevel(COptionMenu* menu, const CRect& at, bool beside);
  void closeLevelsAbove(std::size_t level);
  void openSubmenu(std::size_t level, std::int32_t item);
  // The level that holds the point and its item there (-1 for none); the size of `levels_` for no level.
  [[nodiscard]] Place find(const CPoint& where) const;
  void setHover(std::size_t level, std::int32_t item);
  void choose(std::size_t level, std::int32_t item);
  void moveHover(std::int32_t from, std::int32_t step);
  void moveColumn(double direction);
  void jumpTo(std::int32_t character);
  void hoverSettled();
  void invalidate(const Level& level) const;
  void drawItem(CDrawContext& context, const Level& level, std::int32_t item) const;

  CFrame& frame_;
  Counted<COptionMenu> menu_;
  CRect owner_;
  Done done_;
  CPoint pressedAt_;
  std::uint32_t openedTicks_;
  bool ownPress_ = false;  // a press of its own came, after the one that opened it
  bool strayed_ = false;   // the opening press has been dragged
  bool finished_ = false;
  Choice choice_;
  PopupId nextPopup_ = 1;
  std::vector<Level> levels_;
  std::unique_ptr<HoverDelay> hoverDelay_;
};

}  // namespace VSTGUI
