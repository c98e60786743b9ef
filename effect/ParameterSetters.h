// SPDX-License-Identifier: MIT
// What the parameters with more to do than to store a value do, and how those read back. [any]
//
// All have the signatures of ParameterRow; `index` is the row's own number.
#pragma once

#include <cstdint>

class LfoDSP;

namespace effect {

// What the rows' families share.
void tellClock(LfoDSP& effect);   // the editor, that the clock or a depth changed
void repeatRate(LfoDSP& effect);  // a switch of the clock changes what the rate means, so the rate is set again

// Clock.
void setRate(LfoDSP& effect, int index, float value);
void setBpmSync(LfoDSP& effect, int index, float value);
float getBpmSync(const LfoDSP& effect, int index);
void setTiming(LfoDSP& effect, int index, float value);
void setAnchor(LfoDSP& effect, int index, float value);

// Notes and MIDI.
void setRetrigger(LfoDSP& effect, int index, float value);
float getRetrigger(const LfoDSP& effect, int index);
void setGateMode(LfoDSP& effect, int index, float value);
void setCcNumber(LfoDSP& effect, int index, float value);
float getCcNumber(const LfoDSP& effect, int index);
void exportMidi(LfoDSP& effect, int index, float value);

void setFilterOn(LfoDSP& effect, int index, float value);

// Graphs.
void setWarpOf(LfoDSP& effect, int index, float value);
float getWarpOf(const LfoDSP& effect, int index);
double loadWarp(const LfoDSP& effect, int index);
void storeWarp(LfoDSP& effect, int index, double value);
void setCurrentWarp(LfoDSP& effect, int index, float value);
float getCurrentWarp(const LfoDSP& effect, int index);
void setCurrentGraph(LfoDSP& effect, int index, float value);
void copyGraph(LfoDSP& effect, int index, float value);
void pasteGraph(LfoDSP& effect, int index, float value);
void setPoint(LfoDSP& effect, int index, float value);  // Y, X or curve of one of the first graph's points
float getPoint(const LfoDSP& effect, int index);

// Files.
void loadShape(LfoDSP& effect, int index, float value);
void loadPreset(LfoDSP& effect, int index, float value);

}  // namespace effect
