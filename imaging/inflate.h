// Inflate: decompression of deflate (RFC 1951) and zlib (RFC 1950) streams.
//
// Every function is bounded by the sizes it is given: hostile input costs at most time linear in
// the input and output, and a fixed amount of memory beside the output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "imaging/inflate_tables.h"

namespace kestrelon {

enum class InflateFormat {
  Zlib,        ///< two header bytes are checked (method, window, check value, no dictionary)
  ZlibLax,     ///< two header bytes are skipped unread
  RawDeflate,  ///< the blocks alone
};

/// Whether the Adler-32 behind a zlib stream is compared with the output.
enum class Adler32Check { Ignore, Verify };

/// No deflate stream expands by more than this factor: 258 bytes out of two bits.
constexpr uint64_t kMaxInflateRatio = 1032;

/// Adler-32 of `bytes`, continued from `adler`, which is 1 at the start.
uint32_t adler32(uint32_t adler, std::span<const uint8_t> bytes);

/// Decompresses in runs that fit the processor's cache, so that a consumer can work on each run
/// while it is still there.
class Inflater {
 public:
  using Segments = std::span<const std::span<const uint8_t>>;

  /// The compressed bytes are those of `input`, one segment after the other; segments and their
  /// bytes stay the caller's and must outlive the object. Output ends at `max_output` bytes, even
  /// if the stream has more.
  Inflater(Segments input, InflateFormat format, uint64_t max_output);

  /// The next bytes of output, valid until the next call. Empty at the end of the output and on
  /// failure, which failed() tells apart.
  std::span<const uint8_t> next();

  /// The stream is damaged or cut short.
  bool failed() const { return state_ == State::Failed; }
  /// The stream's last block was read to its end, and all of its output fitted.
  bool complete() const { return state_ == State::Done && !excess_; }
  /// After complete(): compares the four bytes behind the stream with `adler`.
  bool trailer_matches(uint32_t adler);

 private:
  enum class State { StreamHeader, BlockHeader, Stored, Codes, Done, Failed };

  template <typename Word>
  friend struct InflateLoop;

  void step();
  void look_for_end();
  void read_stream_header();
  void read_block_header();
  void read_stored_header();
  void read_dynamic_header();
  void copy_stored();
  void run_codes();
  void leave_codes();
  void slide();
  void feed();
  bool need(unsigned bits);
  uint32_t take(unsigned bits);
  bool overrun() const;
  void fail() { state_ = State::Failed; }

  // Input: segments are copied into the stage, a cache-sized piece at a time, so that the decoder
  // sees contiguous bytes with a readable margin behind them.
  Segments segments_;
  size_t segment_pos_ = 0;
  std::unique_ptr<uint8_t[]> stage_;
  size_t stage_size_ = 0;
  const uint8_t* in_ = nullptr;
  const uint8_t* in_end_ = nullptr;  // end of the real bytes in the stage
  bool last_input_ = false;          // the stage holds the end of the input

  // Bits not yet used; those above bit_count_ repeat what stands at in_ or are zero.
  uint64_t bits_ = 0;
  unsigned bit_count_ = 0;

  // Output: the last 32 KiB stay in front of what is decoded next.
  std::unique_ptr<uint8_t[]> window_;
  uint8_t* out_ = nullptr;
  uint8_t* out_limit_ = nullptr;  // decoding pauses here; kOutSlack bytes follow
  uint64_t room_;                 // bytes of max_output not handed out yet
  bool excess_ = false;

  State state_;
  bool last_block_ = false;
  uint32_t stored_left_ = 0;
  InflateFormat format_;
  InflateTables tables_;
};

/// Decompresses into exactly `dst`. A stream that is damaged or shorter: false, `dst` is then
/// undefined. What a longer stream has beyond `dst` is not read; with Verify it is a failure.
bool inflate_exact(std::span<const uint8_t> src, std::span<uint8_t> dst,
                   InflateFormat format = InflateFormat::Zlib,
                   Adler32Check check = Adler32Check::Ignore);

/// Decompresses a whole stream of unknown size, of at most `max_size` bytes; nothing on failure.
std::optional<std::vector<uint8_t>> inflate_all(std::span<const uint8_t> src, size_t max_size,
                                                InflateFormat format = InflateFormat::Zlib,
                                                Adler32Check check = Adler32Check::Verify);

}  // namespace kestrelon
