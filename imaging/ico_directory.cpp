#include "imaging/ico_directory.h"

#include <algorithm>
#include <cstdlib>

#include "base/byte_reader.h"
#include "imaging/bmp_format.h"
#include "imaging/ico_format.h"

namespace kestrelon {
namespace {

using namespace ico;

int32_t size_or_256(uint8_t size) {
  return size == 0 ? 256 : size;
}

// Depth of a PNG in the terms of a bitmap.
int32_t png_bit_count(uint8_t depth, uint8_t colour_type) {
  if (depth == 16) return 32;
  if (colour_type == 4 || colour_type == 6) return 32;
  return colour_type == 2 ? 24 : depth;
}

// Fills in what the picture itself tells; leaves the depth 0 if it is not a usable PNG.
void read_png_entry(ByteReader in, bool trust_directory, int32_t directory_depth,
                    IconEntry& entry) {
  entry.IsIconPNG = true;
  entry.header_size = 0;
  entry.bitDepth = 0;
  in.seek(entry.image_offset);
  const bool signature = in.u32le() == 0x474E5089 && in.u32le() == 0x0A1A0A0D;
  in.skip(4);
  const bool header_chunk = in.u32be() == 0x49484452;  // "IHDR"
  const uint32_t width = in.u32be(), height = in.u32be();
  const uint8_t depth = in.u8(), colour_type = in.u8();
  if (!in.ok() || !signature || !header_chunk) return;
  if (width < 1 || width > 256 || height < 1 || height > 256) return;
  entry.Width = static_cast<int32_t>(width);
  entry.Height = static_cast<int32_t>(height);
  entry.bitDepth =
      trust_directory && directory_depth != 0 ? directory_depth : png_bit_count(depth, colour_type);
}

bool read_entry(ByteReader& in, const ByteReader& file, bool is_cursor, IconEntry& entry) {
  DirectoryEntry wire;
  if (!in.read(wire)) return false;
  entry.Width = size_or_256(wire.width);
  entry.Height = size_or_256(wire.height);
  entry.bytes_in_res = wire.bytes_in_res;
  entry.image_offset = wire.image_offset;

  ByteReader picture = file;
  picture.seek(wire.image_offset);
  entry.header_size = picture.u32le();
  picture.skip(kBitCountOffset - 4);
  const uint16_t word = picture.u16le();
  if (!picture.ok()) return false;
  if (word == kPngLetters) {
    // A cursor's directory has its hot spot in the place of the depth.
    read_png_entry(file, !is_cursor, wire.bit_count, entry);
    return true;
  }
  entry.bitDepth = word != 0 ? word : wire.bit_count;
  return entry.bitDepth != 0;
}

// The nearest picture that is not smaller than wanted; differences to smaller ones count double and
// negative, so that they fall out of this pass.
int32_t fit_score(const IconEntry& entry, int32_t width, int32_t height, int32_t depth) {
  if (entry.bitDepth > 32) return -10000;
  const int32_t across = entry.Width - width, down = entry.Height - height;
  return (across < 0 ? 2 * across : across) + (down < 0 ? 2 * down : down) +
         std::abs(depth - entry.bitDepth);
}

}  // namespace

uint64_t IconEntry::ColorByteOffset() const {
  const uint64_t palette = bitDepth < 16 ? uint64_t{4} << bitDepth : 0;
  return uint64_t{image_offset} + header_size + palette;
}

uint64_t IconEntry::colour_bytes() const {
  return bmp::row_bytes(static_cast<uint64_t>(bitDepth), static_cast<uint64_t>(Width)) *
         static_cast<uint64_t>(Height);
}

uint64_t IconEntry::mask_bytes() const {
  return bmp::row_bytes(1, static_cast<uint64_t>(Width)) * static_cast<uint64_t>(Height);
}

int32_t IconEntry::ColorCount() const {
  if (IsIconPNG || bitDepth > 8) return 0;
  const uint64_t others = colour_bytes() + mask_bytes() + header_size;
  return bytes_in_res > others ? static_cast<int32_t>((bytes_in_res - others) / 4) : 0;
}

std::optional<IconDirectory> icon_entries(std::span<const uint8_t> data) {
  const ByteReader file(data);
  ByteReader in = file;
  FileHeader header;
  if (!in.read(header) || header.reserved != 0 || header.count < 1 ||
      (header.kind != kIcon && header.kind != kCursor))
    return std::nullopt;
  if (in.remaining() < header.count * sizeof(DirectoryEntry)) return std::nullopt;

  IconDirectory directory;
  directory.is_cursor = header.kind == kCursor;
  directory.entries.resize(header.count);
  uint64_t total = sizeof(FileHeader) + header.count * sizeof(DirectoryEntry);
  for (IconEntry& entry : directory.entries) {
    if (!read_entry(in, file, directory.is_cursor, entry)) return std::nullopt;
    total += entry.bytes_in_res;
  }
  if (total > data.size()) return std::nullopt;
  return directory;
}

int32_t choose_icon_entry(const std::vector<IconEntry>& entries, int32_t width, int32_t height,
                          int32_t depth) {
  const auto count = static_cast<int32_t>(entries.size());
  const auto usable = [&](int32_t i) { return entries[static_cast<size_t>(i)].bitDepth != 0; };
  if (count < 2) return count == 1 && usable(0) ? 0 : -1;
  // Beyond this every picture scores the same way, and the sums stay far from overflow.
  constexpr int32_t kFar = 1 << 20;
  width = std::min(width, kFar);
  height = std::min(height, kFar);

  int32_t best = 10000, pick = -1;
  for (int32_t i = 0; i < count; ++i) {
    if (!usable(i)) continue;
    const int32_t score = fit_score(entries[static_cast<size_t>(i)], width, height, depth);
    if (score == 0) return i;
    if (score > 0 && score < best) best = score, pick = i;
  }
  if (pick >= 0) return pick;

  for (int32_t i = count - 1; i >= 0; --i) {
    if (!usable(i)) continue;
    const IconEntry& entry = entries[static_cast<size_t>(i)];
    const int32_t score =
        std::abs(fit_score(entry, width, height, depth)) + std::abs(32 - entry.bitDepth);
    if (score < best) best = score, pick = i;
  }
  for (int32_t i = 0; pick < 0 && i < count; ++i) {
    if (usable(i)) pick = i;
  }
  return pick;
}

}  // namespace kestrelon
