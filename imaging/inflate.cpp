#include "imaging/inflate.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "imaging/inflate_loop.h"

namespace kestrelon {
namespace {

constexpr size_t kHistory = 32768;
constexpr size_t kRun = 96 * 1024;
constexpr size_t kStage = 32 * 1024;
// A block header takes at most 14 + 19 * 3 + 320 * 14 bits. With so many bytes ahead, or with the
// end of the input in the stage, it can be read in one go.
constexpr size_t kHeaderBytes = 640;

// A word as wide as the machine's; wider ones would cost more in shifts than they save in refills.
using MachineWord = std::conditional_t<sizeof(void*) == 8, uint64_t, uint32_t>;

constexpr std::array<uint8_t, kPrecodeSymbols> kPrecodeOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                11, 4,  12, 3, 13, 2, 14, 1, 15};

}  // namespace

uint32_t adler32(uint32_t adler, std::span<const uint8_t> bytes) {
  constexpr uint32_t kModulus = 65521;
  constexpr size_t kBatch = 5552;  // bytes before the sums can leave 32 bits
  uint32_t a = adler & 0xFFFF, b = adler >> 16;
  while (!bytes.empty()) {
    const size_t n = std::min(bytes.size(), kBatch);
    for (uint8_t byte : bytes.first(n)) b += a += byte;
    a %= kModulus;
    b %= kModulus;
    bytes = bytes.subspan(n);
  }
  return b << 16 | a;
}

Inflater::Inflater(Segments input, InflateFormat format, uint64_t max_output)
    : segments_(input),
      room_(max_output),
      state_(format == InflateFormat::RawDeflate ? State::BlockHeader : State::StreamHeader),
      format_(format) {
  uint64_t total = 0;
  for (const auto& segment : input) total += segment.size();
  stage_size_ = static_cast<size_t>(std::min<uint64_t>(total, kStage));
  stage_ = std::make_unique_for_overwrite<uint8_t[]>(stage_size_ + kInSlack);
  in_ = in_end_ = stage_.get();
  const size_t run = static_cast<size_t>(std::min<uint64_t>(max_output, kHistory + kRun));
  // Twice the slack: the look for the end of the stream starts where the last run ended.
  window_ = std::make_unique_for_overwrite<uint8_t[]>(run + 2 * kOutSlack);
  out_ = window_.get();
  out_limit_ = out_ + run;
  feed();
  if (room_ == 0) look_for_end();
}

std::span<const uint8_t> Inflater::next() {
  if (room_ == 0) return {};
  if (out_ >= out_limit_) slide();
  const uint8_t* const start = out_;
  while (state_ != State::Failed && state_ != State::Done && out_ < out_limit_) step();
  if (overrun()) fail();
  if (failed()) return {};
  size_t size = static_cast<size_t>(out_ - start);
  if (size > room_) {
    excess_ = true;
    size = static_cast<size_t>(room_);
  }
  room_ -= size;
  if (room_ == 0) look_for_end();
  return {start, size};
}

// With all the output made, the rest of the stream should be no more than the end of its last
// block.
void Inflater::look_for_end() {
  out_limit_ = out_ + 1;
  const uint8_t* const end = out_;
  while (!excess_ && state_ != State::Failed && state_ != State::Done && out_ == end) step();
  if (out_ != end || failed() || overrun()) excess_ = true;
  state_ = State::Done;
}

void Inflater::step() {
  if (!last_input_ && in_end_ - in_ < static_cast<ptrdiff_t>(kHeaderBytes)) feed();
  switch (state_) {
    case State::StreamHeader:
      return read_stream_header();
    case State::BlockHeader:
      return read_block_header();
    case State::Stored:
      return copy_stored();
    case State::Codes:
      return run_codes();
    case State::Done:
    case State::Failed:
      return;
  }
}

void Inflater::slide() {
  const size_t made = static_cast<size_t>(out_ - window_.get());
  const size_t keep = std::min(made, kHistory);
  std::memmove(window_.get(), out_ - keep, keep);
  out_ = window_.get() + keep;
}

void Inflater::feed() {
  if (last_input_) return;
  uint8_t* const stage = stage_.get();
  size_t fill = static_cast<size_t>(in_end_ - in_);
  std::memmove(stage, in_, fill);
  while (!segments_.empty()) {
    const std::span<const uint8_t> rest = segments_.front().subspan(segment_pos_);
    const size_t n = std::min(rest.size(), stage_size_ - fill);
    if (n) std::memcpy(stage + fill, rest.data(), n);
    fill += n;
    segment_pos_ += n;
    if (n < rest.size()) break;
    segments_ = segments_.subspan(1);
    segment_pos_ = 0;
  }
  in_ = stage;
  in_end_ = stage + fill;
  if (segments_.empty()) {
    last_input_ = true;
    std::memset(stage + fill, 0, kInSlack);
  }
}

// True if more bits were used than the input has.
bool Inflater::overrun() const {
  return in_ > in_end_ && static_cast<size_t>(in_ - in_end_) * 8 > bit_count_;
}

// Makes `bits` bits (up to 32) available; zeros stand in behind the end of the input for a while.
bool Inflater::need(unsigned bits) {
  while (bit_count_ < bits) {
    if (in_ >= in_end_ + 8) return false;
    bits_ |= uint64_t{*in_++} << bit_count_;
    bit_count_ += 8;
  }
  return true;
}

uint32_t Inflater::take(unsigned bits) {
  if (!need(bits)) {
    fail();
    return 0;
  }
  const uint32_t value = static_cast<uint32_t>(bits_ & ((uint64_t{1} << bits) - 1));
  bits_ >>= bits;
  bit_count_ -= bits;
  return value;
}

void Inflater::read_stream_header() {
  const uint32_t method = take(8);
  const uint32_t flags = take(8);
  const bool sound = (method & 15) == 8 && method >> 4 <= 7 && (method << 8 | flags) % 31 == 0 &&
                     (flags & 32) == 0;
  if (failed()) return;
  if (overrun() || (!sound && format_ == InflateFormat::Zlib)) return fail();
  state_ = State::BlockHeader;
}

void Inflater::read_block_header() {
  if (last_block_) {
    state_ = State::Done;
    return;
  }
  last_block_ = take(1) != 0;
  const uint32_t type = take(2);
  if (failed()) return;
  if (type == 0) return read_stored_header();
  if (type == 1) {
    tables_.build_fixed();
    state_ = State::Codes;
    return;
  }
  if (type == 2) return read_dynamic_header();
  fail();
}

void Inflater::read_stored_header() {
  take(bit_count_ & 7);
  const uint32_t size = take(16);
  const uint32_t inverse = take(16);
  if (failed() || overrun() || (size ^ inverse) != 0xFFFF) return fail();
  in_ -= bit_count_ >> 3;
  bits_ = 0;
  bit_count_ = 0;
  stored_left_ = size;
  state_ = State::Stored;
}

void Inflater::copy_stored() {
  const size_t n = std::min({static_cast<size_t>(stored_left_),
                             in_ < in_end_ ? static_cast<size_t>(in_end_ - in_) : 0,
                             static_cast<size_t>(out_limit_ - out_)});
  if (n == 0 && stored_left_ != 0) return fail();
  std::memcpy(out_, in_, n);
  in_ += n;
  out_ += n;
  stored_left_ -= static_cast<uint32_t>(n);
  if (stored_left_ == 0) state_ = State::BlockHeader;
}

void Inflater::read_dynamic_header() {
  const size_t lit_len_count = take(5) + 257;
  const size_t dist_count = take(5) + 1;
  const size_t precode_count = take(4) + 4;
  std::array<uint8_t, kPrecodeSymbols> precode{};
  for (size_t i = 0; i < precode_count; ++i) {
    precode[kPrecodeOrder[i]] = static_cast<uint8_t>(take(3));
  }
  if (failed() || lit_len_count > 286 || dist_count > 30 || !tables_.build_precode(precode)) {
    return fail();
  }
  std::array<uint8_t, 286 + 30> lengths{};
  const size_t total = lit_len_count + dist_count;
  size_t i = 0;
  while (i < total) {
    if (!need(kPrecodeBits + 7)) return fail();
    const uint32_t entry = tables_.precode[bits_ & ((1u << kPrecodeBits) - 1)];
    take(entry & 31);
    const uint32_t symbol = entry >> 16;
    if (symbol < 16) {
      lengths[i++] = static_cast<uint8_t>(symbol);
      continue;
    }
    if (symbol == 16 && i == 0) return fail();
    const uint8_t value = symbol == 16 ? lengths[i - 1] : uint8_t{0};
    const size_t repeat = symbol == 16 ? 3 + take(2) : symbol == 17 ? 3 + take(3) : 11 + take(7);
    if (repeat > total - i) return fail();
    std::fill_n(lengths.begin() + static_cast<ptrdiff_t>(i), repeat, value);
    i += repeat;
  }
  const std::span<const uint8_t> all(lengths);
  if (failed() || overrun() || !tables_.build_lit_len(all.first(lit_len_count)) ||
      !tables_.build_dist(all.subspan(lit_len_count, dist_count))) {
    return fail();
  }
  state_ = State::Codes;
}

void Inflater::run_codes() {
  using Loop = InflateLoop<MachineWord>;
  // Behind the end of the input stand zeros. A loop that runs into them stops before their end.
  const uint8_t* const in_limit = last_input_ ? in_end_ + 8 : in_end_ - kInSlack;
  if (in_ >= in_limit) return fail();
  const auto exit = Loop::run(*this, in_limit, window_.get());
  if (exit == Loop::Exit::Error || overrun()) return fail();
  if (exit == Loop::Exit::EndOfBlock) state_ = State::BlockHeader;
}

bool Inflater::trailer_matches(uint32_t adler) {
  if (!complete()) return false;
  state_ = State::BlockHeader;
  take(bit_count_ & 7);
  uint32_t stored = 0;
  for (int i = 0; i < 4; ++i) stored = stored << 8 | take(8);
  const bool whole = !failed() && !overrun();
  state_ = State::Done;
  return whole && stored == adler;
}

bool inflate_exact(std::span<const uint8_t> src, std::span<uint8_t> dst, InflateFormat format,
                   Adler32Check check) {
  const std::span<const uint8_t> segments[] = {src};
  Inflater inflater(segments, format, dst.size());
  uint32_t adler = 1;
  size_t done = 0;
  while (done < dst.size()) {
    const std::span<const uint8_t> run = inflater.next();
    if (run.empty()) return false;
    std::memcpy(dst.data() + done, run.data(), run.size());
    if (check == Adler32Check::Verify) adler = adler32(adler, run);
    done += run.size();
  }
  return check == Adler32Check::Ignore || inflater.trailer_matches(adler);
}

std::optional<std::vector<uint8_t>> inflate_all(std::span<const uint8_t> src, size_t max_size,
                                                InflateFormat format, Adler32Check check) {
  const std::span<const uint8_t> segments[] = {src};
  // One byte more than allowed tells an oversized stream from one that just fits.
  Inflater inflater(segments, format, uint64_t{max_size} + 1);
  std::vector<uint8_t> all;
  uint32_t adler = 1;
  for (;;) {
    const std::span<const uint8_t> run = inflater.next();
    if (run.empty()) break;
    if (run.size() > max_size - all.size()) return std::nullopt;
    all.insert(all.end(), run.begin(), run.end());
    if (check == Adler32Check::Verify) adler = adler32(adler, run);
  }
  if (!inflater.complete()) return std::nullopt;
  const bool checked = format != InflateFormat::RawDeflate && check == Adler32Check::Verify;
  if (checked && !inflater.trailer_matches(adler)) return std::nullopt;
  return all;
}

}  // namespace kestrelon
