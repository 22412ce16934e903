// Reads Truevision TGA pictures.
#pragma once

#include <cstdint>
#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Replaces `out` by the picture: palette (8-bit index, entries of 15, 16, 24 or 32 bits), true
/// colour of 15, 16, 24 or 32 bits, gray of 8 bits or with 8 bits of alpha; raw or run-length, any
/// origin. Interleaved and Huffman-coded files are declined.
///
/// Alpha follows the extension area where one says straight, premultiplied or none; otherwise the
/// channel is classified. The format has no signature, so the header is checked strictly and data
/// that ends early is declined: ask this reader last. False leaves `out` empty.
/// Format Tga.
bool read_tga(std::span<const uint8_t> data, c32bppDIB& out);

}  // namespace kestrelon
