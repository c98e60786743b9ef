// SPDX-License-Identifier: MIT
// Keys on the graph: undo and redo, deleting and nudging the selected points.
#include "editor/graph/GraphReports.h"
#include "editor/graph/LFODisplay.h"

using namespace model;
using namespace VSTGUI;

namespace {

constexpr int kNudgeRun = 1;  // nudges one after the other are one step to undo

bool isUndoKey(const VstKeyCode& key) {
  return (key.modifier & (MODIFIER_CONTROL | MODIFIER_COMMAND)) != 0 && (key.modifier & MODIFIER_ALTERNATE) == 0 &&
         (key.character == 'z' || key.character == 'Z');
}

}  // namespace

std::int32_t LFODisplay::onKeyDown(VstKeyCode& key) {
  if (isUndoKey(key)) {
    (key.modifier & MODIFIER_SHIFT) != 0 ? redo() : undo();
    return kKeyHandled;  // also at the end of the history, so that the host doesn't undo something else
  }
  if (!selectionActive || isDragging()) return kKeyNotHandled;
  if (key.virt == VKEY_DELETE || key.virt == VKEY_BACK) {
    beginStep();
    clearSelectedPoints();
    endStep();
    return kKeyHandled;
  }
  const auto by = nudgeOf(key);
  if (by) nudge(*by);
  return by ? kKeyHandled : kKeyNotHandled;
}

// A pixel, or with Shift a grid cell.
std::optional<LFODisplay::Nudge> LFODisplay::nudgeOf(const VstKeyCode& key) const {
  if ((key.modifier & ~MODIFIER_SHIFT) != 0) return std::nullopt;
  const bool byCell = (key.modifier & MODIFIER_SHIFT) != 0;
  const double x = byCell ? grid().cellWidth() : 1.0;
  const double y = byCell ? grid().cellHeight() : 1.0;
  switch (key.virt) {
    case VKEY_LEFT:
      return Nudge{-x, 0.0};
    case VKEY_RIGHT:
      return Nudge{x, 0.0};
    case VKEY_UP:
      return Nudge{0.0, -y};
    case VKEY_DOWN:
      return Nudge{0.0, y};
    default:
      return std::nullopt;
  }
}

void LFODisplay::nudge(const Nudge& by) {
  const editor::GraphState before = graphState();
  renewOrigins();
  moveSelection(by.x / graphWidth, by.y / graphHeight, editor::Stretch::none);
  renewOrigins();
  selectionMoved = false;
  if (sameGraph(before, graphState())) return;
  steps().record(std::max(shownGraph_, 0), before, kNudgeRun);
  value = editor::kReportSelectionEnd;
  valueChanged();
  value = editor::kReportAtRest;
  renderDirty = true;
  invalid();
}
