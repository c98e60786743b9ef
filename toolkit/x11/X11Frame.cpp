// SPDX-License-Identifier: MIT
#include "toolkit/x11/X11Frame.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <glib.h>

#include "toolkit/base/IDataPackage.h"
#include "toolkit/base/Utf8.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/x11/ButtonWord.h"

namespace VSTGUI::X11 {

namespace {

constexpr double kMaxPixels = 32767;  // a side of a window or picture
constexpr int kSelectionPollMs = 5;   // between looks at the other frames while data is waited for
constexpr std::uint32_t kXembedVersion = 0;
constexpr std::uint32_t kXembedMapped = 1;
constexpr std::uint32_t kXembedRequestFocus = 3;

constexpr std::uint32_t kPointerEvents = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                         XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW |
                                         XCB_EVENT_MASK_LEAVE_WINDOW;
constexpr std::uint32_t kFrameEvents = kPointerEvents | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                       XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint32_t kKeyEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
constexpr std::uint32_t kPopupEvents = kPointerEvents | XCB_EVENT_MASK_EXPOSURE;

// Bits of a pixel that are no colour are opaque.
std::uint32_t pixelOf(const xcb_visualtype_t& visual, const CColor& color) {
  const auto channel = [](std::uint32_t mask, std::uint32_t value) {
    const int shift = std::countr_zero(mask);
    return mask == 0 ? 0 : (mask >> shift) * value / 255 << shift;
  };
  return channel(visual.red_mask, color.red) | channel(visual.green_mask, color.green) |
         channel(visual.blue_mask, color.blue) | ~(visual.red_mask | visual.green_mask | visual.blue_mask);
}

std::string utf8OfLatin1(const std::string& text) {
  std::string converted;
  for (const char c : text) appendUtf8(converted, static_cast<unsigned char>(c));
  return converted;
}

}  // namespace

std::unique_ptr<Frame> Frame::open(X11Platform& platform, IPlatformFrameCallback* callback, const CRect& size,
                                   void* parent) {
  const NoPipeSignal guard;
  auto connection = Connection::open();
  const auto window = static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(parent));
  if (!connection || window == kNoWindow) return nullptr;
  std::unique_ptr<Frame> frame(new Frame(platform, callback, std::move(connection), window));
  return frame->createWindow(size) ? std::move(frame) : nullptr;
}

Frame::Frame(X11Platform& platform, IPlatformFrameCallback* callback, std::unique_ptr<Connection> connection,
             xcb_window_t parent)
    : platform_(platform),
      callback_(callback),
      connection_(std::move(connection)),
      parent_(parent),
      window_(xcb_generate_id(*connection_)),
      scale_(connection_->scaleFactor()),
      keyboard_(*connection_),
      clipboard_(*connection_, window_, Name::kClipboard),
      paste_(*connection_, window_, Name::kPasteProperty),
      dropTarget_(*connection_, window_, scale_, callback),
      dragSource_(*connection_, window_, scale_) {
  platform_.frames_.push_back(this);
}

bool Frame::createWindow(const CRect& size) {
  Connection& c = *connection_;
  const auto attributesCookie = xcb_get_window_attributes(c, parent_);
  const auto [width, height] = pixelsOf(size);
  const Reply<xcb_get_window_attributes_reply_t> host(xcb_get_window_attributes_reply(c, attributesCookie, nullptr));
  const auto* const visual = host ? c.visual(host->visual) : nullptr;
  if (!visual) return false;
  const std::array<std::uint32_t, 4> values{pixelOf(*visual, callback_->platformBackground()), XCB_GRAVITY_NORTH_WEST,
                                            kFrameEvents, c.cursor(kCursorDefault)};
  const auto created = xcb_create_window_checked(
      c, XCB_COPY_FROM_PARENT, window_, parent_, 0, 0, static_cast<std::uint16_t>(width),
      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
      XCB_CW_BACK_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_EVENT_MASK | XCB_CW_CURSOR, values.data());
  if (const Reply<xcb_generic_error_t> error{xcb_request_check(c, created)}) return false;
  canvas_ = std::make_unique<Canvas>(c, window_, *visual, width, height, scale_);
  if (c.isLost() || !canvas_->isUsable()) return false;
  c.setProperty(window_, c.atom(Name::kXembedInfo), c.atom(Name::kXembedInfo),
                std::vector<std::uint32_t>{kXembedVersion, kXembedMapped});
  dropTarget_.announce();
  xcb_map_window(c, window_);
  c.flush();
  return true;
}

Frame::~Frame() {
  const NoPipeSignal guard;
  std::erase(platform_.frames_, this);
  selectors_.clear();
  dragSource_.cancel();
  popups_.clear();
  if (canvas_) canvas_->detachFromServer();
  canvas_.reset();
}

Frame::PixelSize Frame::pixelsOf(const CRect& size) const {
  const auto pixels = [&](double units) {
    return static_cast<int>(std::clamp(std::ceil(units * scale_), 1.0, kMaxPixels));
  };
  return {pixels(size.getWidth()), pixels(size.getHeight())};
}

bool Frame::setSize(CCoord width, CCoord height) {
  const NoPipeSignal guard;
  if (connection_->isLost() || std::max(width, height) * scale_ > kMaxPixels) return false;
  const PixelSize before = pixelsOf(canvas_->size());
  const PixelSize now = pixelsOf({0, 0, width, height});
  const std::array<std::uint32_t, 2> size{static_cast<std::uint32_t>(now.width),
                                          static_cast<std::uint32_t>(now.height)};
  const auto resized = xcb_configure_window_checked(*connection_, window_,
                                                    XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
  if (const Reply<xcb_generic_error_t> error{xcb_request_check(*connection_, resized)}) return false;
  if (connection_->isLost() || !canvas_->resize(now.width, now.height)) return false;
  fitParent(before, now);
  return true;
}

// A host that can't be asked to resize its window, or didn't, gets it resized: where the window fitted before, and
// where it would cut the frame off.
void Frame::fitParent(PixelSize before, PixelSize now) {
  if (parent_ == connection_->root()) return;
  const Reply<xcb_get_geometry_reply_t> host(
      xcb_get_geometry_reply(*connection_, xcb_get_geometry(*connection_, parent_), nullptr));
  if (!host) return;
  const bool fitted = host->width == before.width && host->height == before.height;
  if (!fitted && host->width >= now.width && host->height >= now.height) return;
  const std::array<std::uint32_t, 2> size{
      static_cast<std::uint32_t>(fitted ? now.width : std::max<int>(host->width, now.width)),
      static_cast<std::uint32_t>(fitted ? now.height : std::max<int>(host->height, now.height))};
  xcb_configure_window(*connection_, parent_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
  connection_->flush();
}

CPoint Frame::origin() const {
  const auto place = connection_->translated(window_, connection_->root(), 0, 0);
  return place ? CPoint(place->x, place->y) : CPoint();
}

bool Frame::isViewable() const {
  const NoPipeSignal guard;
  const Reply<xcb_get_window_attributes_reply_t> attributes(
      xcb_get_window_attributes_reply(*connection_, xcb_get_window_attributes(*connection_, window_), nullptr));
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void Frame::paintNow() {
  if (painting_) return;
  const NoPipeSignal guard;
  if (!paintFrame()) return;
  paintPopups();
  connection_->flush();
}

bool Frame::paintFrame() {
  const std::weak_ptr<int> alive = life_;
  painting_ = true;
  for (const CRect& rect : canvas_->takeDamage()) {
    const auto context = Counted<CDrawContext>::adopt(new CDrawContext(canvas_->surface(), canvas_->size(), scale_));
    callback_->platformDraw(*context, rect);
    if (alive.expired()) return false;
    canvas_->present(rect);
  }
  painting_ = false;
  return true;
}

// The menu that draws these doesn't call anybody.
void Frame::paintPopups() {
  for (auto& [id, popup] : popups_) {
    for (const CRect& rect : popup.canvas->takeDamage()) {
      const auto context =
          Counted<CDrawContext>::adopt(new CDrawContext(popup.canvas->surface(), popup.canvas->size(), scale_));
      callback_->platformPopupDraw(id, *context, rect);
      popup.canvas->present(rect);
    }
  }
}

void Frame::processEvents() {
  const std::weak_ptr<int> alive = life_;
  if (!deliverEvents()) return;
  platform_.runTimers();
  if (alive.expired() || !pollSelectors() || !watchPopups()) return;
  paintNow();
}

// A menu can't stay over a window that was hidden.
bool Frame::watchPopups() {
  if (popups_.empty()) return true;
  if (isViewable()) {
    grabForPopups();
    return true;
  }
  const std::weak_ptr<int> alive = life_;
  callback_->platformPopupsDismissed();
  return !alive.expired();
}

Reply<xcb_query_pointer_reply_t> Frame::askPointer() const {
  const NoPipeSignal guard;
  return Reply<xcb_query_pointer_reply_t>(
      xcb_query_pointer_reply(*connection_, xcb_query_pointer(*connection_, window_), nullptr));
}

bool Frame::getCurrentMousePosition(CPoint& where) const {
  const auto pointer = askPointer();
  if (!pointer || !pointer->same_screen) return false;
  where = {pointer->win_x / scale_, pointer->win_y / scale_};
  return true;
}

CButtonState Frame::getCurrentMouseButtons() const {
  const auto pointer = askPointer();
  return pointer ? wordOf(pointer->mask) | heldBeyondState() : 0;
}

void Frame::setMouseCursor(CCursorType cursor) {
  if (cursor == cursor_) return;
  const NoPipeSignal guard;
  cursor_ = cursor;
  const std::uint32_t value = connection_->cursor(cursor);
  xcb_change_window_attributes(*connection_, window_, XCB_CW_CURSOR, &value);
  connection_->flush();
}

// Keys are asked for only while they are wanted: the server gives those that are pressed over our window to us first,
// and the host would miss them.
void Frame::setWantsKeyboard(bool wants) {
  const NoPipeSignal guard;
  wantsKeyboard_ = wants;
  askForKeys(wants);
  if (wants && !keyboardGrabbed_) takeFocus();
  if (!wants) returnFocus();
  connection_->flush();
}

void Frame::askForKeys(bool wanted) {
  const std::uint32_t mask = wanted ? kFrameEvents | kKeyEvents : kFrameEvents;
  xcb_change_window_attributes(*connection_, window_, XCB_CW_EVENT_MASK, &mask);
  if (!wanted) keyboard_.reset();
}

std::optional<xcb_window_t> Frame::askFocus() const {
  const Reply<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(*connection_, xcb_get_input_focus(*connection_), nullptr));
  return focus ? std::optional(focus->focus) : std::nullopt;
}

void Frame::takeFocus() {
  const NoPipeSignal guard;
  if (embedder_ != kNoWindow) {
    if (!tookFocus_)
      connection_->sendMessage(embedder_, embedder_, connection_->atom(Name::kXembed),
                               {time_, kXembedRequestFocus, 0, 0, 0});
    tookFocus_ = true;
    return;
  }
  const auto focus = askFocus();
  if (!focus || *focus == window_) return;
  tookFocus_ = true;
  focusBefore_ = *focus;
  xcb_set_input_focus(*connection_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
}

void Frame::returnFocus() {
  if (!tookFocus_) return;
  tookFocus_ = false;
  if (embedder_ != kNoWindow) return;  // it keeps the keyboard itself
  const auto focus = askFocus();
  if (!focus || *focus != window_) return;  // somebody has it already
  const auto given = xcb_set_input_focus_checked(*connection_, XCB_INPUT_FOCUS_PARENT, focusBefore_, XCB_CURRENT_TIME);
  if (const Reply<xcb_generic_error_t> error{xcb_request_check(*connection_, given)})
    xcb_set_input_focus(*connection_, XCB_INPUT_FOCUS_PARENT, connection_->topLevelOf(parent_), XCB_CURRENT_TIME);
}

CRect Frame::getWorkArea() const {
  const NoPipeSignal guard;
  const CPoint corner = origin();
  const CRect size = canvas_->size();
  CRect area =
      connection_->monitorAt(corner.x + size.getWidth() * scale_ / 2, corner.y + size.getHeight() * scale_ / 2);
  area.offset(-corner.x, -corner.y);
  return {area.left / scale_, area.top / scale_, area.right / scale_, area.bottom / scale_};
}

void Frame::openPopup(PopupId popup, const CRect& rect) {
  const NoPipeSignal guard;
  closePopup(popup);
  Connection& c = *connection_;
  const auto* const visual = c.visual(c.screen().root_visual);
  if (!visual || c.isLost()) return;
  const CPoint corner = origin();
  const auto [width, height] = pixelsOf(rect);
  const xcb_window_t window = xcb_generate_id(c);
  constexpr std::uint32_t kUnmanaged = 1;
  constexpr std::uint32_t kSaveUnder = 1;
  const std::array<std::uint32_t, 4> values{c.screen().black_pixel, kUnmanaged, kSaveUnder, kPopupEvents};
  xcb_create_window(
      c, XCB_COPY_FROM_PARENT, window, c.root(), static_cast<std::int16_t>(std::lround(corner.x + rect.left * scale_)),
      static_cast<std::int16_t>(std::lround(corner.y + rect.top * scale_)), static_cast<std::uint16_t>(width),
      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, c.screen().root_visual,
      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_SAVE_UNDER | XCB_CW_EVENT_MASK, values.data());
  c.setProperty(window, c.atom(Name::kNetWmWindowType), XCB_ATOM_ATOM,
                std::vector<std::uint32_t>{c.atom(Name::kNetWmWindowTypePopupMenu)});
  c.setProperty(window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, std::vector<std::uint32_t>{c.topLevelOf(parent_)});
  auto canvas = std::make_unique<Canvas>(c, window, *visual, width, height, scale_);
  canvas->invalidate(canvas->size());
  popups_[popup] = {window, rect, std::move(canvas)};
  xcb_map_window(c, window);
  grabForPopups();
  c.flush();
}

void Frame::closePopup(PopupId popup) {
  const auto found = popups_.find(popup);
  if (found == popups_.end()) return;
  const NoPipeSignal guard;
  found->second.canvas.reset();
  xcb_destroy_window(*connection_, found->second.window);
  popups_.erase(found);
  if (popups_.empty()) {
    if (pointerGrabbed_) xcb_ungrab_pointer(*connection_, XCB_CURRENT_TIME);
    if (keyboardGrabbed_) xcb_ungrab_keyboard(*connection_, XCB_CURRENT_TIME);
    pointerGrabbed_ = keyboardGrabbed_ = false;
  }
  connection_->flush();
}

// The pointer may still be held by whoever got the press that led here; then it is tried again at the next idle.
void Frame::grabForPopups() {
  const NoPipeSignal guard;
  if (!pointerGrabbed_) pointerGrabbed_ = connection_->grabPointer(window_, kPointerEvents, kCursorDefault);
  if (keyboardGrabbed_) return;
  const Reply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(
      *connection_,
      xcb_grab_keyboard(*connection_, 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
      nullptr));
  keyboardGrabbed_ = grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
}

void Frame::invalidPopupRect(PopupId popup, const CRect& rect) {
  if (const auto found = popups_.find(popup); found != popups_.end()) found->second.canvas->invalidate(rect);
}

std::string Frame::getClipboardText() {
  const NoPipeSignal guard;
  readEvents();  // the clipboard may be somebody else's by now
  if (clipboard_.isOwned()) return clipboard_.offers().front().bytes;
  const xcb_atom_t selection = connection_->atom(Name::kClipboard);
  std::string text;
  paste_.ask(selection, connection_->atom(Name::kUtf8String), time_);
  if (waitFor(paste_)) {
    text = paste_.bytes();
  } else if (paste_.ask(selection, XCB_ATOM_STRING, time_); waitFor(paste_)) {
    text = utf8OfLatin1(paste_.bytes());
  }
  paste_.reset();
  text.resize(std::min(text.find('\0'), text.size()));
  return g_utf8_validate(text.c_str(), -1, nullptr) ? text : std::string();
}

bool Frame::waitFor(SelectionReader& reader) {
  while (reader.state() == SelectionReader::State::kWaiting && !connection_->isLost()) {
    connection_->waitReadable(kSelectionPollMs);
    platform_.readEventsOfAll();
  }
  return reader.state() == SelectionReader::State::kDone;
}

void Frame::setClipboardText(const std::string& text) {
  const NoPipeSignal guard;
  std::vector<Offer> offers;
  for (const Name name : {Name::kUtf8String, Name::kTextPlainUtf8}) offers.push_back({connection_->atom(name), text});
  clipboard_.own(std::move(offers), time_);
}

bool Frame::doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture) {
  const NoPipeSignal guard;
  if (!drag || held_ == 0 || !popups_.empty()) return false;
  return dragSource_.begin(drag, offset, picture, rootX_, rootY_, time_);
}

bool Frame::runFileSelector(const FileSelectorRequest& request, IFileSelectorCallback* callback) {
  const NoPipeSignal guard;
  RunningSelector running{callback, request, 0, nullptr};
  if (!nextStage(running)) return false;
  selectors_.push_back(std::move(running));
  return true;
}

bool Frame::nextStage(RunningSelector& running) {
  const xcb_window_t owner = connection_->topLevelOf(parent_);
  running.selector.reset();
  while (!running.selector && running.stage < platform_.selectors.size()) {
    switch (platform_.selectors[running.stage++]) {
      case X11Platform::Selector::kPortal:
        running.selector = portalSelector(running.request, owner);
        break;
      case X11Platform::Selector::kProgram:
        running.selector = programSelector(running.request, owner);
        break;
      case X11Platform::Selector::kBrowser:
        running.selector = browserSelector(running.request, owner, platform_.typeOfThis());
        break;
    }
  }
  return running.selector != nullptr;
}

bool Frame::pollSelectors() {
  const std::weak_ptr<int> alive = life_;
  for (std::size_t i = 0; i < selectors_.size();) {
    const FileSelector::State state = selectors_[i].selector->poll();
    if (alive.expired()) return false;
    if (i >= selectors_.size()) break;
    if (state == FileSelector::State::kRunning ||
        (state == FileSelector::State::kUnavailable && nextStage(selectors_[i]))) {
      ++i;
      continue;
    }
    const RunningSelector done = std::move(selectors_[i]);
    selectors_.erase(selectors_.begin() + static_cast<std::ptrdiff_t>(i));
    done.callback->fileSelectorDone(done.selector ? done.selector->paths() : std::vector<std::string>());
    if (alive.expired()) return false;
  }
  return true;
}

void Frame::cancelFileSelector(IFileSelectorCallback* callback) {
  const NoPipeSignal guard;
  std::erase_if(selectors_, [&](const RunningSelector& running) { return running.callback == callback; });
}

}  // namespace VSTGUI::X11
