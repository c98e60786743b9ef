// The host's view of the parameter tables.
#include <cmath>
#include <cstring>

#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"
#include "effect/ParameterTexts.h"

namespace {

bool isPoint(int index) { return index >= kPoint1 && index < kPoint1 + kAutomatedPoints; }

}  // namespace

void LfoDSP::setParameter(VstInt32 index, float value) {
  const ParameterRow* const row = parameterRow(index);
  if (row && row->set && std::isfinite(value)) row->set(*this, index, value);
}

float LfoDSP::getParameter(VstInt32 index) {
  const ParameterRow* const row = parameterRow(index);
  return row && row->get ? row->get(*this, index) : 0.0f;
}

void LfoDSP::getParameterName(VstInt32 index, char* text) {
  const ParameterRow* const row = parameterRow(index);
  if (row && row->name[0]) std::strcpy(text, row->name.data());
}

void LfoDSP::getParameterLabel(VstInt32 index, char* label) { std::strcpy(label, isPoint(index) ? "%" : "  "); }

void LfoDSP::getParameterDisplay(VstInt32 index, char* text) {
  const ParameterTexts* const row = parameterTexts(index);
  if (row && row->present) row->present(*this, index, text);
}

void LfoDSP::convertParameterValueToString(int index, float value, char* text) {
  const ParameterTexts* const row = parameterTexts(index);
  if (row && row->ofValue) row->ofValue(*this, index, value, text);
}

// Before there is a filter, "Var" has a word of its own and everything else no text.
void LfoDSP::writeFilterText(long entry, float type, char* text) const noexcept {
  if (textFilter_) {
    textFilter_->getParamInInfo(entry, type, text);
  } else if (entry == filters::kVar) {
    std::strcpy(text, "init");
  }
}
