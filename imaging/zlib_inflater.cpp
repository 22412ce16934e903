#include "imaging/zlib_inflater.h"

#include <algorithm>

namespace kestrelon {
namespace {

// A compromise: zlib copies its window of 32 KiB after each piece.
constexpr size_t kPiece = 64 * 1024;
constexpr int kNoFlush = 0;

}  // namespace

ZlibInflater::ZlibInflater(const ZlibApi& zlib, Segments input, uint64_t size, size_t slack)
    : zlib_(zlib),
      segments_(input),
      room_(size),
      piece_size_(static_cast<size_t>(std::min<uint64_t>(size, kPiece))) {
  piece_ = std::make_unique_for_overwrite<uint8_t[]>(piece_size_ + slack);
  stream_.next_out = piece_.get();
  open_ = zlib_.inflate_init(&stream_) == kZlibOk;
}

ZlibInflater::~ZlibInflater() {
  if (open_) zlib_.inflate_end(&stream_);
}

// One call of inflate; false if it cannot go on.
bool ZlibInflater::step() {
  while (stream_.avail_in == 0 && !segments_.empty()) {
    stream_.next_in = segments_.front().data();
    stream_.avail_in = static_cast<unsigned int>(segments_.front().size());
    segments_ = segments_.subspan(1);
  }
  const int result = zlib_.inflate(&stream_, kNoFlush);
  ended_ = result == kZlibStreamEnd;
  return result == kZlibOk;
}

std::span<const uint8_t> ZlibInflater::next() {
  if (!open_ || ended_) return {};
  const size_t wanted = static_cast<size_t>(std::min<uint64_t>(room_, piece_size_));
  stream_.next_out = piece_.get();
  stream_.avail_out = static_cast<unsigned int>(wanted);
  while (stream_.avail_out > 0 && step()) {
  }
  const size_t made = wanted - stream_.avail_out;
  room_ -= made;
  return {piece_.get(), made};
}

bool ZlibInflater::ends_well() {
  stream_.avail_out = 0;
  while (open_ && !ended_ && step()) {
  }
  return ended_ && room_ == 0;
}

}  // namespace kestrelon
