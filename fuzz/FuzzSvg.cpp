// SPDX-License-Identifier: MIT
// An image's text: any bytes give a bitmap of a bounded size, or none.
#include <cstdint>

#include "editor/panel/ReferenceSize.h"
#include "editor/panel/SvgRender.h"
#include "fuzz/Require.h"
#include "toolkit/views/CFrame.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace VSTGUI;
  static constexpr CRect kWindow(0, 0, editor::kReferenceWidth, editor::kReferenceHeight);
  static const auto frame = Counted<CFrame>::adopt(new CFrame(kWindow, nullptr));
  const std::span text(reinterpret_cast<const char*>(data), size);
  const auto painted = Counted<COffscreenContext>::adopt(editor::renderSvgText(text, frame, 0.5, 0.5));
  if (!painted) return 0;
  const CBitmap& bitmap = *painted->getBitmap();
  require(bitmap.getWidth() >= 1 && bitmap.getHeight() >= 1, "a bitmap has an extent");
  require(bitmap.getWidth() * bitmap.getHeight() <= 8192.0 * 8192.0, "a bitmap stays bounded");
  return 0;
}
