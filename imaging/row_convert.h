// One row of a file's pixels to one row of an image: bytes blue, green, red, alpha, alpha 255 where
// the source has none. Shared by the readers of uncompressed and run-length formats.
//
// `src` and `dst` do not overlap and need no alignment; no byte outside the stated counts is
// touched.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// Colours as 0xAARRGGBB numbers, which are the bytes of a pixel in memory; indexes beyond a file's
/// table are opaque black.
using Palette = std::array<uint32_t, 256>;

constexpr uint32_t kOpaque = 0xFF000000u;
constexpr uint32_t opaque_pixel(uint32_t red, uint32_t green, uint32_t blue) {
  return kOpaque | red << 16 | green << 8 | blue;
}

/// 3 * count bytes blue, green, red.
void bgr24_to_row(uint8_t* dst, const uint8_t* src, size_t count);
/// 4 * count bytes blue, green, red and one that is ignored.
void bgrx32_to_row(uint8_t* dst, const uint8_t* src, size_t count);
/// 4 * count bytes as they are; answers whether every fourth one is 255.
bool bgra32_to_row(uint8_t* dst, const uint8_t* src, size_t count);
/// `bits` is 1, 2, 4 or 8; the leftmost pixel stands in the most significant bits.
void indexed_to_row(uint8_t* dst, const uint8_t* src, size_t count, int bits,
                    const Palette& palette);
/// 2 * count bytes, little-endian, 5 bits a channel, top bit ignored. The low bits of a channel
/// repeat its high ones.
void x1r5g5b5_to_row(uint8_t* dst, const uint8_t* src, size_t count);
/// 2 * count bytes, little-endian, 5, 6 and 5 bits.
void r5g6b5_to_row(uint8_t* dst, const uint8_t* src, size_t count);

namespace row_convert_detail {
/// The plain form that the others are measured against.
void bgr24_to_row_plain(uint8_t* dst, const uint8_t* src, size_t count);
/// True if the processor has the byte shuffle that bgr24_to_row_ssse3 needs.
bool has_ssse3();
void bgr24_to_row_ssse3(uint8_t* dst, const uint8_t* src, size_t count);
}  // namespace row_convert_detail

}  // namespace kestrelon
