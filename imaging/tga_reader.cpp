#include "imaging/tga_parser.h"

#include <algorithm>
#include <cstring>

#include "base/byte_reader.h"
#include "imaging/alpha_classify.h"
#include "imaging/premultiply.h"
#include "imaging/row_convert.h"
#include "imaging/tga_format.h"

namespace kestrelon {
namespace {

using namespace tga;

// What the pixels are once the header has been checked.
enum class Pixels { Index8, Gray8, GrayAlpha16, Rgb15, Argb16, Bgr24, Bgra32 };

struct Layout {
  Header header;
  Pixels pixels;
  size_t bytes_per_pixel;
  bool run_length;
  bool has_alpha;
};

bool valid_colour_depth(int depth) {
  return depth == 15 || depth == 16 || depth == 24 || depth == 32;
}

bool classify_pixels(const Header& header, Layout& layout) {
  const int attribute_bits = header.descriptor & kAttributeBits;
  switch (header.kind & ~kRunLength) {
    case kIndexed:
      if (header.colour_map != 1 || header.depth != 8) return false;
      layout.pixels = Pixels::Index8;
      layout.has_alpha = header.map_depth == 32;
      return true;
    case kTrueColour:
      switch (header.depth) {
        case 15:
          layout.pixels = Pixels::Rgb15;
          return true;
        case 16:
          layout.has_alpha = attribute_bits == 1;
          layout.pixels = layout.has_alpha ? Pixels::Argb16 : Pixels::Rgb15;
          return true;
        case 24:
          layout.pixels = Pixels::Bgr24;
          return true;
        case 32:
          // Many writers leave the attribute count at 0; classification tells junk from alpha.
          layout.pixels = Pixels::Bgra32;
          layout.has_alpha = true;
          return true;
        default:
          return false;
      }
    case kGray:
      layout.has_alpha = header.depth == 16;
      layout.pixels = layout.has_alpha ? Pixels::GrayAlpha16 : Pixels::Gray8;
      return header.depth == 8 || header.depth == 16;
    default:
      return false;
  }
}

bool read_header(ByteReader& in, Layout& layout) {
  Header& header = layout.header;
  if (!in.read(header)) return false;
  if (header.colour_map > 1 || (header.kind & ~kRunLength) > kGray) return false;
  if (header.width == 0 || header.height == 0) return false;
  if ((header.descriptor & kInterleaved) != 0 || (header.descriptor & kAttributeBits) > 8)
    return false;
  if (header.colour_map == 1 && !valid_colour_depth(header.map_depth)) return false;
  layout.has_alpha = false;
  if (!classify_pixels(header, layout)) return false;
  layout.run_length = (header.kind & kRunLength) != 0;
  layout.bytes_per_pixel = (header.depth + 7u) / 8;
  return true;
}

// Indexes count from the map's first entry; what the map leaves out is opaque black.
bool read_colour_map(ByteReader& in, const Header& header, Palette& palette) {
  palette.fill(kOpaque);
  if (header.colour_map == 0) return true;
  const size_t entry_size = (header.map_depth + 7u) / 8;
  const auto entries = in.take(entry_size * header.map_length);
  if (!in.ok()) return false;
  for (size_t i = 0; i < header.map_length && header.map_first + i < palette.size(); ++i) {
    const uint8_t* entry = &entries[i * entry_size];
    uint8_t pixel[4];
    switch (header.map_depth) {
      case 15:
      case 16:
        x1r5g5b5_to_row(pixel, entry, 1);
        break;
      case 24:
        bgr24_to_row(pixel, entry, 1);
        break;
      default:
        std::memcpy(pixel, entry, 4);
    }
    std::memcpy(&palette[header.map_first + i], pixel, 4);
  }
  return true;
}

Palette gray_palette() {
  Palette palette;
  for (uint32_t i = 0; i < 256; ++i) palette[i] = opaque_pixel(i, i, i);
  return palette;
}

void convert_pixels(uint8_t* dst, const uint8_t* src, size_t count, Pixels pixels,
                    const Palette& palette) {
  switch (pixels) {
    case Pixels::Index8:
    case Pixels::Gray8:
      indexed_to_row(dst, src, count, 8, palette);
      break;
    case Pixels::Rgb15:
      x1r5g5b5_to_row(dst, src, count);
      break;
    case Pixels::Bgr24:
      bgr24_to_row(dst, src, count);
      break;
    case Pixels::Bgra32:
      std::memcpy(dst, src, count * 4);
      break;
    case Pixels::Argb16:
      x1r5g5b5_to_row(dst, src, count);
      for (size_t i = 0; i < count; ++i) dst[4 * i + 3] = (src[2 * i + 1] & 0x80) != 0 ? 255 : 0;
      break;
    case Pixels::GrayAlpha16:
      for (size_t i = 0; i < count; ++i, dst += 4) {
        dst[0] = dst[1] = dst[2] = src[2 * i];
        dst[3] = src[2 * i + 1];
      }
      break;
  }
}

// Rows of the file in their order, wherever the origin lies.
class RowOrder {
 public:
  RowOrder(const Header& header, c32bppDIB& image)
      : image_(image), from_top_((header.descriptor & kFromTop) != 0) {}
  uint8_t* operator()(int32_t file_row) const {
    return image_.row(from_top_ ? file_row : image_.Height() - 1 - file_row);
  }

 private:
  c32bppDIB& image_;
  bool from_top_;
};

bool read_raw(ByteReader& in, const Layout& layout, const Palette& palette, c32bppDIB& image) {
  const RowOrder row(layout.header, image);
  const size_t width = layout.header.width;
  for (int32_t y = 0; y < image.Height(); ++y) {
    const auto bytes = in.take(width * layout.bytes_per_pixel);
    if (!in.ok()) return false;
    convert_pixels(row(y), bytes.data(), width, layout.pixels, palette);
  }
  return true;
}

void fill_pixels(uint8_t* dst, uint32_t pixel, size_t count) {
  for (size_t i = 0; i < count; ++i) std::memcpy(dst + 4 * i, &pixel, 4);
}

// Packets may run on into the next row: the version of the format before 2.0 allowed it.
bool read_runs(ByteReader& in, const Layout& layout, const Palette& palette, c32bppDIB& image) {
  const RowOrder row(layout.header, image);
  const size_t width = layout.header.width;
  size_t left_in_packet = 0;
  bool repeat = false;
  uint32_t pixel = 0;
  for (int32_t y = 0; y < image.Height(); ++y) {
    uint8_t* const line = row(y);
    for (size_t x = 0; x < width;) {
      if (left_in_packet == 0) {
        const uint8_t packet = in.u8();
        repeat = (packet & 0x80) != 0;
        left_in_packet = (packet & 0x7Fu) + 1;
        if (repeat) {
          const auto bytes = in.take(layout.bytes_per_pixel);
          if (!in.ok()) return false;
          uint8_t converted[4];
          convert_pixels(converted, bytes.data(), 1, layout.pixels, palette);
          std::memcpy(&pixel, converted, 4);
        }
      }
      const size_t count = std::min(left_in_packet, width - x);
      if (repeat) {
        fill_pixels(line + 4 * x, pixel, count);
      } else {
        const auto bytes = in.take(count * layout.bytes_per_pixel);
        if (!in.ok()) return false;
        convert_pixels(line + 4 * x, bytes.data(), count, layout.pixels, palette);
      }
      left_in_packet -= count;
      x += count;
    }
  }
  return true;
}

void mirror_rows(c32bppDIB& image) {
  for (int32_t y = 0; y < image.Height(); ++y) {
    uint8_t* const line = image.row(y);
    for (int32_t left = 0, right = image.Width() - 1; left < right; ++left, --right)
      std::swap_ranges(line + 4 * left, line + 4 * left + 4, line + 4 * right);
  }
}

// What the extension area says about the alpha channel; 0 where there is none.
uint8_t attribute_kind(std::span<const uint8_t> data) {
  if (data.size() < sizeof(Header) + sizeof(Footer)) return 0;
  ByteReader in(data);
  Footer footer;
  in.seek(data.size() - sizeof(Footer));
  if (!in.read(footer) || std::memcmp(footer.signature, kSignature, sizeof kSignature) != 0)
    return 0;
  in.seek(footer.extension_offset);
  if (footer.extension_offset == 0 || in.u16le() < kExtensionSize) return 0;
  in.skip(kAttributeKindOffset - 2);
  return in.u8();
}

// Premultiplied pixels of a stranger may break the invariant; colour never exceeds alpha here.
void clamp_to_alpha(uint8_t* pixels, size_t count) {
  for (size_t i = 0; i < count; ++i, pixels += 4) {
    for (int c = 0; c < 3; ++c) pixels[c] = std::min(pixels[c], pixels[3]);
  }
}

// An alpha channel that is 0 everywhere means an opaque picture even where the file claims alpha.
AlphaType settle_alpha(uint8_t kind, c32bppDIB& image) {
  const size_t count = static_cast<size_t>(image.Width()) * image.Height();
  uint8_t* const pixels = image.bits();
  ImageFormat type = kind == kIgnorable ? ImageFormat::Error : ImageFormat::None;
  if (kind == kStraightAlpha || kind == kPremultipliedAlpha) {
    ImageFormat seen = ImageFormat::None;
    classify_alpha(pixels, count, false, seen);
    const bool uniform = seen == ImageFormat::Bitmap;
    if (!uniform && kind == kStraightAlpha) premultiply_row(pixels, pixels, count);
    if (!uniform && kind == kPremultipliedAlpha) clamp_to_alpha(pixels, count);
  }
  return classify_alpha(pixels, count, true, type);
}

bool decode(std::span<const uint8_t> data, c32bppDIB& out) {
  ByteReader in(data);
  Layout layout;
  if (!read_header(in, layout) || !in.skip(layout.header.id_length)) return false;
  Palette palette;
  if (!read_colour_map(in, layout.header, palette)) return false;
  if (layout.pixels == Pixels::Gray8) palette = gray_palette();

  const uint64_t pixels = uint64_t{layout.header.width} * layout.header.height;
  const uint64_t most =
      layout.run_length
          ? in.remaining() / (1 + layout.bytes_per_pixel) * kLongestRun + in.remaining()
          : in.remaining() / layout.bytes_per_pixel;
  if (pixels > most || !out.InitializeDIB(layout.header.width, layout.header.height)) return false;

  const bool complete =
      layout.run_length ? read_runs(in, layout, palette, out) : read_raw(in, layout, palette, out);
  if (!complete) return false;
  if ((layout.header.descriptor & kFromRight) != 0) mirror_rows(out);
  out.set_alpha(layout.has_alpha ? settle_alpha(attribute_kind(data), out) : AlphaType::None);
  out.set_image_type(ImageFormat::Tga);
  return true;
}

}  // namespace

bool cTGAparser::LoadStream(std::span<const uint8_t> data, c32bppDIB& out) {
  if (decode(data, out)) return true;
  out.DestroyDIB();
  return false;
}

}  // namespace kestrelon
