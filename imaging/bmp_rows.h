// The pixel rows of a bitmap, compressed or not: shared by the BMP and the icon reader.
#pragma once

#include <cstdint>
#include <span>

#include "base/byte_reader.h"
#include "imaging/bit_fields.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/row_convert.h"

namespace kestrelon::bmp {

/// `entry_size` (3 or 4) bytes an entry: blue, green, red, a spare byte. Entries past 256 are
/// ignored, those missing are opaque black.
Palette make_palette(std::span<const uint8_t> entries, size_t entry_size);

/// Fills `image` from rows of 1, 2, 4, 8, 16 (5 bits a channel), 24 or 32 bits, each padded to four
/// bytes; every pixel becomes opaque except 32-bit ones, which keep their fourth byte. Padding
/// after the last row may be missing. False if the depth is another one or rows are missing.
bool decode_rows(std::span<const uint8_t> data, int bits, bool from_top, const Palette& palette,
                 c32bppDIB& image);

/// 32-bit rows alone; `opaque` tells whether every fourth byte is 255, which spares a scan.
bool decode_rows_32(std::span<const uint8_t> data, bool from_top, c32bppDIB& image, bool& opaque);

/// Like decode_rows with 16 or 32-bit pixels told by masks.
bool decode_bit_fields(std::span<const uint8_t> data, int bits, bool from_top,
                       const ChannelMasks& masks, c32bppDIB& image);

/// Run-length data of 4, 8 or 24 bits. Pixels that the data skips or does not reach get the first
/// colour of the palette (black at 24 bits). Runs past the right edge are cut. False if the data
/// stops in the middle of a code.
bool decode_run_lengths(std::span<const uint8_t> data, int bits, bool from_top,
                        const Palette& palette, c32bppDIB& image);

}  // namespace kestrelon::bmp
