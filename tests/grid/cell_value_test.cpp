#include "grid/values/cell_value.h"

#include <gtest/gtest.h>

#include "base/calendar.h"
#include "grid/fixed_locale_rules.h"

namespace kestrelon {
namespace {

class CellValue : public ::testing::Test {
 protected:
  const FixedLocaleRules brazil = brazilian_locale_rules();
};

TEST_F(CellValue, FollowsTheColumnsType) {
  const double day = day_number({2012, 5, 3});
  EXPECT_EQ(cell_value(L"R$ 1,5", false, GridDataType::Numeric, brazil), GridValue(1.5));
  EXPECT_EQ(cell_value(L"03/05/2012", false, GridDataType::Date, brazil), GridValue(GridDate{day}));
  EXPECT_EQ(cell_value(L"logo", false, GridDataType::Date, brazil),
            GridValue(std::wstring(L"logo")));
  EXPECT_EQ(cell_value(L"False", true, GridDataType::Boolean, brazil), GridValue(true));
  EXPECT_EQ(cell_value(L"1,5", true, GridDataType::String, brazil),
            GridValue(std::wstring(L"1,5")));
}

TEST_F(CellValue, WrittenValuesReadBack) {
  const double moment = day_number({1850, 1, 2}) - 0.25;
  for (const auto& [value, type] : {std::pair<GridValue, GridDataType>{1e21, GridDataType::Numeric},
                                    {-0.1, GridDataType::Numeric},
                                    {GridDate{moment}, GridDataType::Date},
                                    {GridDate{0}, GridDataType::Date}})
    EXPECT_EQ(cell_value(text_of_value(value, brazil), false, type, brazil), value);
  EXPECT_EQ(text_of_value(true, brazil), L"True");
  EXPECT_EQ(text_of_value(GridDate{1e30}, brazil), L"");
}

TEST_F(CellValue, DisplayLeavesWhatIsNoNumberOrDate) {
  const auto number = [&](const wchar_t* text) {
    return display_text(text, GridDataType::Numeric, L"#,##0.00", brazil);
  };
  EXPECT_EQ(number(L"1234,5"), L"1.234,50");
  EXPECT_EQ(number(L"(R$ 5)"), L"-5,00");
  for (const wchar_t* text : {L"", L"a combinar", L"12 kg", L"12/05/2020", L"True", L"5-3"})
    EXPECT_EQ(number(text), text);
  EXPECT_EQ(display_text(L"5", GridDataType::String, L"0.00", brazil), L"5");
  EXPECT_EQ(display_text(L"5", GridDataType::Numeric, L"", brazil), L"5");
}

TEST_F(CellValue, DisplayReadsDatesByTheLocaleWhateverTheFormat) {
  const auto date = [&](const wchar_t* text, const wchar_t* format) {
    return display_text(text, GridDataType::Date, format, brazil);
  };
  EXPECT_EQ(date(L"3/4/2012", L"mm/dd/yyyy"), L"04/03/2012");
  EXPECT_EQ(date(L"3/4/2012 10:30", L"yyyy-mm-dd"), L"2012-04-03");
  EXPECT_EQ(date(L"2012-04-03", L"dd/mm/yy"), L"03/04/12");
  EXPECT_EQ(date(L"03/04/0500", L"d/m/yyyy"), L"3/4/0500");
  EXPECT_EQ(date(L"2012-04-03", L"mm/yyyy"), L"04/2012");
  EXPECT_EQ(date(L"03/04", L"d-m"), L"3-4");
  EXPECT_EQ(date(L"logo", L"dd/mm/yyyy"), L"logo");
  EXPECT_EQ(date(L"3/4/2012", L"unknown"), L"3/4/2012");
}

TEST_F(CellValue, ProgressTakesTheTextsNumberElseTheWord) {
  const auto shown = [&](const wchar_t* text, int16_t word) {
    return cell_progress(text, word, brazil.facts());
  };
  EXPECT_EQ(shown(L"45", 10).percent, 45);
  EXPECT_EQ(shown(L"45", 10).caption, L"");
  EXPECT_EQ(shown(L"45,5 %", -1).percent, 46);
  EXPECT_EQ(shown(L"1000", 0).percent, 100);
  EXPECT_EQ(shown(L"-3", 50).percent, -1);
  EXPECT_EQ(shown(L"", 30).percent, 30);
  EXPECT_EQ(shown(L"", -1).percent, -1);
  EXPECT_EQ(shown(L"", -300).percent, -1);
  EXPECT_EQ(shown(L"", 300).percent, 100);
  EXPECT_EQ(shown(L"enviando 3", 30).percent, 30);
  EXPECT_EQ(shown(L"enviando 3", 30).caption, L"enviando 3");
}

}  // namespace
}  // namespace kestrelon
