// The graph display's data: points, handles, rendering, undo.
#include "editor/graph/LFODisplay.h"

#include <algorithm>
#include <cmath>

#include "editor/graph/GraphGeometry.h"
#include "effect/LfoClock.h"
#include "effect/LfoDSP.h"

using namespace VSTGUI;
using namespace model;
using namespace effect;
using graphgeometry::around;
using graphgeometry::grown;
using graphgeometry::wholePixels;

namespace {

constexpr double kReferenceWidth = 388.0;  // of the graph, where the sizes below are pixels
constexpr double kHandleHalf = 2.5;
constexpr double kHandleMargin = 5.5;
constexpr CRect kNoHandle(-1, -1, -1, -1);

std::size_t at(int i) { return static_cast<std::size_t>(i); }

}  // namespace

LFODisplay::LFODisplay(const CRect& size, IControlListener* newListener, std::int32_t newTag, double width,
                       double height, CBitmap* background, const CPoint& offset, int linked)
    : CParamDisplay(size, background),
      graphWidth(width),
      graphHeight(height),
      shapeScale(static_cast<float>(kGraphWidth / width)),
      closeEnoughDistance(width / kReferenceWidth * kHandleHalf),
      handleMargin(width / kReferenceWidth * kHandleMargin),
      shapeTable(kDisplayTable),
      linkedEnds(linked != 0),
      curvePolyline(at(static_cast<int>(width)) + 3),
      scopeOutCopy(kDisplayTable),
      scopeInCopy(kDisplayTable),
      weightColors(weightRamp()) {
  setListener(newListener);
  setTag(newTag);
  setBackOffset(offset);
  setWantsFocus(true);
  points.fill({graphWidth, 0});
  points[0] = {0, 0};
  curves.fill(kEditedStraight);
  curveHandles.fill(kNoHandle);
  selection.reserve(kEditedPoints);
  for (int i = 0; i <= lastPoint; ++i) LFODisplay::MakeEnvHandle(i);
  RenderShape();
}

LFODisplay::~LFODisplay() = default;

float LFODisplay::CalcRateTime(float rate) { return static_cast<float>(rateStep(rate, bTriplet, bDotted)); }

CurveCoef LFODisplay::CalcCurveCoef(double curve, int length) noexcept { return calcCurveCoef(curve, length); }

bool LFODisplay::CloseEnough(float a, float b) const {
  return closeEnoughDistance > wholePixels(static_cast<double>(a - b));
}

bool LFODisplay::checkIfInside(const CPoint& point, const CRect& handle) const {
  return point.isInside(grown(handle, handleMargin));
}

void LFODisplay::MakeEnvHandle(int i) {
  if (i < 0 || i >= kEditedPoints) return;
  const CPoint& p = points[at(i)];
  const double half = closeEnoughDistance;
  pointHandles[at(i)] = {p.x - half, p.y - half, p.x + 1 + half, p.y + 1 + half};
}

// --- Hit tests; where handles overlap, the highest number wins

int LFODisplay::pointAt(const CPoint& where) const {
  for (int i = lastPoint; i >= 0; --i)
    if (checkIfInside(where, pointHandles[at(i)])) return i;
  return -1;
}

int LFODisplay::curveHandleAt(const CPoint& where) const {
  for (int s = lastPoint - 1; s >= 0; --s)
    if (curveHandles[at(s)] != kNoHandle && checkIfInside(where, curveHandles[at(s)])) return s;
  return -1;
}

void LFODisplay::CheckIfMouseInAnyPoint(const CPoint& where) {
  pressedPoint = pointAt(where);
  if (pressedPoint >= 0) dragOrigin = where;
  CheckIfMouseOverAnyPoint(where);
}

void LFODisplay::CheckIfMouseOverAnyPoint(const CPoint& where) {
  const int before = hoverPoint;
  hoverPoint = pointAt(where);
  if (hoverPoint >= 0) {
    lastHoverPoint = hoverPoint;
  } else if (const int segment = curveHandleAt(where); segment >= 0) {
    hoverPoint = kFirstCurveHandle + segment;
  }
  if (hoverPoint == before) return;
  renderDirty = true;
  invalid();
}

bool LFODisplay::isPointHilighted() const { return lastHoverPoint >= 0 && lastHoverPoint <= lastPoint; }

// --- Point list

void LFODisplay::InsertEnvPoint(int i) {
  for (int k = lastPoint; k >= i; --k) {
    points[at(k + 1)] = points[at(k)];
    pointHandles[at(k + 1)] = pointHandles[at(k)];
    if (k + 1 < kEditedPoints) curves[at(k + 1)] = curves[at(k)];
  }
  if (loopPoint >= i && loopPoint != kNoLoopPoint) ++loopPoint;
  if (startPoint >= i) ++startPoint;
}

void LFODisplay::insertPoint(int i, const CPoint& place) {
  InsertEnvPoint(i);
  points[at(i)] = place;
  MakeEnvHandle(i);
  lastPoint = std::min(lastPoint + 1, kEditedPoints - 1);
}

void LFODisplay::removePoint(int i) {
  if (i < 0 || i >= kEditedPoints - 1) return;
  for (std::size_t k = at(i); k + 1 < points.size(); ++k) points[k] = points[k + 1];
  for (std::size_t k = at(i); k + 1 < curves.size(); ++k) curves[k] = curves[k + 1];
  --lastPoint;
  for (int k = i; k <= lastPoint; ++k) MakeEnvHandle(k);
  if (loopPoint >= i && loopPoint != kNoLoopPoint) --loopPoint;
  if (startPoint >= i) --startPoint;
}

// The first point that doesn't lie left of `x`; the last point where there is none.
int LFODisplay::firstPointFrom(double x) const {
  for (int i = 0; i < lastPoint; ++i)
    if (points[at(i)].x >= x) return i;
  return lastPoint;
}

CPoint LFODisplay::inGraph(const CPoint& where) const {
  return {std::clamp(where.x, 0.0, graphWidth), std::clamp(where.y, 0.0, graphHeight)};
}

CPoint LFODisplay::onGrid(const CPoint& where) const {
  const int cells = gridSize;
  return {graphgeometry::snappedX(where.x, graphWidth, cells), graphgeometry::snappedY(where.y, graphHeight, cells)};
}

// --- Selection

std::uint32_t LFODisplay::AllocateSelPoint(int index, float weight) {
  if (selection.size() >= at(kEditedPoints)) return ~std::uint32_t{0};
  const CPoint& p = points[at(index)];
  selection.push_back({std::clamp(weight, 0.0f, 1.0f), p, p, index});  // a weight that is no number stays none
  return static_cast<std::uint32_t>(selection.size());
}

std::vector<MultiSelectPoint>::iterator LFODisplay::DeallocateSelPoint(std::vector<MultiSelectPoint>::iterator entry) {
  return selection.erase(entry);
}

bool LFODisplay::isSelected(int point) const {
  return std::ranges::any_of(selection, [&](const MultiSelectPoint& entry) { return entry.index == point; });
}

// Of a point that is gone; those behind it have moved up.
void LFODisplay::forgetSelected(int removed) {
  std::erase_if(selection, [&](const MultiSelectPoint& entry) { return entry.index == removed; });
  for (MultiSelectPoint& entry : selection) entry.index -= entry.index > removed;
  selectionActive = selectionActive && !selection.empty();
}

void LFODisplay::clearSelectedPoints() {
  for (std::size_t n = selection.size(); n-- > 0;) {
    const int index = selection[n].index;
    if (index > 0 && index < lastPoint) removePoint(index);
  }
  selection.clear();
  marqueeActive = selectionActive = selectionMoved = false;
  valueChanged();
  RenderShape();
  invalid();
}

// --- Grid, rendering

void LFODisplay::SetGridSize(int cells) {
  const int size = std::clamp(cells, 2, 32);
  if (size == gridSize) return;
  gridSize = size;
  backgroundValid = false;
  renderDirty = true;
  setDirty();  // any thread may come here
}

void LFODisplay::RenderShape() {
  points[at(lastPoint + 1)].x = graphWidth;
  const GraphPoints graph = graphState().points;
  const std::span<float, kGraphTableSize> table(shapeTable.data(), kGraphTableSize);
  curveHandles.fill(kNoHandle);
  table[0] = static_cast<float>(1.0 - graph.y[0]);
  const auto limit = [](double y) { return std::clamp(y, 0.0, 1.0); };
  const auto segment = [&](int i, std::size_t from, std::size_t to, int length) {
    renderSegment(table, i, length, CalcCurveCoef(graph.curve[from], length), graph.y[from],
                  graph.y[to] - graph.y[from], limit);
    const int middle = std::min(i + (length + 1) / 2, kGraphTableSize - 1);
    const double y = 1.0 - static_cast<double>(table[at(middle)]);
    curveHandles[from] = around({(points[from].x + points[to].x) / 2, y * graphHeight}, closeEnoughDistance);
  };
  walkGraph(graph, segment, [&](int i, int) { repeatSample(table, i); });
  std::fill(shapeTable.begin() + kGraphTableSize, shapeTable.end(), table.back());
}

// The height of the curve, as it was last rendered.
double LFODisplay::curveY(double x) const {
  const int index = std::clamp(static_cast<int>(static_cast<double>(shapeScale) * x), 0, kGraphTableSize - 1);
  return (1.0 - static_cast<double>(shapeTable[at(index)])) * graphHeight;
}

GraphState LFODisplay::graphState() const {
  GraphState state{{}, loopPoint, startPoint};
  state.points.lastPoint = lastPoint;
  for (std::size_t i = 0; i < at(kGraphSlots); ++i) {
    state.points.x[i] = points[i].x / graphWidth * kGraphWidth;
    state.points.y[i] = points[i].y / graphHeight;
    state.points.curve[i] = i < curves.size() ? curves[i] : kEditedStraight;
  }
  return state;
}

void LFODisplay::setGraphState(const GraphState& state) {
  lastPoint = std::clamp(state.points.lastPoint, 1, kEditedPoints - 1);
  for (std::size_t i = 0; i < at(kGraphSlots); ++i) {
    points[i] = {state.points.x[i] / kGraphWidth * graphWidth, state.points.y[i] * graphHeight};
    if (i < curves.size()) curves[i] = state.points.curve[i];
  }
  for (int i = 0; i < kEditedPoints; ++i) MakeEnvHandle(i);
  loopPoint = state.loopPoint;
  startPoint = state.startPoint;
  RenderShape();
  renderDirty = true;
  invalid();
}

// --- Undo

void LFODisplay::endGestures() {
  selection.clear();
  marqueeActive = selectionActive = selectionMoved = automationGesture = valueShown_ = false;
  pressedPoint = hoverPoint = -1;
  before_.reset();
}

void LFODisplay::graphLoaded(int graph, const GraphState& before) {
  if (graph == shownGraph_ && !sameGraph(before, graphState())) steps().record(graph, before);
  shownGraph_ = graph;
}

void LFODisplay::beginStep() {
  steps().endRun();
  before_ = graphState();
}

void LFODisplay::endStep() {
  if (before_ && !sameGraph(*before_, graphState())) steps().record(std::max(shownGraph_, 0), *before_);
  before_.reset();
}

bool LFODisplay::takeStep(std::optional<GraphState> (GraphHistory::*step)(int, const GraphState&)) {
  if (isDragging()) return false;
  const auto state = (steps().*step)(std::max(shownGraph_, 0), graphState());
  if (!state) return false;
  endGestures();
  setGraphState(*state);
  value = kReportMarker;
  valueChanged();
  value = 0.0f;
  return true;
}

bool LFODisplay::undo() { return takeStep(&GraphHistory::undo); }
bool LFODisplay::redo() { return takeStep(&GraphHistory::redo); }
