#include <cstddef>
#include <cstdint>

#include "imaging/ico_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kestrelon::c32bppDIB image;
  // The first byte picks the wanted size and depth.
  if (size == 0) return 0;
  kestrelon::IcoOptions options;
  options.cx = options.cy = data[0] & 0x7F;
  options.depth = (data[0] & 0x80) != 0 ? 32 : 4;
  const bool read = kestrelon::cICOparser::LoadStream({data + 1, size - 1}, options, image);
  if (!read && image.has_image()) __builtin_trap();
  return 0;
}
