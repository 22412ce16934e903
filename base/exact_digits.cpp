#include "base/exact_digits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace kestrelon {
namespace {

constexpr uint32_t kLimb = 1'000'000'000;  // nine digits a limb, the lowest limb first
constexpr int kLimbDigits = 9;

// A whole number of at most 1074 + 64 bits' worth of decimal digits.
class Limbs {
 public:
  explicit Limbs(uint64_t value) {
    for (; value != 0; value /= kLimb) limbs_[size_++] = static_cast<uint32_t>(value % kLimb);
  }

  void multiply(uint32_t factor) {
    uint64_t carry = 0;
    for (size_t i = 0; i < size_; ++i) {
      carry += uint64_t{limbs_[i]} * factor;
      limbs_[i] = static_cast<uint32_t>(carry % kLimb);
      carry /= kLimb;
    }
    for (; carry != 0; carry /= kLimb) limbs_[size_++] = static_cast<uint32_t>(carry % kLimb);
  }

  void multiply_power(uint32_t base, int power, int step) {
    uint32_t whole_step = 1;
    for (int i = 0; i < step; ++i) whole_step *= base;
    for (; power >= step; power -= step) multiply(whole_step);
    for (; power > 0; --power) multiply(base);
  }

  std::string digits() const {
    std::string text(size_ * kLimbDigits, '0');
    size_t at = text.size();
    for (size_t i = 0; i < size_; ++i) {
      uint32_t limb = limbs_[i];
      for (int k = 0; k < kLimbDigits; ++k, limb /= 10)
        text[--at] = static_cast<char>('0' + limb % 10);
    }
    return text;
  }

 private:
  std::array<uint32_t, 96> limbs_ = {};
  size_t size_ = 0;
};

struct Binary {
  uint64_t mantissa = 0;
  int exponent = 0;
};

constexpr int kMantissaBits = 52;
constexpr int kLeastExponent = -1074;

Binary parts_of(double value) {
  const auto bits = std::bit_cast<uint64_t>(value);
  const uint64_t fraction = bits & ((uint64_t{1} << kMantissaBits) - 1);
  const int biased = static_cast<int>(bits >> kMantissaBits & 0x7FF);
  if (biased == 0) return {fraction, kLeastExponent};
  return {fraction | uint64_t{1} << kMantissaBits, biased - 1 + kLeastExponent};
}

// Below, equal, above: negative, 0, positive. Both without zeros at their ends.
int compare(const DecimalDigits& a, const DecimalDigits& b) {
  if (a.text.empty() || b.text.empty())
    return static_cast<int>(!a.text.empty()) - static_cast<int>(!b.text.empty());
  if (a.whole != b.whole) return a.whole < b.whole ? -1 : 1;
  return a.text.compare(b.text);
}

constexpr size_t kGuessDigits = 19;  // what 64 bits hold

// Within some units of the last place; finite.
double guess(const DecimalDigits& digits) {
  uint64_t leading = 0;
  const size_t count = std::min(digits.text.size(), kGuessDigits);
  for (size_t i = 0; i < count; ++i)
    leading = leading * 10 + static_cast<uint64_t>(digits.text[i] - '0');
  auto value = static_cast<double>(leading);
  constexpr int kRange = 400;  // anything beyond is infinity or nothing
  int tens = std::clamp(digits.whole, -kRange, kRange) - static_cast<int>(count);
  for (; tens >= 22; tens -= 22) value *= 1e22;
  for (; tens <= -22; tens += 22) value /= 1e22;
  double rest = 1;  // exact: less than 10^22
  for (int i = 0; i < std::abs(tens); ++i) rest *= 10;
  value = tens < 0 ? value / rest : value * rest;
  return std::min(value, std::numeric_limits<double>::max());
}

// One step up or down where the number lies beyond the middle between neighbours, else 0.
int step_towards(const DecimalDigits& digits, const Binary& parts) {
  const int tie = (parts.mantissa & 1) != 0 ? 0 : 1;  // an even number takes its ties
  if (compare(digits, exact_digits(parts.mantissa * 2 + 1, parts.exponent - 1)) >= tie) return 1;
  if (parts.mantissa == 0) return 0;
  const bool at_power =
      parts.mantissa == uint64_t{1} << kMantissaBits && parts.exponent > kLeastExponent;
  const DecimalDigits below = at_power ? exact_digits(parts.mantissa * 4 - 1, parts.exponent - 2)
                                       : exact_digits(parts.mantissa * 2 - 1, parts.exponent - 1);
  return compare(digits, below) <= -tie ? -1 : 0;
}

}  // namespace

void DecimalDigits::trim() {
  const size_t first = std::min(text.find_first_not_of('0'), text.size());
  text.erase(0, first);
  whole -= static_cast<int>(first);
  text.resize(text.find_last_not_of('0') + 1);
  if (text.empty()) whole = 0;
}

void DecimalDigits::keep(size_t count, bool up) {
  text.resize(count);
  while (up && count-- > 0) {
    up = text[count] == '9';
    text[count] = up ? '0' : static_cast<char>(text[count] + 1);
  }
  if (up) {
    text.insert(text.begin(), '1');
    ++whole;
  }
  trim();
}

void DecimalDigits::round_to_even(size_t count) {
  if (count >= text.size()) return;
  const bool odd = count > 0 && (text[count - 1] - '0') % 2 != 0;
  const bool above = text[count] == '5' && count + 1 < text.size();
  keep(count, text[count] > '5' || above || (text[count] == '5' && odd));
}

void DecimalDigits::round_away(int count) {
  if (count < 0) text.clear();
  const auto kept = static_cast<size_t>(std::max(count, 0));
  if (kept < text.size()) keep(kept, text[kept] >= '5');
}

DecimalDigits exact_digits(uint64_t mantissa, int exponent) {
  DecimalDigits digits;
  if (mantissa == 0) return digits;
  const int zeros = std::countr_zero(mantissa);
  Limbs limbs(mantissa >> zeros);
  exponent += zeros;
  // A half is five tenths: a negative power of two shifts the mark and leaves a whole number.
  if (exponent > 0) limbs.multiply_power(2, exponent, 31);
  if (exponent < 0) limbs.multiply_power(5, -exponent, 13);
  digits.text = limbs.digits();
  digits.whole = static_cast<int>(digits.text.size()) + std::min(exponent, 0);
  digits.trim();
  return digits;
}

DecimalDigits exact_digits(double value) {
  const Binary parts = parts_of(value);
  return exact_digits(parts.mantissa, parts.exponent);
}

double nearest_double(const DecimalDigits& digits) {
  double value = guess(digits);
  // Few digits and a small power of ten: the one rounding of the guess is the right one.
  constexpr size_t kExactDigits = 15;
  const int tens = digits.whole - static_cast<int>(digits.text.size());
  if (digits.text.size() <= kExactDigits && std::abs(tens) < 22) return value;
  while (const int step = step_towards(digits, parts_of(value))) {
    value = std::nextafter(value, step > 0 ? std::numeric_limits<double>::infinity() : 0.0);
    if (std::isinf(value)) break;
  }
  return value;
}

DecimalDigits shortest_digits(double value) {
  constexpr size_t kSure = 15, kEnough = 17;
  const DecimalDigits all = exact_digits(value);
  for (size_t count = kSure; count < kEnough; ++count) {
    DecimalDigits fewer = all;
    fewer.round_to_even(count);
    if (nearest_double(fewer) == std::fabs(value)) return fewer;
  }
  DecimalDigits out = all;
  out.round_to_even(kEnough);
  return out;
}

DecimalDigits shortest_digits(float value) {
  constexpr size_t kSure = 6, kEnough = 9;
  const DecimalDigits all = exact_digits(static_cast<double>(value));
  for (size_t count = kSure; count < kEnough; ++count) {
    DecimalDigits fewer = all;
    fewer.round_to_even(count);
    if (static_cast<float>(nearest_double(fewer)) == std::fabs(value)) return fewer;
  }
  DecimalDigits out = all;
  out.round_to_even(kEnough);
  return out;
}

std::string plain_text(const DecimalDigits& digits) {
  if (digits.text.empty()) return "0";
  std::string out = digits.text;
  if (digits.whole <= 0) return "0." + std::string(static_cast<size_t>(-digits.whole), '0') + out;
  const auto whole = static_cast<size_t>(digits.whole);
  if (whole >= out.size()) return out.append(whole - out.size(), '0');
  return out.insert(whole, 1, '.');
}

}  // namespace kestrelon
