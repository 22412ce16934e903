// The PNG writer.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/png_properties.h"

namespace kestrelon {

/// Takes the next bytes of the file; false ends the save.
using PngOutput = std::function<bool(std::span<const uint8_t> bytes)>;

class cPNGwriter {
 public:
  /// Writes `image` as PNG with the texts, date, background and filter of `properties`. Colours are
  /// straight in the file: stored * 255 / alpha, truncated. The colour type is the smallest plain
  /// one that fits: palette, RGB, RGB with a transparent colour, RGBA.
  ///
  /// False without pixels, without zlib (compress2 and crc32), when memory is short or when
  /// `output` answers false; it may then have got part of the file.
  static bool Save(const c32bppDIB& image, const PngProperties& properties,
                   const PngOutput& output);
  /// The same into `out`, which is replaced, and left empty on failure.
  static bool Save(const c32bppDIB& image, const PngProperties& properties,
                   std::vector<uint8_t>& out);
  /// The same without properties, with straight colours rounded up: cPNGparser gives back equal
  /// pixels, also where they are partly transparent.
  static bool SaveExact(const c32bppDIB& image, std::vector<uint8_t>& out);
};

}  // namespace kestrelon
