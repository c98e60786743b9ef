// SPDX-License-Identifier: MIT
// The graph's picture. Grid and curve are painted into bitmaps when they change; each tick then takes these and paints
// over them what moves, which is in LFODisplayOverlays.cpp.
#include <algorithm>
#include <cmath>

#include "editor/graph/GraphFlags.h"
#include "editor/graph/LFODisplay.h"
#include "effect/LfoClock.h"
#include "toolkit/views/CFrame.h"

using namespace model;
using namespace VSTGUI;
using editor::at;
using editor::grown;
using editor::kFirstCurveHandle;
using editor::kWeightColors;
using editor::wholePixels;

namespace {

constexpr CDrawMode kSharp{kAliasing | kNonIntegralMode};

int pixelColumn(double x) { return static_cast<int>(x + 0.5); }

Counted<CGraphicsPath> newPath(const CDrawContext& context) {
  return Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
}

// A unit wide, and never less than a device pixel. A line on whole units then covers them, where it would lie half on
// each of two; the handles are centred there too.
void strokeOnPixels(CDrawContext& context, const CGraphicsPath* path) {
  const double width = std::max(1.0, 1.0 / context.getScaleFactor());
  const CGraphicsTransform centred(1, 0, 0, 1, width / 2, width / 2);
  context.setLineWidth(width);
  context.drawGraphicsPath(path, CDrawContext::kPathStroked, &centred);
}

}  // namespace

void LFODisplay::draw(CDrawContext* context) {
  followScaleFactor(*context);
  if (!backgroundValid) createBG();
  if (renderDirty) plotWave(context);
  if (curveBitmap) curveBitmap->draw(context, getViewSize());
  drawOverlays(*context);
  setDirty(false);
}

// The bitmaps have the device's pixels; on another screen they are made anew.
void LFODisplay::followScaleFactor(const CDrawContext& context) {
  if (!offscreen || offscreen->getScaleFactor() == context.getScaleFactor()) return;
  offscreen = nullptr;
  backgroundValid = false;
  renderDirty = true;
}

CRect LFODisplay::drawingArea() const { return {0, 0, getWidth(), getHeight()}; }

// --- Grid

void LFODisplay::createBG() {
  gridBitmap = plainBackground = nullptr;
  backgroundValid = true;
  const auto plain = Counted<COffscreenContext>::adopt(COffscreenContext::create(getFrame(), getWidth(), getHeight()));
  const auto grid = Counted<COffscreenContext>::adopt(COffscreenContext::create(getFrame(), getWidth(), getHeight()));
  if (!plain || !grid) return;
  plain->beginDraw();
  plain->setDrawMode(kAliasing);
  plain->setFillColor(LFOBGColor);
  plain->drawRect(drawingArea(), kDrawFilled);
  plain->setFillColor(SuperFaintEnv);
  plain->drawRect({getWidth() - 2, 0, getWidth(), getHeight()}, kDrawFilled);
  plain->endDraw();
  plainBackground = plain->getBitmap();

  grid->beginDraw();
  plainBackground->draw(grid, drawingArea());
  drawGridLines(*grid);
  grid->endDraw();
  gridBitmap = grid->getBitmap();
}

void LFODisplay::drawGridLines(CDrawContext& context) const {
  const editor::GraphGrid lines = grid();
  const int major = lines.majorStep();
  const auto vertical = [&](double x, double bottom) { context.drawLine({x, 1}, {x, bottom}); };
  const auto horizontal = [&](double y) { context.drawLine({1, y}, {graphWidth - 1, y}); };
  context.setLineWidth(1.0);
  context.setDrawMode(kSharp);
  context.setFrameColor(LFOBgLinesBright);
  vertical(graphWidth + 1, graphHeight);
  context.setFrameColor(BgLinesDark);
  for (int i = 0; i < lines.cells; ++i) {
    if (i % major == 0) continue;
    vertical(lines.cellWidth() * i + 1, graphHeight - 1);
    horizontal(lines.cellHeight() * i + 1);
  }
  context.setFrameColor(LFOBgLinesBright);
  for (int i = major; i < lines.cells; i += major) {
    vertical(lines.cellWidth() * i + 1, graphHeight - 1);
    horizontal(lines.cellHeight() * i);
  }
}

// --- Curve

void LFODisplay::plotWave(CDrawContext* /*context*/) {
  curveBitmap = nullptr;
  renderDirty = false;  // first, so that no change that comes meanwhile is lost
  if (!offscreen)
    offscreen = Counted<COffscreenContext>::adopt(COffscreenContext::create(getFrame(), getWidth(), getHeight()));
  if (!offscreen) return;
  const int columns = static_cast<int>(graphWidth);
  CDrawContext& context = *offscreen;
  context.beginDraw();
  if (gridBitmap) gridBitmap->draw(&context, drawingArea());
  context.setDrawMode(kAliasing);
  context.setLineStyle(kLineSolid);
  drawLFOEdit(&context, columns);
  fillCurve(context, columns);
  correctOutline(columns);
  strokeOutline(context, columns);
  drawEnvStuff(&context);
  editor::drawFlags(context, *this);
  context.endDraw();
  curveBitmap = offscreen->getBitmap();
}

void LFODisplay::drawLFOEdit(CDrawContext* context, int columns) {
  context->setFrameColor(LFOLineColor);
  context->setDrawMode(kSmoothMode);
  effect::ClockSettings clock;  // the law that plays the graph
  effect::setPwm(clock, pwmValue);
  const double phase = static_cast<double>(phaseValue);
  for (int i = 0; i < columns; ++i) {
    double p = std::max(0.0, phase + i * (1.0 / graphWidth));
    if (p > 1.0) p -= std::floor(p);
    if (clock.hasPwm) p = effect::pwmPosition(p, clock);
    const auto entry = static_cast<int>(p * (kGraphTableSize - 1) + 0.5);
    curvePolyline[at(i)] = {i + 1.0, (1.0 - static_cast<double>(shapeTable[at(entry)])) * graphHeight};
  }
  curvePolyline[at(columns)] = {graphWidth, graphHeight};
  curvePolyline[at(columns + 1)] = {0, graphHeight};
}

void LFODisplay::fillCurve(CDrawContext& context, int columns) const {
  const auto path = newPath(context);
  path->beginSubpath(curvePolyline[0]);
  for (int i = 1; i <= columns - 2; ++i) path->addLine(curvePolyline[at(i)]);
  const double right = curvePolyline[at(columns - 1)].x;
  path->addLine({right, points[at(lastPoint)].y});
  path->addLine({right, getHeight()});
  path->addLine({0, getHeight()});
  context.setDrawMode(kSmoothMode);
  const auto gradient = Counted<CGradient>::adopt(path->createGradient(0.0, 1.0, LFO_BG_G1, LFO_BG_G2));
  context.fillLinearGradient(path, *gradient, {getWidth() / 2, 0}, {getWidth() / 2, getHeight()});
  strokeOnPixels(context, path);
}

// Puts the outline through the exact points, where the table would blur a vertical step. Points that share a pixel
// column take the entries behind it too.
void LFODisplay::correctOutline(int columns) {
  int next = 0;  // the point that may come
  for (int i = 0; i < columns; ++i) {
    while (next < lastPoint && pixelColumn(points[at(next)].x) < i) ++next;
    if (next >= lastPoint || pixelColumn(points[at(next)].x) != i) {
      const auto entry = std::min(static_cast<int>(i * static_cast<double>(shapeScale) + 0.5), kGraphTableSize - 1);
      curvePolyline[at(i)] = {static_cast<double>(i), (1.0 - static_cast<double>(shapeTable[at(entry)])) * graphHeight};
      continue;
    }
    curvePolyline[at(i)] = {static_cast<double>(i), points[at(next)].y};
    const int column = i;
    for (++next; next <= lastPoint && pixelColumn(points[at(next)].x) == column && i + 1 < columns; ++next)
      curvePolyline[at(++i)] = {static_cast<double>(column), points[at(next)].y};
  }
}

void LFODisplay::strokeOutline(CDrawContext& context, int columns) const {
  const auto path = newPath(context);
  path->beginSubpath(curvePolyline[0]);
  for (int i = 1; i < columns; ++i) path->addLine(curvePolyline[at(i)]);
  path->addLine({curvePolyline[at(columns)].x, points[at(lastPoint)].y});
  context.setFrameColor(LFOLineColor);
  context.setDrawMode(kSmoothMode);
  strokeOnPixels(context, path);
}

// --- Handles

void LFODisplay::drawEnvStuff(CDrawContext* context) {
  context->setDrawMode(kSmoothMode);
  context->setFrameColor(kWhiteCColor);
  context->setFillColor(LFOBgLinesBright);
  context->setLineWidth(1.0);
  drawPoints(*context);
  updateCursor();
  drawCurveHandles(*context);
}

// The colour of a selected point, also while the marquee is still open.
std::optional<CColor> LFODisplay::weightColor(int point) const {
  if (!selectionActive && !marqueeActive) return std::nullopt;
  const auto entry = std::ranges::find(selection, point, &MultiSelectPoint::index);
  if (entry == selection.end()) return std::nullopt;
  const float weight = entry->weight > 0.0f ? entry->weight : 0.0f;  // for NaN too
  const auto last = static_cast<float>(kWeightColors - 1);
  return weightColors[std::min(static_cast<std::size_t>(weight * last + 0.5f), kWeightColors - 1)];
}

void LFODisplay::drawPoints(CDrawContext& context) const {
  for (int i = 0; i <= lastPoint; ++i) {
    const CRect& handle = pointHandles[at(i)];
    context.setFillColor(LFOPoints);
    if (const auto color = weightColor(i)) {
      context.setFillColor(*color);
      context.setFrameColor(*color);
    }
    if (i == hoverPoint) {
      context.setFillColor(LFOPointHoverBorderFill);
      context.drawEllipse(grown(handle, handleMargin), i == pressedPoint ? kDrawFilledAndStroked : kDrawFilled);
      context.setFillColor(kWhiteCColor);
    }
    context.drawEllipse(handle, kDrawFilled);
  }
}

void LFODisplay::updateCursor() {
  if (pressedPoint == -1) {
    setCursor(kCursorDefault);
    pressedPoint = -2;  // once a release
  } else if (cursorRests_) {
    return;
  } else if (pressedPoint > 0 && pressedPoint < lastPoint) {
    setCursor(kCursorSizeAll);
  } else if (pressedPoint == 0 || pressedPoint == lastPoint || pressedPoint >= kFirstCurveHandle) {
    setCursor(kCursorVSize);
  }
}

void LFODisplay::drawCurveHandles(CDrawContext& context) const {
  if ((lastPoint < 2 && linkedEnds) || selectionActive || lastPoint < 1) return;
  for (int s = 0; s < lastPoint; ++s) {
    const CPoint span = points[at(s + 1)] - points[at(s)];
    const bool shown = curveHandles[at(s)].left + closeEnoughDistance > 0 &&
                       wholePixels(span.x) >= closeEnoughDistance && wholePixels(span.y) >= closeEnoughDistance;
    if (shown) drawCurveHandle(context, s);
  }
}

void LFODisplay::drawCurveHandle(CDrawContext& context, int segment) const {
  const CRect& handle = curveHandles[at(segment)];
  const int code = kFirstCurveHandle + segment;
  context.setFillColor(LFOLineColor);
  if (code == pressedPoint) {
    context.setFrameColor(kGreenCColor);
    context.drawEllipse(handle, kDrawFilledAndStroked);
    return;
  }
  if (code == hoverPoint) {
    context.setFillColor(LFOPointHoverBorderFill);
    context.drawEllipse(grown(handle, handleMargin), kDrawFilled);
  }
  context.setFrameColor(kWhiteCColor);
  context.drawEllipse(handle, kDrawStroked);
}
