#include "base/decimal.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/exact_digits.h"

namespace kestrelon {
namespace {

constexpr int kSignificantDigits = 15;

// Digits whose first has the place 10^exponent become a number of at most `digits` of them.
void place_mark(std::string& text, int exponent, int digits) {
  const auto size = static_cast<int>(text.size());
  if (exponent < -4 || exponent >= digits) {
    if (size > 1) text.insert(1, ".");
    const int tens = std::abs(exponent);
    text += exponent < 0 ? "E-" : "E+";
    if (tens < 10) text += '0';
    text += std::to_string(tens);
  } else if (exponent < 0) {
    text.insert(0, "0." + std::string(static_cast<size_t>(-exponent - 1), '0'));
  } else if (exponent + 1 < size) {
    text.insert(static_cast<size_t>(exponent) + 1, ".");
  } else {
    text.append(static_cast<size_t>(exponent + 1 - size), '0');
  }
}

}  // namespace

std::wstring format_fixed(double value, int decimals, wchar_t mark) {
  if (!std::isfinite(value)) return {};
  DecimalDigits digits = exact_digits(value);
  digits.round_to_even(kSignificantDigits);
  digits.round_away(digits.whole + decimals);
  const auto digit_at = [&digits](int place) {  // 0 is the first place after the mark
    const int at = digits.whole + place;
    const bool held = at >= 0 && at < static_cast<int>(digits.text.size());
    return held ? static_cast<wchar_t>(digits.text[static_cast<size_t>(at)]) : L'0';
  };
  std::wstring text;
  if (std::signbit(value) && !digits.text.empty()) text = L"-";
  for (int place = digits.whole > 0 ? -digits.whole : -1; place < decimals; ++place) {
    if (place == 0) text += mark;
    text += digit_at(place);
  }
  return text;
}

std::wstring decimal_text(int64_t value) {
  wchar_t text[20];
  wchar_t* at = text + std::size(text);
  uint64_t left = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  do {
    *--at = static_cast<wchar_t>(L'0' + left % 10);
    left /= 10;
  } while (left != 0);
  if (value < 0) *--at = L'-';
  return {at, text + std::size(text)};
}

double rounded_to(double value, int digits) {
  if (!std::isfinite(value)) return value;
  DecimalDigits number = exact_digits(value);
  number.round_to_even(static_cast<size_t>(digits));
  return std::copysign(nearest_double(number), value);
}

std::string general_text(double value, int digits) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  DecimalDigits number = exact_digits(value);
  number.round_to_even(static_cast<size_t>(digits));
  std::string text = number.text.empty() ? "0" : number.text;
  const int exponent = number.text.empty() ? 0 : number.whole - 1;
  place_mark(text, exponent, digits);
  return std::signbit(value) ? "-" + text : text;
}

std::optional<double> parse_fixed(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const size_t mark = std::min(text.find('.'), text.size());
  DecimalDigits digits;
  digits.text = text.substr(0, mark);
  digits.whole = static_cast<int>(mark);
  if (mark < text.size()) digits.text += text.substr(mark + 1);
  if (digits.text.empty() || digits.text.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  digits.trim();
  const double value = nearest_double(digits);
  if (std::isinf(value)) return std::nullopt;
  return negative ? -value : value;
}

std::optional<double> parse_scientific(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const size_t mark = text.find_first_of("eE");
  if (mark == text.npos) return parse_fixed(text);
  const auto mantissa = parse_fixed(text.substr(0, mark));
  std::string_view power = text.substr(mark + 1);
  if (power.starts_with('+')) power.remove_prefix(1);
  const auto exponent = parse_fixed(power);
  constexpr double kMost = 400;  // beyond any Double, with the digits of any mantissa
  if (!mantissa || !exponent || power.find('.') != power.npos || std::fabs(*exponent) > kMost)
    return std::nullopt;
  DecimalDigits digits = exact_digits(*mantissa);
  digits.whole += static_cast<int>(*exponent);
  const double value = nearest_double(digits);
  if (!std::isfinite(value)) return std::nullopt;
  return *mantissa < 0 ? -value : value;
}

}  // namespace kestrelon
