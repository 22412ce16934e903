#include "imaging/inflate_tables.h"

#include <algorithm>
#include <cstring>

namespace kestrelon {
namespace {

constexpr std::array<uint16_t, 29> kLengthBase = {3,  4,  5,  6,   7,   8,   9,   10,  11, 13,
                                                  15, 17, 19, 23,  27,  31,  35,  43,  51, 59,
                                                  67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::array<uint8_t, 29> kLengthExtra = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                  2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr std::array<uint16_t, 30> kDistBase = {
    1,   2,   3,   4,   5,   7,    9,    13,   17,   25,   33,   49,   65,    97,    129,
    193, 257, 385, 513, 769, 1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577};

// What an entry says beside the bits of its code; the extra bits stand in bits 0-4.
constexpr uint32_t lit_len_payload(size_t symbol) {
  if (symbol < 256) return kEntryLiteral | 1u << 8 | static_cast<uint32_t>(symbol) << 16;
  if (symbol == 256) return kEntryException | kEntryEndOfBlock;
  if (symbol >= 257 + kLengthBase.size()) return kEntryException | kEntryInvalid;
  const size_t i = symbol - 257;
  return static_cast<uint32_t>(kLengthBase[i]) << 16 | kLengthExtra[i];
}

constexpr uint32_t dist_payload(size_t symbol) {
  if (symbol >= kDistBase.size()) return kEntryException | kEntryInvalid;
  const uint32_t extra = symbol < 4 ? 0 : static_cast<uint32_t>(symbol / 2 - 1);
  return static_cast<uint32_t>(kDistBase[symbol]) << 16 | extra;
}

constexpr uint32_t precode_payload(size_t symbol) {
  return static_cast<uint32_t>(symbol) << 16;
}

template <size_t N>
constexpr std::array<uint32_t, N> payloads(uint32_t (*payload)(size_t)) {
  std::array<uint32_t, N> table{};
  for (size_t i = 0; i < N; ++i) table[i] = payload(i);
  return table;
}

constexpr auto kLitLenPayloads = payloads<kLitLenSymbols>(lit_len_payload);
constexpr auto kDistPayloads = payloads<kDistSymbols>(dist_payload);
constexpr auto kPrecodePayloads = payloads<kPrecodeSymbols>(precode_payload);

// Literals say in bits 8-11 how many bytes they are; the others how long their code is.
uint32_t finish_entry(uint32_t payload, unsigned code_bits) {
  const uint32_t code_field = payload & kEntryLiteral ? 0 : code_bits << 8;
  return (payload | code_field) + code_bits;
}

struct SortedCode {
  std::array<uint16_t, kMaxCodeBits + 1> count{};
  std::array<uint16_t, kLitLenSymbols> symbols;  // by code length, then by value
  size_t used = 0;
  unsigned max_bits = 0;
  uint32_t missing = 0;  // code space left over, in units of 2^-15

  // False: over-subscribed.
  bool sort(std::span<const uint8_t> lengths) {
    for (uint8_t n : lengths) ++count[n];
    used = lengths.size() - count[0];
    count[0] = 0;
    uint32_t taken = 0;
    std::array<uint16_t, kMaxCodeBits + 2> place{};
    for (unsigned n = 1; n <= kMaxCodeBits; ++n) {
      taken += static_cast<uint32_t>(count[n]) << (kMaxCodeBits - n);
      place[n + 1] = static_cast<uint16_t>(place[n] + count[n]);
      if (count[n]) max_bits = n;
    }
    if (taken > 1u << kMaxCodeBits) return false;
    missing = (1u << kMaxCodeBits) - taken;
    for (size_t s = 0; s < lengths.size(); ++s) {
      if (lengths[s]) symbols[place[lengths[s]]++] = static_cast<uint16_t>(s);
    }
    return true;
  }
};

// The code after `code` of `bits` bits, both with their bits in stream order (first bit lowest).
uint32_t next_code(uint32_t code, unsigned bits) {
  uint32_t bit = 1u << (bits - 1);
  while (code & bit) bit >>= 1;
  return bit ? (code & (bit - 1)) | bit : 0;
}

// Fills subtables for the codes above `index_bits` bits; `code` is the first of them, symbols[i]
// its symbol. False if they do not fit, which a complete code excludes.
bool fill_subtables(std::span<uint32_t> table, unsigned index_bits, SortedCode& sorted,
                    const uint32_t* payload, uint32_t code, size_t i) {
  size_t end = size_t{1} << index_bits;
  size_t start = 0;
  unsigned sub_bits = 0;
  uint32_t prefix = ~0u;
  const uint32_t prefix_mask = (1u << index_bits) - 1;
  for (unsigned bits = index_bits + 1; bits <= sorted.max_bits; ++bits) {
    for (; sorted.count[bits]; --sorted.count[bits], ++i) {
      if ((code & prefix_mask) != prefix) {
        prefix = code & prefix_mask;
        start = end;
        // As deep as the codes that share this prefix: those left of each length in turn.
        sub_bits = bits - index_bits;
        uint32_t open = sorted.count[bits];
        while (open < 1u << sub_bits && index_bits + sub_bits < sorted.max_bits) {
          ++sub_bits;
          open = (open << 1) + sorted.count[index_bits + sub_bits];
        }
        end = start + (size_t{1} << sub_bits);
        if (end > table.size()) return false;
        table[prefix] =
            kEntryException | static_cast<uint32_t>(start) << 16 | sub_bits << 8 | index_bits;
      }
      const uint32_t entry = finish_entry(payload[sorted.symbols[i]], bits - index_bits);
      for (size_t j = start + (code >> index_bits); j < end;
           j += size_t{1} << (bits - index_bits)) {
        table[j] = entry;
      }
      code = next_code(code, bits);
    }
  }
  return true;
}

// `payload` has an element for each symbol.
bool build_table(std::span<uint32_t> table, unsigned index_bits, std::span<const uint8_t> lengths,
                 const uint32_t* payload) {
  SortedCode sorted;
  if (!sorted.sort(lengths)) return false;
  const size_t index_size = size_t{1} << index_bits;
  if (sorted.missing) {
    // A single code of one bit is allowed, and so is none: bits that mean nothing fail when met.
    if (sorted.used > 1 || sorted.max_bits > 1) return false;
    std::fill_n(table.begin(), index_size, kEntryException | kEntryInvalid | 1u);
    if (sorted.used == 0) return true;
    const uint32_t entry = finish_entry(payload[sorted.symbols[0]], 1);
    for (size_t i = 0; i < index_size; i += 2) table[i] = entry;
    return true;
  }
  // The codes of up to n bits settle 2^n entries; each further bit doubles them.
  uint32_t code = 0;
  size_t i = 0;
  size_t size = 1;
  for (unsigned bits = 1; bits <= index_bits; ++bits) {
    std::memcpy(&table[size], &table[0], size * sizeof(uint32_t));
    size <<= 1;
    for (unsigned n = sorted.count[bits]; n; --n) {
      table[code] = finish_entry(payload[sorted.symbols[i++]], bits);
      code = next_code(code, bits);
    }
  }
  return i == sorted.used || fill_subtables(table, index_bits, sorted, payload, code, i);
}

// Where the bits behind a literal's code hold a second literal as a whole, the entry takes both.
// From the end, so that the second one, which stands at half the index or before, is still single.
void pair_literals(std::span<uint32_t> table) {
  for (size_t i = size_t{1} << kLitLenBits; i-- > 0;) {
    const uint32_t first = table[i];
    const uint32_t second = table[i >> (first & 31)];
    const uint32_t bits = (first & 31) + (second & 31);
    if ((first & second & kEntryLiteral) == 0 || bits > kLitLenBits) continue;
    table[i] = kEntryLiteral | 2u << 8 | bits | (first & 0xFF0000u) | (second & 0xFF0000u) << 8;
  }
}

}  // namespace

bool InflateTables::build_lit_len(std::span<const uint8_t> lengths) {
  // Without a code for the end of block no block could end.
  if (lengths.size() <= 256 || lengths[256] == 0 ||
      !build_table(lit_len, kLitLenBits, lengths, kLitLenPayloads.data())) {
    return false;
  }
  pair_literals(lit_len);
  return true;
}

bool InflateTables::build_dist(std::span<const uint8_t> lengths) {
  return build_table(dist, kDistBits, lengths, kDistPayloads.data());
}

bool InflateTables::build_precode(std::span<const uint8_t> lengths) {
  return std::any_of(lengths.begin(), lengths.end(), [](uint8_t n) { return n != 0; }) &&
         build_table(precode, kPrecodeBits, lengths, kPrecodePayloads.data()) &&
         !(precode[1] & kEntryInvalid);
}

void InflateTables::build_fixed() {
  std::array<uint8_t, kLitLenSymbols> lengths;
  std::fill_n(lengths.begin(), 144, uint8_t{8});
  std::fill_n(lengths.begin() + 144, 112, uint8_t{9});
  std::fill_n(lengths.begin() + 256, 24, uint8_t{7});
  std::fill_n(lengths.begin() + 280, 8, uint8_t{8});
  build_lit_len(lengths);
  std::array<uint8_t, kDistSymbols> distances;
  distances.fill(5);
  build_dist(distances);
}

}  // namespace kestrelon
