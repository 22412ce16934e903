// The one picture behind an image list: cells of equal size below each other.
#pragma once

#include <cstdint>
#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// The most pixels of a strip.
inline constexpr int64_t kMaxStripPixels = 0xFA000;

/// How many images of a size one list holds; 0 if a side is below 1 or their product exceeds 32
/// bits.
constexpr int32_t max_images(int64_t width, int64_t height) {
  if (width < 1 || height < 1 || width > INT32_MAX || height > INT32_MAX) return 0;
  if (width * height > INT32_MAX) return 0;
  return static_cast<int32_t>(kMaxStripPixels / (width * height));
}

/// Cells are counted from 0, the first at the top; each is contiguous in memory. Memory grows
/// geometrically up to 64 KB, then to max_images() at once.
class ImageStrip {
 public:
  ImageStrip(int32_t cell_width, int32_t cell_height, PixelStoreFactory factory);

  int32_t cell_width() const { return cell_width_; }
  int32_t cell_height() const { return cell_height_; }
  int32_t size() const { return size_; }
  int32_t capacity() const { return capacity_; }
  int32_t max_size() const { return max_images(cell_width_, cell_height_); }

  /// Makes room for `cells`, at most max_size(); false without memory, and nothing has changed.
  bool reserve(int32_t cells);
  /// Opens a transparent cell before `at` (size() appends). Room for it has been made.
  void insert(int32_t at);
  void remove(int32_t at);
  /// Frees the memory.
  void clear();
  /// Appends the cells of `picture`, which is divided into cells from left to right, then
  /// downwards; room for them has been made. Colours above their alpha are cut down to it.
  void append_cells(const c32bppDIB& picture, int32_t count);

  /// The pixels of a cell.
  ImageView cell(int32_t at) const;
  MutableImageView cell(int32_t at);
  /// All cells in the order of memory: the rows of the last cell come first, each cell from its
  /// bottom row up.
  std::span<const uint8_t> bytes() const;
  /// A picture of all cells below each other; false without memory.
  bool copy_to(c32bppDIB& out) const;

  /// Draws a cell as an image of its own: arguments as for c32bppDIB::Render, with the source
  /// inside the cell. Neighbours do not bleed in, whatever engine draws.
  bool render(int32_t at, DrawingSurface* destination, const RenderArguments& args) const;
  /// Makes `out` a copy of a cell.
  bool extract(int32_t at, c32bppDIB& out) const;

 private:
  size_t cell_bytes() const { return static_cast<size_t>(cell_width_) * cell_height_ * 4; }
  // First byte of a cell's memory, which ends with its top row.
  uint8_t* memory(int32_t at);

  int32_t cell_width_, cell_height_;
  int32_t size_ = 0, capacity_ = 0;
  PixelStoreFactory factory_;
  c32bppDIB strip_;
  mutable c32bppDIB single_;  // the cell that is being drawn with effects
};

}  // namespace kestrelon
