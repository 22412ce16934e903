#include "imaging/png_filter.h"

#include <algorithm>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kestrelon::png {
namespace {

// Front of the rows: room for a pixel to the left.
constexpr size_t kMargin = 16;

struct Neighbours {
  const uint8_t* x;
  const uint8_t* left;
  const uint8_t* above;
  const uint8_t* upper_left;
};

#if defined(__SSE2__)

__m128i load(const uint8_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

__m128i distance(__m128i v) {
  return _mm_max_epi16(v, _mm_sub_epi16(_mm_setzero_si128(), v));
}

// The predictor on 16-bit lanes: the first of left, above, upper left with the least distance.
__m128i paeth_lanes(__m128i a, __m128i b, __m128i c) {
  const __m128i to_b = _mm_sub_epi16(a, c), to_a = _mm_sub_epi16(b, c);
  const __m128i pa = distance(to_a), pb = distance(to_b), pc = distance(_mm_add_epi16(to_a, to_b));
  const __m128i not_a = _mm_or_si128(_mm_cmpgt_epi16(pa, pb), _mm_cmpgt_epi16(pa, pc));
  const __m128i not_b = _mm_cmpgt_epi16(pb, pc);
  const __m128i b_or_c = _mm_or_si128(_mm_andnot_si128(not_b, b), _mm_and_si128(not_b, c));
  return _mm_or_si128(_mm_andnot_si128(not_a, a), _mm_and_si128(not_a, b_or_c));
}

__m128i predict(Filter filter, const Neighbours& n, size_t i) {
  const __m128i zero = _mm_setzero_si128();
  switch (filter) {
    case Filter::Sub:
      return load(n.left + i);
    case Filter::Up:
      return load(n.above + i);
    case Filter::Average: {
      const __m128i a = load(n.left + i), b = load(n.above + i);
      const __m128i odd = _mm_and_si128(_mm_xor_si128(a, b), _mm_set1_epi8(1));
      return _mm_sub_epi8(_mm_avg_epu8(a, b), odd);
    }
    case Filter::Paeth: {
      const __m128i a = load(n.left + i), b = load(n.above + i), c = load(n.upper_left + i);
      return _mm_packus_epi16(paeth_lanes(_mm_unpacklo_epi8(a, zero), _mm_unpacklo_epi8(b, zero),
                                          _mm_unpacklo_epi8(c, zero)),
                              paeth_lanes(_mm_unpackhi_epi8(a, zero), _mm_unpackhi_epi8(b, zero),
                                          _mm_unpackhi_epi8(c, zero)));
    }
    default:
      return zero;
  }
}

template <Filter Kind>
size_t apply_blocks(uint8_t* dst, const Neighbours& n, size_t size) {
  size_t i = 0;
  for (; i + 16 <= size; i += 16) {
    const __m128i residue = _mm_sub_epi8(load(n.x + i), predict(Kind, n, i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), residue);
  }
  return i;
}

#else

template <Filter>
size_t apply_blocks(uint8_t*, const Neighbours&, size_t) {
  return 0;
}

#endif

template <Filter Kind>
void apply_kind(uint8_t* dst, const Neighbours& n, size_t size) {
  for (size_t i = apply_blocks<Kind>(dst, n, size); i < size; ++i) {
    int predicted = 0;
    if constexpr (Kind == Filter::Sub) predicted = n.left[i];
    if constexpr (Kind == Filter::Up) predicted = n.above[i];
    if constexpr (Kind == Filter::Average) predicted = (n.left[i] + n.above[i]) / 2;
    if constexpr (Kind == Filter::Paeth) predicted = paeth(n.left[i], n.above[i], n.upper_left[i]);
    dst[i] = static_cast<uint8_t>(n.x[i] - predicted);
  }
}

Filter fixed_filter(PngFilter method, ColorType type) {
  if (method > PngFilter::Default && method < PngFilter::Adaptive) {
    return static_cast<Filter>(static_cast<int32_t>(method) - 1);
  }
  return type == ColorType::Palette || type == ColorType::Gray ? Filter::None : Filter::Paeth;
}

}  // namespace

RowFilter::RowFilter(PngFilter method, ColorType type, size_t row_bytes)
    : row_bytes_(row_bytes),
      step_(samples_per_pixel(type)),
      adaptive_(method == PngFilter::Adaptive),
      fixed_(fixed_filter(method, type)) {
  for (auto& row : rows_) row.resize(kMargin + row_bytes);
  current_ = rows_[0].data() + kMargin;
  above_ = rows_[1].data() + kMargin;
  if (adaptive_) trial_.resize(row_bytes);
}

void RowFilter::apply(Filter filter, uint8_t* dst) const {
  const Neighbours n{current_, current_ - step_, above_, above_ - step_};
  switch (filter) {
    case Filter::Sub:
      return apply_kind<Filter::Sub>(dst, n, row_bytes_);
    case Filter::Up:
      return apply_kind<Filter::Up>(dst, n, row_bytes_);
    case Filter::Average:
      return apply_kind<Filter::Average>(dst, n, row_bytes_);
    case Filter::Paeth:
      return apply_kind<Filter::Paeth>(dst, n, row_bytes_);
    default:
      std::memcpy(dst, current_, row_bytes_);
  }
}

// Sum of the residues' absolute values as signed bytes.
uint64_t RowFilter::score(const uint8_t* filtered) const {
  uint64_t sum = 0;
  size_t i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  __m128i sums = zero;
  for (; i + 16 <= row_bytes_; i += 16) {
    const __m128i v = load(filtered + i);
    sums = _mm_add_epi64(sums, _mm_sad_epu8(_mm_min_epu8(v, _mm_sub_epi8(zero, v)), zero));
  }
  uint64_t halves[2];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(halves), sums);
  sum = halves[0] + halves[1];
#endif
  for (; i < row_bytes_; ++i) sum += std::min<uint32_t>(filtered[i], 256u - filtered[i]);
  return sum;
}

void RowFilter::filter(uint8_t* dst) {
  if (!adaptive_) {
    dst[0] = static_cast<uint8_t>(fixed_);
    apply(fixed_, dst + 1);
  } else {
    uint64_t best = uint64_t{row_bytes_} * 254;
    for (Filter kind : {Filter::None, Filter::Sub, Filter::Up, Filter::Average, Filter::Paeth}) {
      apply(kind, trial_.data());
      const uint64_t sum = score(trial_.data());
      if (sum >= best) continue;
      best = sum;
      dst[0] = static_cast<uint8_t>(kind);
      std::memcpy(dst + 1, trial_.data(), row_bytes_);
    }
  }
  std::swap(current_, above_);
}

}  // namespace kestrelon::png
