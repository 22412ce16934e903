#include "chrome/us_status_bar/status_clock.h"

#include <gtest/gtest.h>

namespace kestrelon::status_bar {
namespace {

constexpr DateTime kNow{{2024, 2, 28}, 10, 59, 20};

TEST(StatusClock, ShowsDateAndTimeInTheBrazilianOrder) {
  EXPECT_EQ(clock_text(Clock::kDate, L"", kNow), L"28/02/2024");
  EXPECT_EQ(clock_text(Clock::kTime, L"", kNow), L"10:59");
  EXPECT_EQ(clock_text(Clock::kDateTime, L"", kNow), L"28/02/2024 10:59");
  EXPECT_EQ(clock_text(Clock::kTime, L"hh:nn:ss", kNow), L"10:59:20");
}

TEST(StatusClock, SleepsUntilTheTextIsAnotherAndNoLonger) {
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"hh:nn:ss", kNow), 1);
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"", kNow), 40);
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"hh", kNow), 40);
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"hh", {{2024, 2, 28}, 11, 0, 0}), 3600);
  EXPECT_EQ(seconds_to_change(Clock::kDate, L"", kNow), 13 * 3600 + 40);
  EXPECT_EQ(seconds_to_change(Clock::kDateTime, L"", kNow), 40);
  // Morning and afternoon change at noon, a text without a clock in it is looked at once a day.
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"AM/PM", kNow), 3600 + 40);
  EXPECT_EQ(seconds_to_change(Clock::kTime, L"\"agora\"", kNow), 13 * 3600 + 40);
}

TEST(StatusClock, TheLastSecondOfADayAMonthAndAYearLeadsIntoTheNext) {
  for (const CalendarDate& date :
       {CalendarDate{2024, 2, 28}, CalendarDate{2023, 2, 28}, CalendarDate{2023, 12, 31}})
    for (const wchar_t* pattern : {L"dd/mm/yyyy", L"hh:nn:ss", L"d", L""})
      EXPECT_EQ(seconds_to_change(Clock::kDateTime, pattern, {date, 23, 59, 59}), 1);
}

TEST(StatusClock, TheTextHoldsToTheLastSecondBeforeItsChange) {
  for (const wchar_t* pattern : {L"hh:nn", L"h AM/PM", L"dd/mm", L"hh:nn:ss"})
    for (int minute = 0; minute < 60; minute += 7) {
      DateTime moment{{2024, 5, 1}, 9, minute, 13};
      const int wait = seconds_to_change(Clock::kTime, pattern, moment);
      const std::wstring present = clock_text(Clock::kTime, pattern, moment);
      int second = (moment.hour * 60 + moment.minute) * 60 + moment.second + wait - 1;
      moment.hour = second / 3600;
      moment.minute = second % 3600 / 60;
      moment.second = second % 60;
      EXPECT_EQ(clock_text(Clock::kTime, pattern, moment), present) << minute;
    }
}

}  // namespace
}  // namespace kestrelon::status_bar
