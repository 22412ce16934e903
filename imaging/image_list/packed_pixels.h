// The pixels of an image list in the form that is stored.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/image_list/image_strip.h"

namespace kestrelon {

struct PackedPixels {
  enum class Form { Png, Huffman, Raw };
  Form form = Form::Raw;
  std::vector<uint8_t> bytes;  ///< empty for no cells

  bool is_png() const { return form == Form::Png && !bytes.empty(); }
};

/// A PNG can be written: there is zlib or the platform's imaging library.
bool png_is_writable();

/// Packs all cells so that unpacking gives equal pixels: PNG where one can be written, else a
/// Huffman block with `compression`, else raw. Throws bad_alloc without memory.
PackedPixels pack_cells(const ImageStrip& strip, bool compression);

/// Tells from its first bytes whether the packed picture can hold `count` cells of this size, and
/// not more than a strip may have. Takes no memory.
bool holds_cells(const PackedPixels& packed, int32_t cell_width, int32_t cell_height,
                 int32_t count);

/// Appends `count` cells to an empty strip; false, and the strip stays empty, if the bytes are not
/// sound or memory is short.
bool unpack_cells(const PackedPixels& packed, int32_t count, ImageStrip& strip);

}  // namespace kestrelon
