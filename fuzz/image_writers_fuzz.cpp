// Pictures of any size and content through every writer, and back where a reader is there.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "imaging/bmp_parser.h"
#include "imaging/gif_parser.h"
#include "imaging/jpeg_writer.h"
#include "imaging/premultiply.h"
#include "imaging/tga_parser.h"

using namespace kestrelon;

namespace {

void expect(bool condition) {
  if (!condition) __builtin_trap();
}

bool same_pixels(const c32bppDIB& a, const c32bppDIB& b) {
  return a.Width() == b.Width() && a.Height() == b.Height() &&
         std::memcmp(a.bits(), b.bits(), a.scanWidth() * static_cast<size_t>(a.Height())) == 0;
}

// Transparency everywhere counts as none, so such a picture comes back black and opaque.
bool transparent_everywhere(const c32bppDIB& image) {
  const size_t count = static_cast<size_t>(image.Width()) * image.Height();
  for (size_t i = 0; i < count; ++i) {
    if (image.bits()[4 * i + 3] != 0) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 8) return 0;
  c32bppDIB image, back;
  expect(image.InitializeDIB(1 + data[0] % 64, 1 + data[1] % 64));
  const uint8_t flags = data[2];
  const size_t bytes = image.scanWidth() * static_cast<size_t>(image.Height());
  for (size_t i = 0; i < bytes; ++i) image.bits()[i] = data[8 + i < size ? 8 + i : i % 8];
  premultiply_row(image.bits(), image.bits(), bytes / 4);

  std::vector<uint8_t> file;
  const bool exact = !transparent_everywhere(image);
  expect(cBMPparser::SaveAsBMP(image, {.keep_premultiplied = true, .fill_colour = 0}, file));
  expect(cBMPparser::LoadStream(file, back) && (!exact || same_pixels(image, back)));
  expect(
      cBMPparser::SaveAsBMP(image, {.keep_premultiplied = false, .fill_colour = 0x123456}, file));
  expect(cBMPparser::LoadStream(file, back) && back.Alpha() == AlphaType::None);
  expect(cTGAparser::SaveAsTGA(image, {(flags & 1) != 0, (flags & 2) != 0, true}, file));
  expect(cTGAparser::LoadStream(file, back) && (!exact || same_pixels(image, back)));
  expect(cTGAparser::SaveAsTGA(image, {(flags & 1) != 0, (flags & 2) != 0, false}, file));
  expect(cTGAparser::LoadStream(file, back) && back.Width() == image.Width());
  expect(cGIFparser::SaveAsGIF(image, {(flags & 4) != 0, data[3]}, file));
  expect(cGIFparser::LoadStream(file, back) && back.Height() == image.Height());
  expect(write_jpeg(image, {data[4] % 101, data[5] * 0x010203u}, file));
  return 0;
}
