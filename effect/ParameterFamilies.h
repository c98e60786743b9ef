// SPDX-License-Identifier: MIT
// What most parameters have in common: rows by the kind of their field. Internal to the parameter table.
//
//   value<&LfoDSP::filterDrive, kPercent>(kFilterDrive, "F.Drive")
//
// sets and reads back the field, shows it as a percentage, reads percentages, and keeps it in the stored state if the
// state has it. What a parameter does otherwise is said behind it: `.sets(setRate)`.
#pragma once

#include <algorithm>
#include <string_view>

#include "effect/Fields.h"
#include "effect/LfoDSP.h"
#include "effect/ParameterSetters.h"
#include "effect/ParameterTable.h"
#include "effect/ParameterTexts.h"

namespace effect {

using namespace model;

// --- What rows are made of

template <auto Field>
void setValue(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value;
}

template <auto Field>
float getValue(const LfoDSP& effect, int) {
  return field<Field>(effect);
}

template <auto Field>
void setClockValue(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value;
  tellClock(effect);
}

template <auto Field>
void setSwitch(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value != 0.0f;
}

template <auto Field>
float getSwitch(const LfoDSP& effect, int) {
  return field<Field>(effect) ? 1.0f : 0.0f;
}

template <auto Field>
void setClockSwitch(LfoDSP& effect, int, float value) {
  field<Field>(effect) = value != 0.0f;
  repeatRate(effect);
  tellClock(effect);
}

template <auto Field>
void setGraphNumber(LfoDSP& effect, int, float value) {
  field<Field>(effect) = static_cast<std::int8_t>(nearestGraph(value));
}

template <auto Field>
float getGraphNumber(const LfoDSP& effect, int) {
  return valueOfGraph(field<Field>(effect));
}

template <auto Field>
void stepGraphNumber(LfoDSP& effect, int index, float value) {
  const int stepped = std::clamp(
      field<Field>(effect) + std::clamp(integerPart(static_cast<double>(value)), -kGraphs, kGraphs), 0, kLastGraph);
  effect.setParameter(kRouteCut + (index - kStepRouteCut), valueOfGraph(stepped));
}

template <class T>
T valueOf(const Shared<T>& cell) noexcept {
  return cell;
}

template <auto Field>
double loadField(const LfoDSP& effect, int) {
  return static_cast<double>(valueOf(field<Field>(effect)));
}

// Stored fields have the live ones' types, so that every value fits.
template <auto Field>
void storeField(LfoDSP& effect, int, double value) {
  field<Field>(effect) = static_cast<decltype(valueOf(field<Field>(effect)))>(value);
}

// --- A row in the making

struct Row : ParameterRow {
  int count = 1;  // parameters of a family, and how far their numbers are apart
  int apart = 1;
  bool keepsField = false;  // it has `load` and `store`; sanitizers don't let compilers ask functions' addresses

  [[nodiscard]] consteval Row sets(decltype(set) function) const {
    Row row = *this;
    row.set = function;
    return row;
  }
  [[nodiscard]] consteval Row gets(decltype(get) function) const {
    Row row = *this;
    row.get = function;
    return row;
  }
  [[nodiscard]] consteval Row says(decltype(text) present, decltype(textOf) ofValue, decltype(read) reader) const {
    Row row = *this;
    row.text = present;
    row.textOf = ofValue;
    row.read = reader;
    return row;
  }
  // By a form: the text of the field, of which the parameter may show another one than it sets.
  template <auto Field, const Form& Words>
  [[nodiscard]] consteval Row shows() const {
    return says(textOfField<Field, Words>, textOfValue<Words>, readByForm<Words>);
  }
  [[nodiscard]] consteval Row keeps(decltype(load) loader, decltype(store) storer) const {
    Row row = *this;
    row.load = loader;
    row.store = storer;
    row.keepsField = true;
    return row;
  }
  template <auto Field>
  [[nodiscard]] consteval Row keeps() const {
    return keeps(loadField<Field>, storeField<Field>);
  }
  [[nodiscard]] consteval Row saysNothing() const { return says(nullptr, nullptr, nullptr); }
  [[nodiscard]] consteval Row labelled(const char* unit) const {
    Row row = *this;
    row.label = unit;
    return row;
  }
  // A family of so many, whose names count on from the first one's: "Warp 01" to "Warp 12".
  [[nodiscard]] consteval Row times(int members, int numbersApart = 1) const {
    Row row = *this;
    row.count = members;
    row.apart = numbersApart;
    return row;
  }
};

consteval Row named(int index, std::string_view name = "") {
  Row row;
  row.index = index;
  if (name.size() >= row.name.size()) throw "too long a name";  // which then does not compile
  std::copy(name.begin(), name.end(), row.name.begin());
  return row;
}

consteval Row command(int index, decltype(Row::set) act) { return named(index).sets(act); }

// A field with the text of a form, kept.
template <auto Field, const Form& Words>
consteval Row shown(int index, std::string_view name) {
  return named(index, name).template keeps<Field>().template shows<Field, Words>();
}

// --- The families

template <auto Field, const Form& Words>
consteval Row value(int index, std::string_view name = "") {
  return shown<Field, Words>(index, name).sets(setValue<Field>).gets(getValue<Field>);
}

// With a text that more goes into, or none.
template <auto Field>
consteval Row value(int index, std::string_view name = "") {
  return named(index, name).template keeps<Field>().sets(setValue<Field>).gets(getValue<Field>);
}

// The editor hears of it as of a change of the clock.
template <auto Field, const Form& Words>
consteval Row clockValue(int index, std::string_view name) {
  return value<Field, Words>(index, name).sets(setClockValue<Field>);
}

template <auto Field, const Form& Words = kOnOff>
consteval Row onOff(int index, std::string_view name = "") {
  return shown<Field, Words>(index, name).sets(setSwitch<Field>).gets(getSwitch<Field>);
}

template <auto Field>
consteval Row clockSwitch(int index, std::string_view name) {
  return onOff<Field, kYesNo>(index, name).sets(setClockSwitch<Field>);
}

// The number of a graph.
template <auto Field, const Form& Words = kGraphNumber>
consteval Row route(int index, std::string_view name) {
  return shown<Field, Words>(index, name).sets(setGraphNumber<Field>).gets(getGraphNumber<Field>);
}

template <auto Field>
consteval Row routeStep(int index) {
  return command(index, stepGraphNumber<Field>);
}

}  // namespace effect
