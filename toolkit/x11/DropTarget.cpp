// SPDX-License-Identifier: MIT
#include <algorithm>

#include "toolkit/base/IDataPackage.h"
#include "toolkit/x11/Dnd.h"

namespace VSTGUI::X11 {

namespace {

constexpr std::uint32_t kVersion = 5;

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isPlainInUri(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("/-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::string uriOfPath(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string uri = "file://";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (isPlainInUri(c)) {
      uri += c;
    } else {
      uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return uri;
}

std::optional<std::string> pathOfUri(std::string_view uri) {
  constexpr std::string_view kScheme = "file://";
  constexpr std::string_view kHere = "localhost";
  if (!uri.starts_with(kScheme)) return std::nullopt;
  uri.remove_prefix(kScheme.size());
  if (uri.starts_with(kHere)) uri.remove_prefix(kHere.size());
  if (!uri.starts_with('/')) return std::nullopt;
  std::string path;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    const bool coded = uri[i] == '%' && i + 2 < uri.size() && hexValue(uri[i + 1]) >= 0 && hexValue(uri[i + 2]) >= 0;
    const int byte = coded ? hexValue(uri[i + 1]) * 16 + hexValue(uri[i + 2]) : static_cast<unsigned char>(uri[i]);
    if (byte == 0) return std::nullopt;  // would cut the path short
    path += static_cast<char>(byte);
    if (coded) i += 2;
  }
  return path;
}

DropTarget::DropTarget(Connection& connection, xcb_window_t window, double scaleFactor,
                       IPlatformFrameCallback* callback)
    : connection_(connection),
      window_(window),
      scale_(scaleFactor),
      callback_(callback),
      reader_(connection, window, Name::kDropProperty) {}

void DropTarget::announce() {
  connection_.setProperty(window_, connection_.atom(Name::kXdndAware), XCB_ATOM_ATOM,
                          std::vector<std::uint32_t>{kVersion});
}

bool DropTarget::takes(const xcb_generic_event_t& event) {
  const std::uint8_t type = eventType(event);
  if (type == XCB_DESTROY_NOTIFY && source_ != kNoWindow && source_ != window_ &&
      eventAs<xcb_destroy_notify_event_t>(event).window == source_) {
    leave();
    return true;
  }
  if (reader_.takes(event)) {
    if (reader_.state() != SelectionReader::State::kWaiting) dataArrived();
    return true;
  }
  if (type != XCB_CLIENT_MESSAGE) return false;
  const auto& message = eventAs<xcb_client_message_event_t>(event);
  const auto is = [&](Name name) { return message.type == connection_.atom(name) && message.format == 32; };
  if (is(Name::kXdndEnter)) {
    enter(message.data);
    return true;
  }
  if (!is(Name::kXdndPosition) && !is(Name::kXdndLeave) && !is(Name::kXdndDrop)) return false;
  if (message.data.data32[0] != source_) return true;  // a drag that is over
  if (is(Name::kXdndPosition))
    position(message.data);
  else if (is(Name::kXdndLeave))
    leave();
  else
    drop(message.data);
  return true;
}

void DropTarget::tick() {
  if (source_ != kNoWindow && type_ != kNoAtom && reader_.state() == SelectionReader::State::kRefused) dataArrived();
}

xcb_atom_t DropTarget::bestType(const xcb_client_message_data_t& data) const {
  std::vector<std::uint32_t> types(std::begin(data.data32) + 2, std::end(data.data32));
  if (data.data32[1] & 1) types = connection_.property(data.data32[0], connection_.atom(Name::kXdndTypeList)).words();
  for (const Name name : {Name::kTextUriList, Name::kUtf8String, Name::kTextPlainUtf8, Name::kTextPlain})
    if (std::find(types.begin(), types.end(), connection_.atom(name)) != types.end()) return connection_.atom(name);
  return kNoAtom;
}

void DropTarget::enter(const xcb_client_message_data_t& data) {
  const std::weak_ptr<int> alive = life_;
  leave();  // for a last source that didn't say goodbye
  if (alive.expired()) return;
  const NoPipeSignal guard;
  source_ = data.data32[0];
  type_ = bestType(data);
  if (source_ == window_) return;
  constexpr std::uint32_t kMask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, source_, XCB_CW_EVENT_MASK, &kMask);  // to hear of its end
}

void DropTarget::position(const xcb_client_message_data_t& data) {
  const auto x = static_cast<std::int16_t>(data.data32[2] >> 16);
  const auto y = static_cast<std::int16_t>(data.data32[2] & 0xffff);
  if (const auto here = placeInWindow(x, y)) where_ = *here;
  hasPosition_ = true;
  if (type_ != kNoAtom && reader_.state() == SelectionReader::State::kIdle && !package_)
    reader_.ask(connection_.atom(Name::kXdndSelection), type_, data.data32[3]);
  sendStatus();
  if (!package_) return;
  if (entered_) {
    callback_->platformDragMove(package_, where_);
  } else {
    entered_ = true;
    callback_->platformDragEnter(package_, where_);
  }
}

std::optional<CPoint> DropTarget::placeInWindow(std::int16_t rootX, std::int16_t rootY) const {
  const NoPipeSignal guard;
  const auto here = connection_.translated(connection_.root(), window_, rootX, rootY);
  return here ? std::optional(CPoint(here->x / scale_, here->y / scale_)) : std::nullopt;
}

void DropTarget::leave() {
  const Counted<IDataPackage> drag = package_;
  const bool told = entered_;
  reset();
  if (told) callback_->platformDragLeave(drag, where_);
}

void DropTarget::drop(const xcb_client_message_data_t& data) {
  dropped_ = true;
  if (package_ || type_ == kNoAtom || reader_.state() == SelectionReader::State::kRefused) {
    finishDrop();
  } else if (reader_.state() == SelectionReader::State::kIdle) {
    reader_.ask(connection_.atom(Name::kXdndSelection), type_, data.data32[2]);
  }
}

void DropTarget::dataArrived() {
  if (reader_.state() == SelectionReader::State::kDone) package_ = package();
  if (!package_) type_ = kNoAtom;
  reader_.reset();
  if (dropped_) {
    finishDrop();
  } else if (package_ && hasPosition_) {
    entered_ = true;
    callback_->platformDragEnter(package_, where_);
  }
}

void DropTarget::finishDrop() {
  const Counted<IDataPackage> drag = package_;
  const xcb_window_t source = source_;
  const std::weak_ptr<int> alive = life_;
  reset();
  const bool taken = drag && callback_->platformDrop(drag, where_);
  if (!alive.expired()) sendFinished(source, taken);
}

void DropTarget::sendStatus() {
  const bool willing = type_ != kNoAtom;
  constexpr std::uint32_t kAccepts = 1;
  constexpr std::uint32_t kWantsEveryMove = 2;
  connection_.sendMessage(source_, source_, connection_.atom(Name::kXdndStatus),
                          {window_, kWantsEveryMove | (willing ? kAccepts : 0), 0, 0,
                           willing ? connection_.atom(Name::kXdndActionCopy) : kNoAtom});
  connection_.flush();
}

void DropTarget::sendFinished(xcb_window_t source, bool accepted) {
  connection_.sendMessage(
      source, source, connection_.atom(Name::kXdndFinished),
      {window_, accepted ? 1u : 0u, accepted ? connection_.atom(Name::kXdndActionCopy) : kNoAtom, 0, 0});
  connection_.flush();
}

void DropTarget::reset() {
  reader_.reset();
  source_ = kNoWindow;
  type_ = kNoAtom;
  package_ = nullptr;
  hasPosition_ = entered_ = dropped_ = false;
}

Counted<IDataPackage> DropTarget::package() const {
  auto made = Counted<CDropSource>::adopt(new CDropSource);
  const auto add = [&](std::string_view text, IDataPackage::Type type) {
    made->add(text.data(), static_cast<std::uint32_t>(text.size()), type);
  };
  std::string_view text = reader_.bytes();
  if (type_ != connection_.atom(Name::kTextUriList)) {
    add(text, IDataPackage::kText);
    return Counted<IDataPackage>(made.get());
  }
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    if (const auto path = pathOfUri(text.substr(0, end))) add(*path, IDataPackage::kFilePath);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return made->getCount() > 0 ? Counted<IDataPackage>(made.get()) : Counted<IDataPackage>();
}

}  // namespace VSTGUI::X11
