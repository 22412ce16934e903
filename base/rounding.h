// The library's one way of turning a number into a whole one.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace kestrelon {

/// Nearest whole number, halves to even, limited to the range of T. NaN gives 0.
template <class T = int32_t>
T round_half_even(double value) {
  if (std::isnan(value)) return 0;
  const double whole = std::nearbyint(value);
  if (whole <= static_cast<double>(std::numeric_limits<T>::min()))
    return std::numeric_limits<T>::min();
  if (whole >= static_cast<double>(std::numeric_limits<T>::max()))
    return std::numeric_limits<T>::max();
  return static_cast<T>(whole);
}

}  // namespace kestrelon
