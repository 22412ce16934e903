#include "imaging/bmp_parser.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "imaging/alpha_classify.h"
#include "imaging/bmp_format.h"
#include "imaging/bmp_rows.h"

namespace kestrelon {
namespace {

using namespace bmp;

// Four bytes of run-length data skip at most 255 rows of 255 pixels. A file that promises more than
// its bytes could move over, and more than this many pixels, is taken for an attack on memory.
constexpr uint64_t kPixelsPerRunByte = 255 * 255 / 4;
constexpr uint64_t kHarmlessPixels = 1 << 22;

struct Bitmap {
  uint32_t header_size = 0;
  int32_t width = 0;
  int64_t height = 0;  // without its sign
  bool from_top = false;
  int bits = 0;
  uint32_t compression = kRgb;
  uint32_t colours_used = 0;
  uint32_t pixel_offset = 0;
  ChannelMasks masks{};
};

bool has_masks(const Bitmap& bitmap) {
  return bitmap.compression == kBitFields || bitmap.compression == kAlphaBitFields;
}

bool read_core_header(ByteReader& in, Bitmap& bitmap) {
  CoreHeader header;
  if (!in.read(header)) return false;
  bitmap.width = header.width;
  bitmap.height = header.height;
  bitmap.bits = header.bit_count;
  return true;
}

// Masks follow a header of 40 bytes and are part of a longer one. Alpha is masked in headers of 56
// bytes and more, or when the compression says so.
void read_masks(ByteReader& in, Bitmap& bitmap) {
  bitmap.masks.red = in.u32le();
  bitmap.masks.green = in.u32le();
  bitmap.masks.blue = in.u32le();
  if (bitmap.compression == kAlphaBitFields || bitmap.header_size >= 56)
    bitmap.masks.alpha = in.u32le();
}

bool read_info_header(ByteReader& in, Bitmap& bitmap) {
  InfoHeader header{};
  const size_t start = in.position();
  const auto bytes = in.take(std::min<size_t>(bitmap.header_size, sizeof header));
  if (!in.ok()) return false;
  std::memcpy(&header, bytes.data(), bytes.size());
  bitmap.width = header.width;
  bitmap.from_top = header.height < 0;
  bitmap.height = std::abs(int64_t{header.height});
  bitmap.bits = header.bit_count;
  bitmap.compression = header.compression;
  bitmap.colours_used = header.colours_used;
  // OS/2 numbers its Huffman code like the bit fields.
  if (bitmap.header_size == kOs2Header && bitmap.compression == kBitFields) return false;
  if (has_masks(bitmap)) read_masks(in, bitmap);
  return in.seek(std::max(in.position(), start + bitmap.header_size));
}

bool read_headers(ByteReader& in, Bitmap& bitmap) {
  FileHeader file;
  if (!in.read(file) || file.signature != kSignature) return false;
  bitmap.pixel_offset = file.pixel_offset;
  bitmap.header_size = in.u32le();
  if (!in.ok() || !in.seek(sizeof file)) return false;
  if (bitmap.header_size == sizeof(CoreHeader)) {
    if (!read_core_header(in, bitmap)) return false;
  } else if (bitmap.header_size >= 16 && bitmap.header_size <= kLongestHeader) {
    if (!read_info_header(in, bitmap)) return false;
  } else {
    return false;
  }
  return bitmap.width >= 1 && bitmap.height != 0 &&
         bitmap.width * bitmap.height <= c32bppDIB::kMaxPixels;
}

// As many entries as the header promises, the depth can use and the room before the pixels holds.
// Old files carry fewer than promised, some more than can be used.
Palette read_palette(ByteReader& in, const Bitmap& bitmap) {
  if (bitmap.bits > 8) return make_palette({}, 4);
  const size_t entry_size = bitmap.header_size == sizeof(CoreHeader) ? 3 : 4;
  size_t count = size_t{1} << bitmap.bits;
  if (bitmap.colours_used != 0) count = std::min<size_t>(count, bitmap.colours_used);
  size_t room = in.remaining();
  if (bitmap.pixel_offset != 0)
    room = bitmap.pixel_offset > in.position() ? bitmap.pixel_offset - in.position() : 0;
  return make_palette(in.take_up_to(std::min(count * entry_size, room)), entry_size);
}

bool is_run_length(const Bitmap& bitmap) {
  return (bitmap.compression == kRle8 && bitmap.bits == 8) ||
         (bitmap.compression == kRle4 && bitmap.bits == 4) ||
         (bitmap.compression == kRle24 && bitmap.bits == 24 && bitmap.header_size == kOs2Header);
}

bool supported(const Bitmap& bitmap) {
  const auto one_of = [&](std::initializer_list<int> depths) {
    return std::ranges::find(depths, bitmap.bits) != depths.end();
  };
  if (has_masks(bitmap)) return one_of({16, 32}) && BitFields::usable(bitmap.masks, bitmap.bits);
  if (bitmap.compression == kRgb) return one_of({1, 2, 4, 8, 16, 24, 32});
  return is_run_length(bitmap);
}

// Checked before memory is taken for the picture.
bool enough_data(const Bitmap& bitmap, uint64_t available) {
  const auto width = static_cast<uint64_t>(bitmap.width);
  const auto height = static_cast<uint64_t>(bitmap.height);
  if (is_run_length(bitmap))
    return width * height <= std::max(kHarmlessPixels, available * kPixelsPerRunByte);
  const auto bits = static_cast<uint64_t>(bitmap.bits);
  return row_bytes(bits, width) * (height - 1) + (bits * width + 7) / 8 <= available;
}

// Leaves `opaque` false where only a scan of the alpha channel can tell.
bool decode_pixels(std::span<const uint8_t> data, const Bitmap& bitmap, const Palette& palette,
                   c32bppDIB& out, bool& opaque) {
  opaque = true;
  if (is_run_length(bitmap))
    return decode_run_lengths(data, bitmap.bits, bitmap.from_top, palette, out);
  if (has_masks(bitmap)) {
    opaque = bitmap.masks.alpha == 0;
    return decode_bit_fields(data, bitmap.bits, bitmap.from_top, bitmap.masks, out);
  }
  if (bitmap.bits == 32) return decode_rows_32(data, bitmap.from_top, out, opaque);
  return decode_rows(data, bitmap.bits, bitmap.from_top, palette, out);
}

void settle_alpha(bool opaque, c32bppDIB& out) {
  ImageFormat type = ImageFormat::Bitmap;
  AlphaType alpha = AlphaType::None;
  if (!opaque) {
    const size_t count = static_cast<size_t>(out.Width()) * out.Height();
    alpha = classify_alpha(out.bits(), count, true, type);
  }
  out.set_alpha(alpha);
  out.set_image_type(type);
}

bool decode(std::span<const uint8_t> data, c32bppDIB& out) {
  ByteReader in(data);
  Bitmap bitmap;
  if (!read_headers(in, bitmap)) return false;
  const Palette palette = read_palette(in, bitmap);
  if (bitmap.pixel_offset != 0 && !in.seek(bitmap.pixel_offset)) return false;
  if (!supported(bitmap) || !enough_data(bitmap, in.remaining())) return false;
  if (!out.InitializeDIB(bitmap.width, static_cast<int32_t>(bitmap.height))) return false;
  bool opaque;
  if (!decode_pixels(in.rest(), bitmap, palette, out, opaque)) return false;
  settle_alpha(opaque, out);
  return true;
}

}  // namespace

bool cBMPparser::LoadStream(std::span<const uint8_t> data, c32bppDIB& out) {
  if (decode(data, out)) return true;
  out.DestroyDIB();
  return false;
}

}  // namespace kestrelon
