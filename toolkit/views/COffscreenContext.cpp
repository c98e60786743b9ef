// SPDX-License-Identifier: MIT
#include "toolkit/views/COffscreenContext.h"

#include "toolkit/views/CFrame.h"

namespace VSTGUI {

COffscreenContext* COffscreenContext::create(CFrame* frame, CCoord width, CCoord height, double scale) {
  if (!(width >= 1 && height >= 1 && scale > 0)) return nullptr;
  const double scaleFactor = scale * (frame ? frame->getScaleFactor() : 1.0);
  auto bitmap = Counted<CBitmap>::adopt(new CBitmap(width, height, scaleFactor));
  return bitmap->isLoaded() ? new COffscreenContext(bitmap) : nullptr;
}

COffscreenContext::COffscreenContext(Counted<CBitmap> bitmap)
    : CDrawContext(bitmap->getSurface(), {0, 0, bitmap->getWidth(), bitmap->getHeight()}, bitmap->getScaleFactor()),
      bitmap_(std::move(bitmap)) {}

void COffscreenContext::copyFrom(CDrawContext* context, const CRect& destination, const CPoint& source) {
  endDraw();
  bitmap_->draw(context, destination, source);
}

}  // namespace VSTGUI
