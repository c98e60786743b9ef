// SPDX-License-Identifier: MIT
// What is laid over the cached picture at each tick, and small marks for other controls.
#include <algorithm>
#include <cmath>
#include <string>

#include "editor/graph/GraphScope.h"
#include "editor/graph/GraphTooltip.h"
#include "editor/graph/LFODisplay.h"
#include "effect/LfoClock.h"
#include "effect/LfoDSP.h"

using namespace model;
using namespace VSTGUI;
using editor::at;

namespace {

constexpr int kTextUp = 14;  // the overlay text is a 14th of the view high

// The length of the shown graph's cycle in beats; 0 for a clock of its own.
double cycleBeats(const LfoDSP* effect) {
  if (!effect || effect->padLFO.bFreeRun != 0) return 0.0;
  const PadLFO& lfo = effect->padLFO;
  const double divider = effect::rateDivider(lfo.rate, lfo.bTriplet != 0, lfo.bDotted != 0);
  const double warp = effect->warpMult[at(effect->currentGraph)];
  return divider > 0.0 && warp > 0.0 ? effect::kSongWrapBeats / divider / warp : 0.0;
}

}  // namespace

void LFODisplay::drawOverlays(CDrawContext& context) const {
  context.setLineStyle(kLineSolid);
  if (marqueeActive) drawMarquee(context);
  if (scopeOn) drawScope(context);
  drawOutputBar(context);
  if (playPosition >= 0.0) drawPlaybackBar(context);
  if (overlayTimer > 0) drawOverlay(context);
  if (valueShown_ && isPoint(pressedPoint)) drawTooltip(context);
}

void LFODisplay::drawMarquee(CDrawContext& context) const {
  context.setDrawMode(kAliasing);
  context.setLineWidth(1.0);
  context.setFrameColor(kYellowCColor);
  context.setFillColor(TransFillColor[0]);
  context.drawRect(selectionRect, kDrawFilledAndStroked);
}

// +1 lies at the bottom of the graph, -1 at the top.
void LFODisplay::drawScope(CDrawContext& context) const {
  context.setDrawMode(kSmoothMode);
  context.setLineWidth(0.0);
  const double half = graphHeight / 2;
  const CRect& view = getViewSize();
  const CGraphicsTransform place(1, 0, 0, half, view.left, half + view.top);
  const auto drawTrace = [&](const std::vector<float>& samples, const CColor& color) {
    const editor::ScopeOutline outline =
        editor::scopeOutline(samples, graphWidth, 1.0 / context.getScaleFactor() / half);
    context.setFrameColor(color);
    context.setFillColor(color);
    context.drawGraphicsPath(outline.path, outline.filled ? CDrawContext::kPathFilled : CDrawContext::kPathStroked,
                             &place);
  };
  drawTrace(scopeOutCopy, scopeOutColor);
  drawTrace(scopeInCopy, scopeInColor);
}

void LFODisplay::drawOutputBar(CDrawContext& context) const {
  context.setDrawMode(kAliasing);
  context.setLineWidth(1.0);
  context.setFillColor(kBlackCColor);
  context.drawRect({graphWidth + 9, 0, graphWidth + 13, graphHeight + 1}, kDrawFilled);
  const double v = 1.0 - static_cast<double>(graphOutValue);
  const double middle = graphHeight * 0.5;
  CRect bar(graphWidth + 10, 0, graphWidth + 14, v * graphHeight);
  bar.top = v >= 0.5 ? middle + 1 : middle - 1;
  context.setFrameColor(BlueFaderDot);
  context.setFillColor(BlueFaderLine);
  context.drawRect(bar.normalize(), kDrawFilledAndStroked);
}

void LFODisplay::drawPlaybackBar(CDrawContext& context) const {
  const double x = playPosition * graphWidth + 4;
  context.setDrawMode(kAliasing);
  context.setLineWidth(1.0);
  context.setFrameColor(LFOPositionBar);
  context.drawLine({x, 0}, {x, graphHeight});
}

void LFODisplay::drawOverlay(CDrawContext& context) const {
  const CRect& view = getViewSize();
  context.setDrawMode(kSmoothMode);
  context.setFont(kSystemFont, view.getHeight() / kTextUp);
  const double alpha = std::min(255.0, overlayTimer * 1.2);
  context.setFontColor({255, 255, 255, static_cast<std::uint8_t>(alpha)});
  const CRect place(view.left, view.bottom - view.getHeight() / 12, view.right - view.getWidth() / 16, view.bottom);
  context.drawString(overlayText.data(), place, kRightText);
}

void LFODisplay::drawTooltip(CDrawContext& context) const {
  const CPoint& point = points[at(pressedPoint)];
  const double growth = std::max(1.0, graphWidth / static_cast<double>(kPixelWidth));
  const CPoint stored = scale().toStored(point, editor::Rounding::none);
  const std::string text = editor::pointText(stored.x / kGraphWidth, 1.0 - stored.y, cycleBeats(effect));
  context.setFont(kNormalFontSmaller, kNormalFontSmaller->getSize() * growth);
  const double width = std::ceil(context.getStringWidth(text.c_str()) + 12 * growth);
  const double height = std::round(17 * growth);
  const CRect box = editor::besidePoint({std::round(point.x), std::round(point.y)}, width, height, 10 * growth,
                                        {2, 2, graphWidth, graphHeight});
  context.setDrawMode(kAliasing);
  context.setLineWidth(1.0);
  context.setFillColor({16, 29, 31, 235});
  context.setFrameColor(BlueFaderDot);
  context.drawRect(box, kDrawFilledAndStroked);
  context.setDrawMode(kSmoothMode);
  context.setFontColor(MyFontColor);
  context.drawString(text.c_str(), box, kCenterText);
}

// --- Marks for other controls

void LFODisplay::drawTargetCorners(CRect rect, CDrawContext* context) {
  const double left = rect.left - 9;
  const double top = rect.top - 8;
  const double right = rect.right + 2;
  const auto corner = [&](double x, double y, double across, double down) {
    context->drawLine({x, y}, {x + across, y});
    context->drawLine({x, y}, {x, y + down});
  };
  context->setFrameColor(MouseTargetCornersColor);
  corner(left, top, 1, 2);
  corner(right, top, -1, 2);
  corner(left, rect.bottom, 1, -2);
  corner(right, rect.bottom, -1, -2);
  context->setFrameColor(kGreyCColor);
}

void LFODisplay::drawValueHolder(CDrawContext* context, int x, int y, float barValue, bool unipolar) {
  const double amount = 33.0 * static_cast<double>(barValue);
  context->drawRect(CRect(x - 6.0, y + 3.0, x + 31.0, y + 9.0), kDrawStroked);
  CRect bar(x - 5.0 + amount, y + 4.0, x - 3.0 + amount, y + 8.0);
  if (!unipolar) bar = {x + 12.0, bar.top, barValue < 0.5f ? bar.left : bar.right, bar.bottom};
  context->drawRect(bar.normalize(), kDrawFilled);
}

void LFODisplay::drawToggleOnOff(CDrawContext* context, int x, int y, float toggleValue) {
  CRect box(x, y, x + 6, y + 6);
  context->setFrameColor(kGreyCColor);
  context->drawRect(box, kDrawStroked);
  if (toggleValue < 0.01f) return;
  context->setFillColor(kYellowCColor);
  context->drawRect(box.inset(1, 1), kDrawFilled);
}
