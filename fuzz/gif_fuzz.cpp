#include <cstddef>
#include <cstdint>

#include "imaging/gif_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kestrelon::c32bppDIB image;
  const bool read = kestrelon::cGIFparser::LoadStream({data, size}, image);
  if (!read && image.has_image()) __builtin_trap();
  return 0;
}
