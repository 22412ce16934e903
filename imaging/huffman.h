// Optimal Huffman codes for JPEG.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kestrelon {

/// Builds, from how often each symbol occurs, the code table of a JPEG scan: no code is longer than
/// 16 bits or consists of ones alone (ITU-T T.81, Annex K.2 and Annex C).
class cHuffman {
 public:
  static constexpr int kLongestCode = 16;

  void count(uint8_t symbol) { ++frequencies_[symbol]; }
  /// Settles the codes; at least one symbol has been counted.
  void build();

  /// Number of codes of each length, 1 bit first, and the symbols in the order of their codes: the
  /// contents of a table segment.
  const std::array<uint8_t, kLongestCode>& lengths() const { return lengths_; }
  const std::vector<uint8_t>& symbols() const { return symbols_; }

  /// The code of a symbol that was counted, right-aligned, and its length in bits.
  uint32_t code(uint8_t symbol) const { return codes_[symbol]; }
  int code_bits(uint8_t symbol) const { return code_bits_[symbol]; }

 private:
  std::array<uint32_t, 256> frequencies_{};
  std::array<uint8_t, kLongestCode> lengths_{};
  std::vector<uint8_t> symbols_;
  std::array<uint16_t, 256> codes_{};
  std::array<uint8_t, 256> code_bits_{};
};

}  // namespace kestrelon
