// zlib as found at run time. The library itself does not link zlib: a platform half or a test says
// where it comes from.
#pragma once

#include <cstdint>

namespace kestrelon {

/// zlib's z_stream, whose layout is part of its binary interface.
struct ZlibStream {
  const uint8_t* next_in = nullptr;
  unsigned int avail_in = 0;
  unsigned long total_in = 0;
  uint8_t* next_out = nullptr;
  unsigned int avail_out = 0;
  unsigned long total_out = 0;
  const char* message = nullptr;
  void* state = nullptr;
  void* allocate = nullptr;  ///< null: zlib's own
  void* release = nullptr;
  void* opaque = nullptr;
  int data_type = 0;
  unsigned long adler = 0;
  unsigned long reserved = 0;
};

/// The functions of zlib that the PNG classes call; their contracts are zlib's, the calling
/// convention is the compiler's. A function that the library lacks is null.
struct ZlibApi {
  int (*uncompress)(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                    unsigned long source_size) = nullptr;
  unsigned long (*crc32)(unsigned long crc, const uint8_t* bytes, unsigned int size) = nullptr;
  int (*compress2)(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                   unsigned long source_size, int level) = nullptr;
  /// For inflating in pieces; all three or none. `inflate_init` is zlib's inflateInit.
  int (*inflate_init)(ZlibStream* stream) = nullptr;
  int (*inflate)(ZlibStream* stream, int flush) = nullptr;
  int (*inflate_end)(ZlibStream* stream) = nullptr;
};

constexpr int kZlibOk = 0;
constexpr int kZlibStreamEnd = 1;

/// Answers the functions, which live as long as the process, or null where there is no zlib. Called
/// once for each image read or written.
using ZlibLoader = const ZlibApi* (*)();

/// Replaces the source of zlib; null means none. Not thread-safe: set it at the start.
void set_zlib_loader(ZlibLoader loader);

/// What the loader answers, or null without a loader.
const ZlibApi* find_zlib();

}  // namespace kestrelon
