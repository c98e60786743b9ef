// SPDX-License-Identifier: MIT
// The settings block of the LFO engine: what the clock and the routing read, and part of what a project stores.
//
// Its bytes are those of the stored state, the same on every platform: a field never moves. The reserved bytes travel
// with the record. Fields are read by the audio thread and written by any; the record is stored field by field.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "model/Graph.h"
#include "threads/Shared.h"

struct PadLFO {
  Shared<std::uint8_t> bLfoOpen{1};  // the gate: closed, all routes read the first sample of their graph
  std::array<Shared<std::uint8_t>, 3> reserved1{};
  std::array<Shared<float>, model::kGraphs> graphOut{};   // last value read from each graph, 0 to 1
  std::array<Shared<float>, model::kGraphs> graphWarp{};  // warp parameter of each graph, 0 to 1
  std::array<Shared<std::uint8_t>, 4> reserved100{};
  Shared<float> rate{0.5f};
  Shared<float> pwm{0.5f};
  Shared<float> swing{0.5f};
  Shared<float> depthPan{0.5f};  // depths: 0.5 is none, below it the graph works upside down
  Shared<float> depthCut{0.5f};
  Shared<float> depthVol{0.5f};
  Shared<float> depthRes{0.5f};
  Shared<std::int32_t> reserved132{3};
  std::array<Shared<std::uint8_t>, 4> reserved136{};
  Shared<float> depthKnob{1.0f};  // scales all depths towards none
  Shared<float> depthVar{0.5f};
  std::array<Shared<std::uint8_t>, 4> reserved148{};
  Shared<float> cyclePos{0.0f};  // clock position before phase and PWM, 0 to 1
  Shared<float> phase{0.0f};     // 1 is a whole turn
  Shared<std::uint8_t> bTriplet{1};
  Shared<std::uint8_t> bDotted{1};
  std::array<Shared<std::uint8_t>, 2> reserved162{};
  Shared<std::int32_t> reserved164{3};
  Shared<std::uint8_t> bFreeRun{0};
  std::array<Shared<std::uint8_t>, 135> reserved169{};
};

static_assert(std::is_standard_layout_v<PadLFO> && sizeof(PadLFO) == 304);
static_assert(offsetof(PadLFO, bLfoOpen) == 0 && offsetof(PadLFO, reserved1) == 1);
static_assert(offsetof(PadLFO, graphOut) == 4 && offsetof(PadLFO, graphWarp) == 52);
static_assert(offsetof(PadLFO, rate) == 104 && offsetof(PadLFO, pwm) == 108 && offsetof(PadLFO, swing) == 112);
static_assert(offsetof(PadLFO, depthPan) == 116 && offsetof(PadLFO, depthCut) == 120);
static_assert(offsetof(PadLFO, depthVol) == 124 && offsetof(PadLFO, depthRes) == 128);
static_assert(offsetof(PadLFO, reserved132) == 132 && offsetof(PadLFO, depthKnob) == 140);
static_assert(offsetof(PadLFO, depthVar) == 144 && offsetof(PadLFO, cyclePos) == 152);
static_assert(offsetof(PadLFO, phase) == 156 && offsetof(PadLFO, bTriplet) == 160);
static_assert(offsetof(PadLFO, bDotted) == 161 && offsetof(PadLFO, reserved164) == 164);
static_assert(offsetof(PadLFO, bFreeRun) == 168 && offsetof(PadLFO, reserved169) == 169);
