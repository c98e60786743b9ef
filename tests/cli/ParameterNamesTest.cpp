#include <gtest/gtest.h>
#include <vector>

#include "cli/ParameterNames.h"

namespace modrift::cli {
namespace {

const std::vector<std::string> kNames = {"Rate", "rate", ">vol", "Warp 01", "Warp 02", "F.On Off", "6 dB  ", "2"};

int indexOf(std::string_view typed) {
  const auto found = findParameter(kNames, typed);
  return std::holds_alternative<int>(found) ? std::get<int>(found) : -1;
}

std::string complaintAbout(std::string_view typed) {
  const auto found = findParameter(kNames, typed);
  return std::holds_alternative<int>(found) ? "none" : std::get<std::string>(found);
}

TEST(FindParameter, PrefersTheExactNameThenAnyCaseThenIndexThenBeginning) {
  EXPECT_EQ(indexOf("rate"), 1);
  EXPECT_EQ(indexOf("f.on off"), 5);
  EXPECT_EQ(indexOf("2"), 7);  // its name, though there is an index 2
  EXPECT_EQ(indexOf("6"), 6);  // the index; as a beginning it would be the same
  EXPECT_EQ(indexOf("0"), 0);
  EXPECT_EQ(indexOf("f."), 5);
  EXPECT_EQ(indexOf(" 6 dB "), 6);
}

TEST(FindParameter, SaysWhatItExpected) {
  EXPECT_EQ(complaintAbout("RATE"), "one parameter was expected, but 'RATE' may be Rate (0), rate (1)");
  EXPECT_EQ(complaintAbout("war"), "one parameter was expected, but 'war' may be Warp 01 (3), Warp 02 (4)");
  EXPECT_EQ(complaintAbout("8"), "an index from 0 to 7 was expected, not 8");
  EXPECT_EQ(complaintAbout("-1"), "an index from 0 to 7 was expected, not -1");
  EXPECT_NE(complaintAbout("x").find("a parameter of the plug-in was expected, not 'x'"), std::string::npos);
  EXPECT_NE(complaintAbout(""), "none");
}

}  // namespace
}  // namespace modrift::cli
