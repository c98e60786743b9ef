// The popup of a menu while it is open: layout, drawing, pointer, keyboard. Internal to the frame. [ui]
//
// Each open menu is a level with a popup window of its own; the first is the menu's, each further one a sub-menu of the
// level before. Points are in frame coordinates, item rectangles in those of their popup.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/base/PlatformFrame.h"
#include "toolkit/popups/COptionMenu.h"

namespace VSTGUI {

class CDrawContext;
class CFrame;

class MenuPopup {
 public:
  struct Choice {
    Counted<COptionMenu> menu;  // null for none
    std::int32_t index = -1;
  };

  // Opens at `at`, the place of the menu's own view, just pressed with the pointer at `pressedAt`.
  MenuPopup(CFrame& frame, COptionMenu* menu, const CRect& at, const CPoint& pressedAt);
  MenuPopup(const MenuPopup&) = delete;
  MenuPopup& operator=(const MenuPopup&) = delete;
  ~MenuPopup();

  void mouseDown(const CPoint& where);
  void mouseUp(const CPoint& where);
  void mouseMoved(const CPoint& where);
  void keyDown(const VstKeyCode& key);
  void draw(PopupId popup, CDrawContext& context) const;
  void dismiss() { finished_ = true; }

  // True once an item was chosen or the menu was left; the owner then takes the choice and destroys the popup.
  [[nodiscard]] bool isFinished() const { return finished_; }
  [[nodiscard]] const Choice& getChoice() const { return choice_; }
  [[nodiscard]] COptionMenu* getMenu() const { return levels_.front().menu; }

 private:
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
  CRect owner_;
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
