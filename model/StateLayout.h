// SPDX-License-Identifier: MIT
// The layout of the stored bytes: one row a field. Internal to whoever needs the rows at compile time; all others ask
// `stateFields`.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "model/ParameterIndex.h"
#include "model/StateFields.h"

namespace model {
namespace layout {

// The values of a member one by one, however its arrays are nested.
template <class T>
struct Cells {
  using Type = T;
  static constexpr int kCount = 1;
  static auto& at(auto& cell, int) { return cell; }
};

template <class T, std::size_t N>
struct Cells<std::array<T, N>> {
  using Type = typename Cells<T>::Type;
  static constexpr int kInner = Cells<T>::kCount;
  static constexpr int kCount = static_cast<int>(N) * kInner;
  static auto& at(auto& cells, int i) { return Cells<T>::at(cells[static_cast<std::size_t>(i / kInner)], i % kInner); }
};

template <class T>
consteval FieldType typeOf() {
  if (std::is_same_v<T, bool>) return FieldType::flag;
  if (std::is_same_v<T, std::int8_t>) return FieldType::i8;
  if (std::is_same_v<T, std::uint8_t>) return FieldType::u8;
  if (std::is_same_v<T, std::int16_t>) return FieldType::i16;
  if (std::is_same_v<T, std::int32_t>) return FieldType::i32;
  return std::is_same_v<T, float> ? FieldType::f32 : FieldType::f64;
}

// `value` is finite; whole numbers lose their fraction.
template <class T>
T narrowed(double value) noexcept {
  if constexpr (std::is_same_v<T, bool>) {
    return value != 0.0;
  } else {
    using Limits = std::numeric_limits<T>;
    return static_cast<T>(std::clamp(value, static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max())));
  }
}

template <auto Member>
using MemberCells = Cells<std::remove_cvref_t<decltype(std::declval<State>().*Member)>>;

template <auto Member>
double getCell(const State& state, int element) {
  return static_cast<double>(MemberCells<Member>::at(state.*Member, element));
}

template <auto Member>
void putCell(State& state, int element, double value) {
  MemberCells<Member>::at(state.*Member, element) = narrowed<typename MemberCells<Member>::Type>(value);
}

// A row and what can be said of it besides.
struct Row : Field {
  [[nodiscard]] consteval Row shownBy(int firstParameter) const {
    Row row = *this;
    row.parameter = firstParameter;
    return row;
  }
  [[nodiscard]] consteval Row within(double lowest, double highest) const {
    Row row = *this;
    row.low = lowest;
    row.high = highest;
    return row;
  }
  [[nodiscard]] consteval Row kept() const {
    Row row = *this;
    row.staysIfAbsent = true;
    return row;
  }
};

template <auto Member>
consteval Row row(std::string_view name, Place now, Place old = {}) {
  using All = MemberCells<Member>;
  return {{name, typeOf<typename All::Type>(), All::kCount, now, old, getCell<Member>, putCell<Member>}};
}

// A row of the LFO's settings block, which both layouts have, whole: `offset` is the place in the block.
template <auto Member>
consteval Row lfo(std::string_view name, int offset, float since = 0.0f, float sinceOld = 0.0f) {
  constexpr int kBlock = 18432, kOldBlock = 18480;
  return row<Member>(name, {kBlock + offset, since}, {kOldBlock + offset, sinceOld});
}

using S = State;
inline constexpr auto kRows = std::to_array<Row>({
    row<&S::envCurve>("envCurve", {0}, {40}).within(0.0, 1.0),
    row<&S::envX>("envX", {6144}, {6184}).within(0.0, kGraphWidth),
    row<&S::envY>("envY", {12288}, {12328}).within(0.0, 1.0),
    lfo<&S::bLfoOpen>("bLfoOpen", 0),
    lfo<&S::reserved1>("reserved1", 1),
    lfo<&S::graphOut>("graphOut", 4),
    lfo<&S::graphWarp>("graphWarp", 52, 0.95f, 0.95f).within(0.0, 1.0).shownBy(kWarp1),
    lfo<&S::reserved100>("reserved100", 100),
    lfo<&S::rate>("rate", 104).shownBy(kRate),
    lfo<&S::pwm>("pwm", 108).shownBy(kPwm),
    lfo<&S::swing>("swing", 112).shownBy(kSwing),
    lfo<&S::depthPan>("depthPan", 116).shownBy(kDepthPan),
    lfo<&S::depthCut>("depthCut", 120).shownBy(kDepthCut),
    lfo<&S::depthVol>("depthVol", 124).shownBy(kDepthVol),
    lfo<&S::depthRes>("depthRes", 128).shownBy(kDepthRes),
    lfo<&S::reserved132>("reserved132", 132),
    lfo<&S::reserved136>("reserved136", 136),
    lfo<&S::depthKnob>("depthKnob", 140, 0.96f).shownBy(kDepthKnob),
    lfo<&S::depthVar>("depthVar", 144, 0.99f).shownBy(kDepthVar),
    lfo<&S::reserved148>("reserved148", 148),
    lfo<&S::cyclePos>("cyclePos", 152).within(0.0, 1.0),
    lfo<&S::phase>("phase", 156).shownBy(kPhase),
    lfo<&S::bTriplet>("bTriplet", 160).shownBy(kTriplet),
    lfo<&S::bDotted>("bDotted", 161).shownBy(kDotted),
    lfo<&S::reserved162>("reserved162", 162),
    lfo<&S::reserved164>("reserved164", 164),
    lfo<&S::bFreeRun>("bFreeRun", 168).shownBy(kBpmSync),
    lfo<&S::reserved169>("reserved169", 169),
    row<&S::filterType>("filterType", {18736, 0.98f}, {18784}).shownBy(kFilterType).kept(),
    row<&S::filterVar>("filterVar", {18740, 0.98f}, {18788}).shownBy(kFilterVar).kept(),
    row<&S::filterMix>("filterMix", {18744, 0.98f}, {18792}).shownBy(kFilterMix).kept(),
    row<&S::xoverFrequency>("xoverFrequency", {18748, 1.15f}).shownBy(kXoverFrequency),
    row<&S::filterCutoff>("filterCutoff", {18752}, {16}).shownBy(kFilterCutoff),
    row<&S::filterReso>("filterReso", {18756}, {20}).shownBy(kFilterReso),
    row<&S::filterOn>("filterOn", {18760}, {24}).shownBy(kFilterOn),
    row<&S::lfoSmooth>("lfoSmooth", {18764, 0.94f}, {28, 0.94f}).shownBy(kSmooth),
    row<&S::filterDrive>("filterDrive", {18768}, {32}).shownBy(kFilterDrive),
    row<&S::version>("version", {18772}, {18804}),
    row<&S::gridSize>("gridSize", {18776, 0.91f}, {18808, 0.91f}).shownBy(kGridSize),
    row<&S::timing>("timing", {18780, 1.12f}).shownBy(kTiming).kept(),
    row<&S::envNumPoints>("envNumPoints", {18784}, {0}).within(2, kStoredSlots),
    row<&S::ccNumber>("ccNumber", {18796}, {12}).shownBy(kCcNumber),
    row<&S::currentGraph>("currentGraph", {18797}, {13}).within(0, kLastGraph).shownBy(kCurrentGraph),
    row<&S::routeCut>("routeCut", {18798}, {18800}).within(0, kLastGraph).shownBy(kRouteCut),
    row<&S::routeRes>("routeRes", {18799}, {18801}).within(0, kLastGraph).shownBy(kRouteRes),
    row<&S::routeVol>("routeVol", {18800}, {18802}).within(0, kLastGraph).shownBy(kRouteVol),
    row<&S::routePan>("routePan", {18801}, {18803}).within(0, kLastGraph).shownBy(kRoutePan),
    row<&S::routeVar>("routeVar", {18802, 0.99f}).within(0, kLastGraph).shownBy(kRouteVar),
    row<&S::bXoverOn>("bXoverOn", {18803, 1.15f}).shownBy(kXoverOn),
    row<&S::bXoverInvert>("bXoverInvert", {18804, 1.15f}).shownBy(kXoverInvert),
    row<&S::bAnchor>("bAnchor", {18808, 0.93f}, {18812, 0.93f}).shownBy(kAnchor),
    row<&S::bRetrig>("bRetrig", {18809}, {18472}).shownBy(kRetrigger),
    row<&S::bGateMode>("bGateMode", {18810, 0.97f}, {18473}).shownBy(kGateMode),
    row<&S::bVelToPwm>("bVelToPwm", {18811}, {18474}).shownBy(kVelToPwm),
    row<&S::bNoteToRate>("bNoteToRate", {18812}, {18475}).shownBy(kNoteToRate),
    row<&S::bScopeOn>("bScopeOn", {18813, 1.1f}).shownBy(kNoticeScope),
    row<&S::bNoteToCutoff>("bNoteToCutoff", {18814, 1.11f}).shownBy(kNoteToCutoff),
    row<&S::bOneShot>("bOneShot", {18815, 1.14f}).shownBy(kRetrigger),
    row<&S::editorWidth>("editorWidth", {18816, 1.21f}).kept(),
    row<&S::editorHeight>("editorHeight", {18818, 1.21f}).kept(),
});

}  // namespace layout

// The rows without what only their making needs.
inline constexpr auto kStateFields = [] {
  std::array<Field, layout::kRows.size()> fields{};
  std::copy(layout::kRows.begin(), layout::kRows.end(), fields.begin());
  return fields;
}();

// The field that the parameter shows, the first one if there are two; null for none.
[[nodiscard]] consteval const Field* fieldShownBy(int parameter) {
  for (const Field& field : kStateFields) {
    const int first = field.parameter;
    if (first >= 0 && parameter >= first && parameter < first + field.count) return &field;
  }
  return nullptr;
}

}  // namespace model
