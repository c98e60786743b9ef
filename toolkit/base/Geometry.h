// SPDX-License-Identifier: MIT
// Points, rectangles and affine transforms. Units are those of the frame: one unit is one pixel at scale factor 1.
#pragma once

#include <algorithm>
#include <utility>

namespace VSTGUI {

using CCoord = double;

struct CRect;

struct CPoint {
  CCoord x = 0;
  CCoord y = 0;

  constexpr CPoint() noexcept = default;
  constexpr CPoint(CCoord x_, CCoord y_) noexcept : x(x_), y(y_) {}

  // True on the edges too.
  [[nodiscard]] constexpr bool isInside(const CRect& rect) const noexcept;
  constexpr CPoint& offset(CCoord dx, CCoord dy) noexcept {
    x += dx;
    y += dy;
    return *this;
  }

  friend constexpr bool operator==(const CPoint&, const CPoint&) noexcept = default;
  friend constexpr CPoint operator+(CPoint a, CPoint b) noexcept { return {a.x + b.x, a.y + b.y}; }
  friend constexpr CPoint operator-(CPoint a, CPoint b) noexcept { return {a.x - b.x, a.y - b.y}; }
};

struct CRect {
  CCoord left = 0;
  CCoord top = 0;
  CCoord right = 0;
  CCoord bottom = 0;

  constexpr CRect() noexcept = default;
  constexpr CRect(CCoord l, CCoord t, CCoord r, CCoord b) noexcept : left(l), top(t), right(r), bottom(b) {}

  [[nodiscard]] constexpr CCoord getWidth() const noexcept { return right - left; }
  [[nodiscard]] constexpr CCoord getHeight() const noexcept { return bottom - top; }
  [[nodiscard]] constexpr CCoord width() const noexcept { return getWidth(); }
  [[nodiscard]] constexpr CCoord height() const noexcept { return getHeight(); }
  constexpr void setWidth(CCoord width) noexcept { right = left + width; }
  constexpr void setHeight(CCoord height) noexcept { bottom = top + height; }
  [[nodiscard]] constexpr CPoint getTopLeft() const noexcept { return {left, top}; }
  [[nodiscard]] constexpr CPoint getCenter() const noexcept { return {(left + right) / 2, (top + bottom) / 2}; }
  [[nodiscard]] constexpr bool isEmpty() const noexcept { return right <= left || bottom <= top; }

  constexpr CRect& offset(CCoord dx, CCoord dy) noexcept {
    left += dx;
    right += dx;
    top += dy;
    bottom += dy;
    return *this;
  }
  // Moves each side inward; negative values let the rectangle grow.
  constexpr CRect& inset(CCoord dx, CCoord dy) noexcept {
    left += dx;
    right -= dx;
    top += dy;
    bottom -= dy;
    return *this;
  }
  constexpr CRect& moveTo(CCoord x, CCoord y) noexcept { return offset(x - left, y - top); }
  // Cuts to what both have in common; empty at a corner of this one if that is nothing.
  constexpr CRect& bound(const CRect& other) noexcept {
    left = std::max(left, other.left);
    top = std::max(top, other.top);
    right = std::max(left, std::min(right, other.right));
    bottom = std::max(top, std::min(bottom, other.bottom));
    return *this;
  }
  // The smallest rectangle that holds both; an empty one adds nothing.
  constexpr CRect& unite(const CRect& other) noexcept {
    if (other.isEmpty()) return *this;
    if (isEmpty()) return *this = other;
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
    return *this;
  }
  // Brings left below right and top below bottom.
  constexpr CRect& normalize() noexcept {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    return *this;
  }
  // Without the right and the lower edge, so that of two rectangles side by side one has each point.
  [[nodiscard]] constexpr bool holds(const CPoint& p) const noexcept {
    return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
  }
  [[nodiscard]] constexpr bool rectOverlap(const CRect& other) const noexcept {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }

  friend constexpr bool operator==(const CRect&, const CRect&) noexcept = default;
};

constexpr bool CPoint::isInside(const CRect& rect) const noexcept {
  return x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom;
}

// x' = m11 x + m12 y + dx, y' = m21 x + m22 y + dy. Each operation acts after those that are in it already.
struct CGraphicsTransform {
  CCoord m11 = 1;
  CCoord m12 = 0;
  CCoord m21 = 0;
  CCoord m22 = 1;
  CCoord dx = 0;
  CCoord dy = 0;

  constexpr CGraphicsTransform() noexcept = default;
  constexpr CGraphicsTransform(CCoord a11, CCoord a12, CCoord a21, CCoord a22, CCoord x, CCoord y) noexcept
      : m11(a11), m12(a12), m21(a21), m22(a22), dx(x), dy(y) {}

  constexpr CGraphicsTransform& translate(CCoord x, CCoord y) noexcept {
    dx += x;
    dy += y;
    return *this;
  }
  constexpr CGraphicsTransform& scale(CCoord x, CCoord y) noexcept {
    m11 *= x;
    m12 *= x;
    dx *= x;
    m21 *= y;
    m22 *= y;
    dy *= y;
    return *this;
  }
  [[nodiscard]] constexpr CPoint apply(CPoint p) const noexcept {
    return {m11 * p.x + m12 * p.y + dx, m21 * p.x + m22 * p.y + dy};
  }
};

}  // namespace VSTGUI
