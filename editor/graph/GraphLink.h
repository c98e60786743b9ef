// SPDX-License-Identifier: MIT
// Moves graphs between the display and the effect. [ui]
#pragma once

class LFODisplay;
class LfoDSP;

namespace editor {

// What a report of the display means for the effect: called once a report, from the listener's valueChanged. Points 0
// to 7 of graph 1 go out as automated parameters while the effect runs, everything else is copied into the graph that
// is shown. Either way the effect's points and table are up to date when this returns.
void commitGraphEdit(LFODisplay& display, LfoDSP& effect);

// Ends a drag that will see no release, since the window goes: hosts hear of the end of what they record, and what was
// done so far can be undone.
void abandonGraphDrag(LFODisplay& display, LfoDSP& effect);

// Takes the effect's current graph into the display. `pointsOnly` for points that were automated: it takes the points
// in use. Without it all slots come, the display's table goes back over the effect's, gestures and selection end, and a
// change of the graph that was shown before can be undone.
void loadGraph(LFODisplay& display, LfoDSP& effect, bool pointsOnly);

}  // namespace editor
