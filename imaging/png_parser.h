// The PNG reader.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Decodes a PNG by other means; true if `out` then holds the image.
using PlatformPngDecoder = std::function<bool(std::span<const uint8_t> file, c32bppDIB& out)>;

/// Puts a decoder of the platform in front of the library's own, for the whole process; an empty
/// function, as at the start, takes it away. Not thread-safe.
void set_platform_png_decoder(PlatformPngDecoder decoder);

enum class PngSource {
  Stream,
  File,  ///< files of 56 bytes or less are declined
};

class cPNGparser {
 public:
  /// Reads a PNG of any colour type, depth and interlacing into premultiplied pixels. Gamma, colour
  /// profiles and texts are ignored.
  ///
  /// True if `file` begins with the signature: no other reader should try it. The image itself may
  /// still have failed, which leaves `out` without one. False leaves `out` alone.
  ///
  /// The picture may have at most 2^26 - 1 pixels. zlib inflates where find_zlib() has it, and
  /// check values are then verified; the library's own inflate serves otherwise, and where zlib
  /// fails.
  static bool LoadStream(std::span<const uint8_t> file, c32bppDIB& out,
                         PngSource source = PngSource::Stream);
};

}  // namespace kestrelon
