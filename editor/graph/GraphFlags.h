// SPDX-License-Identifier: MIT
// The flags of a graph's markers, in its picture.
#pragma once

namespace VSTGUI {
class CDrawContext;
}

namespace editor {

class EditedGraph;

// A black L at the loop point and a green Z at the start point, above it where both are one point. The ends of a graph
// have none but for a loop from its first point.
void drawFlags(VSTGUI::CDrawContext& context, const EditedGraph& graph);

}  // namespace editor
