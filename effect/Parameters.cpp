// SPDX-License-Identifier: MIT
// The host's view of the parameter table.
#include <cmath>
#include <cstring>

#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"

using namespace model;

void LfoDSP::setParameter(VstInt32 index, float value) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  if (row && row->set && std::isfinite(value)) row->set(*this, index, value);
}

float LfoDSP::getParameter(VstInt32 index) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  return row && row->get ? row->get(*this, index) : 0.0f;
}

void LfoDSP::getParameterName(VstInt32 index, char* text) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  if (row && row->name[0]) std::strcpy(text, row->name.data());
}

void LfoDSP::getParameterLabel(VstInt32 index, char* label) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  std::strcpy(label, row ? row->label : effect::ParameterRow{}.label);
}

void LfoDSP::getParameterDisplay(VstInt32 index, char* text) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  if (row && row->text) row->text(*this, index, text);
}

bool LfoDSP::string2parameter(VstInt32 index, char* text) {
  constexpr std::size_t kLongestText = 64;  // of a sane host
  const effect::ParameterRow* const row = effect::parameterRow(index);
  if (!row || !row->read || !text) return false;
  const std::optional<float> value = row->read(*this, index, {text, strnlen(text, kLongestText)});
  if (value) setParameter(index, *value);
  return value.has_value();
}

void LfoDSP::convertParameterValueToString(int index, float value, char* text) {
  const effect::ParameterRow* const row = effect::parameterRow(index);
  if (row && row->textOf) row->textOf(*this, index, value, text);
}

// Before there is a filter, "Var" has a word of its own and everything else no text.
void LfoDSP::writeFilterText(long entry, float type, char* text) const noexcept {
  if (textFilter_) {
    textFilter_->getParamInInfo(entry, type, text);
  } else if (entry == filters::kVar) {
    std::strcpy(text, "init");
  }
}
