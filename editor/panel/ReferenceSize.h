// SPDX-License-Identifier: MIT
// The window that all places and sizes of the panel are given for, in pixels. In a window of another size each of them
// grows or shrinks with its own side.
#pragma once

#include "model/Graph.h"
#include "model/State.h"
#include "toolkit/base/Geometry.h"

namespace editor {

inline constexpr double kReferenceWidth = model::kUsualEditorWidth;
inline constexpr double kReferenceHeight = model::kUsualEditorHeight;
// The shape that a dragged window keeps; a float, as windows have always been cut.
inline constexpr double kReferenceAspect = static_cast<double>(static_cast<float>(kReferenceHeight / kReferenceWidth));

inline constexpr double kSmallestWidth = 576.0;
inline constexpr double kSmallestHeight = 284.0;
inline constexpr double kLargestSide = 8000.0;

// The graph display, and the shares of the window that the graph itself has in it. They stand for the pixels of old
// files' graphs, with as many places as decide on which pixel a graph ends.
inline constexpr VSTGUI::CRect kGraphPlace{145, 30, 545, 274};
inline constexpr double kGraphWidthPart = 0.54802259887006;
inline constexpr double kGraphHeightPart = 0.6997084548105;
static_assert(static_cast<int>(kGraphWidthPart * kReferenceWidth + 0.5) == static_cast<int>(model::kPixelWidth));
static_assert(static_cast<int>(kGraphHeightPart * kReferenceHeight + 0.5) == static_cast<int>(model::kPixelHeight));

// The resize corner's image; it keeps its size.
inline constexpr double kCornerSide = 16.0;

}  // namespace editor
