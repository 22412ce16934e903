// Undoing the row filters of PNG.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/png_format.h"

namespace kestrelon::png {

/// Bytes that may be read behind each source row and written behind each destination row.
constexpr size_t kRowSlack = 16;

/// Undoes `filter` (a value that is no filter counts as None) on a row of `size` bytes.
/// `step`: bytes of a pixel, 1 to 8, at least 1. `above`: the row above, undone, or null for the
/// first row. The three rows do not overlap and have kRowSlack bytes behind them.
void unfilter_row(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                  size_t size, size_t step);

/// The same, a byte at a time: what the fast ones are measured against.
void unfilter_row_plain(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                        size_t size, size_t step);

/// The SSE2 versions, for the filters and pixel sizes where they pay; false if there is none.
bool unfilter_row_sse2(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                       size_t size, size_t step);

}  // namespace kestrelon::png
