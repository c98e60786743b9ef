// SPDX-License-Identifier: MIT
// The graph display, and the editor round it, in a window in memory. A frame of these rows is one pixel: of the view
// 97600 at the reference size and 390400 at twice that, of the whole window 242844 and 971376.
#include <cmath>
#include <string>

#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "editor/controls/ControlMessages.h"
#include "editor/graph/GraphLink.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"
#include "effect/KorvelInDSPEdit.h"
#include "toolkit/headless/HeadlessPlatform.h"
#include "toolkit/views/CFrame.h"

namespace bench {
namespace {

using namespace editor;
using namespace VSTGUI;

VstIntPtr VSTCALLBACK noHost(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) { return 0; }

class Window {
 public:
  explicit Window(double size) {
    setPlatform(PlatformType::kDefaultNative, &platform_);
    const CRect view(0, 0, kGraphPlace.getWidth() * size, kGraphPlace.getHeight() * size);
    frame_ = new CFrame(view, nullptr);
    frame_->open(nullptr);
    display = new LFODisplay(view, nullptr, kGraphTag, static_cast<double>(model::kPixelWidth) * size,
                             static_cast<double>(model::kPixelHeight) * size, nullptr, {}, 1);
    frame_->addView(display);
    loadGraph(*display, effect, false);
    display->playPosition = 0.3;
    for (std::size_t i = 0; i < kDisplayTable; ++i) {
      const float* const noise = stimulus().left(i, 1);
      display->scopeInCopy[i] = *noise;
      display->scopeOutCopy[i] = *noise * display->shapeTable[i];
    }
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() {
    frame_->close();
    frame_->forget();
    setPlatform(PlatformType::kDefaultNative, nullptr);
  }
  int pixels() const { return static_cast<int>(display->getWidth() * display->getHeight()); }
  void paint() { frame_->paintNow(display->getViewSize()); }

  KorvelInDSPEdit effect{noHost};
  LFODisplay* display;

 private:
  HeadlessPlatform platform_;
  CFrame* frame_;
};

void redraw(benchmark::State& state, double size, bool scope) {
  Window window(size);
  window.display->scopeOn = scope;
  measure(state, window.pixels(), [&](std::size_t) { window.paint(); });
}

// A drag step: rendering, the way into the effect, and a painting of the curve.
void edit(benchmark::State& state, double size) {
  Window window(size);
  measure(state, window.pixels(), [&](std::size_t turn) {
    window.display->points[1].y = static_cast<double>(turn / 97600 % 200);
    commitGraphEdit(*window.display, window.effect);
    window.paint();
  });
}

// From the wish for another size to the painted window; by turns the size and a pixel more.
void rebuild(benchmark::State& state, double size) {
  HeadlessPlatform platform;
  setPlatform(PlatformType::kDefaultNative, &platform);
  {
    KorvelInDSPEdit effect(noHost);
    auto* const gui = static_cast<LFOGUI*>(createEditor(&effect));
    const double width = kReferenceWidth * size, height = kReferenceHeight * size;
    gui->open(nullptr);
    measure(state, static_cast<int>(width * height), [&, wider = false](std::size_t) mutable {
      wider = !wider;
      gui->resizeTo(width + (wider ? 1 : 0), height);
      gui->MyIdle();
    });
  }
  setPlatform(PlatformType::kDefaultNative, nullptr);
}

}  // namespace

void addGraphDisplayRows() {
  for (const auto& [name, size] : {std::pair{"reference size", 1.0}, {"twice the size", 2.0}}) {
    const std::string at = std::string(", ") + name;
    addRow("graph display/redraw" + at, [size = size](benchmark::State& s) { redraw(s, size, false); });
    addRow("graph display/redraw, scope" + at, [size = size](benchmark::State& s) { redraw(s, size, true); });
    addRow("graph display/edit" + at, [size = size](benchmark::State& s) { edit(s, size); });
    addRow("editor/rebuild" + at, [size = size](benchmark::State& s) { rebuild(s, size); });
  }
}

}  // namespace bench
