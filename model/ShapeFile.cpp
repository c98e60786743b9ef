// SPDX-License-Identifier: MIT
#include "model/ShapeFile.h"

#include <cstdint>

#include "model/Bytes.h"

namespace model {
namespace {

constexpr std::int8_t kMark = 8;  // below it, points are in pixels
constexpr std::size_t kMarkOffset = 2049;

// Where a form has what.
struct Form {
  std::size_t curve, x, y, lastPoint;
};
constexpr Form kToday{0, 512, 1024, 2048};
constexpr Form kOld{8, 520, 1032, 0};

struct RawPoint {
  float curve, x, y;
};

RawPoint pointAt(std::span<const std::byte> file, const Form& form, std::size_t p) noexcept {
  const auto number = [&](std::size_t base) {
    return static_cast<float>(throughFloat(load<double>(file, base + p * sizeof(double))));
  };
  return {number(form.curve), number(form.x), number(form.y)};
}

bool isWithin(double value, double most) noexcept { return value >= 0.0 && value <= most; }

// `rescaled` brings a point into the graph's own units, in float as the files have always been read.
template <class Rescale>
GraphPoints readPoints(std::span<const std::byte> file, const Form& form, Rescale rescaled) noexcept {
  GraphPoints points = freshGraph();
  for (std::size_t p = 0; p < kStoredSlots; ++p) {
    const RawPoint raw = rescaled(pointAt(file, form, p));
    const auto curve = static_cast<double>(raw.curve), x = static_cast<double>(raw.x), y = static_cast<double>(raw.y);
    points.curve[p] = isWithin(curve, 1.0) ? curve : kStraightCurve;
    points.x[p] = p > 0 && isWithin(x, kGraphWidth) ? x : 0.0;
    points.y[p] = isWithin(y, 1.0) ? y : 0.0;
    if (p > 0 && points.x[p] < points.x[p - 1]) points.x[p] = points.x[p - 1];
  }
  const int last{load<std::int8_t>(file, form.lastPoint)};
  points.lastPoint = last >= 1 && last <= kStoredSlots ? last : 1;
  points.x[static_cast<std::size_t>(points.lastPoint)] = kGraphWidth;
  return points;
}

}  // namespace

std::array<std::byte, kShapeBytes> writeShape(const GraphPoints& points) noexcept {
  std::array<std::byte, kShapeBytes> file{};
  for (std::size_t p = 0; p < kStoredSlots; ++p) {
    const std::size_t offset = p * sizeof(double);
    put(file, kToday.curve + offset, points.curve[p]);
    put(file, kToday.x + offset, points.x[p]);
    put(file, kToday.y + offset, points.y[p]);
  }
  put(file, kToday.lastPoint, static_cast<std::int8_t>(points.lastPoint));
  put(file, kMarkOffset, kMark);
  return file;
}

std::optional<GraphPoints> readShape(std::span<const std::byte> file) noexcept {
  if (file.size() == kShapeBytes) {
    const bool inPixels = load<std::int8_t>(file, kMarkOffset) < kMark;
    const float xScale = inPixels ? kXPerPixel : 1.0f, yScale = inPixels ? kYPerPixel : 1.0f;
    return readPoints(file, kToday, [=](RawPoint p) { return RawPoint{p.curve, p.x * xScale, p.y * yScale}; });
  }
  if (file.size() < kSmallestOldShape || file.size() > kLargestShapeFile) return std::nullopt;
  return readPoints(file, kOld, [](RawPoint p) {
    return RawPoint{p.curve, p.x / kPixelWidth * static_cast<float>(kGraphWidth), p.y / kPixelHeight};
  });
}

}  // namespace model
