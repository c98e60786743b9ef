// SPDX-License-Identifier: MIT
#include "editor/graph/GraphFlags.h"

#include <initializer_list>

#include "editor/graph/EditedGraph.h"
#include "editor/graph/GraphPalette.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/CGraphicsPath.h"

using namespace model;
using namespace VSTGUI;

namespace editor {

namespace {

Counted<CGraphicsPath> pathThrough(std::initializer_list<CPoint> corners) {
  auto path = Counted<CGraphicsPath>::adopt(new CGraphicsPath);
  path->beginSubpath(*corners.begin());
  for (const CPoint& corner : corners) path->addLine(corner);
  return path;
}

constexpr double kFlagUp = 10.0;   // of a flag's middle above its point, or below it
constexpr double kFlagStep = 9.0;  // between two flags of one point
constexpr double kFlagRoom = 4.0;  // half a flag's height
constexpr double kFlagWidth = 12.0;

void drawPennant(CDrawContext& context, const CPoint& p) {
  context.setFillColor(LFO_LoopPointColor);
  context.drawGraphicsPath(pathThrough({p,
                                        {p.x, p.y - kFlagRoom},
                                        {p.x + 8, p.y - kFlagRoom},
                                        {p.x + kFlagWidth, p.y},
                                        {p.x + 8, p.y + kFlagRoom},
                                        {p.x, p.y + kFlagRoom},
                                        p}));
}

void drawLetter(CDrawContext& context, const CColor& color, const Counted<CGraphicsPath>& letter) {
  constexpr CGraphicsTransform kOnPixels(1, 0, 0, 1, 0.5, 0.5);
  context.setFrameColor(color);
  context.drawGraphicsPath(letter, CDrawContext::kPathStroked, &kOnPixels);
}

// `above` is how much higher than a single flag this one stands.
CPoint flagPlace(const CPoint& point, double above) {
  double y = point.y - kFlagUp - above;
  if (y < kFlagRoom) y = point.y + kFlagUp + above;
  return {point.x, y};
}

}  // namespace

void drawFlags(CDrawContext& context, const EditedGraph& graph) {
  const auto placeOf = [&](int point) { return graph.points[at(point)]; };
  const int loop = graph.loopPoint, start = graph.startPoint;
  if (loop >= 0 && loop < graph.lastPoint) {
    const CPoint p = flagPlace(placeOf(loop), 0);
    drawPennant(context, p);
    drawLetter(context, kBlackCColor, pathThrough({{p.x + 2, p.y - 2}, {p.x + 2, p.y + 2}, {p.x + 5, p.y + 2}}));
  }
  if (start <= 0 || start >= graph.lastPoint) return;
  const CPoint p = flagPlace(placeOf(start), start == loop ? kFlagStep : 0);
  drawPennant(context, p);
  drawLetter(context, kGreenCColor,
             pathThrough({{p.x + 5, p.y - 2}, {p.x + 2, p.y - 2}, {p.x + 5, p.y + 2}, {p.x + 2, p.y + 2}}));
}

}  // namespace editor
