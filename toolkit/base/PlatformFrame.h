// SPDX-License-Identifier: MIT
// The border to the window system. [ui]
//
// One implementation per window system: toolkit/x11 and toolkit/headless. All rectangles and points are in frame units
// relative to the frame's top left corner; a unit has `getScaleFactor()` device pixels. Everything that can look alike
// everywhere is shared code above this border: menus, text fields, double-clicks, focus, hit tests.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CColor.h"
#include "toolkit/base/Events.h"
#include "toolkit/base/Geometry.h"

namespace VSTGUI {

class CBitmap;
class CDrawContext;
class IDataPackage;

enum class PlatformType {
  kDefaultNative,  // whatever `setPlatform` was given for it
  kX11EmbedWindowID,
  kHeadless,
};

// Names a popup window of a frame.
using PopupId = std::uint32_t;

// What the platform tells the frame. Inside of any of these calls the frame may be closed, which destroys the
// platform's frame: look whether it is still there before going on. Button words carry buttons and modifiers; the
// button of a press or a release is in them too, and a moved word holds the buttons that are down. Double-clicks are
// found by the frame, by the time of `IPlatform::getMilliseconds`.
class IPlatformFrameCallback {
 public:
  virtual ~IPlatformFrameCallback() = default;

  // What the window shows where nothing has been painted yet.
  [[nodiscard]] virtual CColor platformBackground() const = 0;
  virtual void platformDraw(CDrawContext& context, const CRect& dirty) = 0;
  // While a button is down or a popup is open, events outside of the frame are wanted too.
  virtual CMouseEventResult platformMouseDown(const CPoint& where, CButtonState buttons) = 0;
  virtual CMouseEventResult platformMouseUp(const CPoint& where, CButtonState buttons) = 0;
  virtual CMouseEventResult platformMouseMoved(const CPoint& where, CButtonState buttons) = 0;
  virtual void platformMouseExited(CButtonState buttons) = 0;
  // `distance` is 1 for a notch away from the user. True when handled.
  virtual bool platformWheel(const CPoint& where, float distance, CButtonState buttons) = 0;
  // True when handled. The text of a key may come as several keys without `virt`, one a character.
  virtual bool platformKeyDown(VstKeyCode& key) = 0;
  virtual bool platformKeyUp(VstKeyCode& key) = 0;
  // The frame's window gained or lost the keyboard.
  virtual void platformActivated(bool active) = 0;

  // A drag from outside, or one of our own, over the frame. Between enter and leave or drop the package stays the same
  // object. The drop is true when a view took it.
  virtual void platformDragEnter(IDataPackage* drag, const CPoint& where) = 0;
  virtual void platformDragMove(IDataPackage* drag, const CPoint& where) = 0;
  virtual void platformDragLeave(IDataPackage* drag, const CPoint& where) = 0;
  virtual bool platformDrop(IDataPackage* drag, const CPoint& where) = 0;

  // `context` has its origin at the popup's top left corner, and so has `dirty`.
  virtual void platformPopupDraw(PopupId popup, CDrawContext& context, const CRect& dirty) = 0;
  // The window system took the pointer away; the frame closes its popups.
  virtual void platformPopupsDismissed() = 0;

  virtual void platformScaleFactorChanged(double scaleFactor) = 0;
  // The host destroyed the window; the frame closes.
  virtual void platformClosed() = 0;
};

struct FileSelectorRequest {
  enum class Kind { kOpen, kSave, kFolder };
  struct Extension {
    std::string description;  // "Preset"
    std::string extension;    // "fxp", without the dot
  };
  Kind kind = Kind::kOpen;
  std::string title;
  std::string initialDirectory;
  std::string defaultSaveName;
  std::vector<Extension> extensions;  // the default one first
  bool allowsMultiple = false;
};

class IFileSelectorCallback {
 public:
  virtual ~IFileSelectorCallback() = default;
  // Once, with no file for a cancelled selection. May come before `runFileSelector` returns.
  virtual void fileSelectorDone(const std::vector<std::string>& paths) = 0;
};

// One window of a frame. The destructor closes it, with its popups and selectors.
class IPlatformFrame {
 public:
  virtual ~IPlatformFrame() = default;

  // Device pixels of a unit, above 0.
  [[nodiscard]] virtual double getScaleFactor() const = 0;
  // False when the window can't have that size.
  virtual bool setSize(CCoord width, CCoord height) = 0;
  // Remembers what is to be painted; `platformDraw` follows later, never inside this call.
  virtual void invalidRect(const CRect& rect) = 0;
  // Paints what has been remembered and brings it to the screen.
  virtual void paintNow() = 0;
  // Takes the waiting events, runs due timers and paints; from the frame's idle.
  virtual void processEvents() = 0;

  virtual bool getCurrentMousePosition(CPoint& where) const = 0;
  [[nodiscard]] virtual CButtonState getCurrentMouseButtons() const = 0;
  virtual void setMouseCursor(CCursorType cursor) = 0;
  // Asks for key events, as for a text field, or lets the host have them again.
  virtual void setWantsKeyboard(bool wants) = 0;

  // Where popups may lie: the screen that shows the frame.
  [[nodiscard]] virtual CRect getWorkArea() const = 0;
  // Popup windows lie above all others and above earlier popups. While one is open all pointer and key events go to the
  // callback's ordinary operations, from wherever they happen on the screen.
  virtual void openPopup(PopupId popup, const CRect& rect) = 0;
  virtual void closePopup(PopupId popup) = 0;
  // In the popup's own coordinates.
  virtual void invalidPopupRect(PopupId popup, const CRect& rect) = 0;

  // UTF-8; empty when there is none.
  [[nodiscard]] virtual std::string getClipboardText() = 0;
  virtual void setClipboardText(const std::string& text) = 0;

  // Begins a drag with the button that is down, and keeps the package as long as it needs it. `offset` is where the
  // pointer lies in the picture, which may be null. The frame gets no mouse events until the drag ends, and no release.
  // False if no drag could begin.
  virtual bool doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture) = 0;

  // Shows the selector and returns; false if there is none on this machine. The callback is told once, unless
  // `cancelFileSelector` comes first, which closes the window and tells nothing.
  virtual bool runFileSelector(const FileSelectorRequest& request, IFileSelectorCallback* callback) = 0;
  virtual void cancelFileSelector(IFileSelectorCallback* callback) = 0;
};

class IPlatformTimerCallback {
 public:
  virtual ~IPlatformTimerCallback() = default;
  virtual void platformTimerFired() = 0;
};

// A timer of its own on the user-interface thread. The destructor stops it, also inside its own call.
class IPlatformTimer {
 public:
  virtual ~IPlatformTimer() = default;
  // First after one period, then at each; a late one isn't made up for. Starting a running timer begins anew.
  virtual bool start(std::uint32_t periodMs) = 0;
  virtual void stop() = 0;
};

class IPlatform {
 public:
  virtual ~IPlatform() = default;
  // A window of `size` in the host's window `parent`; null without a display or with a parent that isn't there.
  [[nodiscard]] virtual std::unique_ptr<IPlatformFrame> createFrame(IPlatformFrameCallback* callback, const CRect& size,
                                                                    void* parent) = 0;
  // Device pixels of a unit for a frame that would open now: hosts that count in pixels want to know the size before.
  [[nodiscard]] virtual double getScaleFactor() const = 0;
  [[nodiscard]] virtual std::unique_ptr<IPlatformTimer> createTimer(IPlatformTimerCallback* callback) = 0;
  // Monotonic, from an unknown start.
  [[nodiscard]] virtual std::uint64_t getMilliseconds() const = 0;
};

// Who serves frames opened with `type`; timers and the clock come from kDefaultNative. `platform` must outlive its use;
// null takes it away. Without a platform frames don't open and timers don't fire.
void setPlatform(PlatformType type, IPlatform* platform);
[[nodiscard]] IPlatform* getPlatform(PlatformType type = PlatformType::kDefaultNative);

// The process's monotonic clock, for platforms and for where there is none.
[[nodiscard]] std::uint64_t steadyMilliseconds();

}  // namespace VSTGUI
