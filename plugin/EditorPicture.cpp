// SPDX-License-Identifier: MIT
#include "plugin/EditorPicture.h"

#include "editor/shell/LFOGUI.h"
#include "toolkit/headless/HeadlessPlatform.h"

namespace plugin {
namespace {

// The widget layer draws into memory while this lives; windows that are open go on with theirs.
class PlatformInMemory {
 public:
  PlatformInMemory() : before_(VSTGUI::getPlatform()) {
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform);
  }
  ~PlatformInMemory() { VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, before_); }
  PlatformInMemory(const PlatformInMemory&) = delete;
  PlatformInMemory& operator=(const PlatformInMemory&) = delete;

  VSTGUI::HeadlessPlatform platform;

 private:
  VSTGUI::IPlatform* before_;
};

bool drawAtPresentSize(LFOGUI& editor, const char* path) {
  PlatformInMemory memory;
  if (!editor.open(nullptr)) return false;
  editor.idle();
  const bool written = memory.platform.frames().front()->writePng(path);
  editor.close();
  return written;
}

}  // namespace

bool drawEditorPicture(LFOGUI& editor, int widthPx, int heightPx, const char* path) {
  if (editor.isOpen()) return false;
  const double width = editor.editorWidth, height = editor.editorHeight;
  if (widthPx > 0 && heightPx > 0) editor.resizeTo(widthPx, heightPx);
  const bool written = drawAtPresentSize(editor, path);
  editor.resizeTo(width, height);
  return written;
}

}  // namespace plugin
