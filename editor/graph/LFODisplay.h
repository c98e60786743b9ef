// SPDX-License-Identifier: MIT
// The graph editor: the control on which the user draws the LFO graph that is shown.
//
// It is the edited graph on show: turns gestures into its edits, draws it, and reports each edit to its listener, which
// passes it on:
//
//   auto* display = new LFODisplay(view, listener, tag, widthPx, heightPx, nullptr, {}, 1);
//   display->effect = &effect;                         // for dropped files, undo and the texts beside points
//   graphContainer->addView(display);
//   loadGraph(*display, effect, false);                // effect to display, editor/graph/GraphLink.h
//   ...                                                // the listener, in valueChanged for this control:
//   commitGraphEdit(*display, effect);                 // display to effect, editor/graph/GraphLink.h
//   readScope(*display, effect, scopeReadIndex);       // each idle, editor/graph/GraphScope.h
//
// The view stands at (0, 0) of its container. All is [ui] but the fields of type Shared, `setDirty`, `SetGridSize` and
// `CalcRateTime`, which any thread may use.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "editor/graph/EditedGraph.h"
#include "editor/graph/GraphHistory.h"
#include "editor/graph/GraphPalette.h"
#include "threads/Shared.h"
#include "toolkit/controls/CParamDisplay.h"
#include "toolkit/views/COffscreenContext.h"

class LfoDSP;

namespace editor {

inline constexpr int kFirstCurveHandle = 65;  // codes of `pressedPoint`: 65 + s is the curve handle of segment s

}  // namespace editor

class LFODisplay : public VSTGUI::CParamDisplay, public editor::EditedGraph {
 public:
  // `width` and `height` are the editable area in pixels, the view is larger. `linked` other than 0 moves the first and
  // the last point together.
  LFODisplay(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, std::int32_t tag, double width,
             double height, VSTGUI::CBitmap* background, const VSTGUI::CPoint& offset, int linked);
  LFODisplay(const LFODisplay&) = delete;
  ~LFODisplay() override;

  virtual void plotWave(VSTGUI::CDrawContext* context);
  // Fills `curvePolyline` with the graph as it is played, one entry for each of `columns` pixels.
  virtual void drawLFOEdit(VSTGUI::CDrawContext* context, int columns);
  virtual void drawTargetCorners(VSTGUI::CRect rect, VSTGUI::CDrawContext* context);
  virtual void drawValueHolder(VSTGUI::CDrawContext* context, int x, int y, float value, bool unipolar);
  virtual void drawToggleOnOff(VSTGUI::CDrawContext* context, int x, int y, float value);
  // The rate step of a rate of 0 to 1, as the clock plays it.
  virtual float CalcRateTime(float rate);
  virtual void clearSelectedPoints();
  virtual void MakeEnvHandle(int i);

  void draw(VSTGUI::CDrawContext* context) override;
  VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseEntered(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override;
  bool onWheel(const VSTGUI::CPoint& where, const float& distance, const VSTGUI::CButtonState& buttons) override;
  bool onDrop(VSTGUI::IDataPackage* drag, const VSTGUI::CPoint& where) override;
  void onDragEnter(VSTGUI::IDataPackage* drag, const VSTGUI::CPoint& where) override;
  void onDragLeave(VSTGUI::IDataPackage* drag, const VSTGUI::CPoint& where) override;
  void onDragMove(VSTGUI::IDataPackage* drag, const VSTGUI::CPoint& where) override;
  std::int32_t onKeyDown(VSTGUI::VstKeyCode& key) override;

  void CheckIfMouseInAnyPoint(const VSTGUI::CPoint& where);
  void CheckIfMouseOverAnyPoint(const VSTGUI::CPoint& where);
  void SetGridSize(int cells);
  [[nodiscard]] bool isPointHilighted() const;
  void createBG();
  void drawEnvStuff(VSTGUI::CDrawContext* context);
  [[nodiscard]] static model::CurveCoef CalcCurveCoef(double curve, int length) noexcept;

  // Shows the name of what was loaded, for a while and as far as it fits.
  void showOverlay(const char* text);
  // Ends what the pointer is doing and drops the selection; for when another graph comes in.
  void endGestures();
  // What the pointer did since its press becomes a step to undo.
  void endStep();
  // Tells that `graph` is now shown, its points taken anew. `before` is what the view held: where that was the same
  // graph, it becomes a step to undo.
  void graphLoaded(int graph, const editor::GraphState& before);
  // The graph that was loaded last, 0 to 11; -1 before the first one.
  [[nodiscard]] int shownGraph() const { return shownGraph_; }
  // Undoes or redoes one edit of the graph that is shown; false when there is none, or while the pointer drags.
  bool undo();
  bool redo();

  LfoDSP* effect = nullptr;  // null: no files by drop, texts without beats
  editor::GraphHistory* history =
      nullptr;  // set it to one that lives longer than the view; null: one of the view's own

  // --- Gesture
  // 0 to 63 a point, 65 + s the curve handle of segment s; -1 nothing, -2 nothing and the cursor is the usual one.
  int pressedPoint = -1;
  int hoverPoint = -1;  // the same, for the pointer without a button
  int lastHoverPoint = -1;
  VSTGUI::CPoint dragOrigin;
  int pressY = 0;
  float pressCurve = 0.0f;
  int pressButtons = 0;
  float pressValue = 0.0f;
  bool marqueeActive = false;
  VSTGUI::CPoint marqueeOrigin;
  // How a drag goes out, see GraphLink.h.
  bool automationGesture = false;  // the drag touches a point that hosts automate
  bool gestureEnding = false;      // the last report of such a drag
  std::vector<int> openEdits;      // parameters whose edit the host was told the beginning of
  bool bendsAllCurves = false;     // a curve drag that parameters can't carry
  VSTGUI::CPoint lastMouse{55, 55};

  // --- Picture
  Shared<bool> backgroundValid{false};  // the grid is up to date
  VSTGUI::Counted<VSTGUI::CBitmap> plainBackground;
  VSTGUI::Counted<VSTGUI::CBitmap> gridBitmap;
  VSTGUI::Counted<VSTGUI::CBitmap> curveBitmap;
  VSTGUI::Counted<VSTGUI::COffscreenContext> offscreen;
  std::vector<VSTGUI::CPoint> curvePolyline;
  Shared<bool> scopeOn{false};
  std::vector<float> scopeOutCopy;
  std::vector<float> scopeInCopy;
  VSTGUI::CColor scopeOutColor{255, 128, 128, 128};
  VSTGUI::CColor scopeInColor{ScopeWaveFormLight};
  Shared<float> pwmValue{0.5f};
  Shared<float> graphOutValue{0.5f};
  Shared<float> phaseValue{0.0f};
  Shared<double> playPosition{-1.0};  // 0 to 1; below 0 hides the bar
  std::array<char, 31> overlayText{};
  int overlayTimer = -1;  // ticks for which the text is still shown
  std::array<VSTGUI::CColor, editor::kWeightColors> weightColors;
  Shared<bool> bTriplet{true};
  Shared<bool> bDotted{true};

  VSTGUI_CLASS(LFODisplay, VSTGUI::CParamDisplay)
  [[nodiscard]] VSTGUI::CBaseObject* newCopy() const override { return nullptr; }

 private:
  // What a key does to the selection, in pixels.
  struct Nudge {
    double x = 0.0, y = 0.0;
  };

  VSTGUI::CMouseEventResult press(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult pressNothing(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult beginDrag(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult pressNewPoint(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult pressTwice(int point, VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  void pressCurveHandle(const VSTGUI::CPoint& where);
  bool placeMarker(int point);
  void hover(const VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult drag(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  void dragPressed(VSTGUI::CPoint& where, int state);
  void dragPoint(VSTGUI::CPoint& where, bool snaps);
  void dragCurve(int segment, double y, bool all);
  void dragSteps(VSTGUI::CPoint& where, bool snaps);
  void dragMarquee(const VSTGUI::CPoint& where, int masked);
  bool dragSelection(VSTGUI::CPoint& where, int masked);
  void release(VSTGUI::CPoint& where);
  void setCursor(int code);

  [[nodiscard]] std::optional<Nudge> nudgeOf(const VSTGUI::VstKeyCode& key) const;
  void nudge(const Nudge& by);
  [[nodiscard]] editor::GraphHistory& steps() { return history ? *history : ownHistory_; }
  void beginStep();
  bool takeStep(std::optional<editor::GraphState> (editor::GraphHistory::*step)(int, const editor::GraphState&));
  [[nodiscard]] bool isDragging() const { return before_.has_value(); }

  void followScaleFactor(const VSTGUI::CDrawContext& context);
  [[nodiscard]] VSTGUI::CRect drawingArea() const;
  void drawGridLines(VSTGUI::CDrawContext& context) const;
  void fillCurve(VSTGUI::CDrawContext& context, int columns) const;
  void correctOutline(int columns);
  void strokeOutline(VSTGUI::CDrawContext& context, int columns) const;
  void drawPoints(VSTGUI::CDrawContext& context) const;
  [[nodiscard]] std::optional<VSTGUI::CColor> weightColor(int point) const;
  void updateCursor();
  void drawCurveHandles(VSTGUI::CDrawContext& context) const;
  void drawCurveHandle(VSTGUI::CDrawContext& context, int segment) const;
  void drawOverlays(VSTGUI::CDrawContext& context) const;
  void drawMarquee(VSTGUI::CDrawContext& context) const;
  void drawScope(VSTGUI::CDrawContext& context) const;
  void drawOutputBar(VSTGUI::CDrawContext& context) const;
  void drawPlaybackBar(VSTGUI::CDrawContext& context) const;
  void drawOverlay(VSTGUI::CDrawContext& context) const;
  void drawTooltip(VSTGUI::CDrawContext& context) const;

  editor::GraphHistory ownHistory_;
  std::optional<editor::GraphState> before_;  // while the pointer drags: the graph at its press
  int shownGraph_ = -1;
  bool handShown_ = false;
  bool cursorRests_ = false;  // a selection was let go; its point still counts as pressed
  bool valueShown_ = false;   // the text beside the pressed point
  bool dropCursor_ = false;   // a file was dragged over the view
};
