// SPDX-License-Identifier: MIT
// From what people type to parameters and their values.
#include <cmath>
#include <fmt/core.h>
#include <gtest/gtest.h>

#include "cli/values/ParameterNames.h"
#include "cli/values/ValueTexts.h"

namespace modrift::cli {
namespace {

std::string steps(float v) {
  constexpr const char* kNames[] = {"Off ", "Low 6", "High", "low 6"};
  return kNames[static_cast<int>(v * 3.0f + 0.5f)];
}
std::string hertz(float v) { return fmt::format("{:.3f} Hz", std::pow(static_cast<double>(v), 4.0) * 440.0); }
std::string bothEndsOff(float v) { return v < 0.1f || v > 0.9f ? "off" : fmt::format("{:4}", static_cast<int>(v * 8)); }
std::string onlyAtOne(float v) { return v == 1.0f ? "Beat" : "Free"; }
std::string silent(float) { return ""; }

struct Row {
  std::string (*textAt)(float);
  const char* wanted;
  double expected;  // below 0: a complaint
  const char* complaint = "";
};

TEST(ValueOfText, TakesEndsMiddlesAndNumbersBetween) {
  const Row kRows[] = {
      {steps, "Off", 0.0},
      {steps, "High", 2.0 / 3},
      {steps, "Low 6", 1.0 / 3},
      {steps, " low 6 ", 1.0},
      {steps, "HIGH", 2.0 / 3},
      {steps, "LOW 6", -1.0, "'LOW 6' stands for several ranges: 0.1667 to 0.4998, 0.8335 to 1"},
      {steps, "Low 7", -1.0, "not 'Low 7'; near it are 'Low 6', 'low 6'"},
      {hertz, "440 Hz", 1.0},
      {hertz, "2.000 hz", std::pow(2.0 / 440.0, 0.25)},
      {hertz, "27.5Hz", 0.5},
      {hertz, "441 Hz", -1.0, "near it are '440.000 Hz'"},
      {hertz, "27.50005 Hz", -1.0, "near it are '27.500 Hz'"},
      {hertz, "2 bar", -1.0, "not '2 bar'"},
      {bothEndsOff, "off", -1.0, "several ranges: 0 to 0.09985, 0.9001 to 1"},
      {bothEndsOff, "4", 0.5625},
      {onlyAtOne, "Beat", 1.0},
      {onlyAtOne, "Free", 0.0},
      {silent, "x", -1.0, "a number was expected, not 'x'"},
  };
  for (const Row& row : kRows) {
    const auto found = valueOfText(row.textAt, row.wanted);
    const auto* const value = std::get_if<float>(&found);
    EXPECT_EQ(value != nullptr, row.expected >= 0.0) << row.wanted;
    if (value != nullptr) {
      EXPECT_NEAR(*value, row.expected, 2e-4) << row.wanted;
    } else {
      EXPECT_NE(std::get<std::string>(found).find(row.complaint), std::string::npos) << std::get<std::string>(found);
    }
  }
}

TEST(FindParameter, PrefersTheExactNameThenAnyCaseThenIndexThenBeginning) {
  const std::vector<std::string> names = {"Rate", "rate", ">vol", "Warp 01", "Warp 02", "F.On Off", "6 dB  ", "2"};
  const std::pair<const char*, const char*> kRows[] = {
      {"rate", "1"},
      {"f.on off", "5"},
      {"2", "7"},  // its name, though there is an index 2
      {"0", "0"},
      {"f.", "5"},
      {" 6 dB ", "6"},
      {"RATE", "one parameter was expected, but 'RATE' may be Rate (0), rate (1)"},
      {"war", "one parameter was expected, but 'war' may be Warp 01 (3), Warp 02 (4)"},
      {"8", "an index from 0 to 7 was expected, not 8"},
      {"x", "a parameter of the plug-in was expected, not 'x' ('modrift info' lists them)"},
      {"", "a parameter's name or index was expected"}};
  for (const auto& [typed, expected] : kRows) {
    const auto found = findParameter(names, typed);
    const auto* const index = std::get_if<int>(&found);
    EXPECT_EQ(index ? std::to_string(*index) : std::get<std::string>(found), expected);
  }
}

TEST(TypedValue, IsANumberWhereItCanBeOne) {
  EXPECT_EQ(parseTypedValue(" +0.5 ")->number, 0.5f);
  EXPECT_EQ(parseTypedValue("\"0.5\"")->text, "0.5");
  EXPECT_EQ(parseTypedValue(" 1/8. ")->text, "1/8.");
  for (const char* const wrong : {"", " ", "nan", "-inf", "1e99", "1e999", "\" \""})
    EXPECT_FALSE(parseTypedValue(wrong));
}

}  // namespace
}  // namespace modrift::cli
