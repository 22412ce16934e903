// The export format of one image list. All numbers are little-endian.
//
//   0       "TXBK"
//   4       32 bits  version
//   8       32 bits  offset X of the closing block
//   12      32 bits  size of the whole
//   16      32 bits  K, bytes of the list's key
//   20      K bytes  the key in UTF-16
//   20 + K  32 bits  images
//   24 + K  32 bits  second count, kept as it came
//   28 + K  32 bits  cell width
//   32 + K  32 bits  cell height
//   36 + K  32 bits  P, bytes of the packed pixels
//   40 + K  P bytes  the pixels: a PNG, a Huffman block (kModePixels) or the strip as it is in
//   memory
//           the texts up to X: nothing if no image has any, else for each image the length in bytes
//           (32 bits) and the text in UTF-16 of its key, then likewise of its tag; with kModeTexts
//           the size of a Huffman block (32 bits) and the block that holds all this
//   X       32 bits  length of the closing block, these four bytes included
//   X + 4   16 bits  store flags
//   X + 6   8 bits   mode
#pragma once

#include <cstdint>

namespace kestrelon::list_format {

inline constexpr uint32_t kMagic = 0x4B425854;  // "TXBK"
inline constexpr int32_t kVersion = 2;
inline constexpr uint32_t kHeaderBytes = 20;   // up to the key
inline constexpr uint32_t kClosingBytes = 7;   // at least; more is skipped
inline constexpr size_t kLongestTexts = 1024;  // bytes of the texts that are not packed

// Mode bits.
inline constexpr uint8_t kModePixels = 2;
inline constexpr uint8_t kModeTexts = 4;

// Store flags.
inline constexpr uint16_t kFlagCompression = 1;
inline constexpr uint16_t kFlagDelayLoaded = 2;

}  // namespace kestrelon::list_format
