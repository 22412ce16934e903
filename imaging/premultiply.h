// Conversion between straight and premultiplied colour, in truncating 8-bit arithmetic.
//
// Pixels are four bytes: blue, green, red, alpha. Both directions give the truncated quotient of
// the integers, exactly; neither rounds.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// floor(x / 255) for 0 <= x < 65535.
constexpr uint32_t div255(uint32_t x) {
  return (x + 1 + ((x + 1) >> 8)) >> 8;
}

/// Straight colour byte to premultiplied: colour * alpha / 255.
constexpr uint8_t premultiply_byte(uint32_t colour, uint32_t alpha) {
  return static_cast<uint8_t>(div255(colour * alpha));
}

/// Premultiplied byte to straight: stored * 255 / alpha. Alpha 0 gives 0; a stored byte above the
/// alpha, which no valid image holds, gives 255.
constexpr uint8_t unpremultiply_byte(uint32_t stored, uint32_t alpha) {
  if (alpha == 0) return 0;
  if (stored >= alpha) return 255;
  return static_cast<uint8_t>(stored * 255 / alpha);
}

/// The same rounded up: premultiply_byte gives `stored` back from it, whatever the alpha.
constexpr uint8_t exact_straight_byte(uint32_t stored, uint32_t alpha) {
  if (alpha == 0) return 0;
  if (stored >= alpha) return 255;
  return static_cast<uint8_t>((stored * 255 + alpha - 1) / alpha);
}

/// Premultiplies `count` pixels. `dst` and `src` are the same row or do not overlap; any alignment.
void premultiply_row(uint8_t* dst, const uint8_t* src, size_t count);

/// Undoes premultiply_row as far as the truncation allows; alpha stays. Same rules for `dst`,
/// `src`.
void unpremultiply_row(uint8_t* dst, const uint8_t* src, size_t count);

}  // namespace kestrelon
