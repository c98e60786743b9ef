// SPDX-License-Identifier: MIT
// What changed in the effect comes into view, at each turn of the host.
#include "editor/graph/GraphLink.h"
#include "editor/graph/GraphScope.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"

using namespace model;

void LFOGUI::idle() {
  if (!frame || !controlsReady) return;
  followEffect();
  showOutput(dsp().displayPos);
  if (display->scopeOn) editor::readScope(*display, dsp(), scopeReadIndex);
  display->setDirty();
  AEffGUIEditor::idle();
}

void LFOGUI::followEffect() {
  notes_.collect([this](int index, float value) { follow(index, value); });
  if (!reloadPending.take(false)) return;
  updateEnvFromDSP(true);
  display->renderDirty = true;
}

void LFOGUI::follow(int index, float value) {
  if (index <= kFilterCutoff || index == kNoticeClock) refreshClock();
  switch (index) {
    case kPhase:
    case kPwm:
      display->renderDirty = true;
      break;
    case kGridSize:
      display->SetGridSize(editor::cellsOf(value));
      break;
    case kDotted:
    case kTriplet:
      refreshTimes();
      break;
    case kNoticeGraph:
      updateEnvFromDSP(value != 0.0f);
      display->renderDirty = true;
      break;
    case kNoticeScope:
      display->scopeOn = value != 0.0f;
      break;
    default:
      break;
  }
}

void LFOGUI::updateEnvFromDSP(bool pointsOnly) {
  if (display) editor::loadGraph(*display, dsp(), pointsOnly);
}

// All that the display shows, for a display that is new.
void LFOGUI::fillDisplay() {
  display->scopeOn = static_cast<bool>(dsp().bScopeOn);
  display->SetGridSize(editor::cellsOf(dsp().gridSize));
  refreshClock();
  refreshTimes();
  updateEnvFromDSP(false);
}

// Which rate steps there are, for the texts beside points.
void LFOGUI::refreshTimes() {
  display->bDotted = dsp().padLFO.bDotted != 0;
  display->bTriplet = dsp().padLFO.bTriplet != 0;
}

void LFOGUI::refreshClock() {
  const PadLFO& lfo = dsp().padLFO;
  display->phaseValue = static_cast<float>(lfo.phase);
  display->pwmValue = static_cast<float>(lfo.pwm);
  showOutput(lfo.cyclePos);
}

void LFOGUI::showOutput(float position) {
  display->graphOutValue = static_cast<float>(dsp().padLFO.graphOut[static_cast<std::size_t>(dsp().currentGraph)]);
  display->playPosition = static_cast<double>(position);
}
