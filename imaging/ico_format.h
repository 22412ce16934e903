// Icon and cursor files on the wire.
#pragma once

#include <cstdint>

namespace kestrelon::ico {

enum FileKind : uint16_t { kIcon = 1, kCursor = 2 };

#pragma pack(push, 1)
struct FileHeader {
  uint16_t reserved;  // 0
  uint16_t kind;
  uint16_t count;
};

struct DirectoryEntry {
  uint8_t width, height;  // 0 means 256
  uint8_t colour_count;
  uint8_t reserved;
  uint16_t planes;     // in a cursor the hot spot's column
  uint16_t bit_count;  // in a cursor the hot spot's row
  uint32_t bytes_in_res;
  uint32_t image_offset;  // from the start of the file
};
#pragma pack(pop)
static_assert(sizeof(FileHeader) == 6);
static_assert(sizeof(DirectoryEntry) == 16);

/// Where the bit count stands in an entry's information header. A PNG has two letters of its first
/// chunk's name there.
inline constexpr uint32_t kBitCountOffset = 14;
inline constexpr uint16_t kPngLetters = 21060;  // "DR" of "IHDR"

}  // namespace kestrelon::ico
