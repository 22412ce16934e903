#include "services/kn_date.h"

#include <gtest/gtest.h>

#include "services/kn_format_ex.h"

namespace kestrelon {
namespace {

TEST(IsValidTime, TakesHoursMinutesAndPerhapsSeconds) {
  const struct {
    const wchar_t* text;
    bool valid;
  } cases[] = {{L"0:0", true},
               {L"23:59:59", true},
               {L"00:00:00", true},
               {L"007:05", true},
               {L"24:00", false},
               {L"23:60", false},
               {L"23:59:60", false},
               {L"23", false},
               {L"1:2:3:4", false},
               {L"1:2:", false},
               {L":2", false},
               {L"", false},
               {L"a:1", false},
               {L"1: 2", false},
               {L"-1:0", false},
               {L"1.5:0", false},
               {L"99999999999999999999:0", false},
               {L"4294967296:0", false}};
  for (const auto& c : cases)
    EXPECT_EQ(is_valid_time(c.text), c.valid) << testing::PrintToString(std::wstring(c.text));
  EXPECT_TRUE(is_valid_time(L"12h30", L"h"));
  EXPECT_TRUE(is_valid_time(L"12--30--00", L"--"));
  EXPECT_FALSE(is_valid_time(L"12:30", L"h"));
  EXPECT_FALSE(is_valid_time(L"12:30", L""));
}

TEST(DayName, NamesTheDaysFromSunday) {
  const double sunday = 46348;  // 22 November 2026
  std::wstring all;
  for (int i = 0; i < 7; ++i) all += day_name(sunday + i, true) + L" ";
  EXPECT_EQ(all, L"Dom Seg Ter Qua Qui Sex Sáb ");
  EXPECT_EQ(day_name(sunday + 0.999), L"Domingo");
  EXPECT_EQ(day_name(sunday + 2), L"Terça-feira");
  EXPECT_EQ(day_name(0), L"Sábado");
  EXPECT_EQ(day_name(-1.75), L"Sexta-feira");
  EXPECT_EQ(day_name(1e9), L"");
}

TEST(MonthLength, TakesTheCurrentYearForNone) {
  EXPECT_EQ(month_length(2, 2024, 2023), 29);
  EXPECT_EQ(month_length(2, 0, 2023), 28);
  EXPECT_EQ(month_length(2, 0, 2024), 29);
  EXPECT_EQ(month_length(12, 9999, 2024), 31);
  EXPECT_EQ(month_length(0, 2024, 2024), 0);
  EXPECT_EQ(month_length(13, 2024, 2024), 0);
  EXPECT_EQ(month_length(1, -1, 2024), 0);
  EXPECT_EQ(month_length(1, 10000, 2024), 0);
}

TEST(DateTimeText, IsFilledWithZeros) {
  EXPECT_EQ(date_time_text({{2026, 1, 2}, 3, 4, 5}), L"02/01/2026 03:04:05");
}

constexpr DateTime kMoment{{2026, 11, 5}, 15, 4, 9};  // a Thursday

TEST(FormatMoment, WritesEachTokenOfTheLanguage) {
  const struct {
    const wchar_t* pattern;
    const wchar_t* text;
  } cases[] = {{L"DD/MM/YYYY", L"05/11/2026"},
               {L"d-m-yy", L"5-11-26"},
               {L"ddd, dddd", L"qui, quinta-feira"},
               {L"mmm mmmm", L"nov novembro"},
               {L"ddddd", L"05/11/2026"},
               {L"Long Date", L"quinta-feira, 5 de novembro de 2026"},
               {L"y w ww q", L"309 5 45 4"},
               {L"hh:mm:ss", L"15:04:09"},
               {L"h:m:s", L"15:4:9"},
               {L"hh:mm dd/mm", L"15:04 05/11"},
               {L"mm/dd hh:mm", L"11/05 15:04"},
               {L"n nn", L"4 04"},
               {L"h:nn AM/PM", L"3:04 PM"},
               {L"hh am/pm", L"03 pm"},
               {L"h A/P", L"3 P"},
               {L"ttttt", L"15:04:09"},
               {L"c", L"05/11/2026 15:04:09"},
               {L"short date", L"05/11/2026"},
               {L"\"dia\" d \\d\\e mmmm", L"dia 5 de novembro"},
               {L"\"open", L"open"},
               {L"d\\", L"5"},
               {L"", L""}};
  for (const auto& c : cases)
    EXPECT_EQ(format_moment(kMoment, c.pattern), c.text)
        << testing::PrintToString(std::wstring(c.pattern));
  EXPECT_EQ(format_moment({{2026, 11, 5}, 0, 0, 0}, L"h AM/PM"), L"12 AM");
  EXPECT_EQ(format_moment({{2026, 11, 5}, 12, 0, 0}, L"h AM/PM"), L"12 PM");
  EXPECT_EQ(format_moment({{2026, 11, 5}, 0, 0, 0}, L"c"), L"05/11/2026");
  EXPECT_EQ(format_moment({{1899, 12, 30}, 7, 8, 9}, L"c"), L"07:08:09");
}

TEST(FormatMoment, CountsWeeksFromSundayAndTheFirstOfJanuary) {
  EXPECT_EQ(format_moment({{2022, 1, 1}}, L"ww"), L"1");  // a Saturday
  EXPECT_EQ(format_moment({{2022, 1, 2}}, L"ww"), L"2");
  EXPECT_EQ(format_moment({{2023, 1, 7}}, L"ww"), L"1");  // the year began on a Sunday
  EXPECT_EQ(format_moment({{2023, 1, 8}}, L"ww"), L"2");
  EXPECT_EQ(format_moment({{2024, 12, 31}}, L"y"), L"366");
}

TEST(FormatDateEx, ReadsDatesTimesAndDateValues) {
  const struct {
    const wchar_t* text;
    const wchar_t* result;
  } cases[] = {{L"5/11/26", L"05/11/2026 00:00"},
               {L"2026-11-05T15:04:09", L"05/11/2026 15:04"},
               {L"05.11.2026  15:04", L"05/11/2026 15:04"},
               {L"12/31/2024", L"31/12/2024 00:00"},
               {L"1/2", L"01/02/2020 00:00"},
               {L"15:04", L"30/12/1899 15:04"},
               {L"45351", L"29/02/2024 00:00"},
               {L"45351,5", L"29/02/2024 12:00"},
               {L"", L""},
               {L" ", L" "},
               {L"ontem", L"ontem"},
               {L"31/02/2024", L"31/02/2024"},
               {L"1/1/2024 25:00", L"1/1/2024 25:00"},
               {L"1/1/2024 x", L"1/1/2024 x"},
               {L"nan", L"nan"},
               {L"99999999", L"99999999"}};
  for (const auto& c : cases)
    EXPECT_EQ(format_date_ex(c.text, L"dd/mm/yyyy hh:mm", 2020), c.result)
        << testing::PrintToString(std::wstring(c.text));
}

}  // namespace
}  // namespace kestrelon
