// SPDX-License-Identifier: MIT
// Selections, which carry clipboard and drags: giving data to other programs and asking them for theirs. [ui]
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/x11/Connection.h"

namespace VSTGUI::X11 {

using Clock = std::chrono::steady_clock;

// One form of the data that a selection offers.
struct Offer {
  xcb_atom_t type;
  std::string bytes;
};

// Data that we offer under one selection, as long as nobody else takes it.
class OwnedSelection {
 public:
  OwnedSelection(Connection& connection, xcb_window_t window, Name selection)
      : connection_(connection), window_(window), selection_(connection.atom(selection)) {}

  // False when the server didn't give it to us, or the data is more than a request can carry.
  bool own(std::vector<Offer> offers, xcb_timestamp_t time);
  void disown(xcb_timestamp_t time);
  [[nodiscard]] bool isOwned() const { return !offers_.empty(); }
  [[nodiscard]] const std::vector<Offer>& offers() const { return offers_; }
  // True for an event of this selection, which is seen to.
  bool takes(const xcb_generic_event_t& event);

 private:
  void answer(const xcb_selection_request_event_t& request);
  // The property that now holds the answer; none when it was refused.
  [[nodiscard]] xcb_atom_t store(const xcb_selection_request_event_t& request);

  Connection& connection_;
  xcb_window_t window_;
  xcb_atom_t selection_;
  xcb_timestamp_t since_ = XCB_CURRENT_TIME;
  unsigned ownedBy_ = 0;  // the number of the request that took it
  std::vector<Offer> offers_;
};

// One request for somebody's data, in one piece or in several.
class SelectionReader {
 public:
  enum class State { kIdle, kWaiting, kDone, kRefused };

  SelectionReader(Connection& connection, xcb_window_t window, Name property)
      : connection_(connection), window_(window), property_(connection.atom(property)) {}

  void ask(xcb_atom_t selection, xcb_atom_t type, xcb_timestamp_t time);
  // True for an event of this request. A request that has waited for too long is refused at the next `state`.
  bool takes(const xcb_generic_event_t& event);
  [[nodiscard]] State state();
  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  void reset();

 private:
  void takePiece();

  Connection& connection_;
  xcb_window_t window_;
  xcb_atom_t property_;
  xcb_atom_t selection_ = kNoAtom;
  xcb_atom_t type_ = kNoAtom;
  State state_ = State::kIdle;
  bool inPieces_ = false;
  std::string bytes_;
  Clock::time_point deadline_;
};

}  // namespace VSTGUI::X11
