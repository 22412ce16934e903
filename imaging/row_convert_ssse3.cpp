#include "imaging/row_convert.h"

#if defined(__x86_64__) || defined(__i386__)
#include <tmmintrin.h>

namespace kestrelon::row_convert_detail {

bool has_ssse3() {
  static const bool has = __builtin_cpu_supports("ssse3") != 0;
  return has;
}

__attribute__((target("ssse3"))) void bgr24_to_row_ssse3(uint8_t* dst, const uint8_t* src,
                                                         size_t count) {
  const __m128i spread = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
  const __m128i alpha = _mm_set1_epi32(static_cast<int>(kOpaque));
  const auto load = [](const uint8_t* p) __attribute__((target("ssse3"), always_inline)) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  };
  const auto store = [&](uint8_t * p, __m128i packed)
      __attribute__((target("ssse3"), always_inline)) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                     _mm_or_si128(_mm_shuffle_epi8(packed, spread), alpha));
  };
  size_t i = 0;
  for (; i + 16 <= count; i += 16, src += 48, dst += 64) {
    const __m128i a = load(src), b = load(src + 16), c = load(src + 32);
    store(dst, a);
    store(dst + 16, _mm_alignr_epi8(b, a, 12));
    store(dst + 32, _mm_alignr_epi8(c, b, 8));
    store(dst + 48, _mm_srli_si128(c, 4));
  }
  bgr24_to_row_plain(dst, src, count - i);
}

}  // namespace kestrelon::row_convert_detail

#else

namespace kestrelon::row_convert_detail {

bool has_ssse3() {
  return false;
}
void bgr24_to_row_ssse3(uint8_t* dst, const uint8_t* src, size_t count) {
  bgr24_to_row_plain(dst, src, count);
}

}  // namespace kestrelon::row_convert_detail

#endif
