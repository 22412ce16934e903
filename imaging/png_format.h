// Facts of the PNG format that its reader and its writer share (PNG, third edition).
#pragma once

#include <array>
#include <cstdint>

namespace kestrelon::png {

constexpr std::array<uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

/// A chunk type as the big-endian number that its four letters make.
constexpr uint32_t chunk_type(const char (&name)[5]) {
  uint32_t type = 0;
  for (int i = 0; i < 4; ++i) type = type << 8 | static_cast<uint8_t>(name[i]);
  return type;
}

constexpr uint32_t kIhdr = chunk_type("IHDR");
constexpr uint32_t kPlte = chunk_type("PLTE");
constexpr uint32_t kTrns = chunk_type("tRNS");
constexpr uint32_t kIdat = chunk_type("IDAT");
constexpr uint32_t kIend = chunk_type("IEND");

/// Bytes of a chunk beside its data: length, type, CRC.
constexpr uint32_t kChunkOverhead = 12;
constexpr uint32_t kIhdrSize = 13;

enum class ColorType : uint8_t { Gray = 0, Rgb = 2, Palette = 3, GrayAlpha = 4, Rgba = 6 };

constexpr uint32_t samples_per_pixel(ColorType type) {
  switch (type) {
    case ColorType::Rgb:
      return 3;
    case ColorType::GrayAlpha:
      return 2;
    case ColorType::Rgba:
      return 4;
    default:
      return 1;
  }
}

/// The filter byte in front of each row.
enum class Filter : uint8_t { None = 0, Sub = 1, Up = 2, Average = 3, Paeth = 4 };

/// The standard's predictor; ties go to left, then above.
constexpr int paeth(int left, int above, int upper_left) {
  const int p = left + above - upper_left;
  const int pa = p > left ? p - left : left - p;
  const int pb = p > above ? p - above : above - p;
  const int pc = p > upper_left ? p - upper_left : upper_left - p;
  if (pa <= pb && pa <= pc) return left;
  return pb <= pc ? above : upper_left;
}

/// One pass over the picture: pixels (x0 + i * dx, y0 + j * dy).
struct Pass {
  uint32_t x0, y0, dx, dy;

  uint32_t columns(uint32_t width) const { return width > x0 ? (width - x0 + dx - 1) / dx : 0; }
  uint32_t rows(uint32_t height) const { return height > y0 ? (height - y0 + dy - 1) / dy : 0; }
};

constexpr std::array<Pass, 7> kAdam7 = {{{0, 0, 8, 8},
                                         {4, 0, 8, 8},
                                         {0, 4, 4, 8},
                                         {2, 0, 4, 4},
                                         {0, 2, 2, 4},
                                         {1, 0, 2, 2},
                                         {0, 1, 1, 2}}};
constexpr std::array<Pass, 1> kWholePicture = {{{0, 0, 1, 1}}};

constexpr uint32_t read_be32(const uint8_t* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}

}  // namespace kestrelon::png
