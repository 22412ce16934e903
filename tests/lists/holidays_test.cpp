#include "lists/calendar/holidays.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>

#include "lists/calendar/business_days.h"

namespace kestrelon {
namespace {

using namespace std::chrono;

int32_t number(year_month_day date) {
  return static_cast<int32_t>((sys_days{date} - sys_days{1899y / 12 / 30}).count());
}

// The Sunday after the 14th day of the moon, by the tables of golden number, century and epact.
sys_days easter_by_tables(int y) {
  const int golden = y % 19 + 1, century = y / 100 + 1;
  const int leap_centuries = 3 * century / 4 - 12, moon = (8 * century + 5) / 25 - 5;
  int epact = (11 * golden + 20 + moon - leap_centuries) % 30;
  if (epact < 0) epact += 30;
  if ((epact == 25 && golden > 11) || epact == 24) ++epact;
  int full_moon = 44 - epact;
  if (full_moon < 21) full_moon += 30;
  sys_days day = sys_days{year{y} / 3 / 1} + days{full_moon - 1};
  do day += days{1};
  while (std::chrono::weekday{day} != Sunday);
  return day;
}

// The published rules, one day at a time.
bool works(sys_days day, bool bank) {
  const year_month_day date{day};
  const int y = static_cast<int>(date.year());
  if (std::chrono::weekday{day} == Saturday || std::chrono::weekday{day} == Sunday) return false;
  const auto from_easter = (day - easter_by_tables(y)).count();
  if (from_easter == -2) return false;
  if (bank && (from_easter == -48 || from_easter == -47 || from_easter == 60)) return false;
  const month_day md{date.month(), date.day()};
  for (const month_day off : {January / 1, April / 21, May / 1, September / 7, November / 2,
                              November / 15, December / 25})
    if (md == off) return false;
  if (md == October / 12 && y >= 1980) return false;
  return md != November / 20 || y < 2024;
}

TEST(Easter, FollowsTheTablesInEveryYearOfTheGregorianCalendar) {
  for (int y = 1583; y <= 9999; ++y)
    ASSERT_EQ(easter_day(y), number(year_month_day{easter_by_tables(y)})) << y;
  EXPECT_EQ(easter_day(2026), number(2026y / April / 5));
  EXPECT_EQ(easter_day(99), 0);
  EXPECT_EQ(easter_day(10000), 0);
}

TEST(Holidays, NameTheDaysOf2026) {
  const Holidays holidays;
  const auto note = [&](year_month_day date) { return holidays.note(number(date)); };
  EXPECT_EQ(note(2026y / 2 / 16).name, L"Carnaval");
  EXPECT_EQ(note(2026y / 2 / 17).name, L"Carnaval");
  EXPECT_TRUE(note(2026y / 2 / 17).optional);
  EXPECT_FALSE(note(2026y / 2 / 17).holiday);
  EXPECT_EQ(note(2026y / 6 / 4).name, L"Corpus Christi");
  EXPECT_TRUE(note(2026y / 4 / 3).holiday);
  EXPECT_EQ(note(2026y / 11 / 15).name, L"Proclamação da República");
  EXPECT_FALSE(note(2023y / 11 / 20).holiday);
  EXPECT_TRUE(note(2024y / 11 / 20).holiday);
  EXPECT_FALSE(note(1979y / 10 / 12).holiday);
  EXPECT_EQ(note(2026y / 2 / 18).banks_closed, false);
  EXPECT_EQ(note(2026y / 2 / 19).name, L"");
  // Two holidays on one day are both told.
  EXPECT_EQ(note(2000y / 4 / 21).name, L"Tiradentes; Paixão de Cristo");
}

TEST(Holidays, OwnOnesReadAndWriteAsLines) {
  Holidays holidays;
  holidays.set_text(
      L"25/01 Aniversário de São Paulo\r\n24/12* Véspera de Natal\n09/07/2027 Só neste ano\r\n"
      L"31/02 nunca\n1/13 nunca\n\n/ x\n29/02/2025 nunca\n29/02 Dia bissexto\nlixo\n05/05/ y");
  EXPECT_EQ(holidays.own_count(), 4u);
  const std::wstring text = holidays.text();
  EXPECT_EQ(text,
            L"25/01 Aniversário de São Paulo\r\n29/02 Dia bissexto\r\n24/12* Véspera de Natal\r\n"
            L"09/07/2027 Só neste ano");
  holidays.set_text(text);
  EXPECT_EQ(holidays.text(), text);
  EXPECT_FALSE(holidays.add(25, 1, L"again"));
  EXPECT_TRUE(holidays.add(25, 1, L"Outro", 2030));
  EXPECT_EQ(holidays.note(number(2030y / 1 / 25)).name, L"Aniversário de São Paulo; Outro");
  EXPECT_EQ(holidays.note(number(2026y / 7 / 9)).name, L"");
  EXPECT_TRUE(holidays.remove(9, 7, 2027));
  EXPECT_FALSE(holidays.remove(9, 7, 2027));
  EXPECT_FALSE(holidays.note(number(2027y / 7 / 9)).holiday);
}

TEST(BusinessDays, AgreeWithTheRulesDayByDay) {
  const Holidays holidays;
  for (const bool bank : {false, true}) {
    BusinessDays business(holidays);
    business.set_count(bank ? BusinessCount::kBank : BusinessCount::kNational);
    int64_t count = 0;
    const int32_t start = number(2023y / 12 / 31);
    std::vector<int32_t> worked;
    for (sys_days day = 2024y / 1 / 1; day <= sys_days{2030y / 12 / 31}; day += days{1}) {
      const int32_t n = number(year_month_day{day});
      ASSERT_EQ(business.is_business_day(n), works(day, bank)) << n;
      if (works(day, bank)) worked.push_back(n), ++count;
      ASSERT_EQ(business.between(start, n), count) << n;
      ASSERT_EQ(business.between(n, start), -count) << n;
    }
    for (size_t i = 0; i < worked.size(); ++i) {
      ASSERT_EQ(business.add(start, static_cast<int64_t>(i) + 1), worked[i]);
      ASSERT_EQ(business.add(worked.back() + 1, -static_cast<int64_t>(worked.size() - i)),
                worked[i]);
    }
  }
}

TEST(BusinessDays, CountTheYearsAsPublished) {
  const Holidays holidays;
  BusinessDays business(holidays);
  const auto year_count = [&](int y) {
    return business.between(number(year{y - 1} / 12 / 31), number(year{y} / 12 / 31));
  };
  EXPECT_EQ(year_count(2026), 252);
  EXPECT_EQ(year_count(2025), 255);
  business.set_count(BusinessCount::kBank);
  EXPECT_EQ(year_count(2026), 249);
  EXPECT_EQ(year_count(2025), 252);
}

TEST(BusinessDays, StopAtTheEndsOfTheCalendar) {
  const Holidays holidays;
  const BusinessDays business(holidays);
  const int32_t first = day_number({kFirstYear, 1, 1}), last = day_number({kLastYear, 12, 31});
  const int64_t all = business.between(first - 1, last);
  EXPECT_EQ(business.between(INT32_MIN, INT32_MAX), all);
  const int32_t last_business = *business.add(last, -1) == last ? last : *business.next(last, true);
  EXPECT_EQ(business.add(first, all - (business.is_business_day(first) ? 1 : 0)), last_business);
  EXPECT_EQ(business.add(first, all + 1), std::nullopt);
  EXPECT_EQ(business.add(last, -all - 1), std::nullopt);
  EXPECT_EQ(business.add(0, INT64_C(1) << 40), std::nullopt);
  EXPECT_EQ(business.add(first - 1, 0), std::nullopt);
  EXPECT_EQ(business.add(5, 0), 5);
  EXPECT_FALSE(business.is_business_day(INT32_MIN));
  EXPECT_EQ(business.next(first - 10, false), std::nullopt);
}

TEST(BusinessDays, FollowOwnHolidaysAtOnceAndExcludeADayOnce) {
  Holidays holidays;
  const BusinessDays business(holidays);
  const int32_t from = number(2025y / 12 / 31), to = number(2026y / 12 / 31);
  EXPECT_EQ(business.between(from, to), 252);
  holidays.add(25, 12, L"also Christmas");    // already one
  holidays.add(26, 9, L"a Saturday");         // already no business day
  holidays.add(24, 12, L"Véspera", 0, true);  // worked
  EXPECT_EQ(business.between(from, to), 252);
  holidays.add(9, 7, L"Revolução Constitucionalista");
  EXPECT_EQ(business.between(from, to), 251);
  EXPECT_EQ(business.next(number(2026y / 7 / 9), false), number(2026y / 7 / 10));
  EXPECT_EQ(business.next(number(2026y / 7 / 9), true), number(2026y / 7 / 8));
  holidays.clear();
  EXPECT_EQ(business.between(from, to), 252);
}

TEST(BusinessDays, TakeTenThousandOwnHolidays) {
  Holidays holidays;
  std::set<int32_t> own;
  for (int i = 0; i < 10000; ++i) {
    const int y = 2000 + i / 336, m = i / 28 % 12 + 1, d = i % 28 + 1;
    ASSERT_TRUE(holidays.add(d, m, L"x", y));
    own.insert(number(year{y} / m / d));
  }
  const BusinessDays business(holidays);
  int64_t expected = 0;
  for (sys_days day = 2000y / 1 / 1; day < sys_days{2030y / 1 / 1}; day += days{1})
    expected += works(day, false) && !own.contains(number(year_month_day{day}));
  EXPECT_EQ(business.between(number(1999y / 12 / 31), number(2029y / 12 / 31)), expected);
}

}  // namespace
}  // namespace kestrelon
