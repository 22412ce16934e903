#include "grid/values/cell_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "grid/fixed_locale_rules.h"

namespace kestrelon {
namespace {

const LocaleFacts& brazil() {
  static const FixedLocaleRules rules = brazilian_locale_rules();
  return rules.facts();
}

const LocaleFacts& america() {
  static const FixedLocaleRules rules = american_locale_rules();
  return rules.facts();
}

TEST(CellNumber, ReadsWhatPeopleWrite) {
  const struct {
    const wchar_t* text;
    double brazil, america;
  } cases[] = {
      {L"", 0, 0},
      {L"   ", 0, 0},
      {L"12", 12, 12},
      {L"1.234,56", 1234.56, 0},
      {L"1,234.56", 0, 1234.56},
      {L"1,5", 1.5, 15},
      {L"1.5", 15, 1.5},
      {L"1.234.567", 1234567, 0},
      {L",5", 0.5, 0},
      {L"5,", 5, 5},
      {L"1 234", 1234, 1234},
      {L"1\u00A0234", 1234, 1234},
      {L"R$ 10", 10, 10},
      {L"r$10", 10, 10},
      {L"10 R$", 10, 10},
      {L"-R$ 10", -10, -10},
      {L"R$ -10", -10, -10},
      {L"US$10", 10, 10},
      {L"10\u20AC", 10, 10},
      {L"\u00A310", 10, 10},
      {L"$-7", -7, -7},
      {L"10 R$ 5", 10, 10},
      {L"-10 R$ 5", -10, -10},
      {L"+5", 5, 5},
      {L"+-5", 0, 0},
      {L"5-", -5, -5},
      {L"-5-", 0, 0},
      {L"5-3", 0, 0},
      {L"2020-01-05", 0, 0},
      {L"(5)", -5, -5},
      {L"(R$ 5)", -5, -5},
      {L"R$ (5)", -5, -5},
      {L"(5 \u20AC)", -5, -5},
      {L"(5", 0, 0},
      {L"5)", 5, 5},
      {L"(-5)", 0, 0},
      {L"()", 0, 0},
      {L"12 kg", 12, 12},
      {L"12/05/2020", 12, 12},
      {L"45%", 45, 45},
      {L"2E3", 2, 2},
      {L"kg 12", 0, 0},
      {L"-", 0, 0},
      {L".", 0, 0},
      {L"&HFF", 255, 255},
      {L"&hffz", 255, 255},
      {L"&HFFFFFFFF", 4294967295.0, 4294967295.0},
      {L"&HFFFFFFFFFFFFFFFFF", 0, 0},
      {L"&H", 0, 0},
      {L"&H-5", 0, 0},
      {L"&O17", 15, 15},
      {L"&O18", 0, 0},
      {L"true", -1, -1},
      {L" True ", -1, -1},
      {L"False", 0, 0},
      {L"Verdadeiro", -1, 0},
      {L"Trueish", 0, 0},
      {L"-true", 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(cell_number(c.text, brazil()), c.brazil)
        << std::string(c.text, c.text + wcslen(c.text));
    EXPECT_EQ(cell_number(c.text, america()), c.america)
        << std::string(c.text, c.text + wcslen(c.text));
  }
}

TEST(CellNumber, RoundsOnceFromTheDecimalText) {
  EXPECT_EQ(cell_number(L"0,1", brazil()), 0.1);
  EXPECT_EQ(cell_number(L"9007199254740993", brazil()), 9007199254740992.0);
  EXPECT_EQ(cell_number(L"12345678901234567890", brazil()), 12345678901234567890.0);
  EXPECT_EQ(cell_number(L"0,30000000000000004", brazil()), 0.30000000000000004);
  EXPECT_EQ(cell_number(std::wstring(L"0,") + std::wstring(400, L'0') + L"1", brazil()), 0);
  EXPECT_EQ(cell_number(std::wstring(309, L'0') + L"7", brazil()), 7);
  EXPECT_EQ(cell_number(L"1" + std::wstring(308, L'0'), brazil()), 1e308);
  EXPECT_EQ(cell_number(L"2" + std::wstring(308, L'0'), brazil()), 0) << "beyond the range";
  EXPECT_EQ(cell_number(std::wstring(100000, L'9'), brazil()), 0);
  EXPECT_EQ(cell_number(L"1," + std::wstring(100000, L'9'), brazil()), 2);
  EXPECT_FALSE(std::signbit(cell_number(L"-0", brazil())));
}

TEST(CellNumber, ShortWaysGiveWhatTheLongOneGives) {
  constexpr wchar_t kUnits[] = L"0123456789012345678901234567890123456789,,,..-( )R$T";
  std::mt19937 random(8);
  for (int round = 0; round < 100000; ++round) {
    std::wstring text;
    for (size_t i = random() % 19; i > 0; --i) text += kUnits[random() % (std::size(kUnits) - 1)];
    for (const LocaleFacts* facts : {&brazil(), &america()})
      ASSERT_EQ(cell_number(text, *facts), read_number(text, *facts).to_double())
          << std::string(text.begin(), text.end());
  }
}

TEST(CellNumber, KeepsEveryDigitAndTellsWhetherAnythingWasLeft) {
  const CellNumber twenty = read_number(L"-12.345.678.901.234.567.890,50", brazil());
  EXPECT_EQ(twenty.digits(), "1234567890123456789050");
  EXPECT_EQ(twenty.scale(), 2);
  EXPECT_TRUE(twenty.negative());
  EXPECT_TRUE(twenty.whole_text());
  EXPECT_TRUE(read_number(L" (R$ 5 ) ", brazil()).whole_text());
  EXPECT_TRUE(read_number(L"&HFF", brazil()).whole_text());
  for (const wchar_t* text : {L"12 kg", L"12/05/2020", L"", L"R$", L"true", L"5-3", L"10 R$ 5"})
    EXPECT_FALSE(read_number(text, brazil()).whole_text());
}

}  // namespace
}  // namespace kestrelon
