#include "imaging/alpha_classify.h"

#include "imaging/premultiply.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kestrelon {
namespace {

// Colour under a zero alpha leaves it open whether the pixels are straight or have no alpha at all;
// the next pixel with an alpha settles it.
enum class Form { Premultiplied, ColourUnderZero, Straight };

struct Scan {
  Form form = Form::Premultiplied;
  bool transparent = false;  // an alpha of 0 was met
  bool opaque = false;       // an alpha of 255 was met
  bool partial = false;      // one between was met, its colours at or below it
  size_t settled = 0;        // pixels scanned when the form was settled or the pixels ran out

  bool uniform() const { return form != Form::Straight && !partial && !(transparent && opaque); }
  AlphaType alpha() const { return partial ? AlphaType::Complex : AlphaType::Simple; }

  void step(const uint8_t* p) {
    const uint8_t alpha = p[3];
    const bool above = p[0] > alpha || p[1] > alpha || p[2] > alpha;
    if (alpha == 0) {
      transparent = true;
      if (above) form = Form::ColourUnderZero;
    } else if (form == Form::ColourUnderZero || above) {
      form = Form::Straight;
    } else if (alpha == 255) {
      opaque = true;
    } else {
      partial = true;
    }
  }
};

#if defined(__SSE2__)

// Takes blocks of four pixels as long as they change nothing about the form; answers the index of
// the first pixel not taken.
size_t scan_blocks(const uint8_t* pixels, size_t i, size_t count, Scan& scan) {
  const __m128i alpha_mask = _mm_set1_epi32(static_cast<int>(0xFF000000u));
  const __m128i zero = _mm_setzero_si128();
  __m128i transparent = zero, opaque = zero, partial = zero;
  for (; i + 4 <= count; i += 4) {
    const __m128i p = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels + i * 4));
    const __m128i alpha = _mm_and_si128(p, alpha_mask);
    const __m128i is_zero = _mm_cmpeq_epi32(alpha, zero);
    if (scan.form == Form::ColourUnderZero) {
      if (_mm_movemask_epi8(is_zero) != 0xFFFF) break;
      continue;
    }
    __m128i spread = _mm_or_si128(alpha, _mm_srli_epi32(alpha, 8));
    spread = _mm_or_si128(spread, _mm_srli_epi32(spread, 16));
    const __m128i fits = _mm_cmpeq_epi8(_mm_max_epu8(p, spread), spread);
    if (_mm_movemask_epi8(fits) != 0xFFFF) break;
    const __m128i is_full = _mm_cmpeq_epi32(alpha, alpha_mask);
    transparent = _mm_or_si128(transparent, is_zero);
    opaque = _mm_or_si128(opaque, is_full);
    partial =
        _mm_or_si128(partial, _mm_xor_si128(_mm_or_si128(is_zero, is_full), _mm_set1_epi32(-1)));
  }
  scan.transparent |= _mm_movemask_epi8(transparent) != 0;
  scan.opaque |= _mm_movemask_epi8(opaque) != 0;
  scan.partial |= _mm_movemask_epi8(partial) != 0;
  return i;
}

#else

size_t scan_blocks(const uint8_t*, size_t i, size_t, Scan&) {
  return i;
}

#endif

Scan scan_pixels(const uint8_t* pixels, size_t count) {
  Scan scan;
  size_t i = 0;
  while (i < count && scan.form != Form::Straight) {
    i = scan_blocks(pixels, i, count, scan);
    const size_t end = count - i < 4 ? count : i + 4;
    for (; i < end && scan.form != Form::Straight; ++i) scan.step(pixels + i * 4);
  }
  scan.settled = i;
  return scan;
}

void make_opaque(uint8_t* pixels, size_t count) {
  for (size_t i = 0; i < count; ++i) pixels[i * 4 + 3] = 255;
}

bool any_partial(const uint8_t* pixels, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    if (static_cast<uint8_t>(pixels[i * 4 + 3] + 1) > 1) return true;
  }
  return false;
}

}  // namespace

AlphaType classify_alpha(uint8_t* pixels, size_t count, bool premultiply, ImageFormat& type) {
  const Scan scan = type == ImageFormat::Error ? Scan{} : scan_pixels(pixels, count);
  if (scan.uniform()) {
    type = ImageFormat::Bitmap;
    if (premultiply) make_opaque(pixels, count);
    return AlphaType::None;
  }
  if (scan.form == Form::Premultiplied) {
    type = ImageFormat::BitmapPargb;
    return scan.alpha();
  }
  type = ImageFormat::BitmapArgb;
  if (!premultiply) return scan.alpha();
  // The pixel that settled the form has not been noted yet.
  const size_t from = scan.settled == 0 ? 0 : scan.settled - 1;
  const bool partial = scan.partial || any_partial(pixels + from * 4, count - from);
  premultiply_row(pixels, pixels, count);
  return partial ? AlphaType::Complex : AlphaType::Simple;
}

}  // namespace kestrelon
