#include "tests/editor/x11/EditorDesktop.h"

using VSTGUI::CPoint;

void EditorDesktop::open() {
  const auto [width, height] = rectSize();
  const std::array<std::uint32_t, 2> size{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
  xcb_configure_window(*user, host, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
  ASSERT_EQ(sizeOf(host), rectSize());
  ASSERT_EQ(call(effEditOpen, 0, 0, asParent(host)), 1);
  const auto windows = childrenOf(host);
  ASSERT_FALSE(windows.empty());
  window = windows.back();
  ASSERT_EQ(sizeOf(window), rectSize());
}

std::pair<int, int> EditorDesktop::rectSize() {
  ERect* rect = nullptr;
  EXPECT_EQ(call(effEditGetRect, 0, 0, &rect), 1);
  return {rect->right - rect->left, rect->bottom - rect->top};
}

std::pair<int, int> EditorDesktop::sizeOf(xcb_window_t which) {
  const auto place = geometry(which);
  return {place.width, place.height};
}

CPoint EditorDesktop::inGraph(double x, double y) const {
  return gui->graphContainer->getViewSize().getTopLeft() + CPoint(x, y);
}

CPoint EditorDesktop::placeOf(int graphPoint) const {
  const CPoint& p = gui->display->points[static_cast<std::size_t>(graphPoint)];
  return inGraph(p.x, p.y);
}
