// SPDX-License-Identifier: MIT
// The graph that is edited: its points in pixels, what is selected of them, and each edit that a gesture can make. It
// knows neither views nor events, so that all of it can be tried without a window.
//
//   editor::EditedGraph graph(388, 240, true);
//   graph.takePoints(effect.pointsOf(0), model::kStoredSlots, editor::Rounding::factor);
//   const int i = graph.addPoint({120, 60});
//   CPoint where(150, 90);
//   graph.movePoint(i, where, true);                   // `where` is then where the point could go
//   graph.RenderShape();                               // shape and curve handles follow now, point handles at once
//   effect.setPoints(0, graph.storedPoints(editor::Rounding::factor), model::kStoredSlots);
//
// y is 0 at the top. Points stay inside of the graph and in the order of their x. All is [ui] but the fields of type
// Shared, which any thread may use.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "editor/graph/GraphGrid.h"
#include "editor/graph/GraphHistory.h"
#include "editor/graph/GraphScale.h"
#include "model/CurveLaw.h"
#include "threads/Shared.h"

// A selected point.
struct MultiSelectPoint {
  float weight;                  // 0 to 1: how much of a drag the point follows; NaN stops the drag
  VSTGUI::CPoint origin;         // from where a drag is measured
  VSTGUI::CPoint firstPosition;  // where it was selected
  int index;                     // of the point
};

namespace editor {

inline constexpr int kEditedPoints = model::kStoredSlots;  // points of a graph in the editor at most
inline constexpr double kEditedStraight = 0.4999998;       // curve of a segment that was made straight by an edit
inline constexpr std::size_t kDisplayTable =
    model::kGraphTableSize + 10;  // entries of the display's tables; ten to spare

// Of a curve handle whose segment is too short to have one.
inline constexpr VSTGUI::CRect kNoHandle{-1, -1, -1, -1};

// What a drag of the selection does to points beyond the middle of the graph.
enum class Stretch {
  none,
  height,  // those in the lower half go the other way up and down
  width,   // those in the right half go the other way across
};

class EditedGraph {
 public:
  // The editable area in pixels. `ends` linked: the first and the last point move together.
  EditedGraph(double width, double height, bool ends);
  EditedGraph(const EditedGraph&) = delete;
  EditedGraph& operator=(const EditedGraph&) = delete;

  // --- Places and hits
  [[nodiscard]] bool CloseEnough(float a, float b) const;
  [[nodiscard]] bool checkIfInside(const VSTGUI::CPoint& point, const VSTGUI::CRect& handle) const;
  // What lies there, -1 for nothing; where handles overlap, the highest number.
  [[nodiscard]] int pointAt(const VSTGUI::CPoint& where) const;
  [[nodiscard]] int curveHandleAt(const VSTGUI::CPoint& where) const;
  [[nodiscard]] bool isPoint(int i) const { return i >= 0 && i <= lastPoint; }
  [[nodiscard]] bool isEnd(int i) const { return i == 0 || i == lastPoint; }
  [[nodiscard]] VSTGUI::CPoint inGraph(const VSTGUI::CPoint& where) const;
  [[nodiscard]] GraphGrid grid() const { return {graphWidth, graphHeight, gridSize}; }

  // --- Points
  // Moves the points from `i` on one place up; the caller fills the gap and raises `lastPoint`.
  void InsertEnvPoint(int i);
  void placeHandle(int i);
  // A point that lies in the graph; gives its index. In a full graph the last point falls out.
  int addPoint(const VSTGUI::CPoint& where);
  // Takes a point out, and straightens the segment that closes the gap; false for the ends, which stay.
  bool dropPoint(int i);
  // An inner point as far as its neighbours let it, or an end up and down; with `snaps` on the grid. `where` becomes
  // the place in the graph that was asked for.
  void movePoint(int i, VSTGUI::CPoint& where, bool snaps);
  // From the curve that it had, by pixels down; up bends rising and falling segments to the same side.
  void bendCurve(int segment, double from, double down);
  // The same to all segments, which get one look.
  void bendAllCurves(int segment, double from, double down);
  // The grid cell at `where` becomes a flat step of that height; the curve on both sides stays.
  void drawStep(VSTGUI::CPoint& where, bool snaps);

  // --- Selection
  // The new count of selected points; all ones when there is no room.
  std::uint32_t AllocateSelPoint(int index, float weight);
  std::vector<MultiSelectPoint>::iterator DeallocateSelPoint(std::vector<MultiSelectPoint>::iterator entry);
  [[nodiscard]] bool isSelected(int point) const;
  // By distance from a point, as far as `where` is from it.
  void selectByReach(int center, const VSTGUI::CPoint& where);
  // In `selectionRect`.
  void selectInRect(int lastCandidate);
  // By shares of the graph's extents, from the points' origins; false when a weight is NaN.
  bool moveSelection(double dx, double dy, Stretch stretch);
  // The next drag starts from where the points are.
  void renewOrigins();
  // Takes all selected points but the ends out.
  void removeSelected();

  // --- Stored units, rendering
  void RenderShape();
  [[nodiscard]] GraphScale scale() const { return {graphWidth, graphHeight}; }
  [[nodiscard]] model::GraphPoints storedPoints(Rounding rounding) const;
  // The points in use, and as many slots in all; the caller renders.
  void takePoints(const model::GraphPoints& stored, int slots, Rounding rounding);
  // Points and markers, exactly; and back, rendered.
  [[nodiscard]] GraphState graphState() const;
  void setGraphState(const GraphState& state);
  // The ends of the cycle meet: at the height of the first point, or at that of the last one.
  void joinEnds(bool firstLeads);

  // --- Geometry, pixels
  const double graphWidth;
  const double graphHeight;
  const float shapeScale;                      // table entries per pixel
  const double closeEnoughDistance;            // half a point handle
  const double handleMargin;                   // round a handle, for hover and press
  Shared<std::int32_t> gridSize{kFreshCells};  // cells an axis

  // --- Points, by rising x
  std::array<VSTGUI::CPoint, 66> points{};
  std::array<VSTGUI::CPoint, 66> pointSnapshot{};
  int lastPoint = 1;  // an index, not a count
  std::array<double, kEditedPoints> curves{};
  std::array<VSTGUI::CRect, 65> pointHandles{};
  std::array<VSTGUI::CRect, 65> curveHandles{};
  std::vector<float> shapeTable;  // 1 is the top
  int loopPoint = kNoLoopPoint;
  int startPoint = kNoStartPoint;
  bool linkedEnds;

  // --- Selection
  bool selectionActive = false;  // a drag moves it
  bool selectionMoved = false;
  VSTGUI::CRect selectionRect;
  std::vector<MultiSelectPoint> selection;  // room for 64, never more

  Shared<bool> renderDirty{true};  // curve and handles have to be painted again

 private:
  void insertPoint(int i, const VSTGUI::CPoint& place);
  void removePoint(int i);
  void moveInner(int i, VSTGUI::CPoint& where, bool snaps);
  void moveEnd(int i, VSTGUI::CPoint& where, bool snaps);
  [[nodiscard]] double bent(int segment, double from, double down) const;
  [[nodiscard]] int firstPointFrom(double x) const;
  [[nodiscard]] double curveY(double x) const;

  void forgetSelected(int removed);
  void moveSelected(const MultiSelectPoint& entry, double dx, double dy);
  void restoreOrder();

  int openStep(double left, double y);
  void openStepAtStart(double y);
  int putStepStart(int first, double left, double y);
  void clearStep(int j, double right);
  void closeStep(int j, double right, double y);
};

}  // namespace editor
