// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/files/Automation.h"

namespace modrift::cli {
namespace {

using Points = std::vector<AutomationPoint>;

// The line with the fault, 0 if there is none.
int faultIn(std::string_view bytes) {
  const auto result = parseAutomation(bytes);
  const auto* fault = std::get_if<AutomationFault>(&result);
  return fault == nullptr ? 0 : fault->line;
}

TEST(Automation, ReadsWhatPeopleAndSpreadsheetsWrite) {
  const auto result = parseAutomation(
      "\xEF\xBB\xBF"
      "Beat,Parameter,Value\r\n"
      "\r\n"
      "# all of it\r\n"
      " 0 ,\t>vol , 0.25 # a remark, with a comma\r\n"
      "-1.5,7,+1,\r\n"
      "2,\"A, \"\"big\"\" #1\",1e-3\n"
      "3,FilType, MG Low 24 # a text\n"
      "4,CC Out,\"\"\"64\"\"\"");
  ASSERT_TRUE(std::holds_alternative<Points>(result));
  const auto& points = std::get<Points>(result);
  ASSERT_EQ(points.size(), 5U);
  EXPECT_EQ(points[0].line, 4);
  EXPECT_EQ(points[0].parameter, ">vol");
  EXPECT_EQ(points[0].value.number, 0.25f);
  EXPECT_EQ(points[1].beat, -1.5);
  EXPECT_EQ(points[1].value.number, 1.0f);
  EXPECT_EQ(points[2].parameter, "A, \"big\" #1");
  EXPECT_EQ(points[3].value.text, "MG Low 24");
  EXPECT_EQ(points[4].value.text, "64");
  EXPECT_FALSE(points[4].value.number);
}

TEST(Automation, NamesTheLineOfTheFirstFault) {
  EXPECT_EQ(faultIn(""), 0);
  EXPECT_EQ(faultIn("\n\r\n# nothing\nbeat,parameter,value"), 0);
  EXPECT_EQ(faultIn("0,a,1\n0,a\n"), 2);
  EXPECT_EQ(faultIn("0,a,1\n0,a,1,2\n"), 2);
  EXPECT_EQ(faultIn("beat,parameter,value\nbeat,parameter,value\n"), 2);  // one heading is enough
  EXPECT_EQ(faultIn("0,a,1\n\n#\nx,a,1"), 4);
  for (const char* line : {"0,,1", "0,\"a,1", "0,\"a\"b1", "0,a,", "hello"}) EXPECT_EQ(faultIn(line), 1) << line;
  EXPECT_EQ(faultIn(std::string(2000, '1')), 1);
  EXPECT_EQ(faultIn(std::string_view("0,a\0,1", 6)), 1);
  for (const char* number : {"nan", "-inf", "1e999", "infinity"}) {
    EXPECT_EQ(faultIn(std::string("0,a,") + number), 1) << number;
    EXPECT_EQ(faultIn(std::string(number) + ",a,0"), 1) << number;
  }
  EXPECT_EQ(faultIn("0,a,1e39"), 1);  // beyond what a parameter can hold
}

TEST(FrameAtBeat, RoundsToTheNearestFrameAndStaysCountable) {
  EXPECT_EQ(frameAtBeat(4.0, 0.0, 120.0, 48000.0), 96000);
  EXPECT_EQ(frameAtBeat(1.0, 0.5, 127.0, 44100.0), 10417);  // 0.5 * 60 / 127 * 44100 = 10417.32
  EXPECT_EQ(frameAtBeat(3.0, 4.0, 60.0, 44100.0), -44100);
  EXPECT_GT(frameAtBeat(1e300, 0.0, 1.0, 768000.0), std::int64_t{1} << 50);
}

}  // namespace
}  // namespace modrift::cli
