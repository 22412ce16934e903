#include "services/kn_date_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <set>
#include <string>
#include <vector>

namespace kestrelon {
namespace {

// The fields of a format in order, "dmy" for "d.m.yyyy": formats that share it are one group.
std::wstring group_of(int format) {
  std::wstring fields;
  for (const wchar_t c : date_format_text(format))
    if (c >= L'a' && c <= L'z' && fields.find(c) == std::wstring::npos) fields += c;
  return fields;
}

// The date written the way the format says, built without the code under test.
std::wstring written(int format, CalendarDate date) {
  std::wstring text(date_format_text(format));
  const auto put = [&](const std::wstring& letters, int number, int width) {
    const size_t at = text.find(letters);
    if (at == std::wstring::npos) return;
    std::wstring digits = std::to_wstring(number);
    if (static_cast<int>(digits.size()) < width) digits.insert(0, L"0");
    text.replace(at, letters.size(), digits);
  };
  put(L"yyyy", date.year, 4);
  put(L"yy", date.year % 100, 2);
  put(L"dd", date.day, 2);
  put(L"d", date.day, 1);
  put(L"mm", date.month, 2);
  put(L"m", date.month, 1);
  return text;
}

// Runs under the plain locale and under the first of the user's kind that the machine has.
class DateFormats : public testing::TestWithParam<std::vector<const char*>> {
 protected:
  void SetUp() override {
    before_ = std::setlocale(LC_ALL, nullptr);
    for (const char* name : GetParam())
      if (std::setlocale(LC_ALL, name) != nullptr) return;
    FAIL() << "no such locale on this machine";
  }
  void TearDown() override { std::setlocale(LC_ALL, before_.c_str()); }
  std::string before_;
};

TEST_P(DateFormats, GoRoundThroughEveryOtherOfTheirGroup) {
  const CalendarDate dates[] = {{2024, 2, 29}, {1999, 12, 31}, {2000, 1, 1},
                                {2029, 10, 5}, {1930, 3, 9},   {2005, 11, 30}};
  int pairs = 0;
  for (int from = 0; from < kDateFormatCount; ++from)
    for (int to = 0; to < kDateFormatCount; ++to) {
      if (group_of(from) != group_of(to)) continue;
      ++pairs;
      for (const CalendarDate date : dates) {
        const std::wstring text = written(from, date);
        const std::wstring moved = format_date(text, date_format_text(to));
        ASSERT_EQ(moved, written(to, date)) << from << " to " << to;
        ASSERT_EQ(format_date(moved, from), text) << to << " back to " << from;
        ASSERT_TRUE(is_valid_date(text, to));
      }
    }
  EXPECT_EQ(pairs, 5 * 12 * 12 + 2 * 9 * 9);  // the sizes of the seven groups
}

TEST_P(DateFormats, AreFoundInAnyCaseAndAreAllDifferent) {
  std::set<std::wstring_view> seen;
  for (int format = 0; format < kDateFormatCount; ++format) {
    std::wstring upper(date_format_text(format));
    for (wchar_t& c : upper) c = c >= L'a' ? static_cast<wchar_t>(c - 32) : c;
    EXPECT_EQ(find_date_format(upper), format);
    seen.insert(date_format_text(format));
  }
  EXPECT_EQ(seen.size(), static_cast<size_t>(kDateFormatCount));
  EXPECT_EQ(date_format_text(0), L"yyyy/mm/dd");
  EXPECT_EQ(date_format_text(25), L"yyyy-mm-dd");
  EXPECT_EQ(date_format_text(36), L"dd/mm");
  EXPECT_EQ(date_format_text(54), L"mm/yyyy");
  EXPECT_EQ(date_format_text(77), L"yy.m");
  EXPECT_EQ(date_format_text(-1), L"");
  EXPECT_EQ(date_format_text(78), L"");
}

const std::vector<const char*> kPlain = {"C"};
const std::vector<const char*> kOfUsers = {"pt_BR.UTF-8", "Portuguese_Brazil", "de_DE.UTF-8",
                                           "C.UTF-8",     "English",           ""};
INSTANTIATE_TEST_SUITE_P(Locales, DateFormats, testing::Values(kPlain, kOfUsers));

struct Case {
  const wchar_t* text;
  const wchar_t* format;
  const wchar_t* result;
};

void expect_all(std::initializer_list<Case> cases) {
  for (const Case& c : cases)
    EXPECT_EQ(format_date(c.text, c.format), c.result)
        << testing::PrintToString(std::wstring(c.text)) << " as "
        << testing::PrintToString(std::wstring(c.format));
}

TEST(FormatDate, FindsAYearOfFourDigitsWhereverItStands) {
  expect_all({{L"2024-02-29", L"dd/mm/yyyy", L"29/02/2024"},
              {L"29/02/2024", L"yyyy-mm-dd", L"2024-02-29"},
              {L"2024.2.29", L"mm/dd/yyyy", L"02/29/2024"},
              {L"02-29-2024", L"m.d.yy", L"2.29.24"},
              {L"29/2024/02", L"dd/mm/yyyy", L"29/02/2024"},
              {L"02/2024/29", L"yy/m/d", L"24/2/29"},
              {L"2024/02", L"mm/yyyy", L"02/2024"},
              {L"02/2024", L"yyyy.m", L"2024.2"}});
}

TEST(FormatDate, PicksTheFieldsOfAShortFormatFromAWholeDate) {
  expect_all({{L"29/02/2024", L"dd/mm", L"29/02"},
              {L"29/02/2024", L"mm/dd", L"02/29"},
              {L"2024-02-29", L"d.m", L"29.2"},
              {L"9/2/24", L"mm-yyyy", L"02-2024"},
              {L"2024-02-29", L"yy/m", L"24/2"},
              {L"2024/02", L"dd/mm", L""},
              {L"02/2024", L"mm/dd", L""}});
}

TEST(FormatDate, CompletesShortYearsAndKeepsLongOnes) {
  expect_all({{L"1/1/0", L"yyyy-mm-dd", L"2001-01-00"},
              {L"1/1/0", L"dd/mm/yyyy", L"01/01/2000"},
              {L"1/1/29", L"dd/mm/yyyy", L"01/01/2029"},
              {L"1/1/30", L"dd/mm/yyyy", L"01/01/1930"},
              {L"1/1/99", L"d/m/yyyy", L"1/1/1999"},
              {L"1/1/5", L"d/m/yy", L"1/1/05"},
              {L"1/1/999", L"d/m/yyyy", L"1/1/999"},
              {L"1/1/999", L"d/m/yy", L"1/1/99"},
              {L"1/1/0024", L"d/m/yyyy", L"1/1/0024"}});
}

TEST(FormatDate, KeepsNumbersThatAreNoDateAndRefusesRubbish) {
  expect_all({{L"32/13/2024", L"d-m-yyyy", L"32-13-2024"},
              {L"007/1/2024", L"d-m-yyyy", L"7-1-2024"},
              {L"123/1/2024", L"dd-mm-yyyy", L"123-01-2024"},
              {L"29/02/2024 10:30", L"yyyy-mm-dd", L"2024-02-29"},
              {L"  29/02/2024", L"yyyy-mm-dd", L"2024-02-29"},
              {L"29.02-2024", L"dd/mm/yyyy", L"29/02/2024"},
              {L"", L"dd/mm/yyyy", L""},
              {L" ", L"dd/mm", L""},
              {L"29", L"dd/mm", L""},
              {L"29/02", L"dd/mm/yyyy", L""},
              {L"29//2024", L"dd/mm/yyyy", L""},
              {L"29/02/2024/", L"dd/mm/yyyy", L""},
              {L"29/02/2024/1", L"dd/mm/yyyy", L""},
              {L"29/fev/2024", L"dd/mm/yyyy", L""},
              {L"-1/02/2024", L"dd/mm/yyyy", L""},
              {L"+1/02/2024", L"dd/mm/yyyy", L""},
              {L"1/2/99999999999999999999", L"dd/mm/yyyy", L""},
              {L"29022024", L"dd/mm/yyyy", L""},
              {L"٢٩/٠٢/٢٠٢٤", L"dd/mm/yyyy", L""}});
}

TEST(FormatDate, GivesTheTextBackForAnUnknownFormat) {
  expect_all({{L" 29/02/2024 ", L"dd/mm-yyyy", L" 29/02/2024 "},
              {L"29/02/2024", L"dd/m/yyyy", L"29/02/2024"},
              {L"29/02/2024", L"", L"29/02/2024"},
              {L"rubbish", L" dd/mm/yyyy", L"rubbish"},
              {L"rubbish", L"dd/mm/yyyy ", L"rubbish"},
              {L"29/02/2024", L"DD/Mm/yYYY", L"29/02/2024"}});
  EXPECT_EQ(format_date(L"1/2/3", 78), L"1/2/3");
  EXPECT_EQ(format_date(L"1/2/3", -1), L"1/2/3");
}

int format_number(const wchar_t* format) {
  return find_date_format(format).value();
}

TEST(IsValidDate, LooksAtTheYearTheTextTells) {
  const struct {
    const wchar_t* text;
    const wchar_t* format;
    bool valid;
  } cases[] = {{L"29/02/2024", L"dd/mm/yyyy", true},
               {L"29/02/2023", L"dd/mm/yyyy", false},
               {L"29/02/1900", L"dd/mm/yy", false},
               {L"29/02/00", L"dd/mm/yy", true},
               {L"29/02", L"dd/mm", true},
               {L"30/02", L"dd/mm", false},
               {L"29/02/2023", L"dd/mm", false},
               {L"29/02/2024", L"dd/mm", true},
               {L"31/02/2024", L"mm/yyyy", false},
               {L"13/2024", L"mm/yyyy", false},
               {L"00/2024", L"mm/yyyy", false},
               {L"12/2024", L"mm/yyyy", true},
               {L"31/04/2024", L"dd/mm/yyyy", false},
               {L"32/01/2024", L"dd/mm/yyyy", false},
               {L"0/1/2024", L"d/m/yyyy", false},
               {L"1/0/2024", L"d/m/yyyy", false},
               {L"12/31/2024", L"mm/dd/yyyy", true},
               {L"31/12/2024", L"mm/dd/yyyy", false},
               {L"1/1/0000", L"d/m/yyyy", false},
               {L"1/1/0099", L"d/m/yyyy", false},
               {L"1/1/100", L"d/m/yyyy", true},
               {L"1/1/10000", L"d/m/yyyy", false},
               {L"", L"dd/mm/yyyy", false},
               {L"hoje", L"dd/mm/yyyy", false},
               {L"1/1/2024 rubbish", L"d/m/yyyy", true}};
  for (const auto& c : cases)
    EXPECT_EQ(is_valid_date(c.text, format_number(c.format)), c.valid)
        << testing::PrintToString(std::wstring(c.text));
  EXPECT_FALSE(is_valid_date(L"01/01/2024", 78));
  EXPECT_FALSE(is_valid_date(L"01/01/2024", -1));
}

TEST(IsValidDate, AgreesWithTheCalendarOverACentury) {
  const int format = format_number(L"d.m.yyyy");
  for (int year = 1899; year <= 2001; ++year)
    for (int month = 0; month <= 13; ++month)
      for (int day = 0; day <= 32; ++day) {
        const std::wstring text =
            std::to_wstring(day) + L"/" + std::to_wstring(month) + L"/" + std::to_wstring(year);
        const bool real = is_real_date({year, month, day});
        ASSERT_EQ(is_valid_date(text, format), real);
        ASSERT_EQ(parse_date(text, format),
                  real ? std::optional(CalendarDate{year, month, day}) : std::nullopt);
      }
}

TEST(ParseDate, NeedsAWholeDate) {
  EXPECT_EQ(parse_date(L"9/2/24", format_number(L"d/m/yy")), (CalendarDate{2024, 2, 9}));
  EXPECT_EQ(parse_date(L"2024-02-09", format_number(L"dd/mm")), (CalendarDate{2024, 2, 9}));
  EXPECT_EQ(parse_date(L"09/02", format_number(L"dd/mm")), std::nullopt);
  EXPECT_EQ(parse_date(L"02/2024", format_number(L"mm/yyyy")), std::nullopt);
  EXPECT_EQ(parse_date(L"9/2/24", 99), std::nullopt);
}

}  // namespace
}  // namespace kestrelon
