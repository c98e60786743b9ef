// SPDX-License-Identifier: MIT
#include "toolkit/popups/COptionMenu.h"

#include <algorithm>

#include "toolkit/base/CString.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/popups/MenuPopup.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

CMenuItem::CMenuItem(const char* title, std::int32_t flags) : title_(title ? title : ""), flags_(flags) {}

CMenuItem::CMenuItem(const char* title, COptionMenu* submenu)
    : title_(title ? title : ""), flags_(kNoFlags), submenu_(Counted<COptionMenu>::adopt(submenu)) {}

COptionMenu::COptionMenu(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CBitmap* background,
                         CBitmap* pressedBackground, std::int32_t initialStyle)
    : CParamDisplay(size, background, initialStyle), pressedBackground_(pressedBackground) {
  listener = toTell;
  tag = initialTag;
}

CMenuItem* COptionMenu::addEntry(CMenuItem* item, std::int32_t index) {
  if (!item) return nullptr;
  const bool append = index < 0 || index > getNbEntries();
  items_.insert(append ? items_.end() : items_.begin() + index, Counted<CMenuItem>::adopt(item));
  return item;
}

CMenuItem* COptionMenu::addEntry(COptionMenu* submenu, const char* title) {
  return addEntry(new CMenuItem(title, submenu));
}

CMenuItem* COptionMenu::addEntry(const char* title, std::int32_t index, std::int32_t flags) {
  return addEntry(new CMenuItem(title, flags), index);
}

CMenuItem* COptionMenu::addSeparator(std::int32_t index) { return addEntry("", index, CMenuItem::kSeparator); }

CMenuItem* COptionMenu::getEntry(std::int32_t index) const {
  return index >= 0 && index < getNbEntries() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

CMenuItem* COptionMenu::getCurrent() const { return getEntry(current_); }

std::int32_t COptionMenu::getCurrentIndex(bool countSeparators) const {
  if (!getCurrent()) return -1;
  if (countSeparators) return current_;
  return current_ - static_cast<std::int32_t>(std::count_if(items_.begin(), items_.begin() + current_,
                                                            [](const auto& item) { return item->isSeparator(); }));
}

bool COptionMenu::setCurrent(std::int32_t index, bool countSeparators) {
  std::int32_t wanted = index;
  if (!countSeparators) {
    wanted = 0;
    for (std::int32_t before = index; wanted < getNbEntries(); ++wanted)
      if (!getEntry(wanted)->isSeparator() && before-- == 0) break;
  }
  const CMenuItem* const item = index < 0 ? nullptr : getEntry(wanted);
  if (!item || item->isSeparator()) return false;
  current_ = wanted;
  setDirty();
  return true;
}

bool COptionMenu::removeEntry(std::int32_t index) {
  if (!getEntry(index)) return false;
  items_.erase(items_.begin() + index);
  if (current_ == index) current_ = -1;
  if (current_ > index) --current_;
  setDirty();
  return true;
}

bool COptionMenu::removeAllEntry() {
  items_.clear();
  lastMenu_ = nullptr;
  lastResult_ = current_ = -1;
  setDirty();
  return true;
}

bool COptionMenu::checkEntry(std::int32_t index, bool state) {
  CMenuItem* const item = getEntry(index);
  if (item) item->setChecked(state);
  return item != nullptr;
}

bool COptionMenu::checkEntryAlone(std::int32_t index) {
  for (const auto& item : items_) item->setChecked(false);
  return checkEntry(index, true);
}

bool COptionMenu::isCheckEntry(std::int32_t index) const {
  const CMenuItem* const item = getEntry(index);
  return item && item->isChecked();
}

COptionMenu* COptionMenu::getLastItemMenu(std::int32_t& index) const {
  index = lastResult_;
  if (lastResult_ < 0) return nullptr;
  return lastMenu_ ? lastMenu_.get() : const_cast<COptionMenu*>(this);
}

bool COptionMenu::popup() {
  CFrame* const frame = getFrame();
  if (!frame || items_.empty()) return false;
  CPoint corner = getViewSize().getTopLeft();
  localToFrame(corner);
  const CRect at(corner.x, corner.y, corner.x + getWidth(), corner.y + getHeight());
  const Counted<COptionMenu> alive = this;
  const auto done = [alive](COptionMenu* menu, std::int32_t index) {
    alive->popupOpen_ = false;
    alive->invalid();
    if (menu) alive->choose(menu, index);
  };
  popupOpen_ = frame->openPopup(std::make_unique<MenuPopup>(*frame, this, at, done));
  if (popupOpen_) invalid();
  return popupOpen_;
}

void COptionMenu::choose(COptionMenu* menu, std::int32_t index) {
  lastMenu_ = menu == this ? nullptr : menu;
  lastResult_ = index;
  menu->current_ = index;
  beginEdit();
  if (menu == this) setValue(static_cast<float>(index));
  valueChanged();
  endEdit();
}

void COptionMenu::draw(CDrawContext* context) {
  if (popupOpen_ && pressedBackground_) {
    pressedBackground_->draw(context, getViewSize(), backOffset);
  } else {
    drawBack(context);
  }
  if (const CMenuItem* const item = getCurrent())
    drawPlatformText(context, CString(item->getTitle()).getPlatformString());
  setDirty(false);
}

CMouseEventResult COptionMenu::onMouseDown(CPoint& /*where*/, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  popup();
  return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

std::int32_t COptionMenu::onKeyDown(VstKeyCode& key) {
  const bool opens = key.virt == VKEY_RETURN || key.virt == VKEY_ENTER || key.virt == VKEY_SPACE ||
                     key.virt == VKEY_DOWN || key.character == ' ';
  return opens && popup() ? kKeyHandled : kKeyNotHandled;
}

}  // namespace VSTGUI
