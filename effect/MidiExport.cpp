// SPDX-License-Identifier: MIT
// The MIDI file export: plays the cutoff's graph over whole bars, faster than time and without a host, and writes what
// the controller stream would have sent.
//
// [ui] Blocks that come while the graph plays leave the sound alone. Without a path nothing happens; a path that cannot
// be written to changes no file and is not reported.
#include <algorithm>
#include <span>
#include <vector>

#include "effect/ControllerFile.h"
#include "effect/LfoDSP.h"
#include "effect/ModulationLaws.h"
#include "messages/Messages.h"
#include "model/AtomicFile.h"

using namespace model;
using namespace effect;

namespace {

constexpr double kLeastTempo = 2.0;      // below it the clock has not run, or the song stands
constexpr double kUnknownTempo = 120.0;  // for hosts that give none
constexpr int kShortBars = 1;            // for cycles of up to a bar
constexpr int kLongBars = 8;
constexpr int kLastLongRate = 11;  // step of the rate, from 0
constexpr int kMostFrames = 1 << 29;
constexpr int kMostChanges = 1 << 20;  // events; from there on one per tick, so that no setting fills the memory

// Both are up while the graph plays, whichever way it ends.
class Rendering {
 public:
  explicit Rendering(LfoDSP& effect) noexcept : effect_(effect) { set(true); }
  ~Rendering() { set(false); }
  Rendering(const Rendering&) = delete;
  Rendering& operator=(const Rendering&) = delete;

 private:
  void set(bool on) noexcept {
    effect_.bRenderingMidi = on;
    effect_.bAudioHold = on;
  }

  LfoDSP& effect_;
};

}  // namespace

void LfoDSP::saveMIDIFile(int mode) {
  const char* const path = readableLoadPath();
  if (!path) return;
  ExportClock clock;
  MidiOut events(MidiOut::Limits::none);
  int controller = 0;
  {
    const AudioGate::Hold hold(gate);
    const Rendering rendering(*this);
    if (ccNumber < 1) ccNumber = 1;
    controller = std::max<int>(ccNumber, 1);
    clock = startExportClock();
    const int mostTicks = clock.totalFrames / std::max(clock.tickFrames, 1) + 1;
    events.midiEvents.reserve(static_cast<std::size_t>(std::min(clock.totalFrames, kMostChanges + mostTicks)));
    playForExport(clock, mode, controller, events);
  }
  std::stable_sort(events.midiEvents.begin(), events.midiEvents.end(), MyDataSortPredicate);
  const std::vector<std::uint8_t> file = controllerFile(ticksOf(events.midiEvents, clock.quarterFrames), controller);
  static_cast<void>(model::replaceFile(path, std::as_bytes(std::span(file))));  // a failure leaves what was there
}

// Sets the beat clock to the song's start and its tempo to the last one known. The free clock runs on from where it is.
LfoDSP::ExportClock LfoDSP::startExportClock() noexcept {
  const double hostTempo = lastHostTempo;
  if (!(tempo >= kLeastTempo)) tempo = hostTempo > 0.0 ? hostTempo : kUnknownTempo;
  const double quarter = static_cast<double>(sampleRateSafe) * 60.0 / std::max<double>(tempo, 1.0);
  const double longQuarter = std::max(quarter, 1.0);
  const bool isShort =
      !padLFO.bFreeRun && integerPart(static_cast<double>(padLFO.rate * kRateSteps) + 0.5) > kLastLongRate;
  const double frames = 4.0 * quarter * (isShort ? kShortBars : kLongBars);
  beatPos = 0.0;
  beatsPerSample = 1.0 / longQuarter;
  CalculateTrigOffset();
  const ExportClock clock{quarter, integerPart(std::min<double>(frames, kMostFrames)),
                          integerPart(longQuarter / kTicksPerQuarter + 0.5)};
  messages::exportClock(clock.quarterFrames, clock.tickFrames);
  return clock;
}

// Shapes the value as the audio path does, but at every frame; `mode` 0 scales it by the cutoff's depth, any other
// takes the graph at its full height.
void LfoDSP::playForExport(const ExportClock& clock, int mode, int controller, MidiOut& events) noexcept {
  const double depth = depthOf(padLFO.depthCut, padLFO.depthKnob);
  const double scale = mode == 0 ? 2.0 * depth * depth * depth : 1.0;
  const double keep = cutoffSmoothing(lfoSmooth);
  const bool onChange = bDontInsertMIDIEachPPQ_OnRender;
  int lastValue = -1;  // not the live stream's: the instrument there has heard nothing of this
  int sinceEvent = clock.tickFrames + 1;
  for (int frame = 0; frame < clock.totalFrames; ++frame) {
    ProcessPadLFO();
    const float graph = padLFO.graphOut[static_cast<std::uint8_t>(routeCut)];
    cutMod = static_cast<float>((static_cast<double>(graph) - 0.5) * scale + static_cast<double>(filterCutoff));
    cutSmoothed = smoothedCutoff(cutSmoothed, cutMod, keep);
    const int value = controllerValue(cutSmoothed);
    const bool tickDue = ++sinceEvent >= clock.tickFrames;
    const bool changeDue = value != lastValue && (tickDue || events.midiEventLast < kMostChanges);
    if (onChange ? changeDue : tickDue) {
      lastValue = value;
      events.send(kControllerOnChannel1, controller, value, frame, 0);
      sinceEvent = 0;
    }
    beatPos += beatsPerSample;
  }
}
