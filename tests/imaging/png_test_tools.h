// PNG files put together by hand, with zlib for the stream and the check values.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/png_format.h"
#include "imaging/zlib_api.h"

namespace kestrelon::png_test {

using Bytes = std::vector<uint8_t>;

/// zlib with the functions that every copy of it has.
inline const ZlibApi* plain_zlib() {
  static const ZlibApi api = {[](uint8_t* d, unsigned long* n, const uint8_t* s, unsigned long m) {
                                return ::uncompress(d, n, s, m);
                              },
                              [](unsigned long c, const uint8_t* s,
                                 unsigned int n) -> unsigned long { return ::crc32(c, s, n); },
                              [](uint8_t* d, unsigned long* n, const uint8_t* s, unsigned long m,
                                 int level) { return ::compress2(d, n, s, m, level); }};
  return &api;
}

/// The same with those that inflate in pieces.
inline const ZlibApi* native_zlib() {
  static_assert(sizeof(ZlibStream) == sizeof(z_stream) &&
                offsetof(ZlibStream, reserved) == offsetof(z_stream, reserved) &&
                offsetof(ZlibStream, state) == offsetof(z_stream, state));
  static const ZlibApi api = [] {
    ZlibApi all = *plain_zlib();
    all.inflate_init = [](ZlibStream* s) { return inflateInit(reinterpret_cast<z_stream*>(s)); };
    all.inflate = [](ZlibStream* s, int flush) {
      return ::inflate(reinterpret_cast<z_stream*>(s), flush);
    };
    all.inflate_end = [](ZlibStream* s) { return inflateEnd(reinterpret_cast<z_stream*>(s)); };
    return all;
  }();
  return &api;
}

/// No zlib, an old one, a whole one.
inline constexpr ZlibLoader kLoaders[] = {nullptr, plain_zlib, native_zlib};

/// zlib is what `loader` answers for as long as this lives.
class WithZlib {
 public:
  explicit WithZlib(ZlibLoader loader = native_zlib) { set_zlib_loader(loader); }
  ~WithZlib() { set_zlib_loader(nullptr); }
  WithZlib(const WithZlib&) = delete;
  WithZlib& operator=(const WithZlib&) = delete;
};

inline void put32(Bytes& out, uint32_t v) {
  for (int shift : {24, 16, 8, 0}) out.push_back(static_cast<uint8_t>(v >> shift));
}

inline Bytes packed(const Bytes& plain, int level = 6) {
  uLongf size = compressBound(static_cast<uLong>(plain.size()));
  Bytes out(size);
  compress2(out.data(), &size, plain.data(), static_cast<uLong>(plain.size()), level);
  out.resize(size);
  return out;
}

/// Builds a file chunk by chunk.
struct File {
  Bytes bytes{png::kSignature.begin(), png::kSignature.end()};

  File& chunk(const char (&type)[5], const Bytes& data, uint32_t crc_xor = 0) {
    put32(bytes, static_cast<uint32_t>(data.size()));
    const size_t start = bytes.size();
    bytes.insert(bytes.end(), type, type + 4);
    bytes.insert(bytes.end(), data.begin(), data.end());
    const uLong crc = crc32(0, &bytes[start], static_cast<uInt>(bytes.size() - start));
    put32(bytes, static_cast<uint32_t>(crc) ^ crc_xor);
    return *this;
  }
  File& zero_last_crc() {
    std::memset(&bytes[bytes.size() - 4], 0, 4);
    return *this;
  }
  File& header(uint32_t w, uint32_t h, uint8_t depth, uint8_t color, uint8_t interlace = 0) {
    Bytes data;
    put32(data, w);
    put32(data, h);
    data.insert(data.end(), {depth, color, 0, 0, interlace});
    return chunk("IHDR", data);
  }
  File& data(const Bytes& stream) { return chunk("IDAT", packed(stream)); }
  File& end() { return chunk("IEND", {}); }
};

/// Pixel (x, y) from the top left as 0xAARRGGBB.
inline uint32_t at(const c32bppDIB& image, int32_t x, int32_t y) {
  uint32_t value;
  std::memcpy(&value, image.row(y) + 4 * static_cast<size_t>(x), 4);
  return value;
}

}  // namespace kestrelon::png_test
