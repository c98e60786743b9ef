// The graph editor: the control on which the user draws the LFO graph that is shown.
//
// It holds a working copy of that graph in pixels, turns gestures into edits of the copy and reports each edit to its
// listener, which passes it on:
//
//   auto* display = new LFODisplay({0, 0, 400, 244}, listener, 88, 388, 240, nullptr, {}, 1);
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

#include "editor/graph/GraphHistory.h"
#include "editor/graph/GraphPalette.h"
#include "model/CurveLaw.h"
#include "threads/Shared.h"
#include "toolkit/controls/CParamDisplay.h"
#include "toolkit/views/COffscreenContext.h"

class LfoDSP;

// A selected point.
struct MultiSelectPoint {
  float weight;                  // 0 to 1: how much of a drag the point follows; not a number stops the drag
  VSTGUI::CPoint origin;         // from where a drag is measured
  VSTGUI::CPoint firstPosition;  // where it was selected
  int index;                     // of the point
};

inline constexpr int kEditedPoints = 64;      // points of a graph in the editor at most
inline constexpr int kFirstCurveHandle = 65;  // codes of `pressedPoint`: 65 + s is the curve handle of segment s
inline constexpr int kNoLoopPoint = 512;
inline constexpr int kNoStartPoint = -1;
inline constexpr int kAutomatedPointCount = 8;        // of graph 1, with the curves before them
inline constexpr double kEditedStraight = 0.4999998;  // curve of a segment that was made straight by an edit
inline constexpr std::size_t kDisplayTable = 65546;   // entries of the display's tables; the last ten are spare

// Values of the control that tell the listener what it hears of. Each drag step toggles 0 and 1.
inline constexpr float kReportRefresh = 0.6666f;       // nothing changed
inline constexpr float kReportSelectionEnd = 2.5f;     // the selection was let go
inline constexpr float kReportWithoutParameters = 10;  // from here on nothing goes out as parameters
inline constexpr float kReportMarker = 100.0f;

class LFODisplay : public VSTGUI::CParamDisplay {
 public:
  // `graphWidth` and `graphHeight` are the editable area in pixels, the view is larger. `linkedEnds` other than 0 moves
  // the first and the last point together.
  LFODisplay(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, std::int32_t tag, double graphWidth,
             double graphHeight, VSTGUI::CBitmap* background, const VSTGUI::CPoint& offset, int linkedEnds);
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

  [[nodiscard]] bool CloseEnough(float a, float b) const;
  [[nodiscard]] bool checkIfInside(const VSTGUI::CPoint& point, const VSTGUI::CRect& handle) const;
  void CheckIfMouseInAnyPoint(const VSTGUI::CPoint& where);
  void CheckIfMouseOverAnyPoint(const VSTGUI::CPoint& where);
  // Moves the points from `i` on one place up; the caller fills the gap and raises `lastPoint`.
  void InsertEnvPoint(int i);
  // The new count of selected points; all ones when there is no room.
  std::uint32_t AllocateSelPoint(int index, float weight);
  std::vector<MultiSelectPoint>::iterator DeallocateSelPoint(std::vector<MultiSelectPoint>::iterator entry);
  void SetGridSize(int cells);
  [[nodiscard]] bool isPointHilighted() const;
  void RenderShape();
  void createBG();
  void drawEnvStuff(VSTGUI::CDrawContext* context);
  [[nodiscard]] static model::CurveCoef CalcCurveCoef(double curve, int length) noexcept;

  // The graph as stored graphs have it, with the markers; and back, which renders but doesn't report.
  [[nodiscard]] GraphState graphState() const;
  void setGraphState(const GraphState& state);
  // Shows the name of what was loaded, for a while and as far as it fits.
  void showOverlay(const char* text);
  // Ends what the pointer is doing and drops the selection; for when another graph comes in.
  void endGestures();
  // What the pointer did since its press becomes a step to undo.
  void endStep();
  // Tells that `graph` is now shown, its points taken anew. `before` is what the view held: where that was the same
  // graph, it becomes a step to undo.
  void graphLoaded(int graph, const GraphState& before);
  // The graph that was loaded last, 0 to 11; -1 before the first one.
  [[nodiscard]] int shownGraph() const { return shownGraph_; }
  // Undoes or redoes one edit of the graph that is shown; false when there is none, or while the pointer drags.
  bool undo();
  bool redo();

  LfoDSP* effect = nullptr;         // null: no files by drop, texts without beats
  GraphHistory* history = nullptr;  // set it to one that lives longer than the view; null: one of the view's own

  // --- Geometry, pixels
  const double graphWidth;
  const double graphHeight;
  const float shapeScale;            // table entries a pixel
  const double closeEnoughDistance;  // half a point handle
  const double handleMargin;         // round a handle, for hover and press
  Shared<std::int32_t> gridSize{8};  // cells an axis, 2 to 32

  // --- Points, by rising x; y is 0 at the top
  std::array<VSTGUI::CPoint, 66> points{};
  std::array<VSTGUI::CPoint, 66> pointSnapshot{};
  int lastPoint = 1;  // an index, not a count
  std::array<double, kEditedPoints> curves{};
  std::array<VSTGUI::CRect, 65> pointHandles{};
  std::array<VSTGUI::CRect, 65> curveHandles{};  // -1 on all sides for a segment that is too short
  std::vector<float> shapeTable;                 // 1 is the top
  int loopPoint = kNoLoopPoint;
  int startPoint = kNoStartPoint;
  bool linkedEnds;

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
  bool selectionActive = false;
  bool selectionMoved = false;
  VSTGUI::CPoint marqueeOrigin;
  VSTGUI::CRect selectionRect;
  std::vector<MultiSelectPoint> selection;  // room for 64, never more
  // How a drag goes out, see GraphLink.h.
  bool automationGesture = false;  // the drag touches a point that hosts automate
  bool gestureEnding = false;      // the last report of such a drag
  std::vector<int> openEdits;      // parameters whose edit the host was told the beginning of
  bool bendsAllCurves = false;     // a curve drag that parameters can't carry
  VSTGUI::CPoint lastMouse{55, 55};

  // --- Picture
  Shared<bool> renderDirty{true};       // curve and handles have to be painted again
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
  VSTGUI::CColor scopeInColor{192, 192, 192, 64};
  Shared<float> pwmValue{0.5f};
  Shared<float> graphOutValue{0.5f};
  Shared<float> phaseValue{0.0f};
  Shared<double> playPosition{-1.0};  // 0 to 1; below 0 hides the bar
  std::array<char, 31> overlayText{};
  int overlayTimer = -1;  // ticks for which the text is still shown
  std::array<VSTGUI::CColor, kWeightColors> weightColors;
  Shared<bool> bTriplet{true};
  Shared<bool> bDotted{true};

  VSTGUI_CLASS(LFODisplay, VSTGUI::CParamDisplay)
  [[nodiscard]] VSTGUI::CBaseObject* newCopy() const override { return nullptr; }

 private:
  // What a key does to the selection, in pixels.
  struct Nudge {
    double x = 0.0, y = 0.0;
  };

  void insertPoint(int i, const VSTGUI::CPoint& place);
  void removePoint(int i);
  [[nodiscard]] double curveY(double x) const;
  [[nodiscard]] int firstPointFrom(double x) const;
  [[nodiscard]] int pointAt(const VSTGUI::CPoint& where) const;
  [[nodiscard]] int curveHandleAt(const VSTGUI::CPoint& where) const;
  [[nodiscard]] bool isPoint(int code) const { return code >= 0 && code <= lastPoint; }
  [[nodiscard]] bool isSelected(int point) const;
  void forgetSelected(int removed);
  [[nodiscard]] VSTGUI::CPoint inGraph(const VSTGUI::CPoint& where) const;
  [[nodiscard]] VSTGUI::CPoint onGrid(const VSTGUI::CPoint& where) const;

  VSTGUI::CMouseEventResult press(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult pressNothing(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult beginDrag(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult addPoint(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult dropPoint(int point, VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  void pressCurveHandle(const VSTGUI::CPoint& where);
  bool placeMarker(int point);
  void hover(const VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  VSTGUI::CMouseEventResult drag(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons);
  void dragPressed(VSTGUI::CPoint& where, int state);
  void dragPoint(VSTGUI::CPoint& where, bool snaps);
  void dragEnd(VSTGUI::CPoint& where, bool snaps);
  void bendCurve(int segment, double y, bool all);
  void bendLike(double curve);
  void release(VSTGUI::CPoint& where);
  void setCursor(int code);

  void selectByReach(const VSTGUI::CPoint& where);
  void selectInRect(const VSTGUI::CRect& rect, int lastCandidate);
  void dragMarquee(const VSTGUI::CPoint& where, int masked);
  bool dragSelection(VSTGUI::CPoint& where, int masked);
  bool moveSelection(double dx, double dy, int masked);
  void moveSelected(const MultiSelectPoint& entry, double ex, double ey);
  void linkSelectedEnds(bool firstSelected);
  void restoreOrder();
  void renewOrigins();

  void drawSegment(VSTGUI::CPoint& where, bool snaps);
  int openSegment(double left, double y);
  void openSegmentAtStart(double y);
  int putSegmentStart(int first, double left, double y);
  void clearSegment(int j, double right);
  void closeSegment(int j, double right, double y);

  [[nodiscard]] std::optional<Nudge> nudgeOf(const VSTGUI::VstKeyCode& key) const;
  void nudge(const Nudge& by);
  [[nodiscard]] GraphHistory& steps() { return history ? *history : ownHistory_; }
  void beginStep();
  bool takeStep(std::optional<GraphState> (GraphHistory::*step)(int, const GraphState&));
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
  void drawFlags(VSTGUI::CDrawContext& context) const;
  void drawMarquee(VSTGUI::CDrawContext& context) const;
  void drawScope(VSTGUI::CDrawContext& context) const;
  void drawOutputBar(VSTGUI::CDrawContext& context) const;
  void drawPlaybackBar(VSTGUI::CDrawContext& context) const;
  void drawOverlay(VSTGUI::CDrawContext& context) const;
  void drawTooltip(VSTGUI::CDrawContext& context) const;

  GraphHistory ownHistory_;
  std::optional<GraphState> before_;  // while the pointer drags: the graph at its press
  int shownGraph_ = -1;
  bool handShown_ = false;
  bool cursorRests_ = false;  // a selection was let go; its point still counts as pressed
  bool valueShown_ = false;   // the text beside the pressed point
  bool dropCursor_ = false;   // a file was dragged over the view
};
