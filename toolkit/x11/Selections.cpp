// SPDX-License-Identifier: MIT
#include "toolkit/x11/Selections.h"

#include <algorithm>

namespace VSTGUI::X11 {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 2000ms;            // for each piece
constexpr std::size_t kMaxBytes = 4u << 20;   // of what others give
constexpr std::size_t kRequestOverhead = 64;  // bytes of a request beside its data

}  // namespace

bool OwnedSelection::own(std::vector<Offer> offers, xcb_timestamp_t time) {
  const std::size_t room = std::size_t{xcb_get_maximum_request_length(connection_)} * 4 - kRequestOverhead;
  const auto fits = [&](const Offer& offer) { return offer.bytes.size() <= room; };
  if (offers.empty() || !std::all_of(offers.begin(), offers.end(), fits)) return false;
  const auto request = xcb_set_selection_owner(connection_, window_, selection_, time);
  const Reply<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection_), nullptr));
  if (!owner || owner->owner != window_) return false;
  offers_ = std::move(offers);
  since_ = time;
  ownedBy_ = request.sequence;
  return true;
}

void OwnedSelection::disown(xcb_timestamp_t time) {
  if (!isOwned()) return;
  xcb_set_selection_owner(connection_, kNoWindow, selection_, time);
  offers_.clear();
}

bool OwnedSelection::takes(const xcb_generic_event_t& event) {
  const std::uint8_t type = eventType(event);
  if (type == XCB_SELECTION_CLEAR) {
    const auto& clear = eventAs<xcb_selection_clear_event_t>(event);
    if (clear.selection != selection_) return false;
    // The answer to an earlier `disown` may come after the selection was taken again.
    const bool stale = static_cast<std::int32_t>(event.full_sequence - ownedBy_) < 0;
    if (!stale) offers_.clear();
    return true;
  }
  if (type != XCB_SELECTION_REQUEST) return false;
  const auto& request = eventAs<xcb_selection_request_event_t>(event);
  if (request.selection != selection_) return false;
  answer(request);
  return true;
}

void OwnedSelection::answer(const xcb_selection_request_event_t& request) {
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = store(request);
  xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&notice));
  connection_.flush();
}

xcb_atom_t OwnedSelection::store(const xcb_selection_request_event_t& request) {
  // Old programs name no property and mean the target's.
  const xcb_atom_t property = request.property == kNoAtom ? request.target : request.property;
  if (request.target == connection_.atom(Name::kTargets)) {
    std::vector<std::uint32_t> targets{connection_.atom(Name::kTargets), connection_.atom(Name::kTimestamp)};
    for (const Offer& offer : offers_) targets.push_back(offer.type);
    connection_.setProperty(request.requestor, property, XCB_ATOM_ATOM, targets);
    return property;
  }
  if (request.target == connection_.atom(Name::kTimestamp)) {
    connection_.setProperty(request.requestor, property, XCB_ATOM_INTEGER, std::vector<std::uint32_t>{since_});
    return property;
  }
  const auto offer =
      std::find_if(offers_.begin(), offers_.end(), [&](const Offer& o) { return o.type == request.target; });
  if (offer == offers_.end()) return kNoAtom;
  connection_.setProperty(request.requestor, property, offer->type, offer->bytes);
  return property;
}

void SelectionReader::ask(xcb_atom_t selection, xcb_atom_t type, xcb_timestamp_t time) {
  reset();
  selection_ = selection;
  type_ = type;
  state_ = State::kWaiting;
  deadline_ = Clock::now() + kPatience;
  xcb_delete_property(connection_, window_, property_);
  xcb_convert_selection(connection_, window_, selection, type, property_, time);
  connection_.flush();
}

void SelectionReader::reset() {
  state_ = State::kIdle;
  inPieces_ = false;
  bytes_.clear();
}

SelectionReader::State SelectionReader::state() {
  if (state_ == State::kWaiting && Clock::now() > deadline_) state_ = State::kRefused;
  return state_;
}

bool SelectionReader::takes(const xcb_generic_event_t& event) {
  if (state_ != State::kWaiting) return false;
  const std::uint8_t type = eventType(event);
  if (type == XCB_SELECTION_NOTIFY) {
    const auto& notice = eventAs<xcb_selection_notify_event_t>(event);
    if (notice.selection != selection_ || notice.target != type_) return false;
    if (notice.property == kNoAtom) {
      state_ = State::kRefused;
    } else {
      takePiece();
    }
    return true;
  }
  if (type != XCB_PROPERTY_NOTIFY) return false;
  const auto& change = eventAs<xcb_property_notify_event_t>(event);
  if (change.window != window_ || change.atom != property_) return false;
  if (inPieces_ && change.state == XCB_PROPERTY_NEW_VALUE) takePiece();
  return true;
}

// Reading a piece removes it, which asks for the next; an empty one is the end.
void SelectionReader::takePiece() {
  Connection::Property piece = connection_.property(window_, property_, true);
  connection_.flush();
  deadline_ = Clock::now() + kPatience;
  if (!inPieces_ && piece.type == connection_.atom(Name::kIncr)) {
    inPieces_ = true;
    return;
  }
  const bool end = !inPieces_ || piece.bytes.empty();
  bytes_ += piece.bytes;
  if (bytes_.size() > kMaxBytes) {
    state_ = State::kRefused;
  } else if (end) {
    state_ = State::kDone;
  }
}

}  // namespace VSTGUI::X11
