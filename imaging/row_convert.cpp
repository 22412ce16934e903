#include "imaging/row_convert.h"

#include <cstring>

namespace kestrelon {
namespace {

uint32_t load32(const uint8_t* p) {
  uint32_t value;
  std::memcpy(&value, p, 4);
  return value;
}

void store32(uint8_t* p, uint32_t value) {
  std::memcpy(p, &value, 4);
}

constexpr uint32_t widen5(uint32_t v) {
  return v << 3 | v >> 2;
}
constexpr uint32_t widen6(uint32_t v) {
  return v << 2 | v >> 4;
}

template <int Bits>
void packed_to_row(uint8_t* dst, const uint8_t* src, size_t count, const Palette& palette) {
  constexpr size_t per_byte = 8 / Bits;
  constexpr uint32_t mask = (1u << Bits) - 1;
  const size_t whole = count / per_byte;
  for (size_t i = 0; i < whole; ++i, dst += 4 * per_byte) {
    for (size_t k = 0; k < per_byte; ++k)
      store32(dst + 4 * k, palette[src[i] >> (8 - Bits * (k + 1)) & mask]);
  }
  for (size_t k = 0; k < count % per_byte; ++k)
    store32(dst + 4 * k, palette[src[whole] >> (8 - Bits * (k + 1)) & mask]);
}

}  // namespace

void bgr24_to_row(uint8_t* dst, const uint8_t* src, size_t count) {
  static const auto convert = row_convert_detail::has_ssse3()
                                  ? row_convert_detail::bgr24_to_row_ssse3
                                  : row_convert_detail::bgr24_to_row_plain;
  convert(dst, src, count);
}

void row_convert_detail::bgr24_to_row_plain(uint8_t* dst, const uint8_t* src, size_t count) {
  size_t i = 0;
  for (; i + 4 <= count; i += 4, src += 12, dst += 16) {
    const uint32_t a = load32(src), b = load32(src + 4), c = load32(src + 8);
    store32(dst, kOpaque | a);
    store32(dst + 4, kOpaque | a >> 24 | b << 8);
    store32(dst + 8, kOpaque | b >> 16 | c << 16);
    store32(dst + 12, kOpaque | c >> 8);
  }
  for (; i < count; ++i, src += 3, dst += 4) store32(dst, opaque_pixel(src[2], src[1], src[0]));
}

void bgrx32_to_row(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t i = 0; i < count; ++i) store32(dst + 4 * i, kOpaque | load32(src + 4 * i));
}

bool bgra32_to_row(uint8_t* dst, const uint8_t* src, size_t count) {
  uint32_t common = kOpaque;
  for (size_t i = 0; i < count; ++i) {
    const uint32_t pixel = load32(src + 4 * i);
    store32(dst + 4 * i, pixel);
    common &= pixel;
  }
  return common == kOpaque;
}

void indexed_to_row(uint8_t* dst, const uint8_t* src, size_t count, int bits,
                    const Palette& palette) {
  switch (bits) {
    case 1:
      return packed_to_row<1>(dst, src, count, palette);
    case 2:
      return packed_to_row<2>(dst, src, count, palette);
    case 4:
      return packed_to_row<4>(dst, src, count, palette);
    default:
      return packed_to_row<8>(dst, src, count, palette);
  }
}

void x1r5g5b5_to_row(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    uint16_t v;
    std::memcpy(&v, src + 2 * i, 2);
    store32(dst + 4 * i, opaque_pixel(widen5(v >> 10 & 31), widen5(v >> 5 & 31), widen5(v & 31)));
  }
}

void r5g6b5_to_row(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    uint16_t v;
    std::memcpy(&v, src + 2 * i, 2);
    store32(dst + 4 * i, opaque_pixel(widen5(v >> 11), widen6(v >> 5 & 63), widen5(v & 31)));
  }
}

}  // namespace kestrelon
