#include "grid/values/number_format.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "base/decimal.h"
#include "grid/fixed_locale_rules.h"

namespace kestrelon {
namespace {

class NumberFormat : public ::testing::Test {
 protected:
  std::wstring shown(const wchar_t* text, const wchar_t* format) const {
    return format_number(read_number(text, facts), format, facts);
  }
  const FixedLocaleRules brazil = brazilian_locale_rules();
  const LocaleFacts& facts = brazil.facts();
};

TEST_F(NumberFormat, FillsPlacesGroupsAndSections) {
  const struct {
    const wchar_t *text, *format, *shown;
  } cases[] = {
      {L"1234,5", L"#,##0.00", L"1.234,50"},
      {L"-1234,5", L"#,##0.00", L"-1.234,50"},
      {L"0", L"#,##0.00", L"0,00"},
      {L"0,005", L"0.00", L"0,01"},
      {L"-0,004", L"0.00", L"0,00"},
      {L"999,995", L"#,##0.00", L"1.000,00"},
      {L"123456789", L"#,##0", L"123.456.789"},
      {L"12", L"#,##0,000", L"0.012"},
      {L"5", L"0000", L"0005"},
      {L"5", L"0,000", L"0.005"},
      {L"0", L"#,###", L""},
      {L"5", L"#.##", L"5,"},
      {L"0,5", L"#.##", L",5"},
      {L"1,10", L"0.0##", L"1,1"},
      {L"12,5", L".00", L"12,50"},
      {L"12,5", L"R$ .00", L"R$ 12,50"},
      {L"1234567", L"#,##0,", L"1.235"},
      {L"1234567890", L"0.0,,", L"1234567890,0"},
      {L"0,256", L"0%", L"26%"},
      {L"0,256", L"0.0%", L"25,6%"},
      {L"12345678901", L"000\\.000\\.000-00", L"123.456.789-01"},
      {L"1234", L"000-00", L"012-34"},
      {L"1234567", L"00-00", L"12345-67"},
      {L"5", L"\"R$ \"0.00", L"R$ 5,00"},
      {L"5", L"0 \"un;id\"", L"5 un;id"},
      {L"-5", L"0.00;(0.00)", L"(5,00)"},
      {L"-0,001", L"0.00;(0.00)", L"0,00"},
      {L"-0,001", L"0.00;(0.00);\"zero\"", L"zero"},
      {L"0", L"0.00;(0.00);\"-\"", L"-"},
      {L"-5", L"0.00;;\"-\"", L"-5,00"},
      {L"5", L"abc", L"abc"},
      {L"5", L"\"unclosed", L"unclosed"},
      {L"5", L"0\\", L"5\\"},
      {L"12345", L"0.00E+00", L"1,23E+04"},
      {L"99999", L"0.00E+00", L"1,00E+05"},
      {L"0,00012", L"0.0E-0", L"1,2E-4"},
      {L"0", L"0.00E+00", L"0,00E+00"},
      {L"12345", L"0E+0", L"1E+4"},
      {L"12345678901234567890,125", L"#,##0.00", L"12.345.678.901.234.567.890,13"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(shown(c.text, c.format), c.shown)
        << std::string(c.text, c.text + wcslen(c.text)) << " by "
        << std::string(c.format, c.format + wcslen(c.format));
}

TEST_F(NumberFormat, KnowsTheNamedFormatsOfTheLocale) {
  EXPECT_EQ(shown(L"-1234,5", L"currency"), L"-R$ 1.234,50");
  EXPECT_EQ(shown(L"-0,001", L"Currency"), L"R$ 0,00");
  EXPECT_EQ(shown(L"1234,5", L"Standard"), L"1.234,50");
  EXPECT_EQ(shown(L"1234,5", L"Fixed"), L"1234,50");
  EXPECT_EQ(shown(L"0,5", L"Percent"), L"50,00%");
  EXPECT_EQ(shown(L"1234,50", L"General Number"), L"1234,5");
  EXPECT_EQ(shown(L"1", L"Yes/No"), L"Sim");
  EXPECT_EQ(shown(L"0", L"true/false"), L"Falso");
  const FixedLocaleRules america = american_locale_rules();
  EXPECT_EQ(format_number(CellNumber(true, 12345, 1), L"Currency", america.facts()),
            L"($1,234.50)");
}

TEST_F(NumberFormat, AgreesWithTheDecimalWriterOnFixedPlaces) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 20000; ++round) {
    const auto cents = static_cast<int64_t>(random() % 20000000000) - 10000000000;
    const int places = static_cast<int>(random() % 4);
    const CellNumber number(cents < 0, static_cast<uint64_t>(cents < 0 ? -cents : cents), 3);
    std::wstring format = L"0";
    if (places > 0) format += L"." + std::wstring(static_cast<size_t>(places), L'0');
    ASSERT_EQ(format_number(number, format, facts), format_fixed(number.to_double(), places, L','))
        << cents;
  }
}

TEST_F(NumberFormat, PlainNumbersReadBackExactlyWithoutExponents) {
  std::mt19937_64 random(4);
  std::vector<double> values = {0.1,
                                1e15,
                                1e22,
                                1e308,
                                5e-324,
                                -2.5e-7,
                                0.30000000000000004,
                                std::numeric_limits<double>::max()};
  for (int i = 0; i < 5000; ++i) values.push_back(std::bit_cast<double>(random()));
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    const std::wstring text = plain_number(value, facts);
    ASSERT_EQ(cell_number(text, facts), value);
    ASSERT_EQ(text.find(L'e'), std::wstring::npos);
  }
  EXPECT_EQ(plain_number(1e22, facts), L"10000000000000000000000");
  EXPECT_EQ(plain_number(-0.5, facts), L"-0,5");
  EXPECT_EQ(plain_number(-0.0, facts), L"0");
  EXPECT_EQ(plain_number(std::numeric_limits<double>::infinity(), facts), L"");
}

}  // namespace
}  // namespace kestrelon
