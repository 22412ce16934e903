// The inner loop of the decompressor, for a bit buffer of 32 or 64 bits.
#pragma once

#include <cstring>

#include "imaging/inflate.h"

namespace kestrelon {

// What the loop may touch beyond its limits. An iteration loads words at up to two refills (64
// bits) or four (32 bits), each of which advances by less than a word, and writes at most four
// literal entries of two bytes, or two and a match, whose copy ends up to 31 bytes behind its last
// byte.
constexpr size_t kInSlack = 48;
constexpr size_t kOutSlack = 320;

template <typename Word>
inline Word load_word(const uint8_t* p) {
  Word word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

// The load comes before the store, so the two places may overlap.
template <size_t Size>
inline void copy_block(uint8_t* dst, const uint8_t* src) {
  uint64_t words[Size / 8];
  std::memcpy(words, src, Size);
  std::memcpy(dst, words, Size);
}

// Copies `length` bytes from `distance` bytes back; writes up to 31 bytes more than that.
[[gnu::always_inline]] inline void copy_match(uint8_t* out, size_t distance, size_t length) {
  const uint8_t* src = out - distance;
  uint8_t* const end = out + length;
  if (distance >= 16) {
    copy_block<16>(out, src);
    if (length <= 16) return;
    do {
      out += 16;
      src += 16;
      copy_block<16>(out, src);
    } while (out + 16 < end);
  } else if (distance >= 8) {
    do {
      copy_block<8>(out, src);
      out += 8;
      src += 8;
    } while (out < end);
  } else if (distance == 1) {
    const uint64_t word = 0x0101010101010101u * *src;
    do {
      std::memcpy(out, &word, 8);
      out += 8;
    } while (out < end);
  } else {
    // Each step settles `distance` bytes that the next one reads.
    do {
      copy_block<8>(out, src);
      out += distance;
      src += distance;
    } while (out < end);
  }
}

template <typename Word>
struct InflateLoop {
  static constexpr unsigned kWordBits = sizeof(Word) * 8;
  static constexpr bool kWide = sizeof(Word) == 8;
  // A refill leaves at least so many bits.
  static constexpr unsigned kRefill = kWordBits - 8;
  static constexpr Word kLitLenMask = (Word{1} << kLitLenBits) - 1;
  static constexpr Word kDistMask = (Word{1} << kDistBits) - 1;
  // Three literals of a full index each, and a length with its extra bits, come out of one refill.
  static_assert(!kWide || 3 * kLitLenBits + kMaxCodeBits + 5 <= kRefill);
  static_assert(kMaxCodeBits + 13 <= kRefill || !kWide);
  static_assert(!kWide || 5 * kLitLenBits <= kRefill);
  static_assert((kWide ? kMaxCodeBits : 0) + 13 + kLitLenBits <= kRefill);
  static_assert(2 * kLitLenBits <= kRefill);
  static_assert(kMaxCodeBits + 5 <= kRefill);

  enum class Exit { Limit, EndOfBlock, Error };

  // Decodes until `in` or `out` pass their limits or the block ends. The caller guarantees kInSlack
  // readable bytes behind `in_limit` and kOutSlack writable ones behind `out_limit`; output starts
  // at `history`, and nothing before it is copied.
  [[gnu::always_inline]] static inline Exit run(Inflater& s, const uint8_t* in_limit,
                                                const uint8_t* history) {
    const uint32_t* const lit_len = s.tables_.lit_len.data();
    const uint32_t* const dist = s.tables_.dist.data();
    const uint8_t* in = s.in_;
    uint8_t* out = s.out_;
    uint8_t* const out_limit = s.out_limit_;
    unsigned count = s.bit_count_;  // fits the word: headers take no more than 16 bits at a time
    Word bits = static_cast<Word>(s.bits_) & ((Word{1} << count) - 1);

    auto refill = [&]() __attribute__((always_inline)) {
      bits |= load_word<Word>(in) << count;
      in += (kWordBits - 1 - count) >> 3;
      count |= kRefill;
    };
    auto look_up = [&]() __attribute__((always_inline)) {
      return lit_len[bits & kLitLenMask];
    };
    auto drop = [&](uint32_t entry) __attribute__((always_inline)) {
      bits >>= entry & (kWordBits - 1);
      count -= entry & 31;
    };
    auto emit = [&](uint32_t entry) __attribute__((always_inline)) {
      const uint16_t pair = static_cast<uint16_t>(entry >> 16);
      std::memcpy(out, &pair, 2);
      out += (entry >> 8) & 3;
    };
    auto pause = [&](Exit exit) __attribute__((always_inline)) {
      s.in_ = in;
      s.out_ = out;
      s.bit_count_ = count;
      s.bits_ = bits & ((Word{1} << count) - 1);
      return exit;
    };

    // Each look-up for the next round comes early, so that its time is hidden behind other work; a
    // full index of bits is left over wherever that is done, and a refill does not change it.
    refill();
    uint32_t entry = look_up();
    while (in < in_limit && out < out_limit) {
      refill();
      if (entry & kEntryLiteral) {
        emit(entry);
        drop(entry);
        entry = look_up();
        if (entry & kEntryLiteral) {
          emit(entry);
          drop(entry);
          if constexpr (!kWide) {
            refill();
            entry = look_up();
            continue;
          }
          entry = look_up();
          if (entry & kEntryLiteral) {
            emit(entry);
            drop(entry);
            entry = look_up();
            if (entry & kEntryLiteral) {
              emit(entry);
              drop(entry);
              entry = look_up();
              continue;
            }
          }
        }
        if constexpr (!kWide) refill();
      }
      if (entry & kEntryException) [[unlikely]] {
        if (!(entry & (kEntryEndOfBlock | kEntryInvalid))) {
          drop(entry);
          entry = lit_len[(entry >> 16) + (bits & ((Word{1} << ((entry >> 8) & 15)) - 1))];
          if (entry & kEntryLiteral) {
            emit(entry);
            drop(entry);
            refill();
            entry = look_up();
            continue;
          }
        }
        if (entry & kEntryException) {
          drop(entry);
          return pause(entry & kEntryEndOfBlock ? Exit::EndOfBlock : Exit::Error);
        }
      }
      Word saved = bits;
      drop(entry);
      const size_t length =
          (entry >> 16) +
          static_cast<size_t>((saved & ((Word{1} << (entry & 31)) - 1)) >> ((entry >> 8) & 15));

      refill();
      entry = dist[bits & kDistMask];
      if (entry & kEntryException) [[unlikely]] {
        if (entry & kEntryInvalid) return pause(Exit::Error);
        drop(entry);
        entry = dist[(entry >> 16) + (bits & ((Word{1} << ((entry >> 8) & 15)) - 1))];
        if (entry & kEntryException) return pause(Exit::Error);
      }
      if constexpr (!kWide) {
        // Code first, so that the refill makes room for the extra bits.
        const uint32_t code_bits = (entry >> 8) & 15;
        drop(code_bits);
        refill();
        entry = (entry & 0xFFFF0000u) | ((entry & 31) - code_bits);
      }
      saved = bits;
      drop(entry);
      const size_t distance =
          (entry >> 16) +
          static_cast<size_t>((saved & ((Word{1} << (entry & 31)) - 1)) >> ((entry >> 8) & 15));
      if (distance > static_cast<size_t>(out - history)) [[unlikely]]
        return pause(Exit::Error);
      entry = look_up();
      copy_match(out, distance, length);
      out += length;
    }
    return pause(Exit::Limit);
  }
};

}  // namespace kestrelon
