// zlib as found at run time. The library itself does not link zlib: a platform half or a test says
// where it comes from.
#pragma once

#include <cstdint>

namespace kestrelon {

/// The functions of zlib that the PNG classes call; their contracts are zlib's, the calling
/// convention is the compiler's. A function that the library lacks is null.
struct ZlibApi {
  int (*uncompress)(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                    unsigned long source_size) = nullptr;
  unsigned long (*crc32)(unsigned long crc, const uint8_t* bytes, unsigned int size) = nullptr;
  int (*compress2)(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                   unsigned long source_size, int level) = nullptr;
};

constexpr int kZlibOk = 0;

/// Answers the functions, which live as long as the process, or null where there is no zlib. Called
/// once for each image read or written.
using ZlibLoader = const ZlibApi* (*)();

/// Replaces the source of zlib; null means none. Not thread-safe: set it at the start.
void set_zlib_loader(ZlibLoader loader);

/// What the loader answers, or null without a loader.
const ZlibApi* find_zlib();

}  // namespace kestrelon
