// SPDX-License-Identifier: MIT
// The editor's picture without a display. [ui]
#pragma once

class LFOGUI;

namespace plugin {

// Opens the editor in memory, draws it at the size (0 for what the state says) and writes a PNG file to `path`. The
// state is as before. False for an editor that has its window open, or a file that cannot be written.
[[nodiscard]] bool drawEditorPicture(LFOGUI& editor, int widthPx, int heightPx, const char* path);

}  // namespace plugin
