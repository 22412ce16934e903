#include "imaging/png_chunks.h"

#include <algorithm>
#include <cstring>

namespace kestrelon::png {
namespace {

struct Chunk {
  uint32_t type;
  std::span<const uint8_t> typed_data;  // the four type bytes and the data
  uint32_t crc;

  std::span<const uint8_t> data() const { return typed_data.subspan(4); }
};

bool crc_holds(const Chunk& chunk, const ZlibApi* zlib) {
  if (!zlib || !zlib->crc32 || chunk.crc == 0) return true;
  const auto size = static_cast<unsigned int>(chunk.typed_data.size());
  return zlib->crc32(0, chunk.typed_data.data(), size) == chunk.crc;
}

bool is_color_type(uint8_t type) {
  return type <= 6 && type != 1 && type != 5;
}

bool read_header(std::span<const uint8_t> data, Header& header) {
  if (data.size() < kIhdrSize || header.width != 0) return false;
  const uint32_t width = read_be32(&data[0]);
  const uint32_t height = read_be32(&data[4]);
  const uint8_t depth = data[8];
  if (width < 1 || height < 1 || width > INT32_MAX || height > INT32_MAX) return false;
  if (depth > 16 || depth == 0 || (depth & (depth - 1)) != 0) return false;
  if (!is_color_type(data[9]) || data[10] != 0 || data[11] != 0 || data[12] > 1) return false;
  if (uint64_t{width} * height > INT32_MAX / 32) return false;
  header = {width, height, depth, static_cast<ColorType>(data[9]), data[12] == 1};
  return true;
}

bool read_palette(std::span<const uint8_t> data, Description& out) {
  const ColorType type = out.header.color_type;
  if (type == ColorType::Gray || type == ColorType::GrayAlpha) return true;
  if (data.size() % 3 != 0) return false;
  out.palette.fill(0);
  std::copy_n(data.begin(), std::min(data.size(), out.palette.size()), out.palette.begin());
  out.has_palette = true;
  return true;
}

void read_transparency(std::span<const uint8_t> data, Description& out) {
  size_t needed = 1;
  switch (out.header.color_type) {
    case ColorType::Gray:
      needed = 2;
      break;
    case ColorType::Rgb:
      needed = 6;
      break;
    case ColorType::Palette:
      break;
    case ColorType::GrayAlpha:
    case ColorType::Rgba:
      return;
  }
  out.transparency = data.size() < needed ? std::span<const uint8_t>() : data;
}

// False ends the read as failed.
bool read_chunk(const Chunk& chunk, const ZlibApi* zlib, Description& out) {
  const bool wanted =
      chunk.type == kIhdr || chunk.type == kPlte || chunk.type == kTrns || chunk.type == kIdat;
  if (!wanted) return true;
  if (!crc_holds(chunk, zlib)) return false;
  if (chunk.type == kIhdr) return read_header(chunk.data(), out.header);
  // Everything else is told by the header.
  if (out.header.width == 0) return false;
  if (chunk.type == kPlte) return read_palette(chunk.data(), out);
  if (chunk.type == kTrns) {
    read_transparency(chunk.data(), out);
  } else {
    out.data.push_back(chunk.data());
  }
  return true;
}

}  // namespace

uint64_t Header::stream_bytes() const {
  uint64_t total = 0;
  for (const Pass& pass : passes()) {
    const uint32_t columns = pass.columns(width);
    if (columns != 0) total += (row_bytes(columns) + 1) * pass.rows(height);
  }
  return total;
}

bool read_chunks(std::span<const uint8_t> file, const ZlibApi* zlib, Description& out) {
  uint64_t position = kSignature.size();
  while (position < file.size()) {
    const std::span<const uint8_t> rest = file.subspan(static_cast<size_t>(position));
    if (rest.size() < kChunkOverhead) return false;
    const uint32_t length = read_be32(&rest[0]);
    position += uint64_t{length} + kChunkOverhead;
    if (position > file.size()) return false;
    const Chunk chunk{read_be32(&rest[4]), rest.subspan(4, length + size_t{4}),
                      read_be32(&rest[length + size_t{8}])};
    if (chunk.type == kIend) break;
    if (length != 0 && !read_chunk(chunk, zlib, out)) return false;
  }
  return !out.data.empty();
}

}  // namespace kestrelon::png
