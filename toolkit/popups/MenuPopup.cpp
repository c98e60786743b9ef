// SPDX-License-Identifier: MIT
#include "toolkit/popups/MenuPopup.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "toolkit/drawing/Theme.h"
#include "toolkit/views/CFrame.h"
#include "toolkit/views/COffscreenContext.h"

namespace VSTGUI {

namespace {

// Sizes in units.
constexpr double kRowHeight = 19;
constexpr double kSeparatorHeight = 7;
constexpr double kBorder = 4;      // around the items
constexpr double kCheckRoom = 20;  // left of the title
constexpr double kArrowRoom = 20;  // right of it
constexpr double kMinWidth = 60;
constexpr double kMaxTitleWidth = 320;

// A press that opened the menu and was neither dragged this far nor held this long is a click: the menu stays open.
constexpr double kClickUnits = 4;
constexpr std::uint32_t kClickMs = 300;
constexpr std::uint32_t kHoverMs = 180;  // until a sub-menu under the pointer opens, or the one left closes

using namespace Theme;

CRect shifted(CRect rect, const CPoint& by) { return rect.offset(by.x, by.y); }

// Moves a span of `length` to where it ends inside of the room, its start winning where it doesn't fit.
double fitted(double start, double length, double roomStart, double roomEnd) {
  return std::max(roomStart, std::min(start, roomEnd - length));
}

}  // namespace

// Calls back once the pointer has rested on an item.
class MenuPopup::HoverDelay : private CBaseObject {
 public:
  explicit HoverDelay(MenuPopup& popup)
      : popup_(popup), timer_(Counted<CVSTGUITimer>::adopt(new CVSTGUITimer(this, kHoverMs))) {}
  HoverDelay(const HoverDelay&) = delete;
  HoverDelay& operator=(const HoverDelay&) = delete;
  ~HoverDelay() override { timer_->stop(); }
  void restart() {
    timer_->stop();
    timer_->start();
  }
  void cancel() { timer_->stop(); }
  [[nodiscard]] bool isRunning() const { return timer_->isRunning(); }

 private:
  CMessageResult notify(CBaseObject* /*sender*/, IdStringPtr /*message*/) override {
    timer_->stop();
    popup_.hoverSettled();
    return kMessageNotified;
  }

  MenuPopup& popup_;
  Counted<CVSTGUITimer> timer_;
};

MenuPopup::MenuPopup(CFrame& frame, COptionMenu* menu, const CRect& at, Done done)
    : frame_(frame),
      menu_(menu),
      owner_(at),
      done_(std::move(done)),
      pressedAt_(at.getTopLeft()),
      openedTicks_(CFrame::getTicks()),
      hoverDelay_(std::make_unique<HoverDelay>(*this)) {}

void MenuPopup::open() {
  frame_.getCurrentMouseLocation(pressedAt_);
  openLevel(menu_, owner_, false);
}

std::function<void()> MenuPopup::takeReport() {
  return [done = std::exchange(done_, nullptr), choice = choice_] { done(choice.menu, choice.index); };
}

MenuPopup::~MenuPopup() {
  auto* const window = frame_.getPlatformFrame();
  if (!window) return;
  for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) window->closePopup(level->popup);
}

CRect MenuPopup::layOut(Level& level, double maxHeight) const {
  const auto measure =
      Counted<COffscreenContext>::adopt(COffscreenContext::create(frame_.getPlatformFrame() ? &frame_ : nullptr, 1, 1));
  if (measure) measure->setFont(kNormalFont);
  const std::int32_t perColumn = level.menu->getNbItemsPerColumn();
  double left = kBorder;
  double y = kBorder;
  double width = kMinWidth;
  double bottom = kBorder;
  std::size_t columnStart = 0;
  const auto closeColumn = [&] {
    for (std::size_t i = columnStart; i < level.items.size(); ++i) level.items[i].right = left + width;
    columnStart = level.items.size();
    left += width;
    width = kMinWidth;
    y = kBorder;
  };
  for (std::int32_t i = 0; i < level.menu->getNbEntries(); ++i) {
    const CMenuItem* const item = level.menu->getEntry(i);
    const double height = item->isSeparator() ? kSeparatorHeight : kRowHeight;
    const auto inColumn = static_cast<std::int32_t>(level.items.size() - columnStart);
    if (inColumn > 0 && ((perColumn > 0 && inColumn >= perColumn) || y + height + kBorder > maxHeight)) closeColumn();
    const double title = measure ? std::min(measure->getStringWidth(item->getTitle()), kMaxTitleWidth) : 0;
    width = std::max(width, std::ceil(kCheckRoom + title + kArrowRoom));
    level.items.emplace_back(left, y, left, y + height);
    y += height;
    bottom = std::max(bottom, y);
  }
  closeColumn();
  return {0, 0, left + kBorder, bottom + kBorder};
}

void MenuPopup::openLevel(COptionMenu* menu, const CRect& at, bool beside) {
  Level level;
  level.menu = menu;
  level.popup = nextPopup_++;
  auto* const window = frame_.getPlatformFrame();
  const CRect room = window->getWorkArea();
  level.rect = layOut(level, room.getHeight());
  const double width = level.rect.getWidth();
  const double height = level.rect.getHeight();
  // Below its owner or beside its item; on the other side where that has no room.
  double x = beside ? at.right : at.left;
  double y = beside ? at.top - kBorder : at.bottom;
  if (beside && x + width > room.right) x = at.left - width;
  if (!beside && y + height > room.bottom && at.top - height >= room.top) y = at.top - height;
  level.rect.moveTo(fitted(x, width, room.left, room.right), fitted(y, height, room.top, room.bottom));
  window->openPopup(level.popup, level.rect);
  levels_.push_back(std::move(level));
}

void MenuPopup::closeLevelsAbove(std::size_t level) {
  auto* const window = frame_.getPlatformFrame();
  while (levels_.size() > level + 1) {
    window->closePopup(levels_.back().popup);
    levels_.pop_back();
  }
  levels_.back().opened = -1;
}

void MenuPopup::openSubmenu(std::size_t level, std::int32_t item) {
  if (levels_[level].opened == item) return;
  closeLevelsAbove(level);
  const CMenuItem* const entry = levels_[level].menu->getEntry(item);
  if (!entry || !entry->isEnabled() || !entry->getSubmenu() || entry->getSubmenu()->getNbEntries() == 0) return;
  levels_[level].opened = item;
  const CRect at = shifted(levels_[level].items[static_cast<std::size_t>(item)], levels_[level].rect.getTopLeft());
  openLevel(entry->getSubmenu(), at, true);
}

MenuPopup::Place MenuPopup::find(const CPoint& where) const {
  for (std::size_t i = levels_.size(); i-- > 0;) {
    const Level& level = levels_[i];
    if (!level.rect.holds(where)) continue;
    const CPoint inside = where - level.rect.getTopLeft();
    const auto item =
        std::find_if(level.items.begin(), level.items.end(), [&](const CRect& r) { return r.holds(inside); });
    return {i, item == level.items.end() ? -1 : static_cast<std::int32_t>(item - level.items.begin())};
  }
  return {levels_.size(), -1};
}

void MenuPopup::setHover(std::size_t level, std::int32_t item) {
  Level& changed = levels_[level];
  const CMenuItem* const entry = changed.menu->getEntry(item);
  if (entry && !entry->isEnabled()) item = -1;
  if (changed.hover == item) return;
  changed.hover = item;
  invalidate(changed);
}

void MenuPopup::mouseMoved(const CPoint& where) {
  const CPoint travel = where - pressedAt_;
  if (std::hypot(travel.x, travel.y) > kClickUnits) strayed_ = true;
  const Place place = find(where);
  if (place.level == levels_.size()) {
    if (levels_.back().hover != -1) setHover(levels_.size() - 1, -1);
    return;
  }
  // The way to a sub-menu stays lit while the pointer is in it.
  for (std::size_t i = 0; i < place.level; ++i) setHover(i, levels_[i].opened);
  const Level& level = levels_[place.level];
  const std::int32_t before = level.hover;
  setHover(place.level, place.item);
  const bool waits = level.hover != level.opened && !hoverDelay_->isRunning();  // it may be lit by a key
  if (level.hover != before || waits) hoverDelay_->restart();
}

void MenuPopup::hoverSettled() {
  for (std::size_t i = 0; i < levels_.size(); ++i) {
    if (levels_[i].hover == levels_[i].opened) continue;
    if (levels_[i].hover >= 0 || i + 1 < levels_.size()) openSubmenu(i, levels_[i].hover);
    return;
  }
}

void MenuPopup::mouseDown(const CPoint& where) {
  ownPress_ = true;
  const Place place = find(where);
  if (place.level == levels_.size()) {
    dismiss();
    return;
  }
  mouseMoved(where);
  if (place.item >= 0) openSubmenu(place.level, place.item);
}

void MenuPopup::mouseUp(const CPoint& where) {
  const bool meant = ownPress_ || strayed_ || CFrame::getTicks() - openedTicks_ > kClickMs;
  if (!meant) return;
  const Place place = find(where);
  if (place.level == levels_.size()) {
    if (!owner_.holds(where)) dismiss();
    return;
  }
  if (place.item >= 0) choose(place.level, place.item);
}

void MenuPopup::choose(std::size_t level, std::int32_t item) {
  const CMenuItem* const entry = levels_[level].menu->getEntry(item);
  if (!entry || !entry->isEnabled()) return;
  if (entry->getSubmenu()) {
    openSubmenu(level, item);
    return;
  }
  choice_ = {levels_[level].menu, item};
  finished_ = true;
}

void MenuPopup::keyDown(const VstKeyCode& key) {
  hoverDelay_->cancel();
  const std::size_t last = levels_.size() - 1;
  const std::int32_t hover = levels_[last].hover;
  const CMenuItem* const entry = levels_[last].menu->getEntry(hover);
  switch (key.virt) {
    case VKEY_DOWN:
      moveHover(hover, 1);
      break;
    case VKEY_UP:
      moveHover(hover < 0 ? levels_[last].menu->getNbEntries() : hover, -1);
      break;
    case VKEY_HOME:
      moveHover(-1, 1);
      break;
    case VKEY_END:
      moveHover(levels_[last].menu->getNbEntries(), -1);
      break;
    case VKEY_RETURN:
    case VKEY_ENTER:
    case VKEY_SPACE:
      choose(last, hover);
      if (levels_.size() - 1 > last) moveHover(-1, 1);
      break;
    case VKEY_RIGHT:
      if (entry && entry->getSubmenu()) {
        choose(last, hover);
        if (levels_.size() - 1 > last) moveHover(-1, 1);
      } else {
        moveColumn(1);
      }
      break;
    case VKEY_LEFT:
      if (hover >= 0 && levels_[last].items[static_cast<std::size_t>(hover)].left > kBorder) {
        moveColumn(-1);
      } else if (last > 0) {
        closeLevelsAbove(last - 1);
      }
      break;
    case VKEY_ESCAPE:
      if (last > 0) {
        closeLevelsAbove(last - 1);
      } else {
        dismiss();
      }
      break;
    default:
      jumpTo(key.character);
      break;
  }
}

// To the next item that can be chosen, and round at the ends.
void MenuPopup::moveHover(std::int32_t from, std::int32_t step) {
  const Level& level = levels_.back();
  const std::int32_t count = level.menu->getNbEntries();
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::int32_t item = ((from + step * i) % count + count) % count;
    if (!level.menu->getEntry(item)->isEnabled()) continue;
    setHover(levels_.size() - 1, item);
    return;
  }
}

// To the item beside the highlighted one, in the next column that way.
void MenuPopup::moveColumn(double direction) {
  const Level& level = levels_.back();
  if (level.hover < 0) return;
  const CRect& now = level.items[static_cast<std::size_t>(level.hover)];
  const double x = direction > 0 ? now.right + 1 : now.left - 1;
  for (std::size_t i = 0; i < level.items.size(); ++i) {
    if (!level.items[i].holds({x, now.getCenter().y})) continue;
    if (level.menu->getEntry(static_cast<std::int32_t>(i))->isEnabled())
      setHover(levels_.size() - 1, static_cast<std::int32_t>(i));
    return;
  }
}

void MenuPopup::jumpTo(std::int32_t character) {
  if (character <= ' ' || character > 0x7e) return;
  const Level& level = levels_.back();
  const std::int32_t count = level.menu->getNbEntries();
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::int32_t item = (std::max(level.hover, -1) + i) % count;
    const CMenuItem* const entry = level.menu->getEntry(item);
    const auto first = static_cast<unsigned char>(entry->getTitle()[0]);
    if (!entry->isEnabled() || std::tolower(first) != std::tolower(character)) continue;
    setHover(levels_.size() - 1, item);
    return;
  }
}

void MenuPopup::invalidate(const Level& level) const {
  frame_.getPlatformFrame()->invalidPopupRect(level.popup, {0, 0, level.rect.getWidth(), level.rect.getHeight()});
}

void MenuPopup::draw(PopupId popup, CDrawContext& context) const {
  const auto level = std::find_if(levels_.begin(), levels_.end(), [&](const Level& l) { return l.popup == popup; });
  if (level == levels_.end()) return;
  context.setDrawMode(kAliasing);
  context.setLineWidth(1);
  context.setFillColor(kBackColor);
  context.setFrameColor(kBorderColor);
  context.drawRect({0, 0, level->rect.getWidth(), level->rect.getHeight()}, kDrawFilledAndStroked);
  for (std::int32_t i = 0; i < level->menu->getNbEntries() && i < static_cast<std::int32_t>(level->items.size()); ++i)
    drawItem(context, *level, i);
}

void MenuPopup::drawItem(CDrawContext& context, const Level& level, std::int32_t index) const {
  const CMenuItem& item = *level.menu->getEntry(index);
  const CRect& row = level.items[static_cast<std::size_t>(index)];
  const double middle = row.getCenter().y;
  if (item.isSeparator()) {
    context.setFrameColor(kBorderColor);
    context.drawLine({row.left + kBorder, middle}, {row.right - kBorder, middle});
    return;
  }
  if (index == level.hover) {
    context.setFillColor(kHoverColor);
    context.drawRect(row, kDrawFilled);
  }
  const CColor color = item.isEnabled() ? kTextColor : kWeakColor;
  context.saveGlobalState();
  CRect title(row.left + kCheckRoom, row.top, row.right - kArrowRoom + kBorder, row.bottom);
  context.setClipRect(title);
  context.setFont(kNormalFont, 0, item.isTitle() ? kBoldFace : kNormalFace);
  context.setFontColor(color);
  context.drawString(item.getTitle(), title, kLeftText);
  context.restoreGlobalState();
  context.saveGlobalState();
  context.setDrawMode(kSmoothMode);
  const auto sign = Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
  if (item.isChecked()) {
    const double x = row.left + kCheckRoom / 2;
    sign->beginSubpath({x - 4, middle});
    sign->addLine({x - 1, middle + 3});
    sign->addLine({x + 4, middle - 4});
    context.setFrameColor(color);
    context.setLineWidth(1.5);
    context.drawGraphicsPath(sign, CDrawContext::kPathStroked);
  }
  if (item.getSubmenu()) {
    const auto arrow = Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
    const double x = row.right - kArrowRoom / 2;
    arrow->beginSubpath({x - 2, middle - 4});
    arrow->addLine({x + 3, middle});
    arrow->addLine({x - 2, middle + 4});
    arrow->closeSubpath();
    context.setFillColor(color);
    context.drawGraphicsPath(arrow, CDrawContext::kPathFilled);
  }
  context.restoreGlobalState();
}

}  // namespace VSTGUI
