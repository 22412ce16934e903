#include "lists/calendar/calendar_panel.h"

#include <gtest/gtest.h>

#include <map>

namespace kestrelon {
namespace {

CalendarPanel panel_of(int across, int down) {
  CalendarPanel panel;
  panel.set_shape({600, 500, 96, 13, 7, across, down, false, true});
  return panel;
}

int32_t day(int y, int m, int d) {
  return day_number({y, m, d});
}

TEST(CalendarPanel, ShowsEveryDayOfItsMonthsOnce) {
  for (const int months : {1, 3}) {
    CalendarPanel panel = panel_of(months, 1);
    panel.set_mark(day(2026, 11, 15));
    std::map<int32_t, int> seen;
    for (int index = 0; index < months; ++index)
      for (int cell = 0; cell < kWeekDays * kGridWeeks; ++cell)
        if (const auto at = panel.day_at(index, cell)) ++seen[*at];
    for (int32_t at = panel.shown().min; at <= panel.shown().max; ++at) {
      ASSERT_EQ(seen[at], 1) << at;
      const auto place = panel.find_day(at);
      ASSERT_TRUE(place);
      ASSERT_EQ(panel.day_at(place->index, place->cell), at);
      ASSERT_FALSE(panel.is_neighbour(place->index, at));
    }
    for (const auto& [at, times] : seen) ASSERT_LE(times, 1) << at;
  }
}

TEST(CalendarPanel, TurnsOnlyAsFarAsTheMarkNeeds) {
  CalendarPanel panel = panel_of(3, 1);
  panel.set_first_month({2026, 1});
  EXPECT_FALSE(panel.set_mark(day(2026, 3, 31)));
  EXPECT_TRUE(panel.set_mark(day(2026, 4, 1)));
  EXPECT_EQ(panel.first_month(), (YearMonth{2026, 2}));
  EXPECT_TRUE(panel.set_mark(day(2025, 12, 1)));
  EXPECT_EQ(panel.first_month(), (YearMonth{2025, 12}));
  EXPECT_TRUE(panel.turn(-2));
  EXPECT_EQ(panel.first_month(), (YearMonth{2025, 10}));
  EXPECT_EQ(panel.mark(), day(2025, 12, 1));
}

TEST(CalendarPanel, ChoosesYearThenMonthThenDay) {
  CalendarPanel panel = panel_of(1, 1);
  panel.set_mark(day(2026, 5, 31));
  panel.widen();
  EXPECT_EQ(panel.title(), L"2026");
  EXPECT_EQ(panel.choice_text(4), L"mai");
  EXPECT_TRUE(panel.is_marked_choice(4));
  panel.widen();
  panel.widen();
  EXPECT_EQ(panel.title(), L"2016 a 2027");
  EXPECT_TRUE(panel.turn(1));
  EXPECT_EQ(panel.title(), L"2028 a 2039");
  panel.choose(0);
  EXPECT_EQ(panel.view(), CalendarView::kMonths);
  panel.choose(1);
  EXPECT_EQ(panel.view(), CalendarView::kDays);
  EXPECT_EQ(panel.mark(), day(2028, 2, 29));
  EXPECT_EQ(panel.first_month(), (YearMonth{2028, 2}));
}

TEST(CalendarPanel, StopsAtTheEndsOfTheCalendar) {
  CalendarPanel panel = panel_of(2, 1);
  panel.set_mark(day(9999, 12, 31));
  EXPECT_FALSE(panel.turn(5) && panel.turn(5));
  for (int cell = 0; cell < kWeekDays * kGridWeeks; ++cell) panel.day_at(1, cell);
  panel.set_mark(day(100, 1, 1));
  EXPECT_FALSE(panel.turn(-1));
  EXPECT_EQ(panel.day_at(0, 0).value_or(day(100, 1, 1)), day(100, 1, 1));
  panel.widen();
  EXPECT_FALSE(panel.turn(-1));
}

}  // namespace
}  // namespace kestrelon
