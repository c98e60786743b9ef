// SPDX-License-Identifier: MIT
#include "cli/pictures/GraphPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/core.h>
#include <numeric>
#include <vector>

#include "cli/pictures/PictureCanvas.h"
#include "cli/values/GraphText.h"
#include "model/CurveLaw.h"

using namespace model;

namespace modrift::cli {
namespace {

constexpr Colour kFillTop{kRmsBody.rgb, 0.42};
constexpr Colour kFillBottom{kPeakBody.rgb, 0.10};
constexpr Colour kBendDot{kRmsBody.rgb, 0.75};

// Pixels. The plot has the shape of the editor's graph, and whole ones for its quarters.
constexpr int kPlotLeft = 76;
constexpr int kPlotTop = 66;
constexpr int kPlotWidth = 1040;
constexpr int kPlotHeight = 640;
constexpr int kPlotRight = kPlotLeft + kPlotWidth;
constexpr int kPlotBottom = kPlotTop + kPlotHeight;
constexpr int kPictureWidth = kPlotRight + 40;
constexpr int kPictureHeight = kPlotBottom + 50;
constexpr int kQuarters = 4;
constexpr int kEighths = 8;

constexpr double kLineWidth = 2.6;
// Wide and faint below narrow and clear: a line that shines.
struct Stroke {
  double widthPx, alpha;
};
constexpr auto kStrokes = std::to_array<Stroke>({{16.0, 0.05}, {10.0, 0.07}, {6.0, 0.12}, {kLineWidth, 1.0}});
constexpr double kPointRadius = 5.0;
constexpr double kRimRadius = 7.5;  // dark, so that points stand out of the line
constexpr double kBendRadius = 3.0;

// Close enough for a line: a sixteenth of a pixel and less.
constexpr std::size_t kTableStep = 8;

using Table = std::vector<float>;  // kGraphTableSize values, 0 to 1

PicturePoint place(double x, double y) noexcept { return {kPlotLeft + x * kPlotWidth, kPlotBottom - y * kPlotHeight}; }

Table rendered(const GraphPoints& points) {
  Table table(kGraphTableSize);
  renderGraph(points, std::span<float, kGraphTableSize>(table.data(), table.size()));
  return table;
}

// With the jump at the cycle's end, which the table leaves to the next cycle's start.
std::vector<PicturePoint> curveOf(const Table& table, const GraphPoints& points) {
  std::vector<PicturePoint> line;
  for (std::size_t i = 0; i < table.size(); i += kTableStep) {
    line.push_back(place(static_cast<double>(i) / kGraphWidth, static_cast<double>(table[i])));
  }
  line.push_back(place(1.0, static_cast<double>(table.back())));
  line.push_back(place(1.0, textPoint(points, points.lastPoint).y));
  return line;
}

void drawTitle(PictureCanvas& canvas, const GraphPoints& points, const Table& table, const std::string& title) {
  const double mean = std::accumulate(table.begin(), table.end(), 0.0) / static_cast<double>(table.size());
  const auto [lowest, highest] = std::minmax_element(table.begin(), table.end());
  const std::string facts = fmt::format("{} points   {:.2f} to {:.2f}   mean {:.2f}", points.lastPoint + 1,
                                        std::max(*lowest, 0.0f), *highest, mean);  // the law's rounding goes below 0
  const TextStyle factStyle{14.0, kLabel, Align::right};
  const TextStyle titleStyle{20.0, kTitle, Align::left, true};
  constexpr double kMiddle = 34.0;
  canvas.text(kPlotRight, kMiddle, facts, factStyle);
  const double room = kPlotWidth - canvas.textWidth(facts, factStyle) - 30.0;
  canvas.text(kPlotLeft, kMiddle, canvas.fitted(title, room, titleStyle), titleStyle);
}

void drawGrid(PictureCanvas& canvas) {
  for (int i = 1; i < kEighths; ++i) {
    const Colour colour = i % 2 == 0 ? kStrongLine : kWeakLine;
    const int x = kPlotLeft + i * kPlotWidth / kEighths;  // whole pixels, so that the lines are crisp
    const int y = kPlotTop + i * kPlotHeight / kEighths;
    canvas.fill(x, kPlotTop, 1, kPlotHeight, {colour.rgb, colour.alpha / 2.0});
    canvas.fill(kPlotLeft, y, kPlotWidth, 1, {colour.rgb, colour.alpha / 2.0});
  }
}

void drawLabels(PictureCanvas& canvas) {
  constexpr auto kParts = std::to_array<const char*>({"0", "1/4", "1/2", "3/4", "1"});
  constexpr int kTick = 6;
  for (int i = 0; i <= kQuarters; ++i) {
    const int x = kPlotLeft + i * kPlotWidth / kQuarters;
    const int y = kPlotBottom - i * kPlotHeight / kQuarters;
    canvas.fill(x, kPlotBottom + 6, 1, kTick, kLabel);
    canvas.text(x, kPlotBottom + 26.0, kParts[static_cast<std::size_t>(i)], {14.0, kLabel, Align::centre});
    canvas.fill(kPlotLeft - 6 - kTick, y, kTick, 1, kLabel);
    canvas.text(kPlotLeft - 20.0, y, fmt::format("{:g}", i / 4.0), {14.0, kLabel, Align::right});
  }
  canvas.text(kPlotLeft + kPlotWidth * 0.875, kPlotBottom + 26.0, "of the cycle", {13.0, kLabel, Align::centre});
}

// Where a line is bent, a dot in its middle shows how far.
void drawBends(PictureCanvas& canvas, const GraphPoints& points, const Table& table) {
  for (int i = 0; i < points.lastPoint; ++i) {
    const auto [x, y, curve] = textPoint(points, i);
    const double middle = (x + textPoint(points, i + 1).x) / 2.0;
    const bool isStraight = std::abs(curve - 0.5) < 1e-3;
    const bool isSeen = (middle - x) * kPlotWidth > 2.0 * kRimRadius && y != textPoint(points, i + 1).y;
    if (isStraight || !isSeen) continue;
    const double value = static_cast<double>(table[static_cast<std::size_t>(middle * (kGraphWidth - 1.0))]);
    canvas.disc(place(middle, value), kBendRadius + 2.0, kPanel);
    canvas.disc(place(middle, value), kBendRadius, kBendDot);
  }
}

void drawPoints(PictureCanvas& canvas, const GraphPoints& points) {
  for (int i = 0; i <= points.lastPoint; ++i) {
    const TextPoint point = textPoint(points, i);
    canvas.disc(place(point.x, point.y), kRimRadius, kPanel);
    canvas.disc(place(point.x, point.y), kPointRadius, kTitle);
  }
}

}  // namespace

void writeGraphPicture(const std::filesystem::path& png, const GraphPoints& points, const std::string& title) {
  const Table table = rendered(points);
  const std::vector<PicturePoint> curve = curveOf(table, points);
  PictureCanvas canvas(kPictureWidth, kPictureHeight, kBackground);
  drawTitle(canvas, points, table, title);
  canvas.fill(kPlotLeft, kPlotTop, kPlotWidth, kPlotHeight, kPanel);
  canvas.fillBelow(curve, kPlotTop, kPlotBottom, kFillTop, kFillBottom);
  drawGrid(canvas);
  drawLabels(canvas);
  for (const auto& [widthPx, alpha] : kStrokes) canvas.strokeLine(curve, widthPx, {kRmsBody.rgb, alpha});
  drawBends(canvas, points, table);
  drawPoints(canvas, points);
  canvas.save(png);
}

}  // namespace modrift::cli
