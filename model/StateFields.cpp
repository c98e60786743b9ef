#include "model/StateFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

namespace model {
namespace {

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
  [[nodiscard]] consteval Row is(int firstParameter) const {
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
    row.bKept = true;
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
constexpr auto kRows = std::to_array<Row>({
    row<&S::envCurve>("envCurve", {0}, {40}).within(0.0, 1.0),
    row<&S::envX>("envX", {6144}, {6184}).within(0.0, kGraphWidth),
    row<&S::envY>("envY", {12288}, {12328}).within(0.0, 1.0),
    lfo<&S::bLfoOpen>("bLfoOpen", 0),
    lfo<&S::reserved1>("reserved1", 1),
    lfo<&S::graphOut>("graphOut", 4),
    lfo<&S::graphWarp>("graphWarp", 52, 0.95f, 0.95f).within(0.0, 1.0).is(26),
    lfo<&S::reserved100>("reserved100", 100),
    lfo<&S::rate>("rate", 104).is(0),
    lfo<&S::pwm>("pwm", 108).is(3),
    lfo<&S::swing>("swing", 112).is(1),
    lfo<&S::depthPan>("depthPan", 116).is(7),
    lfo<&S::depthCut>("depthCut", 120).is(4),
    lfo<&S::depthVol>("depthVol", 124).is(6),
    lfo<&S::depthRes>("depthRes", 128).is(5),
    lfo<&S::reserved132>("reserved132", 132),
    lfo<&S::reserved136>("reserved136", 136),
    lfo<&S::depthKnob>("depthKnob", 140, 0.96f).is(38),
    lfo<&S::depthVar>("depthVar", 144, 0.99f).is(8),
    lfo<&S::reserved148>("reserved148", 148),
    lfo<&S::cyclePos>("cyclePos", 152).within(0.0, 1.0),
    lfo<&S::phase>("phase", 156).is(2),
    lfo<&S::bTriplet>("bTriplet", 160).is(11),
    lfo<&S::bDotted>("bDotted", 161).is(10),
    lfo<&S::reserved162>("reserved162", 162),
    lfo<&S::reserved164>("reserved164", 164),
    lfo<&S::bFreeRun>("bFreeRun", 168).is(9),
    lfo<&S::reserved169>("reserved169", 169),
    row<&S::filterType>("filterType", {18736, 0.98f}, {18784}).is(66).kept(),
    row<&S::filterVar>("filterVar", {18740, 0.98f}, {18788}).is(39).kept(),
    row<&S::filterMix>("filterMix", {18744, 0.98f}, {18792}).is(40).kept(),
    row<&S::xoverFrequency>("xoverFrequency", {18748, 1.15f}).is(69),
    row<&S::filterCutoff>("filterCutoff", {18752}, {16}).is(12),
    row<&S::filterReso>("filterReso", {18756}, {20}).is(13),
    row<&S::filterOn>("filterOn", {18760}, {24}).is(14),
    row<&S::lfoSmooth>("lfoSmooth", {18764, 0.94f}, {28, 0.94f}).is(16),
    row<&S::filterDrive>("filterDrive", {18768}, {32}).is(15),
    row<&S::version>("version", {18772}, {18804}),
    row<&S::gridSize>("gridSize", {18776, 0.91f}, {18808, 0.91f}).is(79),
    row<&S::timing>("timing", {18780, 1.12f}).is(41).kept(),
    row<&S::envNumPoints>("envNumPoints", {18784}, {0}).within(2, kStoredSlots),
    row<&S::ccNumber>("ccNumber", {18796}, {12}).is(80),
    row<&S::currentGraph>("currentGraph", {18797}, {13}).within(0, kLastGraph).is(78),
    row<&S::routeCut>("routeCut", {18798}, {18800}).within(0, kLastGraph).is(21),
    row<&S::routeRes>("routeRes", {18799}, {18801}).within(0, kLastGraph).is(22),
    row<&S::routeVol>("routeVol", {18800}, {18802}).within(0, kLastGraph).is(23),
    row<&S::routePan>("routePan", {18801}, {18803}).within(0, kLastGraph).is(24),
    row<&S::routeVar>("routeVar", {18802, 0.99f}).within(0, kLastGraph).is(25),
    row<&S::bXoverOn>("bXoverOn", {18803, 1.15f}).is(67),
    row<&S::bXoverInvert>("bXoverInvert", {18804, 1.15f}).is(68),
    row<&S::bAnchor>("bAnchor", {18808, 0.93f}, {18812, 0.93f}).is(74),
    row<&S::bRetrig>("bRetrig", {18809}, {18472}).is(17),
    row<&S::bGateMode>("bGateMode", {18810, 0.97f}, {18473}).is(18),
    row<&S::bVelToPwm>("bVelToPwm", {18811}, {18474}).is(19),
    row<&S::bNoteToRate>("bNoteToRate", {18812}, {18475}).is(20),
    row<&S::bScopeOn>("bScopeOn", {18813, 1.1f}).is(102),
    row<&S::bNoteToCutoff>("bNoteToCutoff", {18814, 1.11f}).is(73),
    row<&S::bOneShot>("bOneShot", {18815, 1.14f}).is(17),
    row<&S::editorWidth>("editorWidth", {18816, 1.21f}).kept(),
    row<&S::editorHeight>("editorHeight", {18818, 1.21f}).kept(),
});

// The rows without what only their making needs.
constexpr auto kFields = [] {
  std::array<Field, kRows.size()> fields{};
  std::copy(kRows.begin(), kRows.end(), fields.begin());
  return fields;
}();

}  // namespace

std::size_t widthOf(FieldType type) noexcept {
  switch (type) {
    case FieldType::i16:
      return 2;
    case FieldType::i32:
    case FieldType::f32:
      return 4;
    case FieldType::f64:
      return 8;
    case FieldType::flag:
    case FieldType::i8:
    case FieldType::u8:
      break;
  }
  return 1;
}

std::span<const Field> stateFields() noexcept { return kFields; }

const Field* findField(std::string_view name) noexcept {
  const auto found = std::ranges::find(kFields, name, &Field::name);
  return found == kFields.end() ? nullptr : &*found;
}

double defaultOf(const Field& field, int element) noexcept {
  static const State fresh;
  return field.get(fresh, element);
}

void store(State& state, const Field& field, int element, double value) noexcept {
  if (!std::isfinite(value)) value = defaultOf(field, element);
  field.put(state, element, std::clamp(value, field.low, field.high));
}

}  // namespace model
