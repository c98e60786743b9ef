// SPDX-License-Identifier: MIT
#include "cli/pictures/FilterPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/core.h>

#include "cli/pictures/PictureCanvas.h"

namespace modrift::cli {
namespace {

// Pixels.
constexpr int kPictureWidth = 580;
constexpr int kPictureHeight = 330;
constexpr int kPlotLeft = 50;
constexpr int kPlotTop = 62;
constexpr int kPlotWidth = kPictureWidth - kPlotLeft - 18;
constexpr int kPlotHeight = kPictureHeight - kPlotTop - 52;
constexpr int kPlotRight = kPlotLeft + kPlotWidth;
constexpr int kPlotBottom = kPlotTop + kPlotHeight;
constexpr double kLineWidth = 1.5;

constexpr double kLowestHz = 20.0;
constexpr double kHighestHz = 20000.0;
constexpr std::size_t kPointsPerPixel = 3;

// From low to high settings, as the rainbow goes; fewer lines take every second one.
constexpr auto kLineColours = std::to_array<Colour>({{0x7d93ff}, {0x3fb8e8}, {0x5fd79a}, {0xf0c454}, {0xf0786a}});

Colour lineColour(std::size_t line, std::size_t lines) {
  const std::size_t step = 2 * lines <= kLineColours.size() + 1 ? 2 : 1;
  return kLineColours[line * step % kLineColours.size()];
}

constexpr int kGridDb = 12;

struct Scale {
  int top, bottom;  // decibels
  [[nodiscard]] double rowAt(double db) const { return kPlotTop + (top - db) / (top - bottom) * kPlotHeight; }
};

double columnAt(double hz) {
  return kPlotLeft + std::log(hz / kLowestHz) / std::log(kHighestHz / kLowestHz) * kPlotWidth;
}

// Whole steps of the grid round what there is to see.
Scale scaleOf(const FrequencyChart& chart) {
  if (chart.showsLevels) return {0, -6 * kGridDb};
  float highest = -200.0f, lowest = 200.0f;
  for (const FrequencyCurve& curve : chart.curves) {
    for (const float db : curve.db) {
      highest = std::max(highest, db);
      lowest = std::min(lowest, db);
    }
  }
  constexpr float kRoom = 2.0f;
  const int above = static_cast<int>(std::ceil((highest + kRoom) / static_cast<float>(kGridDb)));
  const int below = static_cast<int>(std::floor((lowest - kRoom) / static_cast<float>(kGridDb)));
  return {std::clamp(above, 1, 4) * kGridDb, std::clamp(below, -5, -2) * kGridDb};
}

void drawHead(PictureCanvas& canvas, const FrequencyChart& chart) {
  const TextStyle titleStyle{17.0, kTitle, Align::left, true};
  const TextStyle textStyle{12.0, kLabel};
  canvas.text(kPlotLeft, 21.0, chart.title, titleStyle);
  const double factsLeft = kPlotLeft + canvas.textWidth(chart.title, titleStyle) + 14.0;
  canvas.text(factsLeft, 22.0, canvas.fitted(chart.facts, kPlotRight - factsLeft, textStyle), textStyle);
  constexpr double kLegendMiddle = 45.0;
  double x = kPlotLeft;
  canvas.text(x, kLegendMiddle, chart.legend, textStyle);
  x += canvas.textWidth(chart.legend, textStyle) + 14.0;
  for (std::size_t i = 0; i < chart.curves.size(); ++i) {
    canvas.fill(x, kLegendMiddle - 1.0, 18.0, 3.0, lineColour(i, chart.curves.size()));
    canvas.text(x + 24.0, kLegendMiddle, chart.curves[i].label, textStyle);
    x += 24.0 + canvas.textWidth(chart.curves[i].label, textStyle) + 18.0;
  }
}

void drawFrequencies(PictureCanvas& canvas) {
  struct Mark {
    double hz;
    const char* label;
  };
  constexpr auto kMarks = std::to_array<Mark>({{20, "20 Hz"},
                                               {50, "50"},
                                               {100, "100"},
                                               {200, "200"},
                                               {500, "500"},
                                               {1000, "1 k"},
                                               {2000, "2 k"},
                                               {5000, "5 k"},
                                               {10000, "10 k"},
                                               {20000, "20 k"}});
  for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
    for (int digit = 1; digit < 10; ++digit) {
      const double hz = decade * digit;
      if (hz <= kLowestHz || hz >= kHighestHz) continue;
      const Colour colour = digit == 1 ? kStrongLine : kWeakLine;
      canvas.fill(std::floor(columnAt(hz)), kPlotTop, 1, kPlotHeight, {colour.rgb, colour.alpha * 0.6});
    }
  }
  for (const auto& [hz, label] : kMarks) {
    const Align align = hz == kHighestHz ? Align::right : Align::centre;
    canvas.text(hz == kHighestHz ? kPlotRight : columnAt(hz), kPlotBottom + 13.0, label, {11.0, kLabel, align});
  }
}

void drawLevels(PictureCanvas& canvas, const Scale& scale) {
  for (int db = scale.top; db >= scale.bottom; db -= kGridDb) {
    const double y = std::floor(scale.rowAt(db));
    const Colour colour = db == 0 ? kStrongLine : kWeakLine;
    if (db < scale.top && db > scale.bottom) canvas.fill(kPlotLeft, y, kPlotWidth, 1, colour);
    const char* const sign = db > 0 ? "+" : "";
    canvas.text(kPlotLeft - 6.0, y, fmt::format("{}{}{}", sign, db, db == scale.top ? " dB" : ""),
                {11.0, kLabel, Align::right});
  }
}

// Cut off at the edges of the plot, each where the line crosses it.
void drawCurve(PictureCanvas& canvas, const std::vector<double>& hz, const FrequencyCurve& curve, const Scale& scale,
               Colour colour) {
  std::vector<PicturePoint> line;
  const auto flush = [&] {
    if (line.size() > 1) canvas.strokeLine(line, kLineWidth, colour);
    line.clear();
  };
  const double lowest = kPlotBottom, highest = kPlotTop;
  PicturePoint before{};
  for (std::size_t i = 0; i < hz.size(); ++i) {
    const PicturePoint here{columnAt(hz[i]), scale.rowAt(static_cast<double>(curve.db[i]))};
    const auto crossing = [&](double y) {
      return PicturePoint{std::lerp(before.x, here.x, (y - before.y) / (here.y - before.y)), y};
    };
    const auto isInside = [&](const PicturePoint& p) { return p.y >= highest && p.y <= lowest; };
    const auto edgeOf = [&](const PicturePoint& p) { return p.y < highest ? highest : lowest; };
    const bool hereInside = isInside(here), beforeInside = i > 0 && isInside(before);
    if (hereInside && !beforeInside && i > 0) line.push_back(crossing(edgeOf(before)));
    if (hereInside) line.push_back(here);
    if (!hereInside && beforeInside) {
      line.push_back(crossing(edgeOf(here)));
      flush();
    }
    before = here;
  }
  flush();
}

}  // namespace

std::vector<double> chartFrequencies() {
  constexpr std::size_t kSteps = kPlotWidth * kPointsPerPixel;
  std::vector<double> hz;
  hz.reserve(kSteps + 1);
  for (std::size_t i = 0; i <= kSteps; ++i)
    hz.push_back(kLowestHz * std::pow(kHighestHz / kLowestHz, static_cast<double>(i) / static_cast<double>(kSteps)));
  return hz;
}

void writeFrequencyChart(const std::filesystem::path& png, const FrequencyChart& chart) {
  const Scale scale = scaleOf(chart);
  const std::vector<double> hz = chartFrequencies();
  PictureCanvas canvas(kPictureWidth, kPictureHeight, kBackground);
  drawHead(canvas, chart);
  canvas.fill(kPlotLeft, kPlotTop, kPlotWidth, kPlotHeight, kPanel);
  drawFrequencies(canvas);
  drawLevels(canvas, scale);
  for (std::size_t i = 0; i < chart.curves.size(); ++i)
    drawCurve(canvas, hz, chart.curves[i], scale, lineColour(i, chart.curves.size()));
  const TextStyle captionStyle{11.0, kLabel};
  canvas.text(kPlotLeft, kPictureHeight - 16.0, canvas.fitted(chart.caption, kPlotWidth, captionStyle), captionStyle);
  canvas.save(png);
}

}  // namespace modrift::cli
