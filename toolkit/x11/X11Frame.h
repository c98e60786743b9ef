// SPDX-License-Identifier: MIT
// One window in the host's window, with its popups, clipboard, drags and file selectors. [ui]
//
// The files: X11Frame.cpp has its life, size, painting, popups and services; X11FrameEvents.cpp what events do.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/x11/Canvas.h"
#include "toolkit/x11/Connection.h"
#include "toolkit/x11/Dnd.h"
#include "toolkit/x11/FileSelectors.h"
#include "toolkit/x11/Keyboard.h"
#include "toolkit/x11/Selections.h"
#include "toolkit/x11/X11Platform.h"

namespace VSTGUI::X11 {

class Frame : public IPlatformFrame {
 public:
  // Null without a display, or when there is no window `parent` to open in.
  [[nodiscard]] static std::unique_ptr<Frame> open(X11Platform& platform, IPlatformFrameCallback* callback,
                                                   const CRect& size, void* parent);
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  ~Frame() override;

  [[nodiscard]] double getScaleFactor() const override { return scale_; }
  bool setSize(CCoord width, CCoord height) override;
  void invalidRect(const CRect& rect) override { canvas_->invalidate(rect); }
  void paintNow() override;
  void processEvents() override;
  bool getCurrentMousePosition(CPoint& where) const override;
  [[nodiscard]] CButtonState getCurrentMouseButtons() const override;
  void setMouseCursor(CCursorType cursor) override;
  void setWantsKeyboard(bool wants) override;
  [[nodiscard]] CRect getWorkArea() const override;
  void openPopup(PopupId popup, const CRect& rect) override;
  void closePopup(PopupId popup) override;
  void invalidPopupRect(PopupId popup, const CRect& rect) override;
  [[nodiscard]] std::string getClipboardText() override;
  void setClipboardText(const std::string& text) override;
  bool doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture) override;
  bool runFileSelector(const FileSelectorRequest& request, IFileSelectorCallback* callback) override;
  void cancelFileSelector(IFileSelectorCallback* callback) override;

  // Takes what the server has sent. What needs no callback is seen to, the rest waits for `processEvents`.
  void readEvents();

 private:
  struct Popup {
    xcb_window_t window;
    CRect rect;  // in units, relative to the frame
    std::unique_ptr<Canvas> canvas;
  };
  struct RunningSelector {
    IFileSelectorCallback* callback;
    FileSelectorRequest request;
    std::size_t stage;  // how many of the platform's selectors have been tried
    std::unique_ptr<FileSelector> selector;
  };
  struct PixelSize {
    int width;
    int height;
  };

  Frame(X11Platform& platform, IPlatformFrameCallback* callback, std::unique_ptr<Connection> connection,
        xcb_window_t parent);
  bool createWindow(const CRect& size);
  [[nodiscard]] PixelSize pixelsOf(const CRect& size) const;
  void fitParent(PixelSize before, PixelSize now);
  // The frame's corner in the root window, in pixels.
  [[nodiscard]] CPoint origin() const;
  [[nodiscard]] bool isViewable() const;

  bool paintFrame();
  void paintPopups();
  void grabForPopups();
  [[nodiscard]] Reply<xcb_query_pointer_reply_t> askPointer() const;  // null when the connection is lost
  [[nodiscard]] std::optional<xcb_window_t> askFocus() const;
  void takeFocus();
  void returnFocus();
  void askForKeys(bool wanted);
  bool waitFor(SelectionReader& reader);

  // These, and what they call, may end with the frame closed and this object gone; those that give a bool are false
  // then.
  bool deliverEvents();
  bool pollSelectors();
  bool watchPopups();
  bool nextStage(RunningSelector& running);
  void handle(const xcb_generic_event_t& event);
  void onExpose(const xcb_expose_event_t& event);
  void onButton(const xcb_button_press_event_t& event, bool press);
  void onMotion(const xcb_button_press_event_t& event);
  void onCrossing(const xcb_enter_notify_event_t& event, bool enter);
  void onKey(const xcb_key_press_event_t& event, bool press);
  void onFocus(const xcb_focus_in_event_t& event, bool in);
  void onMessage(const xcb_client_message_event_t& event);
  void onDestroyed(xcb_window_t window);
  bool dragTakesPointer(const xcb_button_press_event_t& event, std::uint8_t type);
  void sendToHost(const xcb_key_press_event_t& event, bool press);
  // Buttons four and five, of which events have no state.
  [[nodiscard]] std::int32_t heldBeyondState() const { return held_ & (kButton4 | kButton5); }
  void notePointer(const xcb_button_press_event_t& event);
  // A place in one of our windows, in the frame's units.
  [[nodiscard]] CPoint unitsOf(xcb_window_t window, int x, int y) const;

  X11Platform& platform_;
  IPlatformFrameCallback* callback_;
  std::unique_ptr<Connection> connection_;
  xcb_window_t parent_;
  xcb_window_t window_;
  double scale_;
  std::unique_ptr<Canvas> canvas_;
  Keyboard keyboard_;
  OwnedSelection clipboard_;
  SelectionReader paste_;
  DropTarget dropTarget_;
  DragSource dragSource_;
  std::map<PopupId, Popup> popups_;
  std::vector<RunningSelector> selectors_;
  std::deque<Event> events_;
  std::shared_ptr<int> life_ = std::make_shared<int>();

  CCursorType cursor_ = kCursorDefault;
  std::int32_t held_ = 0;  // buttons that went down here and are still down
  int rootX_ = 0;          // of the last pointer event
  int rootY_ = 0;
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;  // of the last event of the user
  xcb_window_t embedder_ = kNoWindow;        // once it has spoken by the XEmbed protocol
  xcb_window_t focusBefore_ = kNoWindow;
  bool wantsKeyboard_ = false;
  bool tookFocus_ = false;
  bool pointerGrabbed_ = false;
  bool keyboardGrabbed_ = false;
  bool painting_ = false;
};

}  // namespace VSTGUI::X11
