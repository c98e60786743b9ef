// SPDX-License-Identifier: MIT
// Menus: a display that opens a popup of items and sub-menus. [ui]
//
// A left press opens the popup and returns; once an item is chosen the menu under the pointer at the start reports it:
// its last result and last item menu are set, and `valueChanged` follows inside beginEdit and endEdit. A popup that is
// left without a choice reports nothing.
#pragma once

#include <string>
#include <vector>

#include "toolkit/controls/CParamDisplay.h"

namespace VSTGUI {

class COptionMenu;

class CMenuItem : public CBaseObject {
 public:
  enum Flags : std::int32_t { kNoFlags = 0, kDisabled = 1, kTitle = 2, kChecked = 4, kSeparator = 8 };

  explicit CMenuItem(const char* title, std::int32_t flags = kNoFlags);
  // Takes over the caller's reference of the sub-menu.
  CMenuItem(const char* title, COptionMenu* submenu);
  CMenuItem(const CMenuItem& other) = default;  // both hold the same sub-menu

  [[nodiscard]] const char* getTitle() const { return title_.c_str(); }
  void setTitle(const char* title) { title_ = title ? title : ""; }
  // Null for a plain item.
  [[nodiscard]] COptionMenu* getSubmenu() const { return submenu_; }
  [[nodiscard]] bool isEnabled() const { return !(flags_ & (kDisabled | kTitle | kSeparator)); }
  [[nodiscard]] bool isChecked() const { return flags_ & kChecked; }
  [[nodiscard]] bool isTitle() const { return flags_ & kTitle; }
  [[nodiscard]] bool isSeparator() const { return flags_ & kSeparator; }
  void setChecked(bool checked) { flags_ = checked ? flags_ | kChecked : flags_ & ~kChecked; }
  void setEnabled(bool enabled) { flags_ = enabled ? flags_ & ~kDisabled : flags_ | kDisabled; }

  VSTGUI_CLASS_WITH_COPY(CMenuItem, CBaseObject)

 private:
  std::string title_;
  std::int32_t flags_;
  Counted<COptionMenu> submenu_;
};

class COptionMenu : public CParamDisplay {
 public:
  COptionMenu(const CRect& size, IControlListener* listener, std::int32_t tag, CBitmap* background = nullptr,
              CBitmap* pressedBackground = nullptr, std::int32_t style = 0);
  COptionMenu(const COptionMenu& other) = default;  // with the same items

  // An index of -1, or past the end, appends. The item is returned; it stays the menu's.
  //
  // The menu takes over the caller's reference of an item, and an item the caller's reference of a sub-menu. So a new
  // sub-menu goes with its item, and its maker must not forget it. Who keeps it too needs a reference of its own:
  //
  //   shell->remember();                 // one for the item, one stays here
  //   menu->addEntry(shell, "Folder");
  //   menu->removeAllEntry();            // gives back the item's
  //   shell->forget();                   // and this ours: it is gone, in either order
  virtual CMenuItem* addEntry(CMenuItem* item, std::int32_t index = -1);
  virtual CMenuItem* addEntry(COptionMenu* submenu, const char* title);
  virtual CMenuItem* addEntry(const char* title, std::int32_t index = -1, std::int32_t flags = CMenuItem::kNoFlags);
  virtual CMenuItem* addSeparator(std::int32_t index = -1);
  // Null outside of the menu.
  [[nodiscard]] virtual CMenuItem* getEntry(std::int32_t index) const;
  [[nodiscard]] virtual std::int32_t getNbEntries() const { return static_cast<std::int32_t>(items_.size()); }
  // The current item: the last one chosen or set in this menu itself; null for none.
  [[nodiscard]] virtual CMenuItem* getCurrent() const;
  // -1 for none. Without `countSeparators` separators have no number.
  [[nodiscard]] virtual std::int32_t getCurrentIndex(bool countSeparators = true) const;
  // False for an item that isn't there or is a separator.
  virtual bool setCurrent(std::int32_t index, bool countSeparators = true);
  virtual bool removeEntry(std::int32_t index);
  virtual bool removeAllEntry();
  virtual bool checkEntry(std::int32_t index, bool state);
  // Marks one item and clears the mark of all others.
  virtual bool checkEntryAlone(std::int32_t index);
  [[nodiscard]] virtual bool isCheckEntry(std::int32_t index) const;
  // Items in a column of the popup; 0 or below for a single column as long as the screen allows.
  virtual void setNbItemsPerColumn(std::int32_t count) { nbItemsPerColumn_ = count; }
  [[nodiscard]] virtual std::int32_t getNbItemsPerColumn() const { return nbItemsPerColumn_; }

  // The index of the last choice in the menu that was used, -1 before the first.
  [[nodiscard]] std::int32_t getLastResult() const { return lastResult_; }
  // The menu, this or a sub-menu, that was used, and the item's index in it; null and -1 before the first choice.
  COptionMenu* getLastItemMenu(std::int32_t& index) const;

  // Opens the popup at the view; false without a frame, without items or while another menu is open.
  bool popup();

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  // Return, Space and the down key open the popup.
  std::int32_t onKeyDown(VstKeyCode& key) override;

  VSTGUI_CLASS_WITH_COPY(COptionMenu, CParamDisplay)

 private:
  void choose(COptionMenu* menu, std::int32_t index);

  std::vector<Counted<CMenuItem>> items_;
  Counted<CBitmap> pressedBackground_;
  Counted<COptionMenu> lastMenu_;  // null for this menu itself
  std::int32_t current_ = -1;
  std::int32_t lastResult_ = -1;
  std::int32_t nbItemsPerColumn_ = -1;
  bool popupOpen_ = false;
};

}  // namespace VSTGUI
