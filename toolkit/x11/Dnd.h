// SPDX-License-Identifier: MIT
// Drag and drop between programs, by the XDND protocol, version 5. [ui]
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "toolkit/base/PlatformFrame.h"
#include "toolkit/x11/Canvas.h"
#include "toolkit/x11/Selections.h"

namespace VSTGUI {
class CBitmap;
class CDropSource;
}  // namespace VSTGUI

namespace VSTGUI::X11 {

// "file:///a%20b" for a path's bytes, and back. The back way is none for other schemes and for other machines' files.
[[nodiscard]] std::string uriOfPath(std::string_view path);
[[nodiscard]] std::optional<std::string> pathOfUri(std::string_view uri);

// What comes from outside. Data is fetched while the drag is on its way, so that views see it from the first moment on.
class DropTarget {
 public:
  DropTarget(Connection& connection, xcb_window_t window, double scaleFactor, IPlatformFrameCallback* callback);
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;

  // Tells others that the window, which must be there by now, takes drags.
  void announce();
  // True for an event of a drag, which is seen to. The callback may have closed the frame, and with it this object.
  bool takes(const xcb_generic_event_t& event);
  // Gives up a source that doesn't answer.
  void tick();

 private:
  void enter(const xcb_client_message_data_t& data);
  void position(const xcb_client_message_data_t& data);
  void leave();
  [[nodiscard]] std::optional<CPoint> placeInWindow(std::int16_t rootX, std::int16_t rootY) const;
  void drop(const xcb_client_message_data_t& data);
  void dataArrived();
  void finishDrop();
  void sendStatus();
  void sendFinished(xcb_window_t source, bool accepted);
  void reset();
  [[nodiscard]] xcb_atom_t bestType(const xcb_client_message_data_t& data) const;
  [[nodiscard]] Counted<IDataPackage> package() const;

  Connection& connection_;
  xcb_window_t window_;
  double scale_;
  IPlatformFrameCallback* callback_;
  SelectionReader reader_;
  xcb_window_t source_ = kNoWindow;
  xcb_atom_t type_ = kNoAtom;      // none where nothing of use is offered
  Counted<IDataPackage> package_;  // once the data is here
  CPoint where_;
  bool hasPosition_ = false;
  bool entered_ = false;  // the callback knows of it
  bool dropped_ = false;
  std::shared_ptr<int> life_ = std::make_shared<int>();
};

// What goes out. The frame hands over pointer and keyboard events while `isDragging`.
class DragSource {
 public:
  DragSource(Connection& connection, xcb_window_t window, double scaleFactor);
  DragSource(const DragSource&) = delete;
  DragSource& operator=(const DragSource&) = delete;
  ~DragSource();

  // With the pointer at a place of the root window. False when pointer or selection couldn't be had.
  bool begin(IDataPackage* drag, CPoint offset, CBitmap* picture, int rootX, int rootY, xcb_timestamp_t time);
  // From the press to the release.
  [[nodiscard]] bool isDragging() const { return dragging_; }
  void moved(int rootX, int rootY, xcb_timestamp_t time);
  void released(xcb_timestamp_t time);
  void cancel();
  // True for an answer of a target, a request for the data, or an event of the picture's window.
  bool takes(const xcb_generic_event_t& event);
  // Gives up a target that doesn't answer.
  void tick();

 private:
  struct Target {
    xcb_window_t window = kNoWindow;
    xcb_window_t to = kNoWindow;  // where its messages go
    std::uint32_t version = 0;
  };
  struct Picture;

  [[nodiscard]] std::vector<Offer> offersOf(IDataPackage& drag) const;
  [[nodiscard]] Target targetAt(int rootX, int rootY) const;
  [[nodiscard]] Target asTarget(xcb_window_t window) const;
  void send(Name message, std::array<std::uint32_t, 4> words);
  void changeTarget(const Target& target);
  void sendPosition();
  void status(const xcb_client_message_data_t& data);
  void decide();
  void ungrab();
  void end();
  void showCursor();

  Connection& connection_;
  xcb_window_t window_;
  double scale_;
  OwnedSelection selection_;
  std::unique_ptr<Picture> picture_;
  Target target_;
  bool dragging_ = false;
  bool released_ = false;  // the target's last word is waited for
  bool dropSent_ = false;
  bool awaitsStatus_ = false;
  bool moved_ = false;  // since the last position was sent
  bool accepted_ = false;
  int rootX_ = 0;
  int rootY_ = 0;
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
  Clock::time_point deadline_;
};

}  // namespace VSTGUI::X11
