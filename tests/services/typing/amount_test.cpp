#include "services/typing/amount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrelon {
namespace {

std::wstring shown(std::wstring_view text, size_t places = 4, AmountMarks marks = {}) {
  const std::optional<Amount> amount = read_amount(text, marks);
  return amount ? format_amount(*amount, places, marks) : L"-";
}

TEST(ReadAmount, UnderstandsWhatPeopleWrite) {
  const struct {
    const wchar_t *text, *shown;
  } cases[] = {{L"1234,5", L"1.234,5000"},
               {L"R$1.234,56", L"1.234,5600"},
               {L"-R$ 1.234,56", L"-1.234,5600"},
               {L"R$ -1,5", L"-1,5000"},
               {L"R$\x00A0"
                L"7",
                L"7,0000"},
               {L"\x2212"
                L"3",
                L"-3,0000"},
               {L"(1,5)", L"-1,5000"},
               {L"1,5-", L"-1,5000"},
               {L"USD 10.50", L"10,5000"},
               {L"10 BRL", L"10,0000"},
               {L"1 234 567,8", L"1.234.567,8000"},
               {L"1'234.50", L"1.234,5000"},
               {L",5", L"0,5000"},
               {L"5,", L"5,0000"},
               {L"+7", L"7,0000"},
               {L"000123", L"123,0000"},
               {L"-0", L"0,0000"},
               {L"0.001", L"0,0010"}};
  for (const auto& c : cases) EXPECT_EQ(shown(c.text), c.shown);
}

TEST(ReadAmount, RefusesWhatIsNoNumber) {
  for (const wchar_t* text :
       {L"", L"abc", L"-", L",", L"1-2", L"12/05/2026", L"12 kg", L"5 maçãs", L"--5", L"(5", L"5)",
        L"-(5)", L"1a2", L"1.234,567.89", L"1e5", L"(11) 98765-4321", L"R$", L"casa 5"})
    EXPECT_EQ(shown(text), L"-") << std::wstring(text).size();
}

TEST(ReadAmount, TellsALoneMarkByTheFieldAndByThreeDigits) {
  constexpr AmountMarks kPoint{L'.', L','};
  EXPECT_EQ(shown(L"1.234"), L"1.234,0000");
  EXPECT_EQ(shown(L"1,234"), L"1,2340");
  EXPECT_EQ(shown(L"1.234", 3, kPoint), L"1.234");
  EXPECT_EQ(shown(L"1,234", 3, kPoint), L"1,234.000");
  EXPECT_EQ(shown(L"1234.567"), L"1.234,5670");
  EXPECT_EQ(shown(L"0.567"), L"0,5670");
  EXPECT_EQ(shown(L".567"), L"0,5670");
  EXPECT_EQ(shown(L"1.23"), L"1,2300");
}

TEST(RoundPlaces, GoesAwayFromZeroAtTheHalfAndCarries) {
  EXPECT_EQ(shown(L"0,005", 2), L"0,01");
  EXPECT_EQ(shown(L"-0,005", 2), L"-0,01");
  EXPECT_EQ(shown(L"0,00499999999999999999999", 2), L"0,00");
  EXPECT_EQ(shown(L"999,995", 2), L"1.000,00");
  EXPECT_EQ(shown(L"1,005", 2), L"1,01");  // below the half as a binary fraction
  EXPECT_EQ(shown(L"0,5", 0), L"1");
  EXPECT_EQ(shown(L"-0,4", 0), L"0");
  EXPECT_EQ(shown(L"99999999999999999999,5", 0), L"100.000.000.000.000.000.000");
}

Amount amount(std::wstring_view text) {
  return *read_amount(text, {});
}

TEST(Amounts, CompareBySignAndEveryDigit) {
  EXPECT_LT(amount(L"-2"), amount(L"-1,999"));
  EXPECT_LT(amount(L"-1"), amount(L"0"));
  EXPECT_EQ(amount(L"-0,00"), amount(L"0"));
  EXPECT_EQ(amount(L"1,50"), amount(L"1,5"));
  EXPECT_LT(amount(L"9"), amount(L"10"));
  EXPECT_LT(amount(L"1,05"), amount(L"1,5"));
  EXPECT_LT(amount(L"99999999999999999999,01"), amount(L"99999999999999999999,02"));
}

TEST(Amounts, AddWholeNumbersOverTheSign) {
  const auto sum = [](std::wstring_view text, int addend) {
    return format_amount(plus(amount(text), addend), 2, {});
  };
  EXPECT_EQ(sum(L"999,50", 1), L"1.000,50");
  EXPECT_EQ(sum(L"0,30", -1), L"-0,70");
  EXPECT_EQ(sum(L"-0,30", 1), L"0,70");
  EXPECT_EQ(sum(L"-1", 1), L"0,00");
  EXPECT_EQ(sum(L"1", -1), L"0,00");
  EXPECT_EQ(sum(L"-1,25", -1), L"-2,25");
  EXPECT_EQ(sum(L"0", std::numeric_limits<int>::min()), L"-2.147.483.648,00");
}

TEST(Amounts, PassDoublesWithFifteenDigits) {
  const auto text = [](double value) { return format_amount(amount_of(value), 3, {}); };
  EXPECT_EQ(text(0.1 + 0.2), L"0,300");
  EXPECT_EQ(text(1.005), L"1,005");
  EXPECT_EQ(text(-1234567.891), L"-1.234.567,891");
  EXPECT_EQ(text(1e20), L"100.000.000.000.000.000.000,000");
  EXPECT_EQ(text(1e-20), L"0,000");
  EXPECT_EQ(text(std::nan("")), L"0,000");
  EXPECT_EQ(text(std::numeric_limits<double>::infinity()), L"0,000");
  EXPECT_EQ(text(-0.0), L"0,000");
  EXPECT_EQ(to_double(amount(L"-1.234,56")), -1234.56);
  EXPECT_EQ(to_double(amount(L",5")), 0.5);
  EXPECT_EQ(to_double(amount(L"12345678901234567890")), 12345678901234567890.0);
  EXPECT_FALSE(std::signbit(to_double(amount(L"-0"))));
}

}  // namespace
}  // namespace kestrelon
