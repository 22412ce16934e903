// GIF87a and GIF89a, as the reader and the writer share them (CompuServe, Graphics Interchange
// Format, Version 89a).
#pragma once

#include <cstdint>

namespace kestrelon::gif {

enum Block : uint8_t {
  kStray = 0,
  kExtension = 33,
  kImage = 44,
  kTrailer = 59,
};

enum Label : uint8_t {
  kGraphicControl = 249,
  kApplication = 255,
};

enum ScreenFlags : uint8_t {
  kHasTable = 0x80,  // in the screen descriptor the global, in an image descriptor the local table
  kInterlaced = 0x40,
  kTableSize = 0x07,  // 2 to the power of this plus 1 entries
};

#pragma pack(push, 1)
struct ScreenDescriptor {
  char signature[6];
  uint16_t width, height;
  uint8_t flags;
  uint8_t background;
  uint8_t aspect;
};

// After the block byte.
struct ImageDescriptor {
  uint16_t left, top;
  uint16_t width, height;
  uint8_t flags;
};

// After block byte and label.
struct GraphicControl {
  uint8_t size;   // 4
  uint8_t flags;  // bit 0: the transparent index counts
  uint16_t delay;
  uint8_t transparent_index;
  uint8_t terminator;
};
#pragma pack(pop)
static_assert(sizeof(ScreenDescriptor) == 13);
static_assert(sizeof(ImageDescriptor) == 9);
static_assert(sizeof(GraphicControl) == 6);

inline constexpr int kMaxCodeBits = 12;
inline constexpr int kMaxCodes = 1 << kMaxCodeBits;

constexpr int table_entries(uint8_t flags) {
  return 2 << (flags & kTableSize);
}

}  // namespace kestrelon::gif
