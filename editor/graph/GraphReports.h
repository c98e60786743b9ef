// SPDX-License-Identifier: MIT
// What the graph display tells its listener, by the value of the control.
#pragma once

namespace editor {

// A drag reports each step with the one that the value wasn't at its press.
inline constexpr float kReportAtRest = 0.0f;
inline constexpr float kReportDrag = 1.0f;

inline constexpr float kReportRefresh = 0.6666f;          // nothing changed
inline constexpr float kReportSelectionEnd = 2.5f;        // the selection was let go
inline constexpr float kReportWithoutParameters = 10.0f;  // from here on nothing goes out as parameters
inline constexpr float kReportGraph = 100.0f;             // a marker was set, or a step undone

}  // namespace editor
