// A sum of Doubles without rounding: what was added and taken away again leaves nothing behind.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// A fixed-point number wide enough for every finite Double, in two's complement. Additions may
/// come in any order; the value is rounded once, when it is read. Not-a-number and infinities are
/// ignored. Up to 2^60 additions.
class ExactSum {
 public:
  void add(double value) { accumulate(value, false); }
  void subtract(double value) { accumulate(value, true); }
  /// The nearest Double, halves to even; beyond the range an infinity.
  double value() const;

 private:
  static constexpr int kLowestBit = -1074;  // of the smallest Double
  static constexpr size_t kLimbs = 34;      // 2,176 bits

  void accumulate(double value, bool negate);
  void add_at(size_t limb, uint64_t low, uint64_t high);
  void subtract_at(size_t limb, uint64_t low, uint64_t high);

  std::array<uint64_t, kLimbs> limbs_{};
};

}  // namespace kestrelon
