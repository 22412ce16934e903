#include "imaging/bmp_parser.h"

#include <algorithm>

#include "base/byte_writer.h"
#include "imaging/bmp_format.h"
#include "imaging/flatten.h"

namespace kestrelon {
namespace {

using namespace bmp;

void write_headers(ByteWriter& out, const c32bppDIB& image, uint16_t bits, uint32_t image_size) {
  constexpr uint32_t offset = sizeof(FileHeader) + sizeof(InfoHeader);
  out.wire(FileHeader{kSignature, offset + image_size, 0, offset});
  out.wire(InfoHeader{.size = sizeof(InfoHeader),
                      .width = image.Width(),
                      .height = image.Height(),
                      .planes = 1,
                      .bit_count = bits,
                      .compression = kRgb,
                      .image_size = image_size,
                      .x_per_metre = 0,
                      .y_per_metre = 0,
                      .colours_used = 0,
                      .colours_important = 0});
}

// The colours alone; a picture that is transparent everywhere is black.
void drop_alpha(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t i = 0; i < count; ++i, src += 4, dst += 3) std::copy_n(src, 3, dst);
}

}  // namespace

bool cBMPparser::SaveAsBMP(const c32bppDIB& image, const BmpOptions& options,
                           std::vector<uint8_t>& out) {
  out.clear();
  if (!image.has_image()) return false;
  const AlphaType alpha = scan_alpha(image);
  const bool keep_alpha = alpha != AlphaType::None && options.keep_premultiplied;
  const uint16_t bits = keep_alpha ? 32 : 24;
  const auto width = static_cast<size_t>(image.Width());
  const size_t stride = row_bytes(bits, width);
  const size_t size = stride * static_cast<size_t>(image.Height());

  ByteWriter writer(out);
  write_headers(writer, image, bits, static_cast<uint32_t>(size));
  if (keep_alpha) {
    writer.bytes({image.bits(), size});
    return true;
  }
  const size_t start = out.size();
  out.resize(start + size);
  uint8_t* dst = out.data() + start;
  for (int32_t y = image.Height() - 1; y >= 0; --y, dst += stride) {
    if (alpha == AlphaType::None) {
      drop_alpha(dst, image.row(y), width);
    } else {
      flatten_row_24(dst, image.row(y), width, options.fill_colour);
    }
  }
  return true;
}

}  // namespace kestrelon
