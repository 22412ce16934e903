#include "imaging/flatten.h"

#include <algorithm>

#include "imaging/alpha_classify.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

template <size_t BytesPerPixel>
void flatten(uint8_t* dst, const uint8_t* src, size_t count, uint32_t fill) {
  const uint32_t fill_bgr[3] = {fill >> 16 & 255, fill >> 8 & 255, fill & 255};
  for (size_t i = 0; i < count; ++i, src += 4, dst += BytesPerPixel) {
    const uint32_t alpha = src[3];
    for (size_t c = 0; c < 3; ++c) {
      // A stored byte above its alpha, which no valid picture has, must not wrap round.
      const uint32_t sum = src[c] + div255(fill_bgr[c] * (255 - alpha));
      dst[c] = static_cast<uint8_t>(std::min(sum, 255u));
    }
    if constexpr (BytesPerPixel == 4) dst[3] = alpha == 0 ? 0 : 255;
  }
}

}  // namespace

void flatten_row_24(uint8_t* dst, const uint8_t* src, size_t count, uint32_t fill) {
  flatten<3>(dst, src, count, fill);
}

void flatten_row_32(uint8_t* dst, const uint8_t* src, size_t count, uint32_t fill) {
  flatten<4>(dst, src, count, fill);
}

AlphaType scan_alpha(const c32bppDIB& image) {
  if (!image.has_image()) return AlphaType::None;
  ImageFormat type = ImageFormat::None;
  // Without premultiplying the scan only reads.
  return classify_alpha(const_cast<uint8_t*>(image.bits()),
                        static_cast<size_t>(image.Width()) * image.Height(), false, type);
}

}  // namespace kestrelon
