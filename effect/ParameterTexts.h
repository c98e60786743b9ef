// SPDX-License-Identifier: MIT
// What hosts and the editor show of the parameters, and the way back from such a text: forms of a single value, and the
// texts that more than one field goes into. The parameter table names them.
//
// The words are part of what users know. Where the text of the present value and that of a value which is passed in
// differ, as a point's height does or the filter type, hosts know both: neither follows the other.
//
// Any value has a text of at most 23 characters: NaN and what lies beyond a table read "Huge!" or "??", or as the
// nearest value. Reading takes the text of a present value, in any case, with or without its unit and blanks round
// it, and answers with a value from 0 to 1 that shows it, or nothing.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "effect/Fields.h"

// The beat rates, longest first, by the step of `rateStep`: "t" is a triplet, "." dotted. Steps above have no length
// that musicians name; they read "fast".
inline constexpr std::array<const char*, 39> LFOTimes = {
    "16 bar",  "12 bar", "8 bar t", "8 bar",  "6 bar",  "4bar t",  "4 bar",  "3 bar",  "2bar t", "2 bar",
    "1.5 bar", "bar t",  "bar",     "1/2.",   "1/2 t",  "1/2",     "1/4.",   "1/4 t",  "1/4",    "1/8.",
    "1/8 t",   "1/8",    "1/16.",   "1/16 t", "1/16",   "1/32.",   "1/32 t", "1/32",   "1/48.",  "1/48 t",
    "1/64",    "1/64.",  "1/64 t",  "1/128",  "1/128.", "1/128 t", "1/256",  "1/256.", "1/256 t"};

namespace effect {

// --- Forms: what one field's value, or a parameter's value that is passed in, reads as

struct Form {
  void (*present)(float field, char* text);
  void (*ofValue)(float value, char* text);
  std::optional<float> (*read)(std::string_view text);
};

extern const Form kRoundTheMiddle, kPulseWidth;       // -100 to 100
extern const Form kDegrees;                           // 0 to 360
extern const Form kPercent, kNearestPercent;          // 0 to 100
extern const Form kResonance;                         // 0 to 100
extern const Form kOnOff, kYesNo, kFilterOnOff;       // words of a switch
extern const Form kFreeOrBeat;                        // the field says the opposite of the parameter
extern const Form kHighOrLow;                         // the band that is processed
extern const Form kGraphNumber, kCurrentGraphNumber;  // 1 to 12
extern const Form kWarpName;                          // "1/16" to "16x"
extern const Form kOffsetSamples;                     // -4096 to 4096
extern const Form kCrossoverHz;                       // 20 to 20000
extern const Form kGridCells;                         // 2 to 16

// In the shape that rows have.
template <auto Field, const Form& Words>
void textOfField(const LfoDSP& effect, int, char* text) {
  Words.present(static_cast<float>(field<Field>(effect)), text);
}

template <const Form& Words>
void textOfValue(const LfoDSP&, int, float value, char* text) {
  Words.ofValue(value, text);
}

template <const Form& Words>
std::optional<float> readByForm(const LfoDSP&, int, std::string_view text) {
  return Words.read(text);
}

// --- Texts that more than one field goes into

void rateText(const LfoDSP& effect, int index, char* text);
void rateTextOf(const LfoDSP& effect, int index, float value, char* text);
std::optional<float> readRate(const LfoDSP& effect, int index, std::string_view text);

void cutoffText(const LfoDSP& effect, int index, char* text);
void cutoffTextOf(const LfoDSP& effect, int index, float value, char* text);
std::optional<float> readCutoff(const LfoDSP& effect, int index, std::string_view text);

void retriggerText(const LfoDSP& effect, int index, char* text);
void retriggerTextOf(const LfoDSP& effect, int index, float value, char* text);
std::optional<float> readRetrigger(const LfoDSP& effect, int index, std::string_view text);

// A value passed in counts for nothing here.
void controllerText(const LfoDSP& effect, int index, char* text);
void controllerTextOf(const LfoDSP& effect, int index, float value, char* text);
std::optional<float> readController(const LfoDSP& effect, int index, std::string_view text);

void warpText(const LfoDSP& effect, int index, char* text);
void currentWarpText(const LfoDSP& effect, int index, char* text);

void pointYText(const LfoDSP& effect, int index, char* text);
void pointYTextOf(const LfoDSP& effect, int index, float value, char* text);  // from the top
void pointXText(const LfoDSP& effect, int index, char* text);
void pointCurveText(const LfoDSP& effect, int index, char* text);

// --- Texts that the filter gives; where a value is passed in, the number of a type stands for the type

void filterTypeText(const LfoDSP& effect, int index, char* text);
void filterTypeTextOf(const LfoDSP& effect, int index, float type, char* text);
std::optional<float> readFilterType(const LfoDSP& effect, int index, std::string_view text);

void varNameText(const LfoDSP& effect, int index, char* text);
void varNameTextOf(const LfoDSP& effect, int index, float type, char* text);  // 96 types fill the range

void scratchTypeText(const LfoDSP& effect, int index, char* text);
void scratchTypeTextOf(const LfoDSP& effect, int index, float value, char* text);

}  // namespace effect
