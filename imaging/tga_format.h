// Truevision TGA, as its reader and writer share it (Truevision TGA File Format Specification 2.0).
#pragma once

#include <cstdint>

namespace kestrelon::tga {

enum ImageKind : uint8_t {
  kIndexed = 1,
  kTrueColour = 2,
  kGray = 3,
  kRunLength = 8,  // added to one of the above
};

enum Descriptor : uint8_t {
  kAttributeBits = 0x0F,  // alpha bits a pixel
  kFromRight = 0x10,
  kFromTop = 0x20,
  kInterleaved = 0xC0,
};

enum AttributeKind : uint8_t {
  kIgnorable = 1,
  kStraightAlpha = 3,
  kPremultipliedAlpha = 4,
};

#pragma pack(push, 1)
struct Header {
  uint8_t id_length;
  uint8_t colour_map;  // 1: a colour map follows the id
  uint8_t kind;
  uint16_t map_first;
  uint16_t map_length;
  uint8_t map_depth;
  uint16_t x, y;
  uint16_t width, height;
  uint8_t depth;
  uint8_t descriptor;
};
struct Footer {
  uint32_t extension_offset;  // 0: none
  uint32_t developer_offset;
  char signature[18];  // with its closing zero
};
#pragma pack(pop)
static_assert(sizeof(Header) == 18);
static_assert(sizeof(Footer) == 26);

inline constexpr char kSignature[18] = "TRUEVISION-XFILE.";

inline constexpr uint16_t kExtensionSize = 495;
inline constexpr uint16_t kAttributeKindOffset = 494;  // in the extension area

inline constexpr int kLongestRun = 128;  // pixels a packet

}  // namespace kestrelon::tga
