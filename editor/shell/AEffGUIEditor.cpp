// SPDX-License-Identifier: MIT
#include "editor/shell/AEffGUIEditor.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "toolkit/base/Bundle.h"

namespace {

constexpr std::uint32_t kTicksBetweenTurns = 100;

// The sides of a window as hosts take them.
constexpr double kMostPixels = std::numeric_limits<VstInt16>::max();

// A window that isn't on whole pixels gets the part of one too.
VstInt16 pixels(double units, double scale) {
  return static_cast<VstInt16>(std::clamp(std::ceil(units * scale), 1.0, kMostPixels));
}

std::int32_t knobMode = VSTGUI::kCircularMode;

// The two records say the same in the same places.
VSTGUI::VstKeyCode toolkitKey(const VstKeyCode& key) { return {key.character, key.virt, key.modifier}; }

}  // namespace

AEffGUIEditor::AEffGUIEditor(AudioEffectX* owner) : AEffEditor(owner), lastTicks_(VSTGUI::CFrame::getTicks()) {
  owner->setEditor(this);
  VSTGUI::acquirePluginBundle();
}

// A derived constructor that throws must not leave the effect with half an editor.
AEffGUIEditor::~AEffGUIEditor() {
  VSTGUI::releasePluginBundle();
  if (effect->getEditor() == this) effect->setEditor(nullptr);
}

bool AEffGUIEditor::getRect(ERect** editorRect) {
  *editorRect = &rect;
  return true;
}

bool AEffGUIEditor::open(void* window) {
  systemWindow = window;
  return true;
}

void AEffGUIEditor::idle() {
  if (frame && !inIdleStuff_) frame->idle();
}

void AEffGUIEditor::draw(ERect* area) {
  if (!frame) return;
  VSTGUI::CRect all;
  frame->getSize(all);
  const double unit = 1.0 / scaleFactor();
  frame->paintNow(area ? VSTGUI::CRect(area->left * unit, area->top * unit, area->right * unit, area->bottom * unit)
                       : all);
}

bool AEffGUIEditor::onKeyDown(VstKeyCode& key) {
  auto code = toolkitKey(key);
  return frame && frame->onKeyDown(code) == VSTGUI::kKeyHandled;
}

bool AEffGUIEditor::onKeyUp(VstKeyCode& key) {
  auto code = toolkitKey(key);
  return frame && frame->onKeyUp(code) == VSTGUI::kKeyHandled;
}

bool AEffGUIEditor::onWheel(float distance) {
  VSTGUI::CPoint where;
  return frame && frame->getCurrentMouseLocation(where) &&
         frame->onWheel(where, distance, frame->getCurrentMouseButtons());
}

bool AEffGUIEditor::setKnobMode(VstInt32 mode) {
  knobMode = mode;
  return true;
}

std::int32_t AEffGUIEditor::getKnobMode() const { return knobMode; }

// Hosts answer their turn with an idle call, which must not get at the frame's events a second time.
void AEffGUIEditor::doIdleStuff() {
  if (!frame || inIdleStuff_) return;
  frame->idle();
  const std::uint32_t now = VSTGUI::CFrame::getTicks();
  if (now - lastTicks_ < kTicksBetweenTurns) return;
  lastTicks_ = now;
  inIdleStuff_ = true;
  idle();
  effect->masterIdle();
  inIdleStuff_ = false;
}

void AEffGUIEditor::beginEdit(std::int32_t index) { host().beginEdit(index); }

void AEffGUIEditor::endEdit(std::int32_t index) { host().endEdit(index); }

bool AEffGUIEditor::beforeSizeChange(const VSTGUI::CRect& newSize, const VSTGUI::CRect& /*oldSize*/) {
  if (host().canHostDo("sizeWindow") > 0) sizeWindow(newSize.getWidth(), newSize.getHeight());
  return true;
}

// --- Units and pixels

double AEffGUIEditor::scaleFactor() const {
  if (frame) return frame->getScaleFactor();
  const VSTGUI::IPlatform* const platform = VSTGUI::getPlatform();
  return platform ? platform->getScaleFactor() : 1.0;
}

bool AEffGUIEditor::sizeWindow(double width, double height) {
  const double scale = scaleFactor();
  return host().sizeWindow(pixels(width, scale), pixels(height, scale));
}

void AEffGUIEditor::setRect(double width, double height) {
  const double scale = scaleFactor();
  rect = {0, 0, pixels(height, scale), pixels(width, scale)};
}
