// SPDX-License-Identifier: MIT
// Files dropped on the graph: presets and shapes are loaded by the effect, as the browser has them loaded.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

#include "editor/graph/LFODisplay.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"
#include "toolkit/base/IDataPackage.h"
#include "toolkit/views/CFrame.h"

using namespace model;
using namespace VSTGUI;

namespace {

constexpr int kOverlayTicks = 500;  // how long the name of what was loaded stays

struct LoadableFile {
  const char* extension;  // lower case
  int parameter;          // that loads it
};
constexpr LoadableFile kLoadableFiles[] = {{".fxp", kLoadPreset}, {".shp", kLoadShape}};

struct Dropped {
  std::string path;
  int parameter = -1;  // none loads it
};

int loaderOf(const std::filesystem::path& path) {
  std::string extension = path.extension().string();
  std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
  for (const LoadableFile& file : kLoadableFiles)
    if (extension == file.extension) return file.parameter;
  return -1;
}

// The first file of the package that can be loaded.
Dropped loadable(IDataPackage& drag) {
  for (std::uint32_t i = 0; i < drag.getCount(); ++i) {
    const void* data = nullptr;
    IDataPackage::Type type = IDataPackage::kError;
    const std::uint32_t size = drag.getData(i, data, type);
    if (type != IDataPackage::kFilePath || !data) continue;
    Dropped dropped{{static_cast<const char*>(data), size}};
    dropped.parameter = loaderOf(dropped.path);
    if (dropped.parameter >= 0) return dropped;
  }
  return {};
}

}  // namespace

void LFODisplay::onDragEnter(IDataPackage* drag, const CPoint& /*where*/) {
  dropCursor_ = true;
  const bool takes = drag && effect && loadable(*drag).parameter >= 0;
  setCursor(takes ? kCursorCopy : kCursorNotAllowed);
}

void LFODisplay::onDragMove(IDataPackage* /*drag*/, const CPoint& /*where*/) {}

// The rest of the window takes nothing; the pointer's next move without a drag brings its own cursor back.
void LFODisplay::onDragLeave(IDataPackage* /*drag*/, const CPoint& /*where*/) {
  setCursor(kCursorNotAllowed);
  invalid();
}

bool LFODisplay::onDrop(IDataPackage* drag, const CPoint& where) {
  if (!drag || drag->getCount() == 0) return false;
  if (listener) listener->HandleDragDrop(this, drag, false, where);
  setCursor(kCursorDefault);
  const Dropped dropped = loadable(*drag);
  if (dropped.parameter >= 0 && effect && effect->setLoadPath(dropped.path.c_str())) {
    effect->setParameter(dropped.parameter, 1.0f);
    if (CFrame* const frame = getFrame()) frame->setFocusView(this);  // for the keys that take it back
    showOverlay(std::filesystem::path(dropped.path).stem().string().c_str());
  }
  return true;
}

void LFODisplay::showOverlay(const char* text) {
  overlayText.fill(0);
  std::copy_n(text, std::min(std::char_traits<char>::length(text), overlayText.size() - 1), overlayText.begin());
  overlayTimer = kOverlayTicks;
  invalid();
}
