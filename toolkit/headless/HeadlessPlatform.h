// SPDX-License-Identifier: MIT
// A platform in memory: no display, injected events, virtual time. [ui]
//
//   HeadlessPlatform platform;
//   setPlatform(PlatformType::kDefaultNative, &platform);
//   frame->open(nullptr);
//   auto& window = *platform.frames().front();
//   window.press({10, 10}); window.moveTo({50, 10}); window.release();
//   platform.advance(30);                    // runs the timers that fall due
//   window.writePng("panel.png");
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CColor.h"
#include "toolkit/base/IDataPackage.h"
#include "toolkit/base/PlatformFrame.h"
#include "toolkit/base/TimerQueue.h"
#include "toolkit/drawing/CairoPointers.h"

namespace VSTGUI {

class HeadlessFrame;

class HeadlessPlatform : public IPlatform {
 public:
  HeadlessPlatform() = default;
  HeadlessPlatform(const HeadlessPlatform&) = delete;
  HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;
  ~HeadlessPlatform() override;  // frames and timers must be gone

  [[nodiscard]] std::unique_ptr<IPlatformFrame> createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                            void* parent) override;
  [[nodiscard]] double getScaleFactor() const override { return scaleFactor; }
  [[nodiscard]] std::unique_ptr<IPlatformTimer> createTimer(IPlatformTimerCallback* callback) override {
    return timers_.createTimer(callback);
  }
  [[nodiscard]] std::uint64_t getMilliseconds() const override { return now_; }

  // Moves the clock on and fires the timers that fall due, in the order of their times.
  void advance(std::uint32_t milliseconds);
  // The open frames, oldest first.
  [[nodiscard]] const std::vector<HeadlessFrame*>& frames() const { return frames_; }

  bool hasDisplay = true;                 // without one no frame opens
  double scaleFactor = 1.0;               // of frames that open from now on
  CRect workArea{-200, -200, 1720, 880};  // the screen, around the frame
  std::string clipboard;

 private:
  friend class HeadlessFrame;

  std::uint64_t now_ = 1000;
  std::vector<HeadlessFrame*> frames_;
  TimerQueue timers_{*this};
};

// The window of one frame. The injecting operations hold the state of the pointer, its buttons and the modifier keys.
class HeadlessFrame : public IPlatformFrame {
 public:
  HeadlessFrame(HeadlessPlatform& platform, IPlatformFrameCallback* callback, const CRect& size);
  HeadlessFrame(const HeadlessFrame&) = delete;
  HeadlessFrame& operator=(const HeadlessFrame&) = delete;
  ~HeadlessFrame() override;

  // Modifier bits of the button word that are held from now on.
  void holdModifiers(std::int32_t modifiers) { buttons_ = (buttons_ & ~kAnyModifier) | modifiers; }
  void moveTo(const CPoint& where);
  CMouseEventResult press(const CPoint& where, std::int32_t button = kLButton);
  void release(std::int32_t button = kLButton);
  void click(const CPoint& where, std::int32_t button = kLButton);
  void doubleClick(const CPoint& where, std::int32_t button = kLButton);
  void leaveWindow();
  bool wheel(const CPoint& where, float distance);
  bool key(std::int32_t character, std::uint8_t virt = 0, std::uint8_t modifier = 0);
  void type(const char* ascii);
  void activate(bool active);

  void dragEnter(IDataPackage* drag, const CPoint& where);
  void dragMove(const CPoint& where);
  void dragLeave();
  bool drop(const CPoint& where);

  // What the frame began to drag out, until `endDrag`.
  [[nodiscard]] IDataPackage* draggedOut() const { return draggedOut_; }
  // Lets the button go at the end of a drag out.
  void endDrag();

  // The running file selector's request; null if none runs.
  [[nodiscard]] const FileSelectorRequest* fileSelector() const { return selectorCallback_ ? &selector_ : nullptr; }
  // The user chooses; no path cancels.
  void answerFileSelector(const std::vector<std::string>& paths);

  // Paints what is due and gives the frame's pixels with the popups over them, as far as they lie over the frame. The
  // surface belongs to the frame and is valid until the next call here.
  [[nodiscard]] _cairo_surface* picture();
  bool writePng(const std::string& path);
  // One device pixel of `picture`.
  [[nodiscard]] CColor pixel(int x, int y);
  // Where the popups lie, in frame units, the topmost last.
  [[nodiscard]] std::vector<CRect> popups() const;
  [[nodiscard]] CCursorType cursor() const { return cursor_; }
  [[nodiscard]] bool wantsKeyboard() const { return wantsKeyboard_; }
  // What is waiting to be painted.
  [[nodiscard]] const CRect& dirtyRect() const { return dirty_; }
  bool refusesSize = false;

  [[nodiscard]] double getScaleFactor() const override { return scaleFactor_; }
  bool setSize(CCoord width, CCoord height) override;
  void invalidRect(const CRect& rect) override;
  void paintNow() override;
  void processEvents() override { paintNow(); }
  bool getCurrentMousePosition(CPoint& where) const override;
  [[nodiscard]] CButtonState getCurrentMouseButtons() const override { return buttons_; }
  void setMouseCursor(CCursorType cursor) override { cursor_ = cursor; }
  void setWantsKeyboard(bool wants) override { wantsKeyboard_ = wants; }
  [[nodiscard]] CRect getWorkArea() const override { return platform_.workArea; }
  void openPopup(PopupId popup, const CRect& rect) override;
  void closePopup(PopupId popup) override;
  void invalidPopupRect(PopupId popup, const CRect& rect) override;
  [[nodiscard]] std::string getClipboardText() override { return platform_.clipboard; }
  void setClipboardText(const std::string& text) override { platform_.clipboard = text; }
  bool doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture) override;
  bool runFileSelector(const FileSelectorRequest& request, IFileSelectorCallback* callback) override;
  void cancelFileSelector(IFileSelectorCallback* callback) override;

 private:
  struct Popup {
    CRect rect;
    CRect dirty;
    CairoSurface pixels;
  };

  [[nodiscard]] CairoSurface newSurface(const CRect& size) const;
  void paintPopups();

  HeadlessPlatform& platform_;
  IPlatformFrameCallback* callback_;
  double scaleFactor_;
  CRect size_;
  CRect dirty_;
  CairoSurface pixels_;
  CairoSurface composed_;
  std::map<PopupId, Popup> popups_;  // ids rise, so the topmost is last
  CPoint pointer_;
  std::int32_t buttons_ = 0;
  bool wantsKeyboard_ = false;
  CCursorType cursor_ = kCursorDefault;
  Counted<IDataPackage> draggedOut_;
  Counted<IDataPackage> draggedIn_;
  FileSelectorRequest selector_;
  IFileSelectorCallback* selectorCallback_ = nullptr;
};

}  // namespace VSTGUI
