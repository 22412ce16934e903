#include "base/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace kestrelon {
namespace {

TEST(FormatFixed, RoundsHalvesAwayFromZeroInDecimal) {
  const struct {
    double value;
    int decimals;
    const wchar_t* text;
  } cases[] = {{0.5, 0, L"1"},
               {1.5, 0, L"2"},
               {2.5, 0, L"3"},
               {-2.5, 0, L"-3"},
               {0.49, 0, L"0"},
               {1.005, 2, L"1.01"},
               {0.125, 2, L"0.13"},
               {9.995, 2, L"10.00"},
               {99.95, 1, L"100.0"},
               {0.04, 1, L"0.0"},
               {0.05, 1, L"0.1"},
               {0.004, 1, L"0.0"},
               {-0.004, 2, L"0.00"},
               {-0.0, 1, L"0.0"},
               {0, 2, L"0.00"},
               {1e15, 2, L"1000000000000000.00"},
               {123456789012345678.0, 0, L"123456789012346000"},
               {5e-324, 3, L"0.000"},
               {0.9999, 3, L"1.000"},
               {1234.5, 1, L"1234.5"}};
  for (const auto& c : cases) EXPECT_EQ(format_fixed(c.value, c.decimals), c.text) << c.value;
}

TEST(FormatFixed, AgreesWithTheLibraryAwayFromHalves) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> mantissa(-1000, 1000);
  for (int i = 0; i < 20000; ++i) {
    const double value = mantissa(random);
    for (int decimals = 0; decimals <= 6; ++decimals) {
      char expected[64];
      const int length = std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
      std::wstring wide(expected, expected + length);
      if (wide.find_first_of(L"123456789") == std::wstring::npos && wide[0] == L'-')
        wide.erase(0, 1);
      ASSERT_EQ(format_fixed(value, decimals), wide) << value;
    }
  }
}

TEST(FormatFixed, TakesTheMarkGivenAndNoNumberThatIsNone) {
  EXPECT_EQ(format_fixed(-1.25, 2, L','), L"-1,25");
  EXPECT_EQ(format_fixed(3, 0, L','), L"3");
  EXPECT_EQ(format_fixed(std::nan(""), 2), L"");
  EXPECT_EQ(format_fixed(-std::numeric_limits<double>::infinity(), 2), L"");
  EXPECT_EQ(format_fixed(std::numeric_limits<double>::max(), 0).size(), 309u);
}

}  // namespace
}  // namespace kestrelon
