#include "imaging/ico_parser.h"

#include <algorithm>
#include <cstring>

#include "base/byte_reader.h"
#include "imaging/alpha_classify.h"
#include "imaging/bmp_format.h"
#include "imaging/bmp_rows.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

using namespace bmp;

void clear_masked_row(uint8_t* row, std::span<const uint8_t> bits, int32_t width) {
  const auto reach = std::min(static_cast<size_t>(width), bits.size() * 8);
  for (size_t x = 0; x < reach; ++x) {
    const bool masked = (bits[x / 8] & (0x80 >> (x % 8))) != 0;
    if (masked) std::memset(row + 4 * x, 0, 4);
  }
}

// The height in a picture's header counts colour and mask rows; the directory's height holds, and
// rows always run from the bottom.
bool decode_colours(ByteReader in, const IconEntry& entry, c32bppDIB& out, ByteReader& mask) {
  InfoHeader header;
  if (entry.header_size < sizeof header || entry.header_size > kLongestHeader) return false;
  if (!in.seek(entry.image_offset) || !in.read(header)) return false;
  in.seek(entry.image_offset + entry.header_size);
  uint64_t rows_at = entry.ColorByteOffset();
  ChannelMasks masks{};
  if (header.compression == kBitFields) {
    ByteReader fields = in;
    fields.seek(entry.image_offset + sizeof header);
    masks = {fields.u32le(), fields.u32le(), fields.u32le(),
             entry.bitDepth == 32 ? 0xFF000000u : 0};
    if (entry.header_size == sizeof header) rows_at += 12;
  } else if (header.compression != kRgb) {
    return false;
  }
  const Palette palette =
      entry.bitDepth <= 8 ? make_palette(in.take_up_to(size_t{4} << entry.bitDepth), 4) : Palette{};
  const uint64_t mask_at = rows_at + entry.colour_bytes();
  if (!in.seek(rows_at) || !out.InitializeDIB(entry.Width, entry.Height)) return false;
  mask = in;
  const bool decoded = header.compression == kBitFields
                           ? decode_bit_fields(in.rest(), entry.bitDepth, false, masks, out)
                           : decode_rows(in.rest(), entry.bitDepth, false, palette, out);
  mask.seek(mask_at);
  return decoded;
}

bool decode_bitmap_entry(ByteReader in, const IconEntry& entry, bool is_cursor, c32bppDIB& out) {
  ByteReader mask = in;
  if (!decode_colours(in, entry, out, mask)) return false;
  apply_icon_mask(out, entry.bitDepth, mask.take_up_to(entry.mask_bytes()), is_cursor);
  return true;
}

bool decode_png_entry(ByteReader in, const IconEntry& entry, const IcoOptions& options,
                      c32bppDIB& out) {
  if (options.read_png == nullptr || !in.seek(entry.image_offset)) return false;
  // A PNG that is broken inside may have been recognised all the same.
  if (!options.read_png(in.take_up_to(entry.bytes_in_res), out) || !out.has_image()) return false;
  out.set_image_type(ImageFormat::PngIcon);
  return true;
}

}  // namespace

void apply_icon_mask(c32bppDIB& image, int32_t bit_count, std::span<const uint8_t> mask,
                     bool is_cursor) {
  const size_t count = static_cast<size_t>(image.Width()) * image.Height();
  if (bit_count == 32) {
    premultiply_row(image.bits(), image.bits(), count);
    image.set_image_type(is_cursor ? ImageFormat::CursorArgb : ImageFormat::IconArgb);
  } else {
    ByteReader in(mask);
    const size_t stride = row_bytes(1, static_cast<uint64_t>(image.Width()));
    for (int32_t y = image.Height() - 1; y >= 0; --y)
      clear_masked_row(image.row(y), in.take_up_to(stride), image.Width());
    image.set_image_type(is_cursor ? ImageFormat::Cursor : ImageFormat::Icon);
  }
  ImageFormat ignored = ImageFormat::None;
  image.set_alpha(classify_alpha(image.bits(), count, false, ignored));
}

bool cICOparser::LoadStream(std::span<const uint8_t> data, const IcoOptions& options,
                            c32bppDIB& out) {
  out.DestroyDIB();
  const auto directory = icon_entries(data);
  if (!directory) return false;
  const int32_t index = choose_icon_entry(directory->entries, options.cx < 1 ? 32 : options.cx,
                                          options.cy < 1 ? 32 : options.cy, options.depth);
  if (index < 0) return true;
  const IconEntry& entry = directory->entries[static_cast<size_t>(index)];
  const ByteReader in(data);
  const bool decoded = entry.IsIconPNG ? decode_png_entry(in, entry, options, out)
                                       : decode_bitmap_entry(in, entry, directory->is_cursor, out);
  if (!decoded) out.DestroyDIB();
  return true;
}

}  // namespace kestrelon
