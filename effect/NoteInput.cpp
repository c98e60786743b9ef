// SPDX-License-Identifier: MIT
// What the host plays into the effect: notes act at their exact frames, everything else passes through.
#include <algorithm>

#include "effect/LfoDSP.h"
#include "effect/ModulationLaws.h"
#include "effect/ParameterTable.h"
#include "filters/FilterTypes.h"

using namespace model;
using namespace effect;

namespace {

constexpr int kNoteOff = 0x8;
constexpr int kNoteOn = 0x9;
constexpr int kControlChange = 0xb;
constexpr int kAllNotesOff = 123;

constexpr int kLowestRateNote = 48;
constexpr int kFirstNoteOfNoGraph = 60;  // five octaves choose the graphs of the five routes
constexpr int kNotesAnOctave = 12;
constexpr int kMostHeldNotes = 127;

int byteOf(const VstMidiEvent& event, int i) { return static_cast<unsigned char>(event.midiData[i]); }

float cutoffOfNote(int note, float filterType) {
  const filters::FilterType& type = filters::typeAt(filters::typeIndexOf(filterType));
  if (type.trait != filters::Trait::hertzCutoff) return static_cast<float>(note / kSevenBitValues);
  return static_cast<float>(limit01(note / 112.0 - 0.155));
}

}  // namespace

bool LfoDSP::takesNotes() const noexcept { return bRetrig || bVelToPwm || bNoteToCutoff || bNoteSelectsGraphs; }

VstInt32 LfoDSP::processEvents(VstEvents* events) noexcept {
  for (VstInt32 i = 0; events && i < events->numEvents; ++i) {
    const VstEvent* const event = events->events[i];
    if (!event || event->type != kVstMidiType) continue;
    if (!takeEvent(*reinterpret_cast<const VstMidiEvent*>(event))) break;
  }
  return 1;
}

// False when no more events fit into this block.
bool LfoDSP::takeEvent(const VstMidiEvent& event) noexcept {
  const int kind = byteOf(event, 0) >> 4;
  const int note = byteOf(event, 1) & 127;
  if (takesNotes() && (kind == kNoteOff || kind == kNoteOn)) {
    const int velocity = kind == kNoteOff ? 0 : byteOf(event, 2) & 127;
    noteQueue.add({event.deltaFrames, static_cast<std::uint8_t>(note), static_cast<std::uint8_t>(velocity),
                   static_cast<std::uint8_t>((byteOf(event, 0) + 1) & 15)});
    return true;
  }
  if (kind == kControlChange && note == kAllNotesOff && byteOf(event, 2) == 0) releaseAllNotes();
  return midiOut.passThrough(event);
}

void LfoDSP::releaseAllNotes() noexcept {
  heldNotes = 0;
  if (bGateMode) padLFO.bLfoOpen = 0;
}

void LfoDSP::ProcessWaitingNote(char note, char /*unused*/, char velocity, int frame, bool /*unused*/) noexcept {
  if (bRenderingMidi) return;
  if (velocity < 1) {
    if (--heldNotes <= 0) releaseAllNotes();
    return;
  }
  if (bNoteToCutoff) setParameterAutomated(kFilterCutoff, cutoffOfNote(note, filterType));
  if (bVelToPwm) setParameterAutomated(kPwm, static_cast<float>(velocity / 127.0));
  if (selectsGraph(note)) return;
  if (bRetrig) retrigger(frame);
  if (bNoteToRate && note >= kLowestRateNote)
    setParameterAutomated(kRate, static_cast<float>((note - kLowestRateNote) / 79.0));
  padLFO.bLfoOpen = 1;
  heldNotes = std::min(heldNotes + 1, kMostHeldNotes);
}

// Low notes choose graphs when no other switch gives notes a meaning; such a note does nothing else.
bool LfoDSP::selectsGraph(int note) {
  if (!bNoteSelectsGraphs || bVelToPwm || bNoteToCutoff || bRetrig || note >= kFirstNoteOfNoGraph) return false;
  const int octave = note / kNotesAnOctave;
  setParameter(kRouteCut + octave, valueOfGraph(note % kNotesAnOctave));
  return true;
}

// Both clocks start their cycle anew; later blocks read the song position relative to this frame.
void LfoDSP::retrigger(int frame) noexcept {
  const double timingBeats = static_cast<double>(timingOffset) * beatsPerSample;
  const double hostPosition = timeInfo ? finiteOrZero(timeInfo->ppqPos) : 0.0;
  const double position = frame * beatsPerSample + hostPosition + timingBeats;
  trigPos = position;
  trigOffset = position - timingBeats;
  bOneShotDone = false;
  if (bOneShot) {
    oneShotLength = 0.25 / (divider() * kDividerScale);
  }
  beatPos = 0.0;
  if (!bAnchor || padLFO.bFreeRun) freePhase = 0.0;
}

void LfoDSP::sendMidiOutEvent(int status, int data1, int data2, int frame) noexcept {
  midiOut.send(status, data1, data2, frame, midiThinning);
}

// The cutoff as a controller, when its seven bits have changed.
void LfoDSP::sendCutoffController(int frame) noexcept {
  const std::int8_t controller = ccNumber;  // read once: another thread may switch it off
  if (controller <= 0) return;
  const int value = controllerValue(cutSmoothed);
  if (value == lastCCValue) return;
  lastCCValue = static_cast<std::int8_t>(value);
  sendMidiOutEvent(kControllerOnChannel1, controller, value, frame);
}

void LfoDSP::endMidiBlock() noexcept {
  if (VstEvents* const list = midiOut.list()) sendVstEventsToHost(list);
  midiOut.clear();
  noteQueue.clear();
}

// A block that may not run keeps what came for it: a lost note-off would leave the gate, or the next instrument, open.
void LfoDSP::keepMidiForNextBlock() noexcept {
  midiOut.moveToStart();
  noteQueue.moveToStart();
}
