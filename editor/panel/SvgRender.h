// SPDX-License-Identifier: MIT
// SVG text to bitmaps of the size that the window asks for. [ui]
//
// Parsed by nanosvg and painted through the toolkit's vector drawing: plain fills, then plain strokes, with butt caps
// and mitred corners. Gradients, dashes, even-odd fills, clipping and text are not painted; an image with a style sheet
// counts as broken.
#pragma once

#include <span>

#include "toolkit/base/CColor.h"
#include "toolkit/views/COffscreenContext.h"

namespace VSTGUI {
class CFrame;
class CTarnelSVG;
}  // namespace VSTGUI

// A packed colour, red in its low byte, then green, blue, alpha; the alpha is weighted by the opacity, 0 to 1, which is
// limited to that range.
[[nodiscard]] VSTGUI::CColor NSVGCOLOR_TO_CCOLOR(unsigned int color, float opacity) noexcept;

// A scale of 1 paints an image at its own size in a frame of the reference size; each axis follows its own side of the
// frame.
// Null for an image that wasn't loaded, is broken, has no shapes, or would be too large to be one of the panel. The
// caller owns the result.
[[nodiscard]] VSTGUI::COffscreenContext* RenderSVGToBitmap(VSTGUI::CTarnelSVG* image, VSTGUI::CFrame* frame,
                                                           double scaleX, double scaleY);

namespace editor {

// As RenderSVGToBitmap, from the text itself, which needs no end mark.
[[nodiscard]] VSTGUI::COffscreenContext* renderSvgText(std::span<const char> text, VSTGUI::CFrame* frame, double scaleX,
                                                       double scaleY);

// Stands in for an image that is missing or empty, and says so on standard error: a box with the file's name, `frames`
// times one below the other, each of `width` by `height` frame units. Null only without memory or for a size beyond
// the largest. The caller owns the result.
[[nodiscard]] VSTGUI::COffscreenContext* placeholderImage(const char* file, VSTGUI::CFrame* frame, int frames,
                                                          double width, double height);

}  // namespace editor
