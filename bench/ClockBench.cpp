// SPDX-License-Identifier: MIT
// The clock and the reading of the graphs: tick by tick as the audio path does it, and sample by sample as the MIDI
// export does, with all settings read at each.
#include <vector>

#include "bench/BenchHost.h"
#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "effect/LfoClock.h"
#include "effect/ParameterTable.h"
#include "model/CurveLaw.h"

using namespace model;
using namespace effect;

namespace bench {
namespace {

constexpr double kBeatsPerSample = 2.0 / kRateHz;  // 120 beats a minute
constexpr float kAllRoutesApart[] = {0.0f, 0.2f, 0.4f, 0.6f, 0.8f};

ClockSettings onBeat() {
  ClockSettings s;
  s.cyclesPerBeat = rateDivider(0.5f, false, false) * kDividerScale * 4.0;
  s.beatsPerSample = kBeatsPerSample;
  return s;
}

ClockSettings bent() {
  ClockSettings s = onBeat();
  s.phase = 0.3;
  s.hasSwing = true;
  s.swing = static_cast<double>(0.6f);
  s.swingFirst = floatReciprocal(0.6f);
  s.swingSecond = floatReciprocal(1.0f - 0.6f);
  s.hasPwm = true;
  s.pwmLate = true;
  s.pwmAmount = 0.5;
  return s;
}

ClockSettings runningFree() {
  ClockSettings s = onBeat();
  s.onBeat = false;
  s.freeIncrement = 2.0 / kRateHz;
  return s;
}

// Twelve steps of the clock, then one reading of a graph.
void ticks(benchmark::State& state, ClockSettings settings) {
  const BenchHost host;
  GraphReader graph{host.effect->graphTable[0].get(), 1.0, true};
  ClockState clock;
  std::array<double, kTickFrames> positions{};
  measure(state, kTickFrames, [&](std::size_t) {
    benchmark::DoNotOptimize(settings);
    benchmark::DoNotOptimize(clock);
    const ClockSettings s = settings;
    ClockState c = clock;
    std::size_t moved = 0;
    for (int j = 0; j < kTickFrames; ++j) {
      if (advanceClock(c, s)) positions[moved++] = c.lfoPhase;
      c.beatPos += s.beatsPerSample;
    }
    clock = c;
    benchmark::DoNotOptimize(positions);
    benchmark::DoNotOptimize(graph.read(positions[moved - 1]));
  });
}

void samples(benchmark::State& state, const std::vector<Parameter>& parameters, bool fiveGraphs) {
  BenchHost host;
  LfoDSP& effect = *host.effect;
  host.set(parameters);
  for (int r = 0; fiveGraphs && r < 5; ++r) effect.setParameter(kRouteCut + r, kAllRoutesApart[r]);
  effect.beatsPerSample = kBeatsPerSample;
  measure(state, kTickFrames, [&](std::size_t) {
    for (int j = 0; j < kTickFrames; ++j) {
      effect.ProcessPadLFO();
      effect.beatPos += kBeatsPerSample;
    }
    benchmark::DoNotOptimize(effect.padLFO.graphOut);
  });
}

}  // namespace

void addClockRows() {
  addRow("clock/ticks, beat", [](benchmark::State& s) { ticks(s, onBeat()); });
  addRow("clock/ticks, beat with swing, PWM, phase", [](benchmark::State& s) { ticks(s, bent()); });
  addRow("clock/ticks, free", [](benchmark::State& s) { ticks(s, runningFree()); });
  addRow("clock/samples, beat, one graph", [](benchmark::State& s) { samples(s, {}, false); });
  addRow("clock/samples, beat, five graphs", [](benchmark::State& s) { samples(s, {}, true); });
  addRow("clock/samples, swing, PWM, phase, one graph", [](benchmark::State& s) {
    samples(s, {{kSwing, 0.6f}, {kPwm, 0.75f}, {kPhase, 0.3f}}, false);
  });
  addRow("clock/samples, free, one graph", [](benchmark::State& s) { samples(s, {{kBpmSync, 0.0f}}, false); });
}

}  // namespace bench
