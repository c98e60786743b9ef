// SPDX-License-Identifier: MIT
// Draws the outline of a shape from left to right and checks it; from lines, jumps and patterns to graph points.
//
// Places (X) and heights (Y) run from 0 to 1, 1 being the right end and the top. Start with `begin`, go on with
// lines, jumps or one of the patterns, end with `finish`.
#pragma once

#include <stdexcept>
#include <string_view>
#include <vector>

#include "model/CurveLaw.h"

namespace modrift::factory {

struct OutlineFault : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Outline {
 public:
  void begin(double y);
  // To a place further right; a line to the place where the outline stands is a jump. `curve` below 0.5 leaves fast
  // and arrives slowly, above 0.5 the other way.
  void lineTo(double x, double y, double curve = model::kStraightCurve);
  // Level until `x`, there at once to `y`.
  void jumpTo(double x, double y);

  // A whole sine cycle that begins `start` of a turn after the middle on the way up; in eighths of a turn.
  void sine(double start);
  // Levels of equal length.
  void steps(const std::vector<double>& levels);
  // One character a step: "x" a hit, "1" to "9" one of tenths of its height, "-" holds the hit before, "." nothing.
  // A gate is open for the share `length` of its last step.
  void gate(std::string_view pattern, double length);
  // The same pattern; each hit jumps to its height and falls to the bottom until the next.
  void pluck(std::string_view pattern, double curve);

  void turnUpsideDown();
  // Goes level to the right end and there back to the first point's height, so that the cycle closes.
  void finish();

  [[nodiscard]] bool begun() const { return !points_.empty(); }
  // As the effect keeps them: X to 65536, Y from the top down; the slots behind the last point rest at the end.
  [[nodiscard]] model::GraphPoints graphPoints() const;

 private:
  struct Point {
    double x, y, curve;
  };
  void add(double x, double y);

  std::vector<Point> points_;
};

}  // namespace modrift::factory
