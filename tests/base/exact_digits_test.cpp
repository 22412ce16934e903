// Digits and numbers both ways, against the standard library's conversions.
#include "base/exact_digits.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

#include "base/decimal.h"

namespace kestrelon {
namespace {

using Limits = std::numeric_limits<double>;

std::string peer_text(double value, int digits) {
  char text[64];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits);
  std::string told(text, end.ptr);
  if (const size_t e = told.find('e'); e != std::string::npos) told[e] = 'E';
  return told;
}

// Numbers of every size and their neighbours at powers of two and ten.
std::vector<double> awkward_numbers() {
  std::vector<double> values = {0.0,
                                -0.0,
                                5e-324,
                                Limits::min(),
                                Limits::max(),
                                Limits::min() - 5e-324,
                                0.1 + 0.2,
                                2.2250738585072011e-308,
                                9007199254740993.0};
  for (int e = -1074; e < 1024; e += 7) values.push_back(std::ldexp(1.0, e));
  for (int e = -307; e < 308; e += 5) values.push_back(std::pow(10.0, e));
  for (size_t i = 3, count = values.size(); i < count; ++i) {
    values.push_back(std::nextafter(values[i], 0.0));
    values.push_back(-std::nextafter(values[i], 1.0));
  }
  std::mt19937_64 random(5);
  for (int i = 0; i < 3000; ++i)
    if (const auto value = std::bit_cast<double>(random()); std::isfinite(value))
      values.push_back(value);
  return values;
}

TEST(ExactDigits, TextsOfEveryLengthAgreeWithTheLibrary) {
  for (const double value : awkward_numbers())
    for (const int digits : {1, 2, 7, 9, 15, 16, 17})
      ASSERT_EQ(general_text(value, digits), peer_text(value, digits)) << digits;
  EXPECT_EQ(general_text(0.5, 1), "0.5");
  EXPECT_EQ(general_text(2.5, 1), "2") << "ties of the exact value go to the even digit";
  EXPECT_EQ(general_text(-Limits::infinity(), 3), "-inf");
  EXPECT_EQ(general_text(std::nan(""), 3), "nan");
}

TEST(ExactDigits, SeventeenDigitsComeBackEqual) {
  for (const double value : awkward_numbers()) {
    ASSERT_EQ(rounded_to(value, 17), value);
    DecimalDigits all = exact_digits(value);
    ASSERT_EQ(nearest_double(all), std::fabs(value));
  }
  EXPECT_EQ(rounded_to(Limits::max(), 3), Limits::infinity()) << "1.80e308 is beyond the range";
}

// The number in the middle of two neighbours, and the least bit more or less than it.
TEST(ExactDigits, TiesGoToTheEvenNeighbour) {
  for (const double value : {1.0, 3.0, 1e22, 1e23, 5e-324, 1.5e-323, Limits::min(), 0x1p-30,
                             0x1.fffffffffffffp+100, 8.98846567431158e307}) {
    int exponent = 0;
    const auto mantissa = static_cast<uint64_t>(std::ldexp(std::frexp(value, &exponent), 53));
    DecimalDigits middle = exact_digits(mantissa * 2 + 1, exponent - 54);
    const double above = std::nextafter(value, Limits::infinity());
    const bool normal = value >= Limits::min();
    if (!normal) middle = exact_digits(static_cast<uint64_t>(value / 5e-324) * 2 + 1, -1075);
    const bool odd = normal ? (mantissa & 1) != 0 : (static_cast<int>(value / 5e-324) & 1) != 0;
    EXPECT_EQ(nearest_double(middle), odd ? above : value) << value;
    DecimalDigits more = middle;
    more.text += std::string(800, '0') + '1';
    EXPECT_EQ(nearest_double(more), above) << value;
    --middle.text.back();
    middle.text += std::string(800, '9');
    middle.trim();
    EXPECT_EQ(nearest_double(middle), value) << value;
  }
}

TEST(ExactDigits, FixedTextsReadAsTheLibraryReadsThem) {
  std::mt19937 random(3);
  for (int i = 0; i < 20000; ++i) {
    std::string text = random() % 2 != 0 ? "-" : "";
    const auto length = random() % 40;
    const auto mark = random() % 50;
    for (unsigned k = 0; k < length; ++k) {
      if (k == mark) text += '.';
      text += static_cast<char>('0' + random() % 10);
    }
    double expected = 0;
    const auto end =
        std::from_chars(text.data(), text.data() + text.size(), expected, std::chars_format::fixed);
    const auto found = parse_fixed(text);
    ASSERT_EQ(found.has_value(), end.ec == std::errc()) << text;
    if (found) {
      ASSERT_EQ(*found, expected) << text;
    }
  }
  for (const char* text :
       {"", "-", ".", "-.", "1e5", "+1", " 1", "1 ", "1.2.3", "0x1", "inf", "--1"})
    EXPECT_FALSE(parse_fixed(text)) << text;
  EXPECT_FALSE(parse_fixed(std::string(400, '9')));
  EXPECT_EQ(parse_fixed("." + std::string(400, '0') + "9"), 0.0);
  EXPECT_EQ(parse_fixed("5."), 5.0);
}

TEST(DecimalText, HoldsEveryWholeNumber) {
  for (const int64_t value : {int64_t{0}, int64_t{-1}, int64_t{10}, INT64_MAX, INT64_MIN})
    EXPECT_EQ(decimal_text(value), std::to_wstring(value));
}

}  // namespace
}  // namespace kestrelon
