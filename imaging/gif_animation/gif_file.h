// All frames of a GIF file: where they lie, what stands between them, which colours are in force.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/gif_frame.h"

namespace kestrelon {

/// What happens to a frame's rectangle before the next frame is drawn.
enum class GifDisposal : uint8_t { None = 0, Leave = 1, Clear = 2, Restore = 3 };

/// One frame of a file.
struct GifFrame {
  uint16_t left = 0, top = 0, width = 0, height = 0;  ///< on the canvas
  uint8_t flags = 0;                                  ///< of the image descriptor
  GifDisposal disposal = GifDisposal::None;
  bool uses_transparency = false;
  uint8_t transparent_index = 0;
  int32_t delay = 0;           ///< milliseconds; 0 where the file leaves it to the player
  uint16_t local_entries = 0;  ///< colours of a table of its own, or 0
  uint32_t local_table = 0;    ///< where that lies in the file
  uint32_t data = 0;           ///< where the code size byte lies
  uint32_t data_size = 0;      ///< from that byte to the terminator, both included
};

/// A run of frames that share a colour table. The size of the table is kept as its exponent.
struct GifTableGroup {
  uint32_t first_frame;
  uint32_t offset : 28;  ///< in the file; 0 for no table at all
  uint32_t bits : 4;     ///< 2 to the power of this entries
};
static_assert(sizeof(GifTableGroup) == 8);

class GifFile {
 public:
  /// Larger files, and canvases of more pixels, are declined before memory is taken.
  static constexpr size_t kMaxBytes = size_t{1} << 26;
  static constexpr uint64_t kMaxCanvasPixels = uint64_t{1} << 25;

  /// Walks through the blocks of a file and keeps its bytes. False, and nothing kept, if the
  /// signature is not that of a GIF, the bytes end before the walk does, there is no frame, or the
  /// canvas would be too large. Pixels are not decoded.
  bool read(std::vector<uint8_t> bytes);
  void clear() { *this = GifFile(); }

  std::span<const uint8_t> bytes() const { return bytes_; }
  const std::vector<GifFrame>& frames() const { return frames_; }
  const std::vector<GifTableGroup>& table_groups() const { return groups_; }
  /// The logical screen, extended to hold every frame; 0 without a file.
  int32_t width() const { return width_; }
  int32_t height() const { return height_; }
  /// How often the file wants to be played, 0 for ever (also where it does not say).
  int32_t loops() const { return loops_; }

  /// The colours that frame `index` (from 0) is drawn with, three bytes each: red, green, blue.
  /// Empty if the file has no table for it.
  std::span<const uint8_t> table(size_t index) const;
  /// The same to write on: the file's own bytes, seen by all frames of the group.
  std::span<uint8_t> table(size_t index);
  /// Frame `index` as the pixel decoder takes it; width or height may be 0.
  gif::FrameSource source(size_t index) const;

 private:
  class Walk;

  const GifTableGroup& group_of(size_t index) const;

  std::vector<uint8_t> bytes_;
  std::vector<GifFrame> frames_;
  std::vector<GifTableGroup> groups_;  // ascending by first frame; the first stands at frame 0
  int32_t width_ = 0, height_ = 0;
  int32_t loops_ = 0;
};

/// All colour tables of a file, put aside and back.
class GifTableCache {
 public:
  explicit operator bool() const { return !tables_.empty(); }
  void store(const GifFile& file);
  /// False if nothing is stored. `file` is the one that was stored.
  bool restore(GifFile& file) const;
  void release() { tables_.clear(); }

 private:
  std::vector<std::vector<uint8_t>> tables_;  // one a group
};

}  // namespace kestrelon
