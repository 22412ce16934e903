#include "imaging/tga_parser.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "base/byte_writer.h"
#include "imaging/colour_count.h"
#include "imaging/flatten.h"
#include "imaging/premultiply.h"
#include "imaging/tga_format.h"

namespace kestrelon {
namespace {

using namespace tga;

uint32_t rgb_of(const uint8_t* pixel) {
  return static_cast<uint32_t>(pixel[2]) << 16 | static_cast<uint32_t>(pixel[1]) << 8 | pixel[0];
}

bool is_gray(uint32_t rgb) {
  return (rgb >> 16) == (rgb & 255) && (rgb >> 8 & 255) == (rgb & 255);
}

// All colours of an opaque picture, if a palette can hold them.
std::optional<ColourCount> count_colours(const c32bppDIB& image) {
  ColourCount colours;
  for (int32_t y = 0; y < image.Height(); ++y) {
    const uint8_t* pixel = image.row(y);
    for (int32_t x = 0; x < image.Width(); ++x, pixel += 4) {
      if (!colours.add(rgb_of(pixel), 256)) return std::nullopt;
    }
  }
  colours.sort();
  return colours;
}

struct Plan {
  ImageKind kind = kTrueColour;
  uint8_t depth = 32;
  AttributeKind attributes = kIgnorable;
  std::optional<ColourCount> palette;  // for kIndexed
};

Plan make_plan(const c32bppDIB& image, const TgaOptions& options) {
  Plan plan;
  if (scan_alpha(image) != AlphaType::None) {
    plan.attributes = options.allow_premultiplied ? kPremultipliedAlpha : kStraightAlpha;
    return plan;
  }
  if (!options.reduce_bit_depth) return plan;
  plan.depth = 24;
  auto colours = count_colours(image);
  if (!colours) return plan;
  plan.depth = 8;
  if (std::ranges::all_of(colours->colours(), is_gray)) {
    plan.kind = kGray;
  } else {
    plan.kind = kIndexed;
    plan.palette = std::move(colours);
  }
  return plan;
}

// One row as the file holds it before compression.
void encode_row(const Plan& plan, const uint8_t* src, size_t width, uint8_t* dst) {
  if (plan.kind == kIndexed) {
    for (size_t x = 0; x < width; ++x) dst[x] = plan.palette->index_of(rgb_of(src + 4 * x));
  } else if (plan.kind == kGray) {
    for (size_t x = 0; x < width; ++x) dst[x] = src[4 * x];
  } else if (plan.depth == 24) {
    for (size_t x = 0; x < width; ++x) std::memcpy(dst + 3 * x, src + 4 * x, 3);
  } else if (plan.attributes == kStraightAlpha) {
    unpremultiply_row(dst, src, width);
  } else {
    std::memcpy(dst, src, 4 * width);
    if (plan.attributes == kIgnorable) {
      for (size_t x = 0; x < width; ++x) dst[4 * x + 3] = 255;
    }
  }
}

// Packets stay within their row. A pair in the middle of literals is not worth a packet of its own
// unless pixels are long.
template <size_t Size>
void compress_row(const uint8_t* row, size_t width, std::vector<uint8_t>& out) {
  const auto same = [&](size_t a, size_t b) {
    return std::memcmp(row + a * Size, row + b * Size, Size) == 0;
  };
  const auto run_at = [&](size_t x) {
    size_t run = 1;
    while (x + run < width && run < kLongestRun && same(x, x + run)) ++run;
    return run;
  };
  constexpr size_t worth = Size == 1 ? 3 : 2;
  for (size_t x = 0; x < width;) {
    size_t run = run_at(x);
    if (run >= worth) {
      out.push_back(static_cast<uint8_t>(0x80 | (run - 1)));
      out.insert(out.end(), row + x * Size, row + (x + 1) * Size);
      x += run;
      continue;
    }
    const size_t start = x;
    while (x < width && x - start < kLongestRun && (run = run_at(x)) < worth)
      x += std::min(run, kLongestRun - (x - start));
    out.push_back(static_cast<uint8_t>(x - start - 1));
    out.insert(out.end(), row + start * Size, row + x * Size);
  }
}

void write_header(ByteWriter& out, const c32bppDIB& image, const Plan& plan, bool compress) {
  Header header{};
  header.kind = static_cast<uint8_t>(plan.kind | (compress ? kRunLength : 0));
  header.width = static_cast<uint16_t>(image.Width());
  header.height = static_cast<uint16_t>(image.Height());
  header.depth = plan.depth;
  header.descriptor = plan.attributes == kIgnorable ? 0 : 8;
  if (plan.kind == kIndexed) {
    header.colour_map = 1;
    header.map_length = static_cast<uint16_t>(plan.palette->size());
    header.map_depth = 24;
  }
  out.wire(header);
  if (plan.kind != kIndexed) return;
  for (const uint32_t colour : plan.palette->colours())
    out.u8(colour), out.u8(colour >> 8), out.u8(colour >> 16);
}

void write_rows(const c32bppDIB& image, const Plan& plan, bool compress,
                std::vector<uint8_t>& out) {
  const auto width = static_cast<size_t>(image.Width());
  const size_t size = width * plan.depth / 8;
  std::vector<uint8_t> row(size);
  for (int32_t y = image.Height() - 1; y >= 0; --y) {
    encode_row(plan, image.row(y), width, row.data());
    if (!compress) {
      out.insert(out.end(), row.begin(), row.end());
    } else if (plan.depth == 8) {
      compress_row<1>(row.data(), width, out);
    } else if (plan.depth == 24) {
      compress_row<3>(row.data(), width, out);
    } else {
      compress_row<4>(row.data(), width, out);
    }
  }
}

void write_tail(const Plan& plan, std::vector<uint8_t>& out) {
  const auto extension_at = static_cast<uint32_t>(out.size());
  ByteWriter writer(out);
  writer.u16le(kExtensionSize);
  out.resize(extension_at + kExtensionSize);
  // Fixed-width texts of the area stay empty, numbers unused.
  const uint8_t kind = plan.attributes == kIgnorable ? 0 : plan.attributes;
  out[extension_at + kAttributeKindOffset] = kind;
  Footer footer{extension_at, 0, {}};
  std::memcpy(footer.signature, kSignature, sizeof kSignature);
  writer.wire(footer);
}

}  // namespace

bool cTGAparser::SaveAsTGA(const c32bppDIB& image, const TgaOptions& options,
                           std::vector<uint8_t>& out) {
  out.clear();
  if (!image.has_image() || image.Width() > 0xFFFF || image.Height() > 0xFFFF) return false;
  const Plan plan = make_plan(image, options);
  const size_t raw = static_cast<size_t>(image.Width()) * image.Height() * plan.depth / 8;
  for (bool compress : {options.compress, false}) {
    out.clear();
    out.reserve(compress ? raw / 4 : raw + 2048);
    ByteWriter writer(out);
    write_header(writer, image, plan, compress);
    const size_t start = out.size();
    write_rows(image, plan, compress, out);
    if (!compress || out.size() - start <= raw) break;
  }
  write_tail(plan, out);
  return true;
}

}  // namespace kestrelon
