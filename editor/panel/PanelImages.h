// SPDX-License-Identifier: MIT
// The eighteen vector images of the panel. [ui]
#pragma once

#include <array>

#include "editor/panel/ReferenceSize.h"

namespace editor {

// Frames of a control are stacked from top to bottom, in the order of its values.
struct PanelImage {
  const char* file;          // in the bundle's resources
  double factor;             // pixels a file unit, in a window of the reference size
  int frames;                // stacked in the image
  VSTGUI::CPoint frameSize;  // of one frame, in pixels of the reference size
};

inline constexpr auto kPanelImages = std::to_array<PanelImage>({
    {"PresetNav_Left.svg", 1.0, 2, {16, 24}},
    {"PresetNav_Right.svg", 1.0, 2, {16, 24}},
    {"Floppy_Disk2.svg", 0.5, 2, {22, 15}},
    {"AMBREL_logo.svg", 0.25, 2, {66, 26}},
    {"dotbutton.svg", 0.5, 2, {15, 15}},
    {"tripbutton.svg", 0.5, 2, {15, 15}},
    {"notebutton.svg", 0.5, 2, {20, 15}},
    {"copybutton.svg", 0.5, 2, {22, 17}},
    {"pastebutton.svg", 0.5, 2, {22, 17}},
    {"anchorbutton.svg", 0.5, 2, {20, 15}},
    {"lockbutton.svg", 0.5, 2, {18, 19}},
    {"powerbutton.svg", 0.5, 2, {20, 15}},
    {"midienvbutton.svg", 0.5, 3, {20, 15}},
    {"LPHPbutton.svg", 0.5, 2, {20, 15}},
    {"scopebutton.svg", 0.5, 2, {20, 15}},
    {"MIDIbutton.svg", 0.5, 1, {48, 19}},
    {"MODRIFTBG.svg", 1.0, 1, {kReferenceWidth, kReferenceHeight}},
    {"rockerswitch.svg", 0.5, 3, {23, 17}},
});
static_assert(kPanelImages.size() == 18);

}  // namespace editor
