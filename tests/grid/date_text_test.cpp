#include "grid/values/date_text.h"

#include <gtest/gtest.h>

#include "base/calendar.h"
#include "grid/fixed_locale_rules.h"

namespace kestrelon {
namespace {

TEST(CellDate, ReadsByTheLocaleAndIsoEverywhere) {
  const FixedLocaleRules brazil = brazilian_locale_rules(), america = american_locale_rules();
  const auto day = [](int year, int month, int number) {
    return std::optional<double>(day_number({year, month, number}));
  };
  const struct {
    const wchar_t* text;
    std::optional<double> brazil, america;
  } cases[] = {
      {L"03/04/2012", day(2012, 4, 3), day(2012, 3, 4)},
      {L" 3-4-12 ", day(2012, 4, 3), day(2012, 3, 4)},
      {L"3.4.29", day(2029, 4, 3), day(2029, 3, 4)},
      {L"3.4.30", day(1930, 4, 3), day(1930, 3, 4)},
      {L"25/12/2012", day(2012, 12, 25), day(2012, 12, 25)},
      {L"12/25/2012", day(2012, 12, 25), day(2012, 12, 25)},
      {L"2012-04-03", day(2012, 4, 3), day(2012, 4, 3)},
      {L"2012/04/03", day(2012, 4, 3), day(2012, 4, 3)},
      {L"2012-13-01", {}, {}},
      {L"29/02/2012", day(2012, 2, 29), day(2012, 2, 29)},
      {L"29/02/2013", {}, {}},
      {L"31/31/2012", {}, {}},
      {L"03/2012/04", {}, {}},
      {L"03/04-2012", {}, {}},
      {L"03/04", {}, {}},
      {L"03 04 2012", {}, {}},
      {L"03/04/2012x", {}, {}},
      {L"03/04/2012 ", day(2012, 4, 3), day(2012, 3, 4)},
      {L"03/04/20123", {}, {}},
      {L"0/1/2012", {}, {}},
      {L"", {}, {}},
      {L"12", {}, {}},
      {L"12,5", {}, {}},
      {L"12:00", 0.5, 0.5},
      {L"06:00 pm", 0.75, 0.75},
      {L"12:00 AM", 0.0, 0.0},
      {L"13:00 PM", {}, {}},
      {L"24:00", {}, {}},
      {L"10:60", {}, {}},
      {L"2012-04-03T18:00:00", *day(2012, 4, 3) + 0.75, *day(2012, 4, 3) + 0.75},
      {L"01/01/1899 12:00", *day(1899, 1, 1) - 0.5, *day(1899, 1, 1) - 0.5},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(cell_date(c.text, brazil), c.brazil) << std::string(c.text, c.text + wcslen(c.text));
    EXPECT_EQ(cell_date(c.text, america), c.america);
  }
}

TEST(CellDate, WrittenTextsReadBack) {
  for (const auto& rules : {&brazilian_locale_rules, &american_locale_rules}) {
    const FixedLocaleRules locale = rules();
    for (const double value : {41000.0, 41000.25, 0.0, 0.5, -400.5, 2958465.0, -657434.0})
      EXPECT_EQ(cell_date(date_text(value, locale.facts()), locale), value) << value;
  }
  const FixedLocaleRules brazil = brazilian_locale_rules();
  EXPECT_EQ(date_text(41000.75, brazil.facts()), L"01/04/2012 18:00:00");
  EXPECT_EQ(date_text(0.75, brazil.facts()), L"18:00:00");
  EXPECT_EQ(date_text(1e9, brazil.facts()), L"");
}

}  // namespace
}  // namespace kestrelon
