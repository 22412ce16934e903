// Pictures for formats without alpha: premultiplied rows laid over one colour.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Lays `count` pixels over `fill` (0x00BBGGRR): stored + fill * (255 - alpha) / 255, truncated, in
/// each channel. Writes 3 * count bytes blue, green, red.
void flatten_row_24(uint8_t* dst, const uint8_t* src, size_t count, uint32_t fill);

/// The same as pixels of four bytes. Alpha 255 is written for partly transparent pixels, but a
/// fully transparent one gets the fill colour with alpha 0.
void flatten_row_32(uint8_t* dst, const uint8_t* src, size_t count, uint32_t fill);

/// What the stored pixels say of the alpha channel, whatever the image's own hint; None also for a
/// picture that is transparent everywhere.
AlphaType scan_alpha(const c32bppDIB& image);

}  // namespace kestrelon
