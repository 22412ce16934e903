#include <cstddef>
#include <cstdint>

#include "imaging/bmp_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kestrelon::c32bppDIB image;
  const bool read = kestrelon::read_bmp({data, size}, image);
  if (!read && image.has_image()) __builtin_trap();
  return 0;
}
