// The device-independent bitmap, as the BMP and icon readers and the BMP writer share it.
#pragma once

#include <cstdint>

namespace kestrelon::bmp {

inline constexpr uint16_t kSignature = 19778;  // "BM"

enum Compression : uint32_t {
  kRgb = 0,
  kRle8 = 1,
  kRle4 = 2,
  kBitFields = 3,
  kRle24 = 4,  // in a 64-byte header of OS/2; JPEG data elsewhere
  kAlphaBitFields = 6,
};

#pragma pack(push, 1)
struct FileHeader {
  uint16_t signature;
  uint32_t file_size;
  uint32_t reserved;
  uint32_t pixel_offset;
};

struct CoreHeader {
  uint32_t size;  // 12
  uint16_t width, height;
  uint16_t planes, bit_count;
};

// The leading fields of every later header; an OS/2 header may end after any of them, the rest
// counting as 0.
struct InfoHeader {
  uint32_t size;  // 16 to 124
  int32_t width;
  int32_t height;  // negative: rows from the top
  uint16_t planes, bit_count;
  uint32_t compression;
  uint32_t image_size;
  int32_t x_per_metre, y_per_metre;
  uint32_t colours_used;
  uint32_t colours_important;
};
#pragma pack(pop)
static_assert(sizeof(FileHeader) == 14);
static_assert(sizeof(CoreHeader) == 12);
static_assert(sizeof(InfoHeader) == 40);

inline constexpr uint32_t kOs2Header = 64;
inline constexpr uint32_t kLongestHeader = 124;

/// Bytes of a row in a file, rounded up to four.
constexpr uint64_t row_bytes(uint64_t bits_per_pixel, uint64_t width) {
  return (bits_per_pixel * width + 31) / 32 * 4;
}

}  // namespace kestrelon::bmp
