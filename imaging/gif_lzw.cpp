#include "imaging/gif_lzw.h"

#include <bit>
#include <cstring>

namespace kestrelon::gif {

LzwDecoder::LzwDecoder(std::span<const uint8_t> sub_blocks, int min_code_size)
    : blocks_(sub_blocks),
      stage_(std::make_unique<uint8_t[]>(kStage)),
      table_(std::make_unique<Entry[]>(kMaxCodes)),
      piece_(std::make_unique<uint8_t[]>(kPiece + kMaxCodes + 8)),
      clear_code_(1u << min_code_size) {
  for (uint32_t code = 0; code < clear_code_; ++code)
    table_[code].suffix[0] = static_cast<uint8_t>(code);
  clear_table(state_);
}

void LzwDecoder::clear_table(State& state) const {
  state.next_code = clear_code_ + 2;
  state.code_bits = std::bit_width(clear_code_ + 1);
  state.previous = kNoCode;
}

// Moves what is left to the front and adds as many whole sub-blocks as fit.
void LzwDecoder::restage() {
  const size_t left = stage_end_ - stage_at_;
  std::memmove(stage_.get(), stage_.get() + stage_at_, left);
  stage_at_ = 0;
  stage_end_ = left;
  while (stage_end_ + 255 <= kStage) {
    const auto block = blocks_.take_up_to(blocks_.u8());
    if (block.empty()) {
      blocks_.rest();  // nothing counts after the terminator
      return;
    }
    std::memcpy(stage_.get() + stage_end_, block.data(), block.size());
    stage_end_ += block.size();
  }
}

// At least a code's worth of bits, or false at the end of the data.
bool LzwDecoder::fill_bits() {
  State& s = state_;
  if (stage_end_ - stage_at_ < 8) restage();
  if (stage_end_ - stage_at_ >= 8) {
    uint64_t word;
    std::memcpy(&word, stage_.get() + stage_at_, 8);
    s.bits |= word << s.bit_count;
    stage_at_ += static_cast<size_t>(63 - s.bit_count) >> 3;
    s.bit_count |= 56;
    return true;
  }
  for (; s.bit_count <= 56 && stage_at_ < stage_end_; s.bit_count += 8)
    s.bits |= uint64_t{stage_[stage_at_++]} << s.bit_count;
  return s.bit_count >= s.code_bits;
}

// The previous string and one byte more.
inline void LzwDecoder::add_entry(Entry* table, State& state, uint8_t last_byte) {
  if (state.next_code >= kMaxCodes) return;
  const Entry& before = table[state.previous];
  Entry& entry = table[state.next_code++];
  const auto last = static_cast<uint16_t>(before.last + 1);
  if (last % 8 != 0) {
    entry = before;
  } else {
    entry.prefix = static_cast<uint16_t>(state.previous);
  }
  entry.suffix[last % 8] = last_byte;
  entry.last = last;
  if (state.next_code == 1u << state.code_bits && state.code_bits < kMaxCodeBits) ++state.code_bits;
}

std::span<const uint8_t> LzwDecoder::next() {
  uint8_t* const start = piece_.get();
  uint8_t* dst = start;
  Entry* const table = table_.get();
  const uint32_t clear_code = clear_code_;
  State s = state_;
  while (!ended_ && dst < start + kPiece) {
    if (s.bit_count < s.code_bits) {
      state_ = s;
      ended_ = !fill_bits();
      s = state_;
      if (ended_) break;
    }
    const auto code = static_cast<uint32_t>(s.bits & ((1u << s.code_bits) - 1));
    s.bits >>= s.code_bits;
    s.bit_count -= s.code_bits;

    if (code == clear_code) {
      clear_table(s);
      continue;
    }
    const bool first_code = s.previous == kNoCode;
    if (code == clear_code + 1 || code > s.next_code || (first_code && code > clear_code)) {
      ok_ = code == clear_code + 1;
      ended_ = true;
      break;
    }
    const bool own_tail = code == s.next_code;  // the string that this very code completes
    if (own_tail) add_entry(table, s, s.previous_first);

    const Entry* entry = &table[code];
    const size_t length = entry->last + size_t{1};
    uint8_t* at = dst + (entry->last & ~7u);
    std::memcpy(at, entry->suffix, 8);
    while (at != dst) {
      entry = &table[entry->prefix];
      at -= 8;
      std::memcpy(at, entry->suffix, 8);
    }
    s.previous_first = *dst;
    if (!first_code && !own_tail) add_entry(table, s, s.previous_first);
    s.previous = code;
    dst += length;
  }
  state_ = s;
  return {start, dst};
}

namespace {

// Codes go out low bit first, in sub-blocks.
class CodeWriter {
 public:
  explicit CodeWriter(std::vector<uint8_t>& out) : out_(out) { open_block(); }
  void put(uint32_t code, int bits) {
    pending_ |= code << pending_bits_;
    for (pending_bits_ += bits; pending_bits_ >= 8; pending_bits_ -= 8, pending_ >>= 8)
      flush_byte();
  }
  void finish() {
    if (pending_bits_ > 0) flush_byte();
    if (out_.size() - length_at_ > 1) {
      close_block();
      open_block();
    }
    // The length byte of the empty block is the terminator.
  }

 private:
  void open_block() {
    length_at_ = out_.size();
    out_.push_back(0);
  }
  void close_block() { out_[length_at_] = static_cast<uint8_t>(out_.size() - length_at_ - 1); }
  void flush_byte() {
    if (out_.size() - length_at_ > 255) {
      close_block();
      open_block();
    }
    out_.push_back(static_cast<uint8_t>(pending_));
  }

  std::vector<uint8_t>& out_;
  size_t length_at_ = 0;
  uint32_t pending_ = 0;
  int pending_bits_ = 0;
};

// String and next index to code: open addressing, at most half full.
class CodeTable {
 public:
  CodeTable() : slots_(kSlots) {}
  void clear() { slots_.assign(kSlots, Slot{}); }
  /// The code of the longer string, or 0 after taking `new_code` for it.
  uint32_t find_or_add(uint32_t prefix, uint8_t index, uint32_t new_code) {
    const uint32_t key = (prefix << 8 | index) + 1;
    for (uint32_t at = key * 0x9E3779B1u >> kHashShift;; at = (at + 1) % kSlots) {
      Slot& slot = slots_[at];
      if (slot.key == key) return slot.code;
      if (slot.key != 0) continue;
      slot = {key, new_code};
      return 0;
    }
  }

 private:
  struct Slot {
    uint32_t key = 0;
    uint32_t code = 0;
  };
  static constexpr uint32_t kSlots = 8192;
  static constexpr int kHashShift = 32 - 13;
  std::vector<Slot> slots_;
};

}  // namespace

void lzw_encode(std::span<const uint8_t> indexes, int min_code_size, std::vector<uint8_t>& out) {
  const uint32_t clear_code = 1u << min_code_size;
  CodeWriter writer(out);
  CodeTable table;
  int bits = min_code_size + 1;
  uint32_t next_code = clear_code + 2;
  writer.put(clear_code, bits);
  if (!indexes.empty()) {
    uint32_t prefix = indexes[0];
    for (const uint8_t index : indexes.subspan(1)) {
      if (const uint32_t code = table.find_or_add(prefix, index, next_code); code != 0) {
        prefix = code;
        continue;
      }
      writer.put(prefix, bits);
      prefix = index;
      if (next_code == kMaxCodes) {
        writer.put(clear_code, bits);
        table.clear();
        bits = min_code_size + 1;
        next_code = clear_code + 2;
      } else if (next_code++ == 1u << bits) {
        ++bits;
      }
    }
    writer.put(prefix, bits);
    if (next_code == 1u << bits && bits < kMaxCodeBits) ++bits;
  }
  writer.put(clear_code + 1, bits);
  writer.finish();
}

}  // namespace kestrelon::gif
