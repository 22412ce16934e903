// The PNG reader against hostile files: an image with sound pixels, or none, and the same whether
// the own decompressor, zlib in one piece or zlib in pieces is used. Check values are left out,
// which only zlib looks at.
#include <cstdlib>
#include <cstring>

#include "imaging/png_parser.h"
#include "tests/imaging/png_test_tools.h"

using namespace kestrelon;

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

template <const ZlibApi* (*kSource)()>
const ZlibApi* without_check_values() {
  static const ZlibApi api = [] {
    ZlibApi copy = *kSource();
    copy.crc32 = nullptr;
    return copy;
  }();
  return &api;
}

void require_sound(const c32bppDIB& image) {
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* p = image.row(y);
    for (int32_t x = 0; x < image.Width(); ++x, p += 4)
      require(p[0] <= p[3] && p[1] <= p[3] && p[2] <= p[3]);
  }
}

void require_same(const c32bppDIB& a, const c32bppDIB& b) {
  require(a.has_image() == b.has_image() && a.ImageType() == b.ImageType());
  if (!a.has_image()) return;
  require(a.Width() == b.Width() && a.Height() == b.Height() && a.Alpha() == b.Alpha());
  require(std::memcmp(a.bits(), b.bits(), a.pixel_count() * 4) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  c32bppDIB image;
  set_zlib_loader(nullptr);
  const bool taken = cPNGparser::LoadStream({data, size}, image);
  if (image.has_image()) {
    require(taken && image.ImageType() == ImageFormat::Png);
    require_sound(image);
  } else {
    require(image.ImageType() == ImageFormat::Error);
  }
  for (const ZlibLoader loader : {ZlibLoader{without_check_values<png_test::plain_zlib>},
                                  ZlibLoader{without_check_values<png_test::native_zlib>}}) {
    set_zlib_loader(loader);
    c32bppDIB other;
    require(cPNGparser::LoadStream({data, size}, other) == taken);
    require_same(image, other);
  }
  return 0;
}
