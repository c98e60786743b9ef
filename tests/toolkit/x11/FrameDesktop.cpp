#include "tests/toolkit/x11/FrameDesktop.h"

#include "toolkit/base/IDataPackage.h"
#include "toolkit/drawing/CDrawContext.h"

using namespace VSTGUI;

void Recorder::draw(CDrawContext* context) {
  ++draws;
  context->setFillColor(kRedCColor);
  context->drawRect(getViewSize(), kDrawFilled);
  context->setFillColor(kBlueCColor);
  context->drawRect({0, 0, 10, 10}, kDrawFilled);
}

bool Recorder::onDrop(IDataPackage* drag, const CPoint&) {
  log += "drop ";
  for (std::uint32_t i = 0; i < drag->getCount(); ++i) {
    const void* data = nullptr;
    IDataPackage::Type type = IDataPackage::kError;
    const std::uint32_t size = drag->getData(i, data, type);
    dropped.emplace_back(static_cast<const char*>(data), size);
  }
  return true;
}

FrameDesktop::~FrameDesktop() {
  if (frame) frame->close();
}

void FrameDesktop::idle() {
  if (frame) frame->idle();
  if (alsoIdle) alsoIdle();
}

void FrameDesktop::open() {
  frame = Counted<CFrame>::adopt(new CFrame({0, 0, 200, 100}, this));
  view = new Recorder({0, 0, 200, 100});
  frame->addView(view);
  ASSERT_TRUE(frame->open(asParent(host)));
  window = childrenOf(host).at(0);
  ASSERT_TRUE(until([&] { return view->draws > 0; }));
}
