#include "base/calendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrelon {
namespace {

// Walks the whole range day by day by the rules a person would use.
TEST(Calendar, NumbersEveryDayOfTheRangeInTurn) {
  CalendarDate date{100, 1, 1};
  int day_of_week = 6;  // Friday
  for (int32_t number = -657434; number <= 2958465; ++number) {
    ASSERT_EQ(date_of_day_number(number), date) << number;
    ASSERT_EQ(day_number(date), number);
    ASSERT_EQ(weekday(number), day_of_week) << number;
    ASSERT_TRUE(is_real_date(date));
    day_of_week = day_of_week % 7 + 1;
    if (++date.day > days_in_month(date.year, date.month)) {
      date.day = 1;
      if (++date.month > 12) date = {date.year + 1, 1, 1};
    }
  }
  EXPECT_EQ(date, (CalendarDate{10000, 1, 1}));
  EXPECT_EQ(date_of_day_number(-657435), std::nullopt);
  EXPECT_EQ(date_of_day_number(2958466), std::nullopt);
}

TEST(Calendar, KnowsLeapYears) {
  EXPECT_FALSE(is_leap_year(1900));
  EXPECT_TRUE(is_leap_year(2000));
  EXPECT_TRUE(is_leap_year(2024));
  EXPECT_FALSE(is_leap_year(2023));
  EXPECT_TRUE(is_leap_year(-4));
  EXPECT_EQ(days_in_month(2024, 2), 29);
  EXPECT_EQ(days_in_month(2100, 2), 28);
  EXPECT_EQ(days_in_month(2024, 0), 0);
  EXPECT_EQ(days_in_month(2024, 13), 0);
  for (const CalendarDate date : {CalendarDate{99, 12, 31},
                                  {10000, 1, 1},
                                  {2023, 2, 29},
                                  {2024, 4, 31},
                                  {2024, 1, 0},
                                  {2024, 13, 1},
                                  {2024, 0, 1}})
    EXPECT_FALSE(is_real_date(date)) << date.year << '-' << date.month << '-' << date.day;
}

TEST(DateValue, HoldsTimesAsFractions) {
  const DateTime noon{{2024, 2, 29}, 12, 0, 0};
  EXPECT_EQ(date_value(noon), 45351.5);
  // Before the epoch the fraction still counts forward.
  EXPECT_EQ(date_time_of_value(-1.25), (DateTime{{1899, 12, 29}, 6, 0, 0}));
  EXPECT_EQ(date_value({{1899, 12, 29}, 6, 0, 0}), -1.25);
  EXPECT_EQ(date_time_of_value(0.999999999), (DateTime{{1899, 12, 31}, 0, 0, 0}));
  for (int second = 0; second < 86400; ++second) {
    const DateTime moment{{2026, 11, 21}, second / 3600, second / 60 % 60, second % 60};
    ASSERT_EQ(date_time_of_value(date_value(moment)), moment);
  }
}

TEST(DateValue, RefusesWhatIsNoDate) {
  for (const double value :
       {std::nan(""), 1e300, -1e300, 2958466.0, -657435.0, std::numeric_limits<double>::infinity()})
    EXPECT_EQ(date_time_of_value(value), std::nullopt) << value;
  EXPECT_EQ(date_time_of_value(2958465.9999999), std::nullopt);  // rounds past the last day
}

}  // namespace
}  // namespace kestrelon
