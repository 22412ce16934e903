#include "base/decimal.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace kestrelon {
namespace {

constexpr int kSignificantDigits = 15;

// The digits of |value| and how many of them stand before the decimal mark (may be negative).
struct Digits {
  std::string text;
  int whole = 0;
};

Digits significant_digits(double value) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                 std::chars_format::scientific, kSignificantDigits - 1);
  const std::string scientific(buffer, end.ptr);
  const size_t exponent = scientific.find('e');
  Digits digits;
  digits.text = scientific.substr(0, 1) + scientific.substr(2, exponent - 2);
  digits.whole = std::atoi(scientific.c_str() + exponent + 1) + 1;
  return digits;
}

// Keeps the first `count` digits, rounding halves up; a carry out of the front adds a digit.
void round_to(Digits& digits, int count) {
  if (count < 0) {
    digits.text = "0";
    digits.whole = 1;
    return;
  }
  const auto keep = static_cast<size_t>(count);
  if (keep >= digits.text.size()) return;
  bool carry = digits.text[keep] >= '5';
  digits.text.resize(keep);
  for (size_t i = keep; carry && i-- > 0;) {
    carry = digits.text[i] == '9';
    digits.text[i] = carry ? '0' : static_cast<char>(digits.text[i] + 1);
  }
  if (carry) {
    digits.text.insert(digits.text.begin(), '1');
    ++digits.whole;
  }
}

}  // namespace

std::wstring format_fixed(double value, int decimals, wchar_t mark) {
  if (!std::isfinite(value)) return {};
  Digits digits = significant_digits(value);
  round_to(digits, digits.whole + decimals);
  const auto digit_at = [&digits](int place) {  // 0 is the first place after the mark
    const int at = digits.whole + place;
    const bool held = at >= 0 && at < static_cast<int>(digits.text.size());
    return held ? static_cast<wchar_t>(digits.text[static_cast<size_t>(at)]) : L'0';
  };
  std::wstring text;
  if (std::signbit(value) && digits.text.find_first_not_of('0') != std::string::npos) text = L"-";
  for (int place = digits.whole > 0 ? -digits.whole : -1; place < decimals; ++place) {
    if (place == 0) text += mark;
    text += digit_at(place);
  }
  return text;
}

}  // namespace kestrelon
