// Reads the first frame of a GIF.
#pragma once

#include <cstdint>
#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Replaces `out` by the first frame of a GIF87a or GIF89a file (signature in either case), at the
/// frame's own size: its place on the logical screen is dropped.
///
/// With a transparent index the alpha type is Simple, else None. Pixels that the data does not
/// reach are transparent, or of the table's first colour in a frame without transparency. False,
/// and `out` empty, when the block structure is broken or cut off before the frame's terminator, at
/// a pixel code that stands for nothing, or when so few bytes promise so many pixels that they
/// cannot be meant. Format Gif.
bool read_gif(std::span<const uint8_t> data, c32bppDIB& out);

}  // namespace kestrelon
