// SPDX-License-Identifier: MIT
// The top view: stands in the host's window, routes events to the views and repaints them. [ui]
//
//   auto* frame = new CFrame(size, editor);
//   if (!frame->open(parentWindow)) ...       // no display: the frame still works as a container
//   frame->addView(panel);
//   frame->idle();                            // again and again, or let timers do it
//   frame->close(); frame->forget();
#pragma once

#include <memory>
#include <vector>

#include "toolkit/base/PlatformFrame.h"
#include "toolkit/views/CViewContainer.h"

namespace VSTGUI {

class FrameGuest;
class FramePopup;
class IPlatformTextEdit;
class IPlatformTextEditCallback;
class TextField;
class VSTGUIEditorInterface;

class CFrame : public CViewContainer, private IPlatformFrameCallback {
 public:
  CFrame(const CRect& size, VSTGUIEditorInterface* editor);
  CFrame(const CFrame&) = delete;
  ~CFrame() override;

  // Attaches to the host's window. False without a display, with a bad parent, or when it is open already.
  bool open(void* parent, PlatformType type = PlatformType::kDefaultNative);
  // Detaches; popups, text fields and guests close without telling anybody. The views stay.
  void close();
  [[nodiscard]] bool isOpen() const { return platformFrame_ != nullptr; }
  // Repaints dirty views and lets waiting events run.
  void idle();
  // Repaints a rectangle at once.
  void paintNow(const CRect& rect);

  // Asks the editor, then resizes the host's window and the frame; false when either refuses.
  bool setSize(CCoord width, CCoord height);
  bool getSize(CRect& rect) const;
  // Device pixels of a unit: 1 while the frame is closed.
  [[nodiscard]] double getScaleFactor() const;

  // At any moment, outside of events too; false and unchanged while the frame is closed.
  bool getCurrentMouseLocation(CPoint& where) const;
  [[nodiscard]] CButtonState getCurrentMouseButtons() const;
  void setCursor(std::int32_t cursor);

  void setFocusDrawingEnabled(bool enabled) { focusDrawing_ = enabled; }
  [[nodiscard]] bool focusDrawingEnabled() const { return focusDrawing_; }
  // The view that gets the keys; null takes the focus away. The old one is told by looseFocus, the new one by
  // takeFocus.
  void setFocusView(CView* view);
  [[nodiscard]] CView* getFocusView() const { return focusView_; }

  // Begins a drag out of the frame; the package is remembered as long as it is needed. False if none could begin.
  bool doDrag(IDataPackage* drag, const CPoint& offset, CBitmap* picture = nullptr);

  // Opens a text field at the callback's rectangle and gives the callback's view the focus; null while closed. The
  // caller owns the result.
  [[nodiscard]] IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* callback);

  // Opens a popup, which gets all events until it is finished. False, and the popup is gone without a report, while
  // another is open or the frame is closed.
  bool openPopup(std::unique_ptr<FramePopup> popup);
  [[nodiscard]] bool isPopupOpen() const { return popup_ != nullptr; }
  void closePopup();

  // The guest hears of the window's end until it leaves.
  void addGuest(FrameGuest* guest) { guests_.push_back(guest); }
  void removeGuest(FrameGuest* guest) { std::erase(guests_, guest); }

  [[nodiscard]] VSTGUIEditorInterface* getEditor() const { return editor_; }
  [[nodiscard]] IPlatformFrame* getPlatformFrame() const { return platformFrame_.get(); }
  // Milliseconds of a monotonic clock.
  [[nodiscard]] static std::uint32_t getTicks();

  void draw(CDrawContext* context) override;
  void invalidRect(const CRect& rect) override;
  // Also for popups and text fields; then for the view that has the focus and its parents.
  std::int32_t onKeyDown(VstKeyCode& key) override;
  std::int32_t onKeyUp(VstKeyCode& key) override;
  bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) override;
  [[nodiscard]] CFrame* getFrame() const override { return const_cast<CFrame*>(this); }
  [[nodiscard]] CPoint childOrigin() const override { return {}; }

  VSTGUI_CLASS(CFrame, CViewContainer)
  [[nodiscard]] CBaseObject* newCopy() const override { return nullptr; }

 protected:
  void viewWillBeRemoved(CView* view) override;

 private:
  friend class TextField;

  // Where the last press was, to find double-clicks.
  struct LastPress {
    CPoint where;
    std::uint32_t ticks = 0;
    std::int32_t button = 0;
  };

  [[nodiscard]] CColor platformBackground() const override { return getBackgroundColor(); }
  void platformDraw(CDrawContext& context, const CRect& dirty) override;
  CMouseEventResult platformMouseDown(const CPoint& where, CButtonState buttons) override;
  CMouseEventResult platformMouseUp(const CPoint& where, CButtonState buttons) override;
  CMouseEventResult platformMouseMoved(const CPoint& where, CButtonState buttons) override;
  void platformMouseExited(CButtonState buttons) override;
  bool platformWheel(const CPoint& where, float distance, CButtonState buttons) override;
  bool platformKeyDown(VstKeyCode& key) override;
  bool platformKeyUp(VstKeyCode& key) override;
  void platformActivated(bool active) override;
  void platformDragEnter(IDataPackage* drag, const CPoint& where) override;
  void platformDragMove(IDataPackage* drag, const CPoint& where) override;
  void platformDragLeave(IDataPackage* drag, const CPoint& where) override;
  bool platformDrop(IDataPackage* drag, const CPoint& where) override;
  void platformPopupDraw(PopupId popup, CDrawContext& context, const CRect& dirty) override;
  void platformPopupsDismissed() override;
  void platformScaleFactorChanged(double scaleFactor) override;
  void platformClosed() override;

  [[nodiscard]] CButtonState pressWord(const CPoint& where, CButtonState buttons);
  [[nodiscard]] CButtonState reported(CButtonState buttons) const;
  CMouseEventResult pressView(CView* view, const CPoint& where, CButtonState buttons);
  bool pressTextField(const CPoint& where, CButtonState buttons);
  CMouseEventResult endPress(const CPoint& where, CButtonState buttons);
  void hoverOver(CView* view, const CPoint& where, CButtonState buttons);
  void dragOver(IDataPackage* drag, const CPoint& where);
  // After each event that a popup got: closes it when it is finished, and runs its report.
  void finishPopup();
  void textFieldClosed(const TextField* field);
  void updateWantsKeyboard();
  std::int32_t offerKey(VstKeyCode& key, std::int32_t (CView::*operation)(VstKeyCode&));

  VSTGUIEditorInterface* editor_;
  std::unique_ptr<IPlatformFrame> platformFrame_;
  std::unique_ptr<FramePopup> popup_;
  std::vector<FrameGuest*> guests_;
  TextField* textField_ = nullptr;
  CView* focusView_ = nullptr;
  CView* mouseDownView_ = nullptr;
  CView* hoverView_ = nullptr;
  CView* dragView_ = nullptr;
  LastPress lastPress_;
  std::int32_t heldButton_ = 0;  // the one whose press began what is going on
  bool buttonHeld_ = false;
  bool fieldPressed_ = false;
  bool dragBegan_ = false;   // inside of the event that is being delivered
  bool keyInField_ = false;  // the text field is offering a key to its owner
  bool leftIsRight_ = false;
  bool focusDrawing_ = false;
};

}  // namespace VSTGUI
