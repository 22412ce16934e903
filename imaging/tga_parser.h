// Reads and writes Truevision TGA pictures.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct TgaOptions {
  bool compress = false;  ///< run-length packets, unless they come out longer
  /// Use the smallest depth that loses nothing: 8 bits for gray or up to 256 colours, 24 for other
  /// opaque pictures. Otherwise always 32 bits.
  bool reduce_bit_depth = false;
  /// Write colours as stored instead of straight ones; the extension area says which.
  bool allow_premultiplied = false;
};

class cTGAparser {
 public:
  /// Replaces `out` by the picture: palette (8-bit index, entries of 15, 16, 24 or 32 bits), true
  /// colour of 15, 16, 24 or 32 bits, gray of 8 bits or with 8 bits of alpha; raw or run-length,
  /// any origin. Interleaved and Huffman-coded files are declined.
  ///
  /// Alpha follows the extension area where one says straight, premultiplied or none; otherwise the
  /// channel is classified. The format has no signature, so the header is checked strictly and data
  /// that ends early is declined: ask this reader last. False leaves `out` empty.
  /// Format Tga.
  static bool LoadStream(std::span<const uint8_t> data, c32bppDIB& out);
  /// Replaces `out` by a TGA 2.0 file, rows from the bottom, with an extension area that tells what
  /// the alpha channel means. False without an image or with a side above 65535 pixels.
  static bool SaveAsTGA(const c32bppDIB& image, const TgaOptions& options,
                        std::vector<uint8_t>& out);
};

}  // namespace kestrelon
