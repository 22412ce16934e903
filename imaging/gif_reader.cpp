#include "imaging/gif_reader.h"

#include <algorithm>
#include <string_view>

#include "base/byte_reader.h"
#include "imaging/gif_format.h"
#include "imaging/gif_lzw.h"
#include "imaging/row_convert.h"

namespace kestrelon {
namespace {

using namespace gif;

// A code of 12 bits stands for at most 4096 pixels. A frame that promises more than its bytes could
// hold, and more than this many pixels, is taken for an attack on memory.
constexpr uint64_t kPixelsPerByte = 4096;
constexpr uint64_t kHarmlessPixels = 1 << 20;

struct Frame {
  std::span<const uint8_t> global_table, local_table;
  int transparent = -1;
  ImageDescriptor descriptor{};
  int min_code_size = 0;
  std::span<const uint8_t> sub_blocks;  // with their terminator
};

bool read_screen(ByteReader& in, Frame& frame) {
  ScreenDescriptor screen;
  if (!in.read(screen)) return false;
  char signature[6];
  std::ranges::transform(screen.signature, signature, [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  });
  const std::string_view name(signature, sizeof signature);
  if (name != "gif89a" && name != "gif87a") return false;
  if ((screen.flags & kHasTable) != 0)
    frame.global_table = in.take(3u * static_cast<size_t>(table_entries(screen.flags)));
  return in.ok();
}

bool skip_sub_blocks(ByteReader& in) {
  while (const uint8_t length = in.u8()) {
    if (!in.skip(length)) return false;
  }
  return in.ok();
}

// The last control before the frame counts, whatever else stands between them.
bool read_extension(ByteReader& in, Frame& frame) {
  switch (in.u8()) {
    case kGraphicControl: {
      GraphicControl control;
      if (!in.read(control)) return false;
      frame.transparent = (control.flags & 1) != 0 ? control.transparent_index : -1;
      return true;
    }
    case kApplication:
      return in.skip(in.u8()) && skip_sub_blocks(in);
    default:
      return skip_sub_blocks(in);
  }
}

bool read_image(ByteReader& in, std::span<const uint8_t> data, Frame& frame) {
  if (!in.read(frame.descriptor)) return false;
  if ((frame.descriptor.flags & kHasTable) != 0)
    frame.local_table = in.take(3u * static_cast<size_t>(table_entries(frame.descriptor.flags)));
  frame.min_code_size = in.u8();
  const size_t start = in.position();
  if (!skip_sub_blocks(in)) return false;
  frame.sub_blocks = data.subspan(start, in.position() - start);
  return frame.min_code_size >= 1 && frame.min_code_size <= 8;
}

bool find_first_frame(std::span<const uint8_t> data, Frame& frame) {
  ByteReader in(data);
  if (!read_screen(in, frame)) return false;
  while (in.ok()) {
    switch (in.u8()) {
      case kStray:
        break;
      case kExtension:
        if (!read_extension(in, frame)) return false;
        break;
      case kImage:
        return read_image(in, data, frame);
      default:
        return false;
    }
  }
  return false;
}

// A file without any table gets the two colours that the standard names, black and white.
Palette make_palette(const Frame& frame) {
  static constexpr uint8_t kFallback[] = {0, 0, 0, 255, 255, 255};
  auto table = frame.local_table.empty() ? frame.global_table : frame.local_table;
  if (table.empty()) table = kFallback;
  Palette palette;
  palette.fill(kOpaque);
  const size_t entries = table.size() / 3;
  for (size_t i = 0; i < entries; ++i)
    palette[i] = opaque_pixel(table[3 * i], table[3 * i + 1], table[3 * i + 2]);
  if (frame.transparent >= 0 && static_cast<size_t>(frame.transparent) < entries)
    palette[static_cast<size_t>(frame.transparent)] = 0;
  return palette;
}

// Rows in the order of the data: from the top, or in the four passes of an interlaced frame.
class RowOrder {
 public:
  RowOrder(bool interlaced, int32_t height)
      : height_(height), pass_(interlaced ? 0 : 3), step_(interlaced ? 8 : 1) {}
  int32_t row() const { return row_; }
  bool at_end() const { return row_ >= height_; }
  void advance() {
    row_ += step_;
    while (row_ >= height_ && pass_ < 3) {
      ++pass_;
      step_ = 16 >> pass_;
      row_ = step_ / 2;
    }
  }

 private:
  int32_t height_;
  int pass_;
  int32_t step_;
  int32_t row_ = 0;
};

bool decode_pixels(const Frame& frame, const Palette& palette, c32bppDIB& out) {
  LzwDecoder lzw(frame.sub_blocks, frame.min_code_size);
  RowOrder order((frame.descriptor.flags & kInterlaced) != 0, out.Height());
  const auto width = static_cast<size_t>(out.Width());
  size_t x = 0;
  while (!order.at_end()) {
    auto indexes = lzw.next();
    if (indexes.empty()) break;
    while (!indexes.empty() && !order.at_end()) {
      const size_t count = std::min(indexes.size(), width - x);
      indexed_to_row(out.row(order.row()) + 4 * x, indexes.data(), count, 8, palette);
      indexes = indexes.subspan(count);
      x += count;
      if (x < width) continue;
      x = 0;
      order.advance();
    }
  }
  if (!lzw.ok() && !order.at_end()) return false;
  if (frame.transparent < 0) {
    for (; !order.at_end(); x = 0, order.advance()) {
      auto* const pixels = reinterpret_cast<uint32_t*>(out.row(order.row()));
      std::fill(pixels + x, pixels + width, palette[0]);
    }
  }
  return true;
}

bool decode(std::span<const uint8_t> data, c32bppDIB& out) {
  Frame frame;
  if (!find_first_frame(data, frame)) return false;
  const uint64_t pixels = uint64_t{frame.descriptor.width} * frame.descriptor.height;
  if (pixels > std::max(kHarmlessPixels, frame.sub_blocks.size() * kPixelsPerByte)) return false;
  if (!out.InitializeDIB(frame.descriptor.width, frame.descriptor.height)) return false;
  if (!decode_pixels(frame, make_palette(frame), out)) return false;
  out.set_alpha(frame.transparent >= 0 ? AlphaType::Simple : AlphaType::None);
  out.set_image_type(ImageFormat::Gif);
  return true;
}

}  // namespace

bool read_gif(std::span<const uint8_t> data, c32bppDIB& out) {
  if (decode(data, out)) return true;
  out.DestroyDIB();
  return false;
}

}  // namespace kestrelon
