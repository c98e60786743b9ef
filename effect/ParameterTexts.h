// What hosts and the editor show of the parameters: one row a number, with the text of the present value and that of a
// value which is passed in. The words are part of what users know. Where the two differ, as a point's height does or
// the filter type, hosts know both: neither follows the other.
//
// Any value has a text of at most 23 characters: what is no number or lies beyond a table reads "Huge!" or "??", or as
// the nearest value.
#pragma once

#include <array>

class LfoDSP;

// The beat rates, longest first, by the step of `rateStep`: "t" is a triplet, "." dotted. Steps above have no length
// that musicians name; they read "fast".
inline constexpr std::array<const char*, 39> LFOTimes = {
    "16 bar",  "12 bar", "8 bar t", "8 bar",  "6 bar",  "4bar t",  "4 bar",  "3 bar",  "2bar t", "2 bar",
    "1.5 bar", "bar t",  "bar",     "1/2.",   "1/2 t",  "1/2",     "1/4.",   "1/4 t",  "1/4",    "1/8.",
    "1/8 t",   "1/8",    "1/16.",   "1/16 t", "1/16",   "1/32.",   "1/32 t", "1/32",   "1/48.",  "1/48 t",
    "1/64",    "1/64.",  "1/64 t",  "1/128",  "1/128.", "1/128 t", "1/256",  "1/256.", "1/256 t"};

// [any] Null functions write nothing: the parameter has no such text.
struct ParameterTexts {
  void (*present)(const LfoDSP& effect, int index, char* text) = nullptr;
  void (*ofValue)(const LfoDSP& effect, int index, float value, char* text) = nullptr;
};

// Null for an index outside the parameters.
[[nodiscard]] const ParameterTexts* parameterTexts(int index) noexcept;
