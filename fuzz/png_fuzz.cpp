// The PNG reader against hostile files: an image with sound pixels, or none.
#include <cstdlib>

#include "imaging/png_reader.h"

using namespace kestrelon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  c32bppDIB image;
  const bool taken = read_png({data, size}, image);
  if (!image.has_image()) {
    if (image.ImageType() != ImageFormat::Error) std::abort();
    return 0;
  }
  if (!taken || image.ImageType() != ImageFormat::Png) std::abort();
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* p = image.row(y);
    for (int32_t x = 0; x < image.Width(); ++x, p += 4) {
      if (p[0] > p[3] || p[1] > p[3] || p[2] > p[3]) std::abort();
    }
  }
  return 0;
}
