#include <gtest/gtest.h>

#include <random>
#include <set>

#include "lists/calendar/date_entry.h"
#include "lists/calendar/day_rules.h"
#include "lists/calendar/day_selection.h"
#include "lists/calendar/month_grid.h"

namespace kestrelon {
namespace {

int32_t day(int y, int m, int d) {
  return day_number({y, m, d});
}

TEST(MonthGrid, HoldsEveryMonthInSixWeeksWhateverTheFirstDay) {
  for (int first = 1; first <= 7; ++first)
    for (int y = 1999; y < 2031; ++y)
      for (int m = 1; m <= 12; ++m) {
        const int32_t start = grid_start({y, m}, first);
        ASSERT_EQ(weekday(start), first);
        ASSERT_LE(start, day(y, m, 1));
        ASSERT_GT(start + kWeekDays, day(y, m, 1));
        ASSERT_LT(last_day({y, m}), start + kWeekDays * kGridWeeks);
      }
  EXPECT_EQ(weekday(grid_start({2026, 11}, 99)), 1);
  EXPECT_EQ(column_weekday(6, 2), 1);
}

TEST(MonthGrid, NumbersWeeksAsTheStandardDoes) {
  const struct {
    int y, m, d;
    IsoWeek week;
  } known[] = {{2026, 1, 1, {2026, 1}},   {2025, 12, 29, {2026, 1}}, {2027, 1, 3, {2026, 53}},
               {2024, 12, 30, {2025, 1}}, {2021, 1, 3, {2020, 53}},  {2023, 1, 1, {2022, 52}},
               {2026, 11, 15, {2026, 46}}};
  for (const auto& it : known)
    EXPECT_EQ(iso_week(day(it.y, it.m, it.d)), it.week) << it.y << it.m << it.d;
  // A row from Sunday shows the week of its Monday to Saturday.
  EXPECT_EQ(iso_week_of_row(day(2026, 11, 15)), (IsoWeek{2026, 47}));
  iso_week_of_row(grid_start({kFirstYear, 1}, 1));  // before the range: no matter what, but safe
}

TEST(MonthGrid, MovesByMonthsWithinTheRange) {
  EXPECT_EQ(month_moved({2026, 1}, -1), (YearMonth{2025, 12}));
  EXPECT_EQ(month_moved({9999, 12}, 5), (YearMonth{9999, 12}));
  EXPECT_EQ(month_moved({100, 1}, INT32_MIN), (YearMonth{100, 1}));
  EXPECT_EQ(day_months_later(day(2026, 1, 31), 1), day(2026, 2, 28));
  EXPECT_EQ(day_months_later(day(2024, 2, 29), -12), day(2023, 2, 28));
  EXPECT_EQ(day_months_later(day(9999, 12, 5), 1), std::nullopt);
}

struct Keys : testing::Test {
  Holidays holidays;
  DayRules rules{
      {day(1900, 1, 1), day(9999, 12, 31)}, false, false, BusinessCount::kNational, &holidays};
  int32_t today = day(2026, 11, 22);

  CalendarAction press(int key, int32_t mark, bool shift = false, bool ctrl = false,
                       CalendarView view = CalendarView::kDays) {
    return calendar_key({key, shift, ctrl}, mark, today, view, rules);
  }
  int32_t to(int key, int32_t mark, bool ctrl = false) {
    const CalendarAction action = press(key, mark, false, ctrl);
    EXPECT_EQ(action.kind, CalendarAction::kMark) << key;
    return action.day;
  }
};

constexpr int kPageUp = 0x21, kPageDown = 0x22, kEnd = 0x23, kHome = 0x24, kLeft = 0x25, kUp = 0x26,
              kRight = 0x27, kDown = 0x28;

TEST_F(Keys, MoveByDaysWeeksMonthsAndYears) {
  const int32_t mark = day(2026, 1, 31);
  EXPECT_EQ(to(kLeft, mark), mark - 1);
  EXPECT_EQ(to(kRight, mark), mark + 1);
  EXPECT_EQ(to(kUp, mark), mark - 7);
  EXPECT_EQ(to(kDown, mark), mark + 7);
  EXPECT_EQ(to(kPageDown, mark), day(2026, 2, 28));
  EXPECT_EQ(to(kPageUp, mark), day(2025, 12, 31));
  EXPECT_EQ(to(kPageDown, mark, true), day(2027, 1, 31));
  EXPECT_EQ(to(kHome, mark), day(2026, 1, 1));
  EXPECT_EQ(to(kEnd, day(2026, 2, 3)), day(2026, 2, 28));
  EXPECT_EQ(to(kHome, mark, true), today);
  EXPECT_EQ(to('H', mark), today);
  EXPECT_EQ(to(0x6B, mark), mark + 1);
  EXPECT_EQ(to(0xBD, mark), mark - 1);
  EXPECT_TRUE(press(kRight, mark, true).extend);
  EXPECT_EQ(press(0x0D, mark).kind, CalendarAction::kTake);
  EXPECT_EQ(press(0x1B, mark, false, false, CalendarView::kYears).kind, CalendarAction::kClose);
  EXPECT_EQ(press(0x09, mark).kind, CalendarAction::kNone);
}

TEST_F(Keys, PassOverBlockedDaysAndStayWithinBounds) {
  rules.block_weekends = rules.block_holidays = true;
  EXPECT_EQ(to(kRight, day(2026, 12, 24)), day(2026, 12, 28));  // Christmas is a Friday
  EXPECT_EQ(to(kLeft, day(2026, 12, 28)), day(2026, 12, 24));
  EXPECT_EQ(to(kDown, day(2026, 12, 18)), day(2027, 1, 8));  // both Fridays between are holidays
  EXPECT_EQ(to(kEnd, day(2026, 5, 5)), day(2026, 5, 29));
  EXPECT_EQ(to(kHome, day(2026, 5, 5)), day(2026, 5, 4));
  // Carnival is worked, but not by banks.
  EXPECT_EQ(to(kRight, day(2026, 2, 13)), day(2026, 2, 16));
  rules.count = BusinessCount::kBank;
  EXPECT_EQ(to(kRight, day(2026, 2, 13)), day(2026, 2, 18));
  rules.bounds = {day(2026, 3, 10), day(2026, 3, 12)};
  EXPECT_EQ(press(kRight, day(2026, 3, 12)).kind, CalendarAction::kStay);
  EXPECT_EQ(to(kPageUp, day(2026, 3, 12)), day(2026, 3, 10));
  EXPECT_EQ(press(kPageUp, day(2026, 3, 10)).kind, CalendarAction::kStay);
}

TEST_F(Keys, FindNothingWhereNothingMayBeChosen) {
  rules.bounds = {day(2026, 2, 1), day(2026, 1, 1)};
  for (const int key : {kLeft, kRight, kUp, kDown, kPageUp, kPageDown, kHome, kEnd, int{'H'}})
    for (const auto view : {CalendarView::kDays, CalendarView::kMonths, CalendarView::kYears})
      if (key != 'H' || view == CalendarView::kDays) {
        EXPECT_EQ(press(key, day(2026, 1, 15), false, false, view).kind, CalendarAction::kStay)
            << key;
      }
  rules.bounds = {day(100, 1, 1), day(9999, 12, 31)};
  rules.block_holidays = true;
  for (int m = 1; m <= 12; ++m)
    for (int d = 1; d <= 31; ++d) holidays.add(d, m, L"x");
  EXPECT_EQ(press(kRight, today).kind, CalendarAction::kStay);
  EXPECT_EQ(press(kLeft, day(100, 1, 1)).kind, CalendarAction::kStay);
  EXPECT_EQ(press(kDown, day(9999, 12, 31)).kind, CalendarAction::kStay);
}

TEST_F(Keys, WalkTheChoosersOfMonthsAndYears) {
  const int32_t mark = day(2026, 5, 31);
  EXPECT_EQ(press(kRight, mark, false, false, CalendarView::kMonths).day, day(2026, 6, 30));
  EXPECT_EQ(press(kDown, mark, false, false, CalendarView::kMonths).day, day(2026, 9, 30));
  EXPECT_EQ(press(kHome, mark, false, false, CalendarView::kMonths).day, day(2026, 1, 31));
  EXPECT_EQ(press(kPageUp, mark, false, false, CalendarView::kMonths).day, day(2025, 5, 31));
  EXPECT_EQ(press(kLeft, mark, false, false, CalendarView::kYears).day, day(2025, 5, 31));
  EXPECT_EQ(press(kEnd, mark, false, false, CalendarView::kYears).day, day(2027, 5, 31));
  EXPECT_EQ(press(0x0D, mark, false, false, CalendarView::kYears).kind, CalendarAction::kEnter);
  EXPECT_EQ(first_year_shown(2026), 2016);
  EXPECT_EQ(first_year_shown(9999), 9988);
  EXPECT_EQ(first_year_shown(100), 100);
}

TEST(DaySelection, DrawsARangeFromItsAnchor) {
  DaySelection selection;
  selection.set_mode(DaySelectMode::kRange);
  const auto any = [](int32_t) { return true; };
  selection.extend_to(50, any);
  EXPECT_EQ(selection.count(), 1u);
  selection.extend_to(60, any);
  selection.extend_to(40, any);  // over to the other side: 50 stays an end
  EXPECT_EQ(selection.first(), 40);
  EXPECT_EQ(selection.last(), 50);
  EXPECT_TRUE(selection.contains(45));
  EXPECT_EQ(selection.count(), 11u);
  selection.select_range(9, 5);
  EXPECT_EQ(selection.first(), 5);
  selection.extend_to(12, any);
  EXPECT_EQ(selection.first(), 9);
  selection.set_mode(DaySelectMode::kOneDay);
  EXPECT_EQ(selection.count(), 1u);
  selection.select_range(1, 4);
  EXPECT_EQ(selection.last(), 1);
  selection.set_mode(static_cast<DaySelectMode>(77));
  EXPECT_EQ(selection.mode(), DaySelectMode::kOneDay);
}

TEST(DaySelection, HoldsManyDaysLikeASet) {
  DaySelection selection;
  selection.set_mode(DaySelectMode::kManyDays);
  std::set<int32_t> model;
  std::mt19937 random(7);
  const auto odd = [](int32_t d) { return d % 2 != 0; };
  int32_t anchor = 0;
  for (int step = 0; step < 3000; ++step) {
    const int32_t d = static_cast<int32_t>(random() % 60);
    switch (random() % 5) {
      case 0:
        selection.set_selected(d, true), model.insert(d), anchor = d;
        break;
      case 1:
        selection.set_selected(d, false), model.erase(d), anchor = d;
        break;
      case 2:
        if (!model.empty())
          for (int32_t at = std::min(anchor, d); at <= std::max(anchor, d); ++at)
            if (odd(at)) model.insert(at);
        if (!selection.empty()) selection.extend_to(d, odd);
        break;
      case 3:
        if (step % 40 == 0) selection.select(d), model = {d}, anchor = d;
        break;
      default:
        break;
    }
    ASSERT_EQ(selection.count(), model.size());
    for (int32_t at = 0; at < 60; ++at) ASSERT_EQ(selection.contains(at), model.contains(at));
    ASSERT_EQ(selection.first().value_or(-1), model.empty() ? -1 : *model.begin());
  }
}

constexpr int kDayFirst = 1, kMonthFirst = 2, kYearFirst = 0, kDashes = 4, kDayMonth = 36,
              kMonthYear = 54;

TEST(DateEntry, ReadsDigitsAlone) {
  const CalendarDate today{2026, 11, 22};
  const auto read = [&](std::wstring_view text, int format = kDayFirst) {
    return read_typed_date(text, format, today);
  };
  EXPECT_EQ(read(L"1511"), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"151129"), (CalendarDate{2029, 11, 15}));
  EXPECT_EQ(read(L"151130"), (CalendarDate{1930, 11, 15}));
  EXPECT_EQ(read(L"15112026"), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"7"), (CalendarDate{2026, 11, 7}));
  EXPECT_EQ(read(L" 5/1/26 "), (CalendarDate{2026, 1, 5}));
  EXPECT_EQ(read(L"5.1"), (CalendarDate{2026, 1, 5}));
  EXPECT_EQ(read(L"15/11/"), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"2026-11-15"), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"1115", kMonthFirst), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"20261115", kYearFirst), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"261115", kYearFirst), (CalendarDate{2026, 11, 15}));
  EXPECT_EQ(read(L"151127", kDayMonth), (CalendarDate{2027, 11, 15}));
  EXPECT_EQ(read(L"112027", kMonthYear), (CalendarDate{2027, 11, 1}));
  EXPECT_EQ(read(L"3", kMonthYear), (CalendarDate{2026, 3, 1}));
}

TEST(DateEntry, RefusesWhatIsNoDate) {
  const CalendarDate today{2026, 11, 22};
  for (const std::wstring_view text :
       {L"", L"/", L"abc", L"115", L"15111", L"1511202", L"151120266", L"32/1", L"1/13", L"31/04",
        L"1/2/3/4", L"0101010101", L"15/11/20266", L"015/11", L"0", L"29/02/1900"})
    EXPECT_EQ(read_typed_date(text, kDayFirst, today), std::nullopt) << text.size();
  // The 29th of February in leap years alone, and "2902" by the year that is current.
  for (int y = 1930; y < 2100; ++y) {
    EXPECT_EQ(read_typed_date(L"2902" + std::to_wstring(y), kDayFirst, today).has_value(),
              is_leap_year(y));
    EXPECT_EQ(read_typed_date(L"2902", kDayFirst, {y, 5, 5}).has_value(), is_leap_year(y));
  }
}

TEST(DateEntry, SetsSeparatorsWhileDigitsAreTyped) {
  const auto type = [](std::wstring_view keys, int format) {
    std::wstring text;
    for (const wchar_t key : keys) text = with_separator(text + key, format);
    return text;
  };
  EXPECT_EQ(type(L"1", kDayFirst), L"1");
  EXPECT_EQ(type(L"1511", kDayFirst), L"15/11/");
  EXPECT_EQ(type(L"15112026", kDayFirst), L"15/11/2026");
  EXPECT_EQ(type(L"5/1/26", kDayFirst), L"5/1/26");
  EXPECT_EQ(type(L"20261115", kYearFirst), L"2026/11/15");
  EXPECT_EQ(type(L"1511", kDashes), L"15-11-");
  EXPECT_EQ(type(L"1511", kDayMonth), L"15/11");
  EXPECT_EQ(with_separator(L"", kDayFirst), L"");
}

TEST(DateEntry, WritesEveryFormatSoThatItIsReadBack) {
  for (int format = 0; format < 36; ++format)
    for (const CalendarDate date : {CalendarDate{2026, 11, 15}, {2024, 2, 29}, {1999, 1, 3}})
      EXPECT_EQ(read_typed_date(date_field_text(date, format), format, {2000, 1, 1}), date)
          << format;
  EXPECT_EQ(date_field_text({2026, 1, 5}, 12), L"5-1-26");
  EXPECT_EQ(date_field_text({2026, 1, 5}, 999), L"05/01/2026");
}

}  // namespace
}  // namespace kestrelon
