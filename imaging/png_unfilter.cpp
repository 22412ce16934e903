#include "imaging/png_unfilter.h"

#include <algorithm>
#include <cstring>

namespace kestrelon::png {
namespace {

uint8_t add(int a, int b) {
  return static_cast<uint8_t>(a + b);
}

void undo_sub(uint8_t* dst, const uint8_t* src, size_t size, size_t step) {
  std::memcpy(dst, src, std::min(step, size));
  for (size_t i = step; i < size; ++i) dst[i] = add(src[i], dst[i - step]);
}

void undo_up(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size) {
  for (size_t i = 0; i < size; ++i) dst[i] = add(src[i], above[i]);
}

void undo_average(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size,
                  size_t step) {
  for (size_t i = 0; i < size; ++i) {
    const int left = i >= step ? dst[i - step] : 0;
    dst[i] = add(src[i], (left + (above ? above[i] : 0)) / 2);
  }
}

void undo_paeth(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size, size_t step) {
  const size_t first = std::min(step, size);
  for (size_t i = 0; i < first; ++i) dst[i] = add(src[i], above[i]);
  for (size_t i = first; i < size; ++i) {
    dst[i] = add(src[i], paeth(dst[i - step], above[i], above[i - step]));
  }
}

}  // namespace

void unfilter_row_plain(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                        size_t size, size_t step) {
  switch (static_cast<Filter>(filter)) {
    case Filter::Sub:
      return undo_sub(dst, src, size, step);
    case Filter::Up:
      if (above) return undo_up(dst, src, above, size);
      break;
    case Filter::Average:
      return undo_average(dst, src, above, size, step);
    case Filter::Paeth:
      if (above) return undo_paeth(dst, src, above, size, step);
      // Above the first row all is 0, where the predictor is the byte to the left.
      return undo_sub(dst, src, size, step);
    default:
      break;
  }
  std::memcpy(dst, src, size);
}

void unfilter_row(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                  size_t size, size_t step) {
  if (!unfilter_row_sse2(filter, dst, src, above, size, step)) {
    unfilter_row_plain(filter, dst, src, above, size, step);
  }
}

}  // namespace kestrelon::png
