// SPDX-License-Identifier: MIT
#include "presets/generator/Outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

using namespace model;

namespace modrift::factory {
namespace {

// A jump is a line of two samples of the effect's table, the shortest that it draws as a line.
constexpr double kJump = 2.0 / kGraphWidth;

// The curve of a segment that passes its middle at `share` of the way; the inverse of the effect's curve law, whose
// exponential is at half its length at 1 - q.
double curveThrough(double share) {
  const double q = 1.0 - share;
  if (std::abs(q - 0.5) < 1e-6) return kStraightCurve;
  return q < 0.5 ? std::cbrt(2.0 * q) / 2.0 : 1.0 - std::cbrt(2.0 * (1.0 - q)) / 2.0;
}

double sineAt(double turn) { return 0.5 + 0.5 * std::sin(2.0 * std::numbers::pi * turn); }

double hitLevel(char mark) {
  if (mark == 'x') return 1.0;
  return mark >= '1' && mark <= '9' ? (mark - '0') / 10.0 : 0.0;
}

bool isHit(char mark) { return hitLevel(mark) > 0.0; }

void checkPattern(std::string_view pattern) {
  const auto isKnown = [](char mark) { return isHit(mark) || mark == '.' || mark == '-'; };
  if (!std::ranges::all_of(pattern, isKnown)) throw OutlineFault("a pattern has the marks x, 1 to 9, - and .");
  if (std::ranges::none_of(pattern, isHit)) throw OutlineFault("the pattern has no hit");
  if (pattern.front() == '-') throw OutlineFault("there is no hit before the first - to hold");
}

}  // namespace

void Outline::add(double x, double y) {
  if (!(x >= 0.0 && x <= 1.0 && y >= 0.0 && y <= 1.0)) throw OutlineFault("places and heights run from 0 to 1");
  if (points_.size() == static_cast<std::size_t>(kStoredSlots)) throw OutlineFault("a shape has at most 64 points");
  points_.push_back({x, y, kStraightCurve});
}

void Outline::begin(double y) { add(0.0, y); }

void Outline::lineTo(double x, double y, double curve) {
  const Point last = points_.back();
  if (x < last.x - kJump) throw OutlineFault("the points must go from left to right");
  if (!(curve >= 0.0 && curve <= 1.0)) throw OutlineFault("curves run from 0 to 1");
  if (x <= last.x) return x < 1.0 ? add(last.x + kJump, y) : add(x, y);
  points_.back().curve = curve;
  add(x, y);
}

void Outline::jumpTo(double x, double y) {
  const Point last = points_.back();
  if (last.y == y) return;
  if (x > last.x + kJump) lineTo(x, last.y);
  lineTo(x, y);
}

void Outline::sine(double start) {
  constexpr int kSegments = 8;
  if (start * kSegments != std::floor(start * kSegments)) throw OutlineFault("a sine starts at an eighth of a turn");
  begin(sineAt(start));
  for (int i = 1; i <= kSegments; ++i) {
    const double x = static_cast<double>(i) / kSegments;
    const double from = points_.back().y;
    const double to = sineAt(start + x);
    const double middle = sineAt(start + x - 0.5 / kSegments);
    lineTo(x, to, curveThrough((middle - from) / (to - from)));
  }
}

void Outline::steps(const std::vector<double>& levels) {
  if (levels.size() < 2) throw OutlineFault("steps need two levels or more");
  begin(levels.front());
  for (std::size_t i = 1; i < levels.size(); ++i)
    jumpTo(static_cast<double>(i) / static_cast<double>(levels.size()), levels[i]);
}

void Outline::gate(std::string_view pattern, double length) {
  checkPattern(pattern);
  if (!(length > 0.0 && length <= 1.0)) throw OutlineFault("a gate is open for more than 0 and at most 1 of its step");
  const double step = 1.0 / static_cast<double>(pattern.size());
  begin(hitLevel(pattern.front()));
  for (std::size_t i = 0; i < pattern.size();) {
    std::size_t last = i;
    while (last + 1 < pattern.size() && pattern[last + 1] == '-') ++last;
    const double start = static_cast<double>(i) * step;
    const double end = (static_cast<double>(last) + length) * step;
    jumpTo(start, hitLevel(pattern[i]));
    if (length < 1.0) jumpTo(end, 0.0);
    i = last + 1;
  }
}

void Outline::pluck(std::string_view pattern, double curve) {
  checkPattern(pattern);
  const double step = 1.0 / static_cast<double>(pattern.size());
  begin(hitLevel(pattern.front()));
  for (std::size_t i = pattern.find_first_not_of('.'); i < pattern.size();) {
    const std::size_t next = std::min(pattern.find_first_not_of(".-", i + 1), pattern.size());
    jumpTo(static_cast<double>(i) * step, hitLevel(pattern[i]));
    lineTo(static_cast<double>(next) * step, 0.0, curve);
    i = next;
  }
}

void Outline::turnUpsideDown() {
  for (Point& point : points_) point.y = 1.0 - point.y;
}

void Outline::finish() {
  if (points_.back().x < 1.0) lineTo(1.0, points_.back().y);
  if (points_.back().y != points_.front().y) add(1.0, points_.front().y);
}

GraphPoints Outline::graphPoints() const {
  GraphPoints graph;
  graph.lastPoint = static_cast<int>(points_.size()) - 1;
  graph.x.fill(kGraphWidth);
  graph.y.fill(1.0 - points_.back().y);
  graph.curve.fill(kStraightCurve);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    graph.x[i] = std::round(points_[i].x * kGraphWidth);
    graph.y[i] = 1.0 - points_[i].y;
    graph.curve[i] = points_[i].curve;
  }
  return graph;
}

}  // namespace modrift::factory
