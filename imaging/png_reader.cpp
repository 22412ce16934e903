#include "imaging/png_parser.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "imaging/inflate.h"
#include "imaging/png_chunks.h"
#include "imaging/png_rows.h"
#include "imaging/png_unfilter.h"
#include "imaging/zlib_api.h"
#include "imaging/zlib_inflater.h"

namespace kestrelon {
namespace {

constexpr size_t kLargestDeclinedFile = 56;

PlatformPngDecoder& platform_decoder() {
  static PlatformPngDecoder decoder;
  return decoder;
}

uint64_t total_size(const std::vector<std::span<const uint8_t>>& parts) {
  uint64_t total = 0;
  for (const auto& part : parts) total += part.size();
  return total;
}

// Row by row behind the decompressor, while its output is still in the cache.
template <class Decompressor>
bool decode_in_pieces(const png::Description& picture, Decompressor& decompressor, c32bppDIB& out) {
  png::RowSink rows(picture, out);
  while (!rows.done()) {
    const std::span<const uint8_t> run = decompressor.next();
    if (run.empty()) return false;
    rows.feed(run);
  }
  return true;
}

// The whole stream at once. False if zlib refuses.
bool decode_with_uncompress(const png::Description& picture, const ZlibApi& zlib, c32bppDIB& out) {
  const uint64_t size = picture.header.stream_bytes();
  const uint64_t packed_size = total_size(picture.data);
  constexpr uint64_t kLimit = std::numeric_limits<unsigned long>::max();
  if (size > std::min<uint64_t>(kLimit, SIZE_MAX - png::kRowSlack) || packed_size > kLimit) {
    return false;
  }
  std::unique_ptr<uint8_t[]> joined;
  const uint8_t* packed = picture.data.front().data();
  if (picture.data.size() > 1) {
    joined = std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(packed_size));
    uint8_t* end = joined.get();
    for (const auto& part : picture.data) end = std::copy(part.begin(), part.end(), end);
    packed = joined.get();
  }
  const auto stream =
      std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(size) + png::kRowSlack);
  auto stream_size = static_cast<unsigned long>(size);
  const int result =
      zlib.uncompress(stream.get(), &stream_size, packed, static_cast<unsigned long>(packed_size));
  if (result != kZlibOk || stream_size != size) return false;
  png::RowSink rows(picture, out);
  rows.feed({stream.get(), static_cast<size_t>(size)});
  return rows.done();
}

bool decode_with_zlib(const png::Description& picture, const ZlibApi& zlib, c32bppDIB& out) {
  if (!zlib.inflate) return decode_with_uncompress(picture, zlib, out);
  ZlibInflater inflater(zlib, picture.data, picture.header.stream_bytes(), png::kRowSlack);
  return decode_in_pieces(picture, inflater, out) && inflater.ends_well();
}

// The library's own way needs far less memory, so a lack of it is no failure yet.
bool try_zlib(const png::Description& picture, const ZlibApi& zlib, c32bppDIB& out) {
  try {
    return decode_with_zlib(picture, zlib, out);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool decode_with_own_inflate(const png::Description& picture, c32bppDIB& out) {
  Inflater inflater(picture.data, InflateFormat::ZlibLax, picture.header.stream_bytes());
  return decode_in_pieces(picture, inflater, out);
}

AlphaType alpha_of(const png::Description& picture) {
  switch (picture.header.color_type) {
    case png::ColorType::GrayAlpha:
    case png::ColorType::Rgba:
      return AlphaType::Complex;
    default:
      return picture.transparency.empty() ? AlphaType::None : AlphaType::Simple;
  }
}

bool decode(std::span<const uint8_t> file, c32bppDIB& out) {
  const ZlibApi* const zlib = find_zlib();
  const bool with_zlib = zlib && zlib->uncompress;
  png::Description picture;
  if (!png::read_chunks(file, with_zlib ? zlib : nullptr, picture)) return false;
  // No memory for a picture that so little data cannot fill.
  const png::Header& header = picture.header;
  if (header.stream_bytes() > total_size(picture.data) * kMaxInflateRatio) return false;
  if (!out.InitializeDIB(static_cast<int32_t>(header.width), static_cast<int32_t>(header.height))) {
    return false;
  }
  const bool decoded =
      (with_zlib && try_zlib(picture, *zlib, out)) || decode_with_own_inflate(picture, out);
  if (decoded) out.set_alpha(alpha_of(picture));
  return decoded;
}

bool decode_by_any_means(std::span<const uint8_t> file, c32bppDIB& out) {
  try {
    const PlatformPngDecoder& platform = platform_decoder();
    if (platform && platform(file, out) && out.has_image()) return true;
    return decode(file, out);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace

void set_platform_png_decoder(PlatformPngDecoder decoder) {
  platform_decoder() = std::move(decoder);
}

bool cPNGparser::LoadStream(std::span<const uint8_t> file, c32bppDIB& out, PngSource source) {
  if (source == PngSource::File && file.size() <= kLargestDeclinedFile) return false;
  if (file.size() < png::kSignature.size() ||
      std::memcmp(file.data(), png::kSignature.data(), png::kSignature.size()) != 0) {
    return false;
  }
  out.DestroyDIB();
  if (decode_by_any_means(file, out)) {
    out.set_image_type(ImageFormat::Png);
  } else {
    out.DestroyDIB();
  }
  return true;
}

}  // namespace kestrelon
