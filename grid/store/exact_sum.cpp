#include "grid/store/exact_sum.h"

#include <bit>
#include <cmath>

namespace kestrelon {
namespace {

constexpr int kMantissaBits = 52;
constexpr uint64_t kHidden = uint64_t{1} << kMantissaBits;

}  // namespace

void ExactSum::add_at(size_t limb, uint64_t low, uint64_t high) {
  limbs_[limb] += low;
  uint64_t carry = limbs_[limb] < low ? 1 : 0;
  for (uint64_t more = high; ++limb < kLimbs && (more | carry) != 0; more = 0) {
    const uint64_t before = limbs_[limb];
    limbs_[limb] = before + more + carry;
    carry = limbs_[limb] < before || (carry != 0 && more == ~uint64_t{0}) ? 1 : 0;
  }
}

void ExactSum::subtract_at(size_t limb, uint64_t low, uint64_t high) {
  uint64_t borrow = limbs_[limb] < low ? 1 : 0;
  limbs_[limb] -= low;
  for (uint64_t more = high; ++limb < kLimbs && (more | borrow) != 0; more = 0) {
    const uint64_t before = limbs_[limb];
    limbs_[limb] = before - more - borrow;
    borrow = before < more || (before == more && borrow != 0) ? 1 : 0;
  }
}

void ExactSum::accumulate(double value, bool negate) {
  if (value == 0 || !std::isfinite(value)) return;
  const auto bits = std::bit_cast<uint64_t>(value);
  const auto exponent = static_cast<size_t>(bits >> kMantissaBits & 0x7FF);
  const uint64_t mantissa = (bits & (kHidden - 1)) | (exponent != 0 ? kHidden : 0);
  const size_t shift = exponent != 0 ? exponent - 1 : 0;  // of bit 0, from 2^kLowestBit
  const uint64_t low = mantissa << (shift & 63);
  const uint64_t high = (shift & 63) != 0 ? mantissa >> (64 - (shift & 63)) : 0;
  if ((bits >> 63 != 0) != negate)
    subtract_at(shift / 64, low, high);
  else
    add_at(shift / 64, low, high);
}

double ExactSum::value() const {
  std::array<uint64_t, kLimbs> size = limbs_;
  const bool negative = size.back() >> 63 != 0;
  if (negative) {
    uint64_t carry = 1;
    for (uint64_t& limb : size) {
      limb = ~limb + carry;
      if (limb != 0) carry = 0;
    }
  }
  size_t top = kLimbs;
  while (top > 0 && size[top - 1] == 0) --top;
  if (top == 0) return 0;
  --top;
  // The highest 64 bits, with a last bit that tells whether any bit below them is set; a Double
  // takes 53 of them, so the conversion rounds as the whole number would.
  const int zeros = std::countl_zero(size[top]);
  uint64_t head = size[top] << zeros;
  uint64_t rest = 0;
  if (top > 0) {
    head |= zeros != 0 ? size[top - 1] >> (64 - zeros) : 0;
    rest = size[top - 1] << zeros;
    for (size_t i = 0; i + 1 < top; ++i) rest |= size[i];
  }
  const int exponent = kLowestBit + static_cast<int>(top) * 64 - zeros;
  const double result = std::ldexp(static_cast<double>(head | (rest != 0 ? 1 : 0)), exponent);
  return negative ? -result : result;
}

}  // namespace kestrelon
