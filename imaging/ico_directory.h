// The directory of an icon or cursor file: what pictures it holds and which of them serves best.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrelon {

/// One picture of an icon file, as its directory and its own header tell.
struct IconEntry {
  int32_t Width = 0, Height = 0;  // pixels, 1 to 256
  int32_t bitDepth = 0;           // 0: broken, never chosen
  bool IsIconPNG = false;
  uint32_t bytes_in_res = 0;
  uint32_t image_offset = 0;  // bytes from the start of the file
  uint32_t header_size = 0;   // of the information header; 0 for a PNG

  /// Where the colour rows begin, in bytes from the start of the file.
  uint64_t ColorByteOffset() const;
  /// Bytes of the colour rows, and of the rows of the one-bit mask that follow them.
  uint64_t colour_bytes() const;
  uint64_t mask_bytes() const;
  /// Entries of the palette by what the picture's size leaves for it; 0 above 8 bits.
  int32_t ColorCount() const;
};

struct IconDirectory {
  bool is_cursor = false;
  std::vector<IconEntry> entries;
};

/// The directory, or nothing if the data is no icon file, its pictures would not fit into it or one
/// of them tells no depth. Broken PNG pictures are listed with a depth of 0.
std::optional<IconDirectory> icon_entries(std::span<const uint8_t> data);

/// Index of the entry to use for a wanted size and depth, or -1 if none is usable: the exact one,
/// else the nearest larger, else the nearest smaller with the most colours.
int32_t choose_icon_entry(const std::vector<IconEntry>& entries, int32_t width, int32_t height,
                          int32_t depth);

}  // namespace kestrelon
