#include "imaging/bmp_rows.h"

#include <algorithm>
#include <cstring>

#include "imaging/bmp_format.h"

namespace kestrelon::bmp {
namespace {

// Calls convert(dst, src) for each row of the file, in its order.
template <class Convert>
bool each_row(std::span<const uint8_t> data, int bits, bool from_top, c32bppDIB& image,
              Convert convert) {
  ByteReader in(data);
  const size_t needed = (static_cast<size_t>(bits) * image.Width() + 7) / 8;
  const size_t stride = row_bytes(bits, image.Width());
  for (int32_t y = 0; y < image.Height(); ++y) {
    const auto bytes = in.take_up_to(stride);
    if (bytes.size() < needed) return false;
    convert(image.row(from_top ? y : image.Height() - 1 - y), bytes.data());
  }
  return true;
}

enum Escape : uint8_t { kEndOfLine = 0, kEndOfBitmap = 1, kDelta = 2 };

// Writes pixels in file order; whatever is jumped over gets the background.
class RunWriter {
 public:
  RunWriter(c32bppDIB& image, bool from_top, uint32_t background)
      : image_(image), from_top_(from_top), background_(background) {
    line_ = row(0);
  }

  bool full() const { return y_ >= image_.Height(); }
  /// The last pixel of the last row is written.
  bool last_row_complete() const { return y_ == image_.Height() - 1 && x_ == image_.Width(); }
  /// Room for the next `count` pixels, fewer at the right edge and none below the last row.
  std::span<uint8_t> claim(size_t count) {
    const size_t fit = full() ? 0 : std::min(count, static_cast<size_t>(image_.Width() - x_));
    const std::span<uint8_t> room(line_ + 4 * static_cast<size_t>(x_), 4 * fit);
    x_ += static_cast<int32_t>(fit);
    return room;
  }
  void repeat(uint32_t pixel, size_t count) { alternate(pixel, pixel, count); }
  /// Two pixels in turn.
  void alternate(uint32_t first, uint32_t second, size_t count) {
    const auto room = claim(count);
    const uint32_t pair[2] = {first, second};
    size_t i = 0;
    for (; i + 8 <= room.size(); i += 8) std::memcpy(&room[i], pair, 8);
    if (i < room.size()) std::memcpy(&room[i], &first, 4);
  }
  void end_line() {
    if (full()) return;
    repeat(background_, static_cast<size_t>(image_.Width()));
    x_ = 0;
    if (++y_ < image_.Height()) line_ = row(y_);
  }
  void move(int right, int rows) {
    const int32_t x = x_ + right;
    for (; rows > 0 && !full(); --rows) end_line();
    if (!full() && x > x_) repeat(background_, static_cast<size_t>(x - x_));
  }
  void end() {
    while (!full()) end_line();
  }

 private:
  uint8_t* row(int32_t y) const { return image_.row(from_top_ ? y : image_.Height() - 1 - y); }

  c32bppDIB& image_;
  bool from_top_;
  uint32_t background_;
  uint8_t* line_;
  int32_t x_ = 0, y_ = 0;
};

// What differs between the depths: the repeated unit, and pixels in full. Literal data is padded to
// an even number of bytes.
struct Runs8 {
  static size_t literal_bytes(size_t count) { return count; }
  static void repeat(ByteReader& in, size_t count, const Palette& palette, RunWriter& out) {
    out.repeat(palette[in.u8()], count);
  }
  static void literal(const uint8_t* src, std::span<uint8_t> dst, const Palette& palette) {
    indexed_to_row(dst.data(), src, dst.size() / 4, 8, palette);
  }
};

struct Runs4 {
  static size_t literal_bytes(size_t count) { return (count + 1) / 2; }
  static void repeat(ByteReader& in, size_t count, const Palette& palette, RunWriter& out) {
    const uint8_t pair = in.u8();
    out.alternate(palette[pair >> 4], palette[pair & 15], count);
  }
  static void literal(const uint8_t* src, std::span<uint8_t> dst, const Palette& palette) {
    indexed_to_row(dst.data(), src, dst.size() / 4, 4, palette);
  }
};

struct Runs24 {
  static size_t literal_bytes(size_t count) { return count * 3; }
  static void repeat(ByteReader& in, size_t count, const Palette&, RunWriter& out) {
    const uint32_t blue = in.u8(), green = in.u8(), red = in.u8();
    out.repeat(opaque_pixel(red, green, blue), count);
  }
  static void literal(const uint8_t* src, std::span<uint8_t> dst, const Palette&) {
    bgr24_to_row(dst.data(), src, dst.size() / 4);
  }
};

// A picture whose rows are all there needs no end mark.
template <class Runs>
bool decode_runs(std::span<const uint8_t> data, const Palette& palette, RunWriter out) {
  ByteReader in(data);
  while (!out.full()) {
    const uint8_t count = in.u8();
    if (count != 0) {
      Runs::repeat(in, count, palette, out);
    } else {
      switch (const uint8_t code = in.u8()) {
        case kEndOfLine:
          out.end_line();
          break;
        case kEndOfBitmap: {
          const bool whole_code = in.ok();
          out.end();
          return whole_code;
        }
        case kDelta: {
          const uint8_t right = in.u8(), rows = in.u8();
          out.move(right, rows);
          break;
        }
        default: {
          const size_t bytes = Runs::literal_bytes(code);
          const auto pixels = in.take(bytes);
          if (in.ok()) Runs::literal(pixels.data(), out.claim(code), palette);
          if (bytes % 2 != 0) in.take_up_to(1);
        }
      }
    }
    if (!in.ok()) return false;
    if (in.remaining() == 0 && out.last_row_complete()) return true;
  }
  return true;
}

}  // namespace

Palette make_palette(std::span<const uint8_t> entries, size_t entry_size) {
  Palette palette;
  palette.fill(kOpaque);
  const size_t count = std::min(entries.size() / entry_size, palette.size());
  for (size_t i = 0; i < count; ++i) {
    const uint8_t* entry = &entries[i * entry_size];
    palette[i] = opaque_pixel(entry[2], entry[1], entry[0]);
  }
  return palette;
}

bool decode_rows(std::span<const uint8_t> data, int bits, bool from_top, const Palette& palette,
                 c32bppDIB& image) {
  const auto width = static_cast<size_t>(image.Width());
  const auto rows = [&](auto convert) { return each_row(data, bits, from_top, image, convert); };
  switch (bits) {
    case 1:
    case 2:
    case 4:
    case 8:
      return rows([&](uint8_t* dst, const uint8_t* src) {
        indexed_to_row(dst, src, width, bits, palette);
      });
    case 16:
      return rows([=](uint8_t* d, const uint8_t* s) { x1r5g5b5_to_row(d, s, width); });
    case 24:
      return rows([=](uint8_t* d, const uint8_t* s) { bgr24_to_row(d, s, width); });
    case 32:
      return rows([=](uint8_t* d, const uint8_t* s) { std::memcpy(d, s, 4 * width); });
    default:
      return false;
  }
}

bool decode_rows_32(std::span<const uint8_t> data, bool from_top, c32bppDIB& image, bool& opaque) {
  opaque = true;
  return each_row(data, 32, from_top, image, [&](uint8_t* dst, const uint8_t* src) {
    if (!bgra32_to_row(dst, src, static_cast<size_t>(image.Width()))) opaque = false;
  });
}

bool decode_bit_fields(std::span<const uint8_t> data, int bits, bool from_top,
                       const ChannelMasks& masks, c32bppDIB& image) {
  if ((bits != 16 && bits != 32) || !BitFields::usable(masks, bits)) return false;
  const auto width = static_cast<size_t>(image.Width());
  const auto rows = [&](auto convert) { return each_row(data, bits, from_top, image, convert); };
  if (bits == 32 && masks == ChannelMasks{0xFF0000, 0xFF00, 0xFF, 0})
    return rows([=](uint8_t* d, const uint8_t* s) { bgrx32_to_row(d, s, width); });
  if (bits == 32 && masks == ChannelMasks{0xFF0000, 0xFF00, 0xFF, 0xFF000000})
    return rows([=](uint8_t* d, const uint8_t* s) { std::memcpy(d, s, 4 * width); });
  if (masks == ChannelMasks{0xF800, 0x7E0, 0x1F, 0} && bits == 16)
    return rows([=](uint8_t* d, const uint8_t* s) { r5g6b5_to_row(d, s, width); });
  const BitFields fields(masks);
  return rows([&](uint8_t* d, const uint8_t* s) { fields.to_row(d, s, width, bits); });
}

bool decode_run_lengths(std::span<const uint8_t> data, int bits, bool from_top,
                        const Palette& palette, c32bppDIB& image) {
  const RunWriter out(image, from_top, bits == 24 ? kOpaque : palette[0]);
  switch (bits) {
    case 4:
      return decode_runs<Runs4>(data, palette, out);
    case 8:
      return decode_runs<Runs8>(data, palette, out);
    case 24:
      return decode_runs<Runs24>(data, palette, out);
    default:
      return false;
  }
}

}  // namespace kestrelon::bmp
