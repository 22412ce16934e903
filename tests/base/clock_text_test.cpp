#include "base/clock_text.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(DurationText, WritesHoursOnlyWhenThereAreSome) {
  EXPECT_EQ(duration_text(-1), L"--:--");
  EXPECT_EQ(duration_text(0), L"0:00");
  EXPECT_EQ(duration_text(59), L"0:59");
  EXPECT_EQ(duration_text(3599), L"59:59");
  EXPECT_EQ(duration_text(3600), L"1:00:00");
  EXPECT_EQ(duration_text(360000), L"100:00:00");
}

TEST(MomentText, TellsMonthsFromMinutes) {
  const DateTime moment{{2005, 3, 9}, 7, 4, 2};
  EXPECT_EQ(moment_text(moment, L"dd/mm/yyyy hh:mm:ss"), L"09/03/2005 07:04:02");
  EXPECT_EQ(moment_text(moment, L"D/M/YY H:N:S"), L"9/3/05 7:4:2");
  EXPECT_EQ(moment_text(moment, L"hhmm"), L"0704");
  EXPECT_EQ(moment_text(moment, L"hh dd mm"), L"07 09 03");
  EXPECT_EQ(moment_text(moment, L"ddd yyyyy"), L"099 200505");
  EXPECT_EQ(moment_text(moment, L"às"), L"à2");
  EXPECT_EQ(moment_text(moment, L""), L"");
}

}  // namespace
}  // namespace kestrelon
