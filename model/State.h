// SPDX-License-Identifier: MIT
// All that a project stores of the effect, as plain values: what chunks and presets are read into and written from.
//
// The fields have the names and the defaults of the effect's own, the b of its booleans included, and `preset show`
// lists them so; a fresh State is the state of a fresh effect.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "model/Graph.h"
#include "model/WarpTable.h"

namespace model {

// The version that is written: 1.2401, the last one that a reader of stored states has to know.
inline constexpr float kStateVersion = std::bit_cast<float>(0x3F9EBB99u);

// Of the window, in pixels.
inline constexpr std::int16_t kUsualEditorWidth = 708;
inline constexpr std::int16_t kUsualEditorHeight = 343;
inline constexpr int kLastFilterType = 92;  // of the list that `filterType` goes over from 0 to 1

template <class T>
using PerGraph = std::array<T, kGraphs>;

template <class T>
[[nodiscard]] constexpr PerGraph<T> onEveryGraph(const T& value) noexcept {
  PerGraph<T> all{};
  all.fill(value);
  return all;
}

using Slots = std::array<double, kStoredSlots>;

[[nodiscard]] constexpr Slots storedSlots(const std::array<double, kGraphSlots>& values) noexcept {
  Slots slots{};
  for (std::size_t i = 0; i < slots.size(); ++i) slots[i] = values[i];
  return slots;
}

struct State {
  // The graphs; see GraphPoints.
  PerGraph<Slots> envCurve = onEveryGraph(storedSlots(freshGraph().curve));
  PerGraph<Slots> envX = onEveryGraph(storedSlots(freshGraph().x));
  PerGraph<Slots> envY = onEveryGraph(storedSlots(freshGraph().y));
  PerGraph<std::int8_t> envNumPoints = onEveryGraph<std::int8_t>(2);

  // The LFO's settings block. Its reserved bytes have no meaning, yet travel with it.
  std::uint8_t bLfoOpen = 1;
  std::array<std::uint8_t, 3> reserved1{};
  PerGraph<float> graphOut{};
  PerGraph<float> graphWarp = onEveryGraph(kWarpOne);
  std::array<std::uint8_t, 4> reserved100{};
  float rate = 0.5f;
  float pwm = 0.5f;
  float swing = 0.5f;
  float depthPan = 0.5f;
  float depthCut = 0.5f;
  float depthVol = 0.5f;
  float depthRes = 0.5f;
  std::int32_t reserved132 = 3;
  std::array<std::uint8_t, 4> reserved136{};
  float depthKnob = 1.0f;
  float depthVar = 0.5f;
  std::array<std::uint8_t, 4> reserved148{};
  float cyclePos = 0.0f;
  float phase = 0.0f;
  std::uint8_t bTriplet = 1;
  std::uint8_t bDotted = 1;
  std::array<std::uint8_t, 2> reserved162{};
  std::int32_t reserved164 = 3;
  std::uint8_t bFreeRun = 0;
  std::array<std::uint8_t, 135> reserved169{};

  float filterType = 0.0f;
  float filterVar = 0.5f;
  float filterMix = 1.0f;
  float filterCutoff = 0.5f;
  float filterReso = 0.01f;
  float filterOn = 0.0f;
  float filterDrive = 0.0f;
  float lfoSmooth = 0.0f;
  float xoverFrequency = 0.5f;
  float gridSize = 0.45f;
  float timing = 0.5f;
  float version = kStateVersion;
  std::int8_t ccNumber = 0;
  std::int8_t currentGraph = 0;
  std::int8_t routeCut = 0;
  std::int8_t routeRes = 0;
  std::int8_t routeVol = 0;
  std::int8_t routePan = 0;
  std::int8_t routeVar = 0;
  bool bXoverOn = false;
  bool bXoverInvert = false;
  bool bAnchor = true;
  bool bRetrig = false;
  bool bOneShot = false;
  bool bGateMode = false;
  bool bVelToPwm = false;
  bool bNoteToRate = false;
  bool bNoteToCutoff = false;
  bool bScopeOn = false;
  std::int16_t editorWidth = kUsualEditorWidth;
  std::int16_t editorHeight = kUsualEditorHeight;

  bool operator==(const State&) const = default;
};

// One graph with all its slots; the one that is not stored is a fresh graph's.
[[nodiscard]] GraphPoints pointsOf(const State& state, int g) noexcept;
void setPoints(State& state, int g, const GraphPoints& points) noexcept;

}  // namespace model
