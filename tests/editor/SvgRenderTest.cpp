// SPDX-License-Identifier: MIT
#include <cairo.h>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

#include "editor/panel/PanelImages.h"
#include "editor/panel/ReferenceSize.h"
#include "editor/panel/SvgRender.h"
#include "tests/TemporaryFolder.h"
#include "toolkit/base/Bundle.h"
#include "toolkit/drawing/VectorImage.h"
#include "toolkit/views/CFrame.h"

using namespace editor;
using namespace VSTGUI;

namespace {

namespace fs = std::filesystem;
using Context = Counted<COffscreenContext>;

const fs::path kResources = MODRIFT_RESOURCES;

class SvgRendering : public testing::Test {
 protected:
  SvgRendering() { acquirePluginBundle(); }
  ~SvgRendering() override { releasePluginBundle(); }
  void resizeWindow(double width, double height) {
    frame = Counted<CFrame>::adopt(new CFrame(CRect(0, 0, width, height), nullptr));
  }
  [[nodiscard]] Context render(std::string_view text, double scaleX = 1, double scaleY = 1) const {
    return Context::adopt(renderSvgText(text, frame, scaleX, scaleY));
  }

  Counted<CFrame> frame = Counted<CFrame>::adopt(new CFrame({0, 0, kReferenceWidth, kReferenceHeight}, nullptr));
};

std::string svg(int width, int height, const std::string& content) {
  return "<svg width=\"" + std::to_string(width) + "\" height=\"" + std::to_string(height) + "\">" + content + "</svg>";
}

CPoint sizeOf(COffscreenContext* context) {
  return context ? CPoint(context->getBitmap()->getWidth(), context->getBitmap()->getHeight()) : CPoint(-1, -1);
}

// The premultiplied pixel as 0xAARRGGBB.
std::uint32_t pixel(const Context& context, int x, int y) {
  cairo_surface_t* surface = context->getBitmap()->getSurface();
  cairo_surface_flush(surface);
  const unsigned char* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
  std::uint32_t value = 0;
  std::memcpy(&value, row + x * 4, sizeof value);
  return value;
}

}  // namespace

TEST_F(SvgRendering, SizesABitmapByEachSideOfTheWindow) {
  const std::string box = "<rect width=\"9\" height=\"9\"/>";
  EXPECT_EQ(sizeOf(render(svg(60, 40, box), 0.5, 0.5)), CPoint(30, 20));
  EXPECT_EQ(sizeOf(render(svg(61, 40, box), 0.5, 0.5)), CPoint(31, 20));
  resizeWindow(2 * kReferenceWidth, kReferenceHeight);
  EXPECT_EQ(sizeOf(render(svg(60, 40, box), 0.5, 0.5)), CPoint(60, 20));
}

TEST(SvgColour, KeepsTheColourAndWeighsTheAlpha) {
  constexpr unsigned int kPacked = 0xFF302010;  // alpha, blue, green, red
  EXPECT_EQ(NSVGCOLOR_TO_CCOLOR(kPacked, 0.5f), CColor(0x10, 0x20, 0x30, 127));
  EXPECT_EQ(NSVGCOLOR_TO_CCOLOR(kPacked, 1.0f).alpha, 255);
  EXPECT_EQ(NSVGCOLOR_TO_CCOLOR(kPacked, 7.0f).alpha, 255);
  EXPECT_EQ(NSVGCOLOR_TO_CCOLOR(kPacked, -0.1f).alpha, 0);
  EXPECT_EQ(NSVGCOLOR_TO_CCOLOR(kPacked, std::nanf("")).alpha, 0);
}

TEST_F(SvgRendering, PaintsPlainFillsBelowPlainStrokesAndNoGradients) {
  constexpr std::uint32_t kRed = 0xFFFF0000, kBlue = 0xFF0000FF;
  const std::string rect = "<rect x=\"10\" y=\"10\" width=\"20\" height=\"20\" stroke=\"#00f\" stroke-width=\"8\" ";
  const Context plain = render(svg(40, 40, rect + "fill=\"#f00\"/>"));
  EXPECT_EQ(pixel(plain, 20, 20), kRed);
  EXPECT_EQ(pixel(plain, 12, 20), kBlue);  // inside of the filled area, under the stroke
  EXPECT_EQ(pixel(plain, 2, 20), 0u);

  const Context gradient = render(svg(40, 40,
                                      "<defs><linearGradient id=\"g\"><stop offset=\"0\" stop-color=\"#f00\"/>"
                                      "<stop offset=\"1\" stop-color=\"#0f0\"/></linearGradient></defs>" +
                                          rect + "fill=\"url(#g)\"/>"));
  EXPECT_EQ(pixel(gradient, 20, 20), 0u);
  EXPECT_EQ(pixel(gradient, 12, 20), kBlue);

  resizeWindow(2 * kReferenceWidth,
               kReferenceHeight);  // the stroke is twice as wide across, and as wide as before along
  const Context wide = render(svg(40, 40, rect + "fill=\"#f00\"/>"));
  EXPECT_EQ(pixel(wide, 26, 20), kBlue);
  EXPECT_EQ(pixel(wide, 40, 12), kBlue);
  EXPECT_EQ(pixel(wide, 40, 15), kRed);
}

TEST_F(SvgRendering, GivesNothingForTextThatIsEmptyBrokenOrHuge) {
  EXPECT_EQ(render(""), nullptr);
  EXPECT_EQ(render(svg(40, 40, "")), nullptr);
  EXPECT_EQ(render("\x89PNG not an image of this kind <svg"), nullptr);
  EXPECT_EQ(render(svg(1000000000, 1000000000, "<rect width=\"9\" height=\"9\"/>")), nullptr);
  EXPECT_EQ(render(svg(40, 40, "<rect width=\"9\" height=\"9\"/>"), std::nan(""), 1), nullptr);
  EXPECT_NE(render(svg(40, 40, "<rect width=\"1e30\" height=\"9\"/>")), nullptr) << "the shape alone is left out";
}

TEST_F(SvgRendering, HasAStandInForAMissingImage) {
  const auto missing = Counted<CTarnelSVG>::adopt(new CTarnelSVG("no such image.svg"));
  EXPECT_EQ(missing->getPlatformSVG(), nullptr);
  EXPECT_EQ(RenderSVGToBitmap(missing, frame, 1, 1), nullptr);

  testing::internal::CaptureStderr();
  const Context box = Context::adopt(placeholderImage("notebutton.svg", frame, 3, 20, 15));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n image notebutton.svg is missing or empty");
  EXPECT_EQ(sizeOf(box), CPoint(20, 45));
  for (const int middle : {7, 22, 37}) EXPECT_EQ(pixel(box, 1, middle) >> 24, 255u);
}

TEST_F(SvgRendering, PaintsEveryImageOfThePanelAtItsSize) {
  const auto corner = Counted<CBitmap>::adopt(new CBitmap((kResources / "bmp00128.png").c_str()));
  EXPECT_EQ(CPoint(corner->getWidth(), corner->getHeight()), CPoint(kCornerSide, kCornerSide));
  for (const PanelImage& image : kPanelImages) {
    SCOPED_TRACE(image.file);
    const fs::path path = kResources / image.file;
    const auto loaded = Counted<CTarnelSVG>::adopt(new CTarnelSVG(path.c_str()));
    const Context painted = Context::adopt(RenderSVGToBitmap(loaded, frame, image.factor, image.factor));
    ASSERT_NE(painted, nullptr);
    ASSERT_EQ(sizeOf(painted), CPoint(image.frameSize.x, image.frameSize.y * image.frames));
    const int width = static_cast<int>(image.frameSize.x), height = static_cast<int>(image.frameSize.y);
    for (int below = 1; below < image.frames; ++below) {  // each frame can be told from the one above it
      int different = 0;
      for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
          different += pixel(painted, x, y + below * height) != pixel(painted, x, y + (below - 1) * height);
      EXPECT_GT(different, width * height / 10);
    }
  }
}

// What the painting leaves out would be missing on the panel, though it shows in other programs.
TEST(PanelImages, UseOnlyWhatIsPainted) {
  for (const PanelImage& image : kPanelImages) {
    const std::string text = readText(kResources / image.file);
    for (const char* word : {"radient", "<text", "<use", "<style", "class=", "clip-", "filter", "mask", "dasharray",
                             "linecap", "linejoin", "evenodd", "display", "visibility"})
      EXPECT_EQ(text.find(word), std::string::npos) << word << " in " << image.file;
  }
}
