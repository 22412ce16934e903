// Decompression by zlib, in pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "imaging/zlib_api.h"

namespace kestrelon {

/// Gives what zlib's `uncompress` would put into a buffer of `size` bytes, a cache-sized piece at a
/// time, and judges the stream as that function does.
class ZlibInflater {
 public:
  using Segments = std::span<const std::span<const uint8_t>>;

  /// The compressed bytes are those of `input`, one segment after the other; they stay the
  /// caller's. The functions of `zlib` for inflating in pieces are there. Each piece is followed by
  /// `slack` readable bytes.
  ZlibInflater(const ZlibApi& zlib, Segments input, uint64_t size, size_t slack);
  ~ZlibInflater();
  ZlibInflater(const ZlibInflater&) = delete;
  ZlibInflater& operator=(const ZlibInflater&) = delete;

  /// The next bytes, valid until the next call; empty at the end of the output and on failure.
  std::span<const uint8_t> next();
  /// After the last byte: the stream ends here, and its check value is right.
  bool ends_well();

 private:
  bool step();

  const ZlibApi& zlib_;
  Segments segments_;
  uint64_t room_;  // bytes of output not made yet
  std::unique_ptr<uint8_t[]> piece_;
  size_t piece_size_;
  ZlibStream stream_;
  bool open_ = false;
  bool ended_ = false;
};

}  // namespace kestrelon
