// The host's view of the parameter table, and its texts.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "effect/LfoDSP.h"
#include "effect/ParameterTable.h"

namespace {

constexpr std::size_t kTextBytes = 8;  // the shortest buffer that hosts give, closing zero included

bool isPoint(int index) { return index >= kPoint1 && index < kPoint1 + kAutomatedPoints; }

// Points read as a percentage, as their label says.
void writeValue(int index, float value, char* text) {
  if (isPoint(index)) value *= 100.0f;
  const bool bFits = value > -100.0f && value < 1000.0f;
  std::snprintf(text, kTextBytes, bFits ? "%.3f" : "%.0e", static_cast<double>(value));
}

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

void LfoDSP::getParameterDisplay(VstInt32 index, char* text) { writeValue(index, getParameter(index), text); }

void LfoDSP::convertParameterValueToString(int index, float value, char* text) { writeValue(index, value, text); }
