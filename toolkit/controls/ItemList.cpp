// SPDX-License-Identifier: MIT
#include "toolkit/controls/ItemList.h"

#include <algorithm>
#include <cctype>

#include "toolkit/controls/ThemeDrawing.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/Theme.h"

namespace VSTGUI {

namespace {

using namespace Theme;

// Sizes in units.
constexpr double kRowHeight = 19;
constexpr double kBarWidth = 10;
constexpr double kMinThumb = 24;
constexpr double kSignRoom = 28;  // left of the title
constexpr double kRowsAWheelNotch = 3;

void drawFolderSign(CDrawContext& context, const CPoint& at) {
  context.setDrawMode(kSmoothMode);
  const auto shape = Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
  shape->addRect({at.x, at.y - 3, at.x + 13, at.y + 5});
  shape->addRect({at.x, at.y - 5, at.x + 6, at.y - 3});
  context.setFillColor(kWeakColor);
  context.drawGraphicsPath(shape, CDrawContext::kPathFilled);
}

}  // namespace

ItemList::ItemList(const CRect& size, Listener listener) : CView(size), listener_(std::move(listener)) {
  setWantsFocus(true);
}

void ItemList::setItems(std::vector<Item> items) {
  items_ = std::move(items);
  selected_.assign(items_.size(), false);
  current_ = 0;
  scrollTo(0);
}

std::vector<std::size_t> ItemList::selection() const {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < selected_.size(); ++i)
    if (selected_[i]) chosen.push_back(i);
  return chosen;
}

void ItemList::draw(CDrawContext* context) {
  drawBox(*context, getViewSize(), kSunkenColor, kBorderColor);
  context->limitClipRect(rows());
  const auto first = static_cast<std::size_t>(top_ / kRowHeight);
  for (std::size_t i = first; i < items_.size() && rowAt(i).top < rows().bottom; ++i) drawRow(*context, i);
  if (maxTop() <= 0) return;
  context->setFillColor(kBorderColor);
  context->drawRect(thumb(), kDrawFilled);
}

void ItemList::drawRow(CDrawContext& context, std::size_t index) const {
  CRect row = rowAt(index);
  if (selected_[index]) {
    context.setDrawMode(kAliasing);
    context.setFillColor(kHoverColor);
    context.drawRect(row, kDrawFilled);
  }
  if (items_[index].isFolder) drawFolderSign(context, {row.left + 8, row.getCenter().y});
  row.left += kSignRoom;
  drawTextLine(context, items_[index].title, row, kTextColor, kLeftText);
}

CMouseEventResult ItemList::onMouseDown(CPoint& where, const CButtonState& buttons) {
  if (!buttons.isLeftButton()) return kMouseEventNotHandled;
  if (maxTop() > 0 && where.x >= rows().right - kBarWidth) {
    gripY_ = where.y - thumb().top;
    if (gripY_ < 0 || gripY_ > thumb().getHeight()) gripY_ = thumb().getHeight() / 2;
    dragThumb(where.y);
    return kMouseEventHandled;
  }
  const auto index = static_cast<std::size_t>(std::max(0.0, (where.y - rows().top + top_) / kRowHeight));
  if (index < items_.size()) {
    select(index, allowsMultiple_ && (buttons & kControl) != 0);
    if (buttons.isDoubleClick() && listener_.activated) listener_.activated(index);
  }
  return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult ItemList::onMouseMoved(CPoint& where, const CButtonState& buttons) {
  if (buttons.isLeftButton()) dragThumb(where.y);
  return kMouseEventHandled;
}

bool ItemList::onWheel(const CPoint& /*where*/, const float& distance, const CButtonState& /*buttons*/) {
  scrollTo(top_ - static_cast<double>(distance) * kRowsAWheelNotch * kRowHeight);
  return true;
}

std::int32_t ItemList::onKeyDown(VstKeyCode& key) {
  return moveKey(key) || (listener_.keyDown && listener_.keyDown(key)) || jumpTo(key.character) ? kKeyHandled
                                                                                                : kKeyNotHandled;
}

bool ItemList::moveKey(const VstKeyCode& key) {
  const auto page = static_cast<std::ptrdiff_t>(rows().getHeight() / kRowHeight) - 1;
  const auto count = static_cast<std::ptrdiff_t>(items_.size());
  const auto at = static_cast<std::ptrdiff_t>(current_);
  switch (key.virt) {
    case VKEY_UP:
      moveTo(at - 1);
      return true;
    case VKEY_DOWN:
      moveTo(selection().empty() ? at : at + 1);
      return true;
    case VKEY_PAGEUP:
      moveTo(at - page);
      return true;
    case VKEY_PAGEDOWN:
      moveTo(at + page);
      return true;
    case VKEY_HOME:
      moveTo(0);
      return true;
    case VKEY_END:
      moveTo(count - 1);
      return true;
    default:
      return false;
  }
}

CRect ItemList::rows() const {
  CRect inside = getViewSize();
  return inside.inset(1, 1);
}

CRect ItemList::rowAt(std::size_t index) const {
  const CRect area = rows();
  const double y = area.top + static_cast<double>(index) * kRowHeight - top_;
  return {area.left, y, area.right - (maxTop() > 0 ? kBarWidth : 0), y + kRowHeight};
}

double ItemList::maxTop() const {
  return std::max(0.0, static_cast<double>(items_.size()) * kRowHeight - rows().getHeight());
}

CRect ItemList::thumb() const {
  const CRect area = rows();
  const double height = area.getHeight();
  const double length = std::max(kMinThumb, height * height / (height + maxTop()));
  const double y = area.top + (height - length) * top_ / maxTop();
  return {area.right - kBarWidth + 2, y, area.right - 2, y + length};
}

void ItemList::dragThumb(double y) {
  const double room = rows().getHeight() - thumb().getHeight();
  if (maxTop() > 0 && room > 0) scrollTo((y - gripY_ - rows().top) / room * maxTop());
}

void ItemList::scrollTo(double top) {
  top_ = std::clamp(top, 0.0, maxTop());
  invalid();
}

void ItemList::select(std::size_t index, bool add) {
  const bool before = selected_[index];
  if (!add) selected_.assign(items_.size(), false);
  selected_[index] = !(add && before);
  current_ = index;
  invalid();
  if (listener_.selectionChanged) listener_.selectionChanged();
}

void ItemList::moveTo(std::ptrdiff_t index) {
  if (items_.empty()) return;
  const auto last = static_cast<std::ptrdiff_t>(items_.size()) - 1;
  select(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last)), false);
  const double y = static_cast<double>(current_) * kRowHeight;
  scrollTo(std::clamp(top_, y + kRowHeight - rows().getHeight(), y));
}

bool ItemList::jumpTo(std::int32_t character) {
  if (character <= ' ' || character > 0x7e) return false;
  for (std::size_t step = 1; step <= items_.size(); ++step) {
    const std::size_t index = (current_ + step) % items_.size();
    if (std::tolower(static_cast<unsigned char>(items_[index].name[0])) != std::tolower(character)) continue;
    moveTo(static_cast<std::ptrdiff_t>(index));
    return true;
  }
  return false;
}

}  // namespace VSTGUI
