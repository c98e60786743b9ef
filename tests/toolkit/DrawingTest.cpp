// SPDX-License-Identifier: MIT
// What lands on the pixels.

#include <cairo.h>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

#include "toolkit/base/Bundle.h"
#include "toolkit/views/COffscreenContext.h"

namespace {

using namespace VSTGUI;
namespace fs = std::filesystem;

// A canvas of 40 by 20 units on which white is drawn.
class Canvas {
 public:
  explicit Canvas(double scale = 1) : scale_(scale) {
    context->setFrameColor(kWhiteCColor);
    context->setFillColor(kWhiteCColor);
    context->setFontColor(kWhiteCColor);
  }
  // Coverage of a device pixel, 0 to 255.
  int at(int x, int y) {
    context->endDraw();
    _cairo_surface* const surface = context->getBitmap()->getSurface();
    const auto* const row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
    return row[4 * x + 3];
  }
  // The rectangle of the device pixels that are not empty.
  CRect inked() {
    CRect all;
    eachPixel([&](int x, int y) {
      if (at(x, y) > 0) all.unite(CRect(x, y, x + 1, y + 1));
    });
    return all;
  }
  // Pixels that are neither empty nor full.
  int blurred() {
    int count = 0;
    eachPixel([&](int x, int y) { count += at(x, y) > 0 && at(x, y) < 255; });
    return count;
  }
  Counted<CGraphicsPath> path() { return Counted<CGraphicsPath>::adopt(context->createGraphicsPath()); }

 private:
  void eachPixel(const std::function<void(int, int)>& visit) const {
    for (int y = 0; y < 20 * scale_; ++y)
      for (int x = 0; x < 40 * scale_; ++x) visit(x, y);
  }
  double scale_;

 public:
  Counted<COffscreenContext> context =
      Counted<COffscreenContext>::adopt(COffscreenContext::create(nullptr, 40, 20, scale_));
};

TEST(Lines, AreSharpInTheIntegralModesAndWithoutAntiAliasing) {
  const auto expectSharp = [](std::uint32_t mode, double scale, double x) {
    Canvas canvas(scale);
    canvas.context->setDrawMode(mode);
    canvas.context->drawLine({x, 2}, {x, 12});
    const double left = std::round(10 * scale);
    EXPECT_EQ(canvas.blurred(), 0) << mode << " " << scale << " " << x;
    EXPECT_EQ(canvas.inked(), CRect(left, 2 * scale, left + std::round(scale), 12 * scale)) << mode << " " << x;
  };
  for (const double scale : {1.0, 1.5, 2.0})
    for (const std::uint32_t mode : {kAliasing, kAntiAliasing}) expectSharp(mode, scale, 10);
  for (const double x : {10.0, 10.3, 10.7}) expectSharp(kAliasing | kNonIntegralMode, 1, x);
  Canvas canvas;
  canvas.context->setDrawMode(kAntiAliasing | kNonIntegralMode);
  canvas.context->drawLine({10, 2}, {10, 12});
  EXPECT_EQ(canvas.at(9, 5), canvas.at(10, 5)) << "half on each side";
}

TEST(Paths, AreStrokedUnderTransforms) {
  const auto inked = [](double scale, double lineWidth, CPoint from, CPoint to, const CGraphicsTransform& transform) {
    Canvas canvas(scale);
    canvas.context->setDrawMode(kAliasing | kNonIntegralMode);
    canvas.context->setLineWidth(lineWidth);
    const auto path = canvas.path();
    path->beginSubpath(from);
    path->addLine(to);
    canvas.context->drawGraphicsPath(path, CDrawContext::kPathStroked, &transform);
    return canvas.inked();
  };
  EXPECT_EQ(inked(2, 0, {0, 0}, {1, 0}, {30, 0, 0, 50, 5, 10}), CRect(10, 20, 70, 21)) << "0 is one device pixel";
  EXPECT_EQ(inked(1, 2, {2, 2}, {6, 2}, {3, 0, 0, 3, 0, 0}), CRect(6, 3, 18, 9)) << "any other width grows";
}

TEST(Paths, AreFilledAlsoAfterATransformThatFlattensEverythingAndWithGradients) {
  Canvas canvas;
  const auto small = canvas.path();
  small->addRect({0, 0, 5, 5});
  CGraphicsTransform flat;
  canvas.context->drawGraphicsPath(small, CDrawContext::kPathFilled, &flat.scale(0, 1));
  canvas.context->drawGraphicsPath(small);
  EXPECT_EQ(canvas.inked(), CRect(0, 0, 5, 5));
  const auto path = canvas.path();
  path->addRect({10, 0, 20, 20});
  const auto gradient =
      Counted<CGradient>::adopt(path->createGradient(0, 1, CColor(255, 255, 255, 0), CColor(255, 255, 255, 255)));
  canvas.context->fillLinearGradient(path, *gradient, {0, 0}, {0, 20});
  EXPECT_LT(canvas.at(15, 0), 15);
  EXPECT_NEAR(canvas.at(15, 10), 134, 4);
  EXPECT_GT(canvas.at(15, 19), 240);
  EXPECT_EQ(canvas.at(25, 19), 0);
}

TEST(Shapes, OutlinesLieInsideInTheIntegralModes) {
  Canvas canvas;
  canvas.context->drawRect({5, 5, 15, 12}, kDrawStroked);
  EXPECT_EQ(canvas.inked(), CRect(5, 5, 15, 12));
  EXPECT_EQ(canvas.blurred(), 0);
  EXPECT_EQ(canvas.at(7, 7), 0);
  canvas.context->drawRect({5, 5, 15, 12}, kDrawFilled);
  EXPECT_EQ(canvas.at(7, 7), 255);
  Canvas round;
  round.context->drawEllipse({5, 5, 15, 15}, kDrawFilled);
  EXPECT_EQ(round.inked(), CRect(5, 5, 15, 15));
  EXPECT_EQ(round.at(5, 5), 0);
}

TEST(Clips, CutAndComeBack) {
  Canvas canvas;
  canvas.context->saveGlobalState();
  canvas.context->limitClipRect({0, 0, 20, 20});
  canvas.context->setClipRect({15, 5, 30, 10});
  canvas.context->drawRect({0, 0, 40, 20}, kDrawFilled);
  EXPECT_EQ(canvas.inked(), CRect(15, 5, 20, 10)) << "the container's limit holds";
  canvas.context->restoreGlobalState();
  CRect clip;
  EXPECT_EQ(canvas.context->getClipRect(clip), CRect(0, 0, 40, 20));
}

TEST(Text, LiesInItsRectangleWhereTheAlignmentSays) {
  const CRect rect(2, 2, 38, 18);
  CRect inked[3];
  for (const auto align : {kLeftText, kCenterText, kRightText}) {
    Canvas canvas;
    canvas.context->setFont(kNormalFontSmall);
    canvas.context->drawString("LFO", rect, align);
    inked[align] = canvas.inked();
    ASSERT_FALSE(inked[align].isEmpty());
    EXPECT_EQ(CRect(inked[align]).bound(rect), inked[align]);
  }
  EXPECT_LT(inked[kLeftText].left, inked[kCenterText].left);
  EXPECT_LT(inked[kCenterText].left, inked[kRightText].left);
  EXPECT_NEAR(inked[kLeftText].left, rect.left, 2);
  EXPECT_NEAR(inked[kRightText].right, rect.right, 2);
  EXPECT_NEAR(inked[kCenterText].getCenter().y, rect.getCenter().y, 2);
}

TEST(Text, OfAnyBytesIsSmoothOrSharpAndGrowsWithItsSize) {
  for (const bool smooth : {true, false}) {
    Canvas canvas;
    canvas.context->drawString("", CRect(0, 0, 40, 20));
    EXPECT_TRUE(canvas.inked().isEmpty());
    canvas.context->drawString("\xff\xc3 So\ng", CRect(0, 0, 40, 20), kCenterText, smooth);
    EXPECT_FALSE(canvas.inked().isEmpty());
    EXPECT_EQ(canvas.blurred() > 0, smooth);
    canvas.context->setFont(kSystemFont, 10);
    const double small = canvas.context->getStringWidth("Smooth");
    canvas.context->setFont(kSystemFont, 20);
    EXPECT_NEAR(canvas.context->getStringWidth("Smooth"), 2 * small, 0.15 * small);
  }
}

TEST(Offscreen, CopiesItsPartAndItsBitmapOutlivesIt) {
  Counted<CBitmap> kept;
  {
    Canvas source;
    source.context->drawRect({10, 5, 12, 7}, kDrawFilled);
    Canvas copy;
    source.context->copyFrom(copy.context, {20, 10, 30, 18}, {8, 4});
    EXPECT_EQ(copy.inked(), CRect(22, 11, 24, 13));
    kept = source.context->getBitmap();
  }
  EXPECT_EQ(kept->getNbReference(), 1);
  Canvas target;
  kept->draw(target.context, {0, 0, 11, 20});
  EXPECT_EQ(target.inked(), CRect(10, 5, 11, 7)) << "cut at the rectangle";
}

TEST(Offscreen, IsRefusedForSizesThatMakeNoPicture) {
  for (const double width : {0.0, -5.0, 0.5, 40000.0, std::nan("")})
    EXPECT_EQ(COffscreenContext::create(nullptr, width, 10), nullptr) << width;
}

TEST(Bitmaps, ComeFromTheBundleOrStayEmpty) {
  const fs::path folder = fs::temp_directory_path() / "modrift-toolkit-bitmaps";
  const fs::path resources = folder / "Contents" / "Resources";
  fs::create_directories(resources);
  cairo_surface_write_to_png(CBitmap(12, 7).getSurface(), (resources / "bmp00128.png").c_str());
  std::ofstream(resources / "broken.png") << "no picture";
  gBundleRef = new Bundle(folder);
  const CBitmap numbered(128);
  EXPECT_EQ(numbered.getWidth(), 12);
  EXPECT_EQ(numbered.getHeight(), 7);
  EXPECT_EQ(CBitmap("bmp00128.png").getWidth(), 12);
  for (const char* const name : {"missing.png", "broken.png", ""}) {
    CBitmap bitmap(name);
    EXPECT_FALSE(bitmap.isLoaded()) << name;
    Canvas canvas;
    bitmap.draw(canvas.context, {0, 0, 40, 20});
    EXPECT_TRUE(canvas.inked().isEmpty());
  }
  gBundleRef->forget();
  gBundleRef = nullptr;
  fs::remove_all(folder);
}

TEST(Bundles, LieThreeComponentsAboveTheCode) {
  acquirePluginBundle();
  acquirePluginBundle();
  ASSERT_NE(gBundleRef, nullptr);
  EXPECT_EQ(gBundleRef->getFolder(), fs::read_symlink("/proc/self/exe").parent_path().parent_path().parent_path());
  releasePluginBundle();
  EXPECT_NE(gBundleRef, nullptr) << "a second editor still needs it";
  releasePluginBundle();
  EXPECT_EQ(gBundleRef, nullptr);
}

}  // namespace
