// SPDX-License-Identifier: MIT
// Who the controls are and what they tell their listener by their values. The graph display's reports are in
// editor/graph/GraphReports.h.
#pragma once

#include <cstdint>

namespace editor {

// Tags of controls. Below 70 a tag is the number of a parameter.
enum EditorTag : std::int32_t { kGraphTag = 88, kResizeTag = 103 };

// The values of the resize corner.
inline constexpr float kCornerReleased = 0.0f;
inline constexpr float kCornerChosenSize = 0.99f;  // a click with Control: the size that the user has chosen
inline constexpr float kCornerDragged = 1.0f;      // a step of a drag

enum class CornerMessage { none, released, chosenSize, dragged };

// Each value stands for those close to it; what lies in between is none of them.
[[nodiscard]] constexpr CornerMessage cornerMessage(float value) noexcept {
  if (value > 0.98f) return value < 0.991f ? CornerMessage::chosenSize : CornerMessage::dragged;
  return value < 0.01f ? CornerMessage::released : CornerMessage::none;
}

}  // namespace editor
