// SPDX-License-Identifier: MIT
// The editor's window: construction, opening and closing, the panel and its sizes, the timer's turns.
#include "editor/shell/LFOGUI.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "editor/controls/ControlMessages.h"
#include "editor/controls/ResizeControl.h"
#include "editor/graph/GraphLink.h"
#include "editor/graph/GraphPalette.h"
#include "editor/graph/LFODisplay.h"
#include "editor/panel/SvgRender.h"
#include "messages/Messages.h"

using namespace model;
using namespace VSTGUI;
using namespace editor;

namespace {

constexpr std::uint32_t kClosedPeriodMs = 150;
constexpr std::uint32_t kFirstPeriodMs = 240;
constexpr int kCornerImage = 128;
constexpr char kCornerFile[] = "bmp00128.png";

double onPixels(double n) { return std::trunc(n + 0.5); }

// As a window takes it and a project stores it.
bool sameInPixels(double a, double b) { return std::trunc(a) == std::trunc(b); }

// A timer that runs at the effect's wish, but neither too busily nor hardly ever.
std::uint32_t periodMs(int interval) {
  if (interval < 1) return 4;
  return interval > 999 ? 50u : static_cast<std::uint32_t>(interval);
}

}  // namespace

AEffEditor* createEditor(AudioEffectX* effect) { return new LFOGUI(static_cast<LfoDSP*>(effect)); }

LFOGUI::LFOGUI(LfoDSP* owner)
    : AEffGUIEditor(owner),
      timer_(Counted<CVSTGUITimer>::adopt(new CVSTGUITimer(this, kFirstPeriodMs))),
      cornerImage_(Counted<CBitmap>::adopt(new CBitmap(CResourceDescription(kCornerImage)))) {
  setKnobMode(kLinearMode);
  const double width = dsp().savedEditorWidth, height = dsp().savedEditorHeight;
  setSize(width < kSmallestWidth || width > kLargestSide ? kReferenceWidth : width,
          height < kSmallestHeight || height > kLargestSide ? kReferenceHeight : height);
}

// The effect's own fields are gone by now; none of this may look at them.
LFOGUI::~LFOGUI() { closeWindow(); }

double LFOGUI::scaledX(double x) const { return onPixels(x / kReferenceWidth * editorWidth); }
double LFOGUI::scaledY(double y) const { return onPixels(y / kReferenceHeight * editorHeight); }

CRect LFOGUI::scaledRect(const CRect& reference) const {
  const double x = scaledX(reference.left), y = scaledY(reference.top);
  return {x, y, x + scaledX(reference.getWidth()), y + scaledY(reference.getHeight())};
}

CRect LFOGUI::windowRect() const { return {0, 0, std::trunc(editorWidth), std::trunc(editorHeight)}; }

// --- What the user does

void LFOGUI::valueChanged(CControl* control) {
  if (!controlsReady) return;
  if (control == display) commitGraphEdit(*display, dsp());
  if (control == resizeCorner) resizeDragged(*resizeCorner);
}

void LFOGUI::beginEdit(std::int32_t index) {
  if (index >= 0 && index < kHostParameters) AEffGUIEditor::beginEdit(index);
}

void LFOGUI::endEdit(std::int32_t index) {
  if (index >= 0 && index < kHostParameters) AEffGUIEditor::endEdit(index);
}

// [any] A new window size counts at once, since a window may be opened next.
void LFOGUI::setParameter(VstInt32 index, float value) {
  switch (index) {
    case kNoticeEditorSize:
      if (value > kNoticeEditorSizeValue - 1.0f) restoreStoredSize();
      return;
    case kNoticePoint:
      reloadPending.publish(true);
      return;
    default:
      notes_.post(index, value);
  }
}

// --- Turns of the timer

CMessageResult LFOGUI::notify(CBaseObject* /*sender*/, IdStringPtr message) {
  if (std::strcmp(message, kMsgTimer) != 0) return kMessageUnknown;
  MyIdle();
  return kMessageNotified;
}

void LFOGUI::MyIdle() {
  if (!frame || !controlsReady) return;
  if (resizePending) rebuild();
  if (display && display->overlayTimer > 0) --display->overlayTimer;
  AEffGUIEditor::idle();
}

// --- Size

void LFOGUI::setSize(double width, double height) {
  editorWidth = width;
  editorHeight = height;
  dsp().editorWidth = static_cast<std::int16_t>(width);
  dsp().editorHeight = static_cast<std::int16_t>(height);
}

// What a project brought; an open window keeps its size until it is opened again.
void LFOGUI::restoreStoredSize() {
  const auto limited = [](double stored, double smallest) {
    return std::clamp(std::abs(stored), smallest, kLargestSide);
  };
  setSize(limited(dsp().editorWidth, kSmallestWidth), limited(dsp().editorHeight, kSmallestHeight));
}

void LFOGUI::resizeTo(double width, double height) {
  changeSize(std::clamp(width, kSmallestWidth, kLargestSide), std::clamp(height, kSmallestHeight, kLargestSide));
}

void LFOGUI::changeSize(double width, double height) {
  if (sameInPixels(width, editorWidth) && sameInPixels(height, editorHeight)) return;
  setSize(width, height);
  resizePending = true;
}

void LFOGUI::resizeDragged(const ResizeControl& corner) {
  switch (cornerMessage(corner.getValue())) {
    case CornerMessage::dragged:
      if (!resizePending) followCorner(corner.lastX, corner.lastY);
      break;
    case CornerMessage::chosenSize:
      if (!resizePending) resizeTo(dsp().savedEditorWidth, dsp().savedEditorHeight);
      break;
    case CornerMessage::released:
      cornerReleased();
      break;
    case CornerMessage::none:
      break;
  }
}

// By the reference's shape, whose smallest window is a little lower than the lowest one; with Shift in any shape.
void LFOGUI::followCorner(double x, double y) {
  const double width = std::clamp(std::abs(x), kSmallestWidth, kLargestSide);
  const bool free = (frame->getCurrentMouseButtons() & kShift) != 0;
  changeSize(width, free ? std::clamp(std::abs(y), kSmallestHeight, kLargestSide) : width * kReferenceAspect);
}

void LFOGUI::cornerReleased() {
  MyIdle();
  resizePending = false;
  if (!frame) return;
  frame->setCursor(kCursorDefault);
  renewResizeCorner();
}

bool LFOGUI::getRect(ERect** editorRect) {
  const CRect size = windowRect();
  setRect(size.getWidth(), size.getHeight());
  return AEffGUIEditor::getRect(editorRect);
}

// --- Window

bool LFOGUI::open(void* parentWindow) {
  if (frame) close();
  AEffGUIEditor::open(parentWindow);
  frame = new CFrame(windowRect(), this);
  frame->setBackgroundColor(BackgroundPanelColor);  // seen for a moment where the window grows
  if (!frame->open(parentWindow)) {
    close();
    return false;
  }
  frame->setFocusDrawingEnabled(false);
  openControls(windowRect());
  addResizeCorner();
  resizePending = false;
  controlsReady = true;
  return true;
}

void LFOGUI::close() {
  letGo();
  closeWindow();
}

// Of a drag whose release will go elsewhere.
void LFOGUI::letGo() {
  if (display) abandonGraphDrag(*display, dsp());
}

void LFOGUI::closeWindow() {
  timer_->setFireTime(kClosedPeriodMs);
  controlsReady = false;
  resizePending = false;
  destroyStuff();
  removeResizeCorner();
  if (CFrame* const closing = frame) {
    frame = nullptr;
    closing->close();
    closing->forget();
  }
  AEffGUIEditor::close();
}

void LFOGUI::openControls(const CRect& size) {
  notes_.clear();  // all that they tell of is read below
  reloadPending = false;
  graphPixelWidth = onPixels(kGraphWidthPart * editorWidth);
  graphPixelHeight = onPixels(kGraphHeightPart * editorHeight);
  setKnobMode(kLinearMode);
  panel = new CViewContainer(size);
  panel->setBackgroundColor(BackgroundPanelColor);
  addGraph();
  fillDisplay();
  frame->addView(panel);
  startTimer();
  MyIdle();
}

void LFOGUI::addGraph() {
  const CRect place = scaledRect(kGraphPlace);
  graphContainer = new CViewContainer(place);
  panel->addView(graphContainer);
  display = new LFODisplay({0, 0, place.getWidth(), place.getHeight()}, this, kGraphTag, graphPixelWidth,
                           graphPixelHeight, nullptr, {}, 1);
  display->effect = &dsp();
  display->history = &history_;
  graphContainer->addView(display);
}

void LFOGUI::addResizeCorner() {
  using Picture = Counted<COffscreenContext>;
  Counted<CBitmap> image = cornerImage_;
  if (!image->isLoaded())
    if (const auto box = Picture::adopt(placeholderImage(kCornerFile, frame, 1, kCornerSide, kCornerSide)))
      image = box->getBitmap();
  CRect place;
  frame->getSize(place);
  place.left = place.right - image->getWidth();
  place.top = place.bottom - image->getHeight();
  resizeCorner = new ResizeControl(place, this, kResizeTag, image);
  frame->addView(resizeCorner);
}

void LFOGUI::removeResizeCorner() {
  if (!resizeCorner) return;
  frame->removeView(resizeCorner);
  resizeCorner = nullptr;
}

void LFOGUI::renewResizeCorner() {
  removeResizeCorner();
  addResizeCorner();
}

void LFOGUI::startTimer() {
  timer_->setFireTime(periodMs(dsp().timerInterval));
  timer_->start();
}

void LFOGUI::destroyStuff() {
  timer_->stop();
  display = nullptr;
  graphContainer = nullptr;
  if (panel) frame->removeView(panel);
  panel = nullptr;
}

// A host that says it can resize is asked before the frame changes (`beforeSizeChange`); every host is told the size
// once the panel stands. Hosts may do anything in their answer, also close the window.
void LFOGUI::rebuild() {
  letGo();
  resizePending = false;
  controlsReady = false;
  destroyStuff();
  const Counted<CFrame> window = frame;
  const CRect size = windowRect();
  if (!window->setSize(size.getWidth(), size.getHeight()) || frame != window) return;
  messages::controlsOpen();
  openControls(size);
  sizeWindow(size.getWidth(), size.getHeight());
  messages::controlsFollow();
  controlsReady = frame == window;
  if (controlsReady && cornerMessage(resizeCorner->getValue()) == CornerMessage::released)
    renewResizeCorner();  // a dragged one stays until its end
}
