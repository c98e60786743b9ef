// The editor's turns: what changed in the effect comes into view.
#include <cstring>

#include "editor/graph/GraphLink.h"
#include "editor/graph/GraphScope.h"
#include "editor/graph/LFODisplay.h"
#include "editor/shell/LFOGUI.h"
#include "model/Graph.h"

using namespace VSTGUI;
using namespace model;

// [any] A new window size counts at once, since a window may be opened next.
void LFOGUI::setParameter(VstInt32 index, float value) {
  switch (index) {
    case kNoticeEditorSize:
      if (value > 99.0f) restoreStoredSize();
      return;
    case kNoticePoint:
      reloadPending.publish(true);
      return;
    default:
      notes_.post(index, value);
  }
}

CMessageResult LFOGUI::notify(CBaseObject* /*sender*/, IdStringPtr message) {
  if (std::strcmp(message, kMsgTimer) != 0) return kMessageUnknown;
  MyIdle();
  return kMessageNotified;
}

void LFOGUI::MyIdle() {
  if (!frame || !controlsReady) return;
  if (resizePending) rebuild();
  if (display && display->overlayTimer > 0) --display->overlayTimer;
  AEffGUIEditor::idle();
}

void LFOGUI::idle() {
  if (!frame || !controlsReady) return;
  followEffect();
  showOutput(dsp().displayPos);
  if (display->scopeOn) readScope(*display, dsp(), scopeReadIndex);
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
      display->SetGridSize(gridCells(value));
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
  if (display) loadGraph(*display, dsp(), pointsOnly);
}

// All that the display shows, for a display that is new.
void LFOGUI::fillDisplay() {
  display->scopeOn = static_cast<bool>(dsp().bScopeOn);
  display->SetGridSize(gridCells(dsp().gridSize));
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
