// From pixels to quantised coefficients: the numeric half of the JPEG writer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrelon::jpeg {

using Block = std::array<int16_t, 64>;     // samples less 128, or coefficients; row by row
using Divisors = std::array<uint8_t, 64>;  // row by row

/// The table for a quality of 1 to 100, as the Independent JPEG Group scales it: 50 leaves it as it
/// is, 100 makes every divisor 1.
Divisors scale_divisors(const std::array<uint8_t, 64>& base, int quality);

/// Forward cosine transform in place, in 14-bit fixed point, then division by `divisors` to the
/// nearest, halves away from zero. Results fit the codes of the baseline format.
void transform_and_quantise(Block& block, const Divisors& divisors);

/// One row of `count` pixels (blue, green, red, any fourth byte) as luminance and both colour
/// differences of JFIF, each 0 to 255.
void split_row(const uint8_t* pixels, size_t count, uint8_t* y, uint8_t* cb, uint8_t* cr);

}  // namespace kestrelon::jpeg
