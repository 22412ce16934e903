#include "imaging/image_list/packed_pixels.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/byte_reader.h"
#include "imaging/image_list/huffman_block.h"
#include "imaging/png_format.h"
#include "imaging/png_parser.h"
#include "imaging/png_writer.h"
#include "imaging/zlib_api.h"

namespace kestrelon {
namespace {

bool own_png_is_writable() {
  const ZlibApi* const zlib = find_zlib();
  return zlib != nullptr && zlib->compress2 != nullptr && zlib->crc32 != nullptr;
}

bool equal_pixels(const c32bppDIB& a, const c32bppDIB& b) {
  return a.Width() == b.Width() && a.Height() == b.Height() &&
         std::memcmp(a.bits(), b.bits(), a.pixel_count() * 4) == 0;
}

// A PNG that reads back equal, or nothing. The platform's encoder may lose the last bit of colours
// that are partly transparent; it serves where it does not.
std::vector<uint8_t> exact_png(const c32bppDIB& picture) {
  std::vector<uint8_t> bytes;
  if (cPNGwriter::SaveExact(picture, bytes)) return bytes;
  c32bppDIB again;
  if (picture.SaveToStream_PNG(bytes) && cPNGparser::LoadStream(bytes, again) &&
      again.has_image() && equal_pixels(picture, again))
    return bytes;
  return {};
}

struct PngSize {
  uint32_t width = 0, height = 0;
};

// As the header chunk tells; zeros if there is none.
PngSize png_size(std::span<const uint8_t> bytes) {
  ByteReader reader(bytes);
  const auto signature = reader.take(png::kSignature.size());
  if (!std::ranges::equal(signature, png::kSignature)) return {};
  reader.skip(8);  // length and type of the first chunk
  PngSize size{reader.u32be(), 0};
  size.height = reader.u32be();
  return reader.ok() ? size : PngSize{};
}

size_t raw_size(int32_t cell_width, int32_t cell_height, int32_t count) {
  return static_cast<size_t>(cell_width) * cell_height * 4 * count;
}

bool unpack_raw(std::span<const uint8_t> bytes, int32_t count, ImageStrip& strip) {
  c32bppDIB picture;
  if (!picture.InitializeDIB(strip.cell_width(), strip.cell_height() * count) ||
      bytes.size() != picture.pixel_count() * 4)
    return false;
  std::memcpy(picture.bits(), bytes.data(), bytes.size());
  strip.append_cells(picture, count);
  return true;
}

bool unpack_png(std::span<const uint8_t> bytes, int32_t count, ImageStrip& strip) {
  c32bppDIB picture;
  if (!cPNGparser::LoadStream(bytes, picture) || !picture.has_image()) return false;
  const int64_t cells =
      int64_t{picture.Width() / strip.cell_width()} * (picture.Height() / strip.cell_height());
  if (cells < count) return false;
  strip.append_cells(picture, count);
  return true;
}

}  // namespace

bool png_is_writable() {
  return own_png_is_writable() || imaging_bridge().library_ok();
}

PackedPixels pack_cells(const ImageStrip& strip, bool compression) {
  PackedPixels packed;
  const auto raw = strip.bytes();
  if (raw.empty()) return packed;
  if (png_is_writable()) {
    c32bppDIB picture;
    if (!strip.copy_to(picture)) throw std::bad_alloc();
    packed.bytes = exact_png(picture);
    packed.form = PackedPixels::Form::Png;
    if (!packed.bytes.empty()) return packed;
  }
  if (compression) {
    packed.form = PackedPixels::Form::Huffman;
    packed.bytes = huffman_pack(raw);
  } else {
    packed.form = PackedPixels::Form::Raw;
    packed.bytes.assign(raw.begin(), raw.end());
  }
  return packed;
}

bool holds_cells(const PackedPixels& packed, int32_t cell_width, int32_t cell_height,
                 int32_t count) {
  if (count == 0) return packed.bytes.empty();
  if (packed.form == PackedPixels::Form::Raw)
    return packed.bytes.size() == raw_size(cell_width, cell_height, count);
  if (packed.form == PackedPixels::Form::Huffman)
    return ByteReader(packed.bytes).u32le() == raw_size(cell_width, cell_height, count);
  const PngSize size = png_size(packed.bytes);
  const auto width = static_cast<uint32_t>(cell_width), height = static_cast<uint32_t>(cell_height);
  if (uint64_t{size.width} * size.height > kMaxStripPixels) return false;
  if (size.width % width != 0 || size.height % height != 0) return false;
  return uint64_t{size.width / width} * (size.height / height) >= static_cast<uint32_t>(count);
}

bool unpack_cells(const PackedPixels& packed, int32_t count, ImageStrip& strip) {
  if (!holds_cells(packed, strip.cell_width(), strip.cell_height(), count)) return false;
  if (count == 0) return true;
  if (!strip.reserve(count)) return false;
  bool done = false;
  if (packed.form == PackedPixels::Form::Png) {
    done = unpack_png(packed.bytes, count, strip);
  } else if (packed.form == PackedPixels::Form::Raw) {
    done = unpack_raw(packed.bytes, count, strip);
  } else {
    const auto plain =
        huffman_unpack(packed.bytes, raw_size(strip.cell_width(), strip.cell_height(), count));
    done = plain && unpack_raw(*plain, count, strip);
  }
  if (!done) strip.clear();
  return done;
}

}  // namespace kestrelon
