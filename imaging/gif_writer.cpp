#include "imaging/gif_parser.h"

#include <algorithm>

#include "base/byte_writer.h"
#include "imaging/colour_count.h"
#include "imaging/colour_tree.h"
#include "imaging/flatten.h"
#include "imaging/gif_format.h"
#include "imaging/gif_lzw.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

using namespace gif;

constexpr int32_t kTransparent = -1;

// The straight colour of a pixel (0x00RRGGBB), or kTransparent.
int32_t colour_of(const uint8_t* pixel, int32_t tolerance) {
  const uint8_t alpha = pixel[3];
  if (alpha == 0 || (alpha != 255 && alpha < tolerance)) return kTransparent;
  const auto part = [&](int i) {
    return static_cast<int32_t>(alpha == 255 ? pixel[i] : unpremultiply_byte(pixel[i], alpha));
  };
  return part(2) << 16 | part(1) << 8 | part(0);
}

template <class Visit>
bool each_colour(const c32bppDIB& image, int32_t tolerance, Visit visit) {
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* pixel = image.row(y);
    for (int32_t x = 0; x < image.Width(); ++x, pixel += 4) {
      if (!visit(colour_of(pixel, tolerance))) return false;
    }
  }
  return true;
}

// The fixed table: six levels a channel, and the grays between them.
constexpr uint32_t kCubeLevels = 6, kCubeStep = 51, kCube = kCubeLevels * kCubeLevels * kCubeLevels;
constexpr uint32_t kGrays = 39;

std::vector<uint32_t> default_table() {
  std::vector<uint32_t> table;
  for (uint32_t i = 0; i < kCube; ++i) {
    const uint32_t red = i / 36, green = i / 6 % 6, blue = i % 6;
    table.push_back((red << 16 | green << 8 | blue) * kCubeStep);
  }
  for (uint32_t i = 0; i < kGrays; ++i) table.push_back((i + 1) * 255 / (kGrays + 1) * 0x010101);
  return table;
}

uint8_t default_index(uint32_t colour, const std::vector<uint32_t>& table) {
  const uint32_t red = colour >> 16, green = colour >> 8 & 255, blue = colour & 255;
  const auto level = [](uint32_t c) { return (c + kCubeStep / 2) / kCubeStep; };
  const auto distance = [&](uint32_t index) {
    const auto off = [&](int shift) {
      const auto d = static_cast<int32_t>(colour >> shift & 255) -
                     static_cast<int32_t>(table[index] >> shift & 255);
      return d * d;
    };
    return off(16) + off(8) + off(0);
  };
  const uint32_t cube = level(red) * 36 + level(green) * 6 + level(blue);
  // The gray nearest to a colour is the one nearest to its mean; the levels are not quite even.
  const uint32_t mean = (red + green + blue + 1) / 3;
  const uint32_t step = mean * (kGrays + 1) / 255;
  uint32_t best = cube;
  for (uint32_t i = std::max(step, 2u) - 2; i < std::min(step + 2, kGrays); ++i) {
    if (distance(kCube + i) < distance(best)) best = kCube + i;
  }
  return static_cast<uint8_t>(best);
}

struct Indexed {
  std::vector<uint32_t> table;
  int transparent = -1;  // follows the table's colours
  std::vector<uint8_t> indexes;
};

template <class IndexOf>
void map_pixels(const c32bppDIB& image, int32_t tolerance, IndexOf index_of, Indexed& out) {
  out.indexes.reserve(static_cast<size_t>(image.Width()) * image.Height());
  int32_t last = kTransparent;
  uint8_t last_index = 0;
  each_colour(image, tolerance, [&](int32_t colour) {
    if (colour == kTransparent) {
      out.indexes.push_back(static_cast<uint8_t>(out.transparent));
      return true;
    }
    if (colour != last) {
      last = colour;
      last_index = index_of(static_cast<uint32_t>(colour));
    }
    out.indexes.push_back(last_index);
    return true;
  });
}

Indexed make_indexed(const c32bppDIB& image, const GifOptions& options) {
  const int32_t tolerance = options.opaqueness_tolerance;
  const bool transparent =
      !each_colour(image, tolerance, [](int32_t colour) { return colour != kTransparent; });
  const size_t limit = transparent || scan_alpha(image) == AlphaType::Complex ? 255 : 256;
  const auto opaque_colours = [&](auto visit) {
    return each_colour(image, tolerance, [&](int32_t colour) {
      return colour == kTransparent || visit(static_cast<uint32_t>(colour));
    });
  };

  Indexed out;
  const auto finish = [&](std::vector<uint32_t> table, auto index_of) {
    out.table = std::move(table);
    if (transparent) out.transparent = static_cast<int>(out.table.size());
    map_pixels(image, tolerance, index_of, out);
  };
  ColourCount exact;
  if (opaque_colours([&](uint32_t colour) { return exact.add(colour, limit); })) {
    exact.sort();
    finish(exact.colours(), [&](uint32_t colour) { return exact.index_of(colour); });
  } else if (options.use_adaptive_palette) {
    ColourTree tree;
    opaque_colours([&](uint32_t colour) {
      tree.add(colour);
      return true;
    });
    tree.reduce(limit);
    finish(tree.colours(), [&](uint32_t colour) { return tree.index_of(colour); });
  } else {
    const auto table = default_table();
    finish(table, [&](uint32_t colour) { return default_index(colour, table); });
  }
  return out;
}

// Bits of an index, 1 to 8: the smallest table that holds all entries.
int table_bits(const Indexed& picture) {
  const size_t entries = picture.table.size() + (picture.transparent >= 0 ? 1 : 0);
  int bits = 1;
  while (size_t{1} << bits < entries) ++bits;
  return bits;
}

void write_table(ByteWriter& out, const std::vector<uint32_t>& table, int bits) {
  for (size_t i = 0; i < size_t{1} << bits; ++i) {
    const uint32_t colour = i < table.size() ? table[i] : 0;
    out.u8(colour >> 16), out.u8(colour >> 8), out.u8(colour);
  }
}

}  // namespace

bool cGIFparser::SaveAsGIF(const c32bppDIB& image, const GifOptions& options,
                           std::vector<uint8_t>& out) {
  out.clear();
  if (!image.has_image() || image.Width() > 0xFFFF || image.Height() > 0xFFFF) return false;
  const Indexed picture = make_indexed(image, options);
  const int bits = table_bits(picture);
  const auto width = static_cast<uint16_t>(image.Width());
  const auto height = static_cast<uint16_t>(image.Height());

  ByteWriter writer(out);
  const auto flags = static_cast<uint8_t>(kHasTable | (bits - 1) << 4 | (bits - 1));
  writer.wire(ScreenDescriptor{{'G', 'I', 'F', '8', '9', 'a'}, width, height, flags, 0, 0});
  write_table(writer, picture.table, bits);
  if (picture.transparent >= 0) {
    writer.u8(kExtension), writer.u8(kGraphicControl);
    writer.wire(GraphicControl{4, 1, 0, static_cast<uint8_t>(picture.transparent), 0});
  }
  writer.u8(kImage);
  writer.wire(ImageDescriptor{0, 0, width, height, 0});
  const int code_size = std::max(bits, 2);
  writer.u8(static_cast<uint32_t>(code_size));
  lzw_encode(picture.indexes, code_size, out);
  writer.u8(kTrailer);
  return true;
}

}  // namespace kestrelon
