// Decimal digits of binary floating numbers, exactly, with no locale and no tables.
#pragma once

#include <cstdint>
#include <string>

namespace kestrelon {

/// The number 0.text x 10^whole. No zeros at either end; zero has no digits.
struct DecimalDigits {
  std::string text;
  int whole = 0;

  /// Drops the zeros at both ends.
  void trim();
  /// Keeps the first `count` digits of an exact number, ties to the even digit.
  void round_to_even(size_t count);
  /// The same with ties away from zero; below the first digit by one and more nothing is left.
  void round_away(int count);

 private:
  void keep(size_t count, bool up);
};

/// All digits of mantissa x 2^exponent.
DecimalDigits exact_digits(uint64_t mantissa, int exponent);
/// All digits of |value|, which is finite.
DecimalDigits exact_digits(double value);
/// The fewest digits, from 15 on, that read back as |value|, which is finite.
DecimalDigits shortest_digits(double value);
/// The same for a Single, from 6 digits on.
DecimalDigits shortest_digits(float value);
/// The digits without an exponent: "1234.5", "0.001", "0".
std::string plain_text(const DecimalDigits& digits);
/// The double nearest to the number, ties to even; infinity above the range.
double nearest_double(const DecimalDigits& digits);

}  // namespace kestrelon
