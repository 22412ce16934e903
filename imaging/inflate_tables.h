// Look-up tables for the Huffman codes of deflate (RFC 1951, section 3.2).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrelon {

// A table is indexed by the next bits of the stream. Codes longer than the index lead to a subtable
// behind it. Entries are 32 bits:
//
//   bits 0-4    bits that the entry takes from the stream, extra bits included
//   bits 8-11   of a length or distance: bits of the code alone; of a pointer: index bits of the
//               subtable; of a literal: how many bytes it stands for, 1 or 2
//   bit 13      end of block
//   bit 14      anything but a value: pointer to a subtable, end of block (with bit 13) or a code
//               that stands for nothing (bit 12)
//   bit 15      literal
//   bits 16-31  literal bytes, base of length or distance, or place of the subtable
constexpr uint32_t kEntryInvalid = 1u << 12;
constexpr uint32_t kEntryEndOfBlock = 1u << 13;
constexpr uint32_t kEntryException = 1u << 14;
constexpr uint32_t kEntryLiteral = 1u << 15;

constexpr unsigned kLitLenBits = 11;
constexpr unsigned kDistBits = 9;
constexpr unsigned kPrecodeBits = 7;
constexpr unsigned kMaxCodeBits = 15;
constexpr size_t kLitLenSymbols = 288;
constexpr size_t kDistSymbols = 32;
constexpr size_t kPrecodeSymbols = 19;

// A subtable of 2^d entries belongs to a complete subtree of depth d, which has at least d + 1
// codes. With d up to 15 - index bits that bounds the entries of all subtables together.
constexpr size_t table_capacity(size_t symbols, unsigned index_bits) {
  const size_t depth = kMaxCodeBits - index_bits;
  return (size_t{1} << index_bits) + ((symbols << depth) + depth) / (depth + 1);
}

struct InflateTables {
  std::array<uint32_t, table_capacity(kLitLenSymbols, kLitLenBits)> lit_len;
  std::array<uint32_t, table_capacity(kDistSymbols, kDistBits)> dist;
  std::array<uint32_t, size_t{1} << kPrecodeBits> precode;

  /// Each builds one table out of the code lengths of its symbols (0: unused). False if the lengths
  /// are no prefix code: over-subscribed, or incomplete with more than a single code of one bit.
  bool build_lit_len(std::span<const uint8_t> lengths);
  bool build_dist(std::span<const uint8_t> lengths);
  /// The code of the code lengths must be complete.
  bool build_precode(std::span<const uint8_t> lengths);
  /// The codes of a block with fixed codes.
  void build_fixed();
};

}  // namespace kestrelon
