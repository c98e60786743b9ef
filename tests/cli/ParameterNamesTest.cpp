#include <gtest/gtest.h>
#include <vector>

#include "cli/values/ParameterNames.h"

namespace modrift::cli {
namespace {

const std::vector<std::string> kNames = {"Rate", "rate", ">vol", "Warp 01", "Warp 02", "F.On Off", "6 dB  ", "2"};

// What was found: an index in digits, or the complaint.
std::string found(std::string_view typed) {
  const auto result = findParameter(kNames, typed);
  const auto* const index = std::get_if<int>(&result);
  return index ? std::to_string(*index) : std::get<std::string>(result);
}

TEST(FindParameter, PrefersTheExactNameThenAnyCaseThenIndexThenBeginning) {
  EXPECT_EQ(found("rate"), "1");
  EXPECT_EQ(found("f.on off"), "5");
  EXPECT_EQ(found("2"), "7");  // its name, though there is an index 2
  EXPECT_EQ(found("0"), "0");
  EXPECT_EQ(found("f."), "5");
  EXPECT_EQ(found(" 6 dB "), "6");
  EXPECT_EQ(found("RATE"), "one parameter was expected, but 'RATE' may be Rate (0), rate (1)");
  EXPECT_EQ(found("war"), "one parameter was expected, but 'war' may be Warp 01 (3), Warp 02 (4)");
  EXPECT_EQ(found("8"), "an index from 0 to 7 was expected, not 8");
  EXPECT_EQ(found("x"), "a parameter of the plug-in was expected, not 'x' ('modrift info' lists them)");
  EXPECT_EQ(found(""), "a parameter's name or index was expected");
}

}  // namespace
}  // namespace modrift::cli
