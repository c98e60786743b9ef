// SPDX-License-Identifier: MIT
// What the graph display looks like, compared with pictures beside this file. MODRIFT_RENEW_PICTURES=1 writes them
// anew.
#include <cairo.h>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "editor/graph/GraphScope.h"
#include "editor/graph/GraphTooltip.h"
#include "tests/editor/GraphWindow.h"

using namespace model;

namespace {

using namespace editor;
using namespace VSTGUI;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

int distance(const unsigned char* a, const unsigned char* b) {
  int most = 0;
  for (int channel = 0; channel < 4; ++channel) most = std::max(most, std::abs(a[channel] - b[channel]));
  return most;
}

// The share of pixels that differ by more than rounding and anti-aliasing may; all of them when the sizes differ.
double difference(cairo_surface_t* actual, cairo_surface_t* expected) {
  constexpr int kTolerance = 40;
  const int width = cairo_image_surface_get_width(actual), height = cairo_image_surface_get_height(actual);
  if (width != cairo_image_surface_get_width(expected) || height != cairo_image_surface_get_height(expected)) return 1;
  int different = 0;
  for (int y = 0; y < height; ++y) {
    const auto* const a = cairo_image_surface_get_data(actual) + y * cairo_image_surface_get_stride(actual);
    const auto* const b = cairo_image_surface_get_data(expected) + y * cairo_image_surface_get_stride(expected);
    for (int x = 0; x < width; ++x) different += distance(a + 4 * x, b + 4 * x) > kTolerance;
  }
  return static_cast<double>(different) / (width * height);
}

// `share` of the pixels may differ: where text is, machines have fonts of their own.
void expectPicture(GraphWindow& window, const std::string& name, double share = 0.0005) {
  const std::string path = std::string(MODRIFT_PICTURES) + "/" + name;
  window.idle();
  if (std::getenv("MODRIFT_RENEW_PICTURES")) window.user().writePng(path + ".png");
  const Surface expected(cairo_image_surface_create_from_png((path + ".png").c_str()), cairo_surface_destroy);
  const double different = difference(window.user().picture(), expected.get());
  if (different <= share) return;
  window.user().writePng(path + ".actual.png");
  ADD_FAILURE() << name << ": " << different * 100 << " % of the pixels differ; see " << path << ".actual.png";
}

void showScope(GraphWindow& window) {
  LFODisplay& display = *window.display;
  for (std::size_t i = 0; i < 65536; ++i) {
    const double t = static_cast<double>(i) / 65536;
    const auto wave = static_cast<float>(0.7 * std::sin(t * 620) * std::cos(t * 9));
    display.scopeInCopy[i] = wave;
    display.scopeOutCopy[i] = wave * display.shapeTable[i];
  }
  display.scopeOn = true;
}

void showHills(GraphWindow& window) {
  window.show({{0, 190}, {60, 40}, {130, 40}, {194, 150}, {194, 60}, {290, 200}, {340, 90}, {388, 190}});
  window.display->curves = {0.8, 0.5, 0.25, 0.5, 0.9, 0.3, 0.7};
  commitGraphEdit(*window.display, window.rig.fx());
}

TEST(GraphPicture, OfAFreshGraph) {
  GraphWindow window;
  window.display->graphOutValue = 0.9f;
  window.display->playPosition = 0.3;
  expectPicture(window, "fresh");
}

TEST(GraphPicture, OfCurvesAPressedPointAndItsValue) {
  GraphWindow window(2.0);
  window.rig.set(kRate, 0.5);
  showHills(window);
  window.press({680, 180});
  expectPicture(window, "curves-twice", 0.002);
  window.release();
}

TEST(GraphPicture, OnAFineScreen) {
  GraphWindow window(1.0, 1.5);
  showHills(window);
  window.hover(340, 90);
  expectPicture(window, "fine-screen");
}

TEST(GraphPicture, OfFlagsAndAPhaseAndAHover) {
  GraphWindow window;
  showHills(window);
  window.display->SetGridSize(6);
  window.display->loopPoint = window.display->startPoint = 1;
  window.display->phaseValue = 0.1f;
  window.display->pwmValue = 0.4f;
  window.hover(292, 200);
  expectPicture(window, "flags");
}

TEST(GraphPicture, OfASelectionWithWeights) {
  GraphWindow window;
  window.show(line(24));
  window.drag({{194, 120}, {70, 120}}, kControl);
  window.drag({{194, 120}, {194, 40}});
  expectPicture(window, "selection");
}

TEST(GraphPicture, OfAMarqueeOverManyPoints) {
  GraphWindow window;
  std::vector<CPoint> points;
  for (int i = 0; i < 64; ++i) points.emplace_back(kWidth * i / 63, 120 + (i % 2 ? 60 : -60) * std::sin(i * 0.1));
  window.show(points);
  window.press({40, 230});
  window.hover(200, 110);
  expectPicture(window, "marquee");
  window.release();
}

TEST(GraphPicture, OfTheScope) {
  GraphWindow window;
  showScope(window);
  window.display->playPosition = 0.61;
  expectPicture(window, "scope");
}

// Blue of the grid, where no line crosses: 21 is the ground, dark and bright lines lie above it.
TEST(GraphPicture, OfTheGridIsRenewedWithItsSize) {
  GraphWindow window;
  for (const int cells : {6, 8}) {
    window.display->SetGridSize(cells);
    window.idle();
    cairo_surface_t* const grid = window.display->gridBitmap->getSurface();
    const auto shade = [&](double x) {
      return cairo_image_surface_get_data(grid)[3 * cairo_image_surface_get_stride(grid) + 4 * static_cast<int>(x)];
    };
    for (int i = 1; i < cells; ++i) EXPECT_EQ(shade(kWidth / cells * i + 1), i * 2 == cells ? 43 : 32) << cells;
    EXPECT_EQ(shade(kWidth / cells * 0.5), 21);
  }
}

// --- What is laid over

TEST(Scope, IsCopiedBehindTheWritePositionAlsoOverItsWrap) {
  GraphWindow window;
  LfoDSP& effect = window.rig.fx();
  std::int32_t readIndex = 0;
  const auto readAt = [&](int position, float sample) {
    for (int i = 0; i < 65536; ++i) effect.scopeIn[i] = -(effect.scopeOut[i] = sample);
    effect.displayIndex = position;
    readScope(*window.display, effect, readIndex);
  };
  readAt(60000, 0.25f);
  EXPECT_EQ(window.display->scopeOutCopy[59743], 0.25f);
  EXPECT_EQ(window.display->scopeOutCopy[59744], 0.0f);
  readAt(1256, 0.5f);  // the tail, then the head
  EXPECT_EQ(window.display->scopeOutCopy[65535], 0.5f);
  EXPECT_EQ(window.display->scopeOutCopy[999], 0.5f);
  EXPECT_EQ(window.display->scopeInCopy[999], -0.5f);
  EXPECT_EQ(window.display->scopeOutCopy[1000], 0.25f);
  EXPECT_EQ(readIndex, 1000);
}

TEST(Scope, ShowsTheExtremesOfEachPixelColumn) {
  std::vector<float> samples(kDisplayTable, 0.0f);
  samples[168 * 5 + 3] = 0.5f;
  samples[168 * 5 + 167] = -0.75f;
  const ScopeOutline calm = scopeOutline(samples, 388, 0.01);
  EXPECT_FALSE(calm.filled);
  const auto& line = calm.path->getElements();
  ASSERT_EQ(line.size(), 1u + 2 * 388 + 1);
  EXPECT_EQ(line[1 + 2 * 5].points[0], CPoint(5, -0.75));
  EXPECT_EQ(line[2 + 2 * 5].points[0], CPoint(5, 0.5));
  EXPECT_EQ(line[1 + 2 * 6].points[0], CPoint(6, 0.0));
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = i < 32768 ? (i % 2 ? 0.25f : -0.5f) : 1.0f;
  const ScopeOutline dense = scopeOutline(samples, 388, 0.125);
  EXPECT_TRUE(dense.filled);
  const auto bar = [&](std::size_t x) { return &dense.path->getElements()[5 * x]; };  // top left, and two lines on
  EXPECT_EQ(bar(7)[0].points[0], CPoint(7, -0.5));
  EXPECT_EQ(bar(7)[2].points[0], CPoint(8, 0.25));
  EXPECT_EQ(bar(196)[0].points[0], CPoint(196, 1.0));  // a pixel high, from one that met the last wave
  EXPECT_EQ(bar(196)[2].points[0], CPoint(197, 1.125));
  EXPECT_EQ(scopeOutline(samples, 70000, 0.1).path->getElements()[0].points[0].y, -1);  // no samples: all of it
}

TEST(PointText, NamesBeatsCyclesAndPercent) {
  EXPECT_EQ(pointText(0.375, 0.625, 0.5), "3/16 beat  \u00b7  62.5 %");
  EXPECT_EQ(pointText(1.0 / 3, 0, 1), "1/3 beat  \u00b7  0.0 %");
  EXPECT_EQ(pointText(0.75, 1, 2), "1 1/2 beats  \u00b7  100.0 %");
  EXPECT_EQ(pointText(1, 1, 16), "16 beats  \u00b7  100.0 %");
  EXPECT_EQ(pointText(0.4381, 0.5, 1), "0.438 beat  \u00b7  50.0 %");
  EXPECT_EQ(pointText(0.25, 0.5, 0), "1/4 cycle  \u00b7  50.0 %");
  const CRect area(0, 0, 388, 240);
  EXPECT_EQ(besidePoint({100, 100}, 80, 16, 10, area), CRect(110, 74, 190, 90));
  EXPECT_EQ(besidePoint({380, 3}, 80, 16, 10, area), CRect(290, 13, 370, 29));
}

}  // namespace
