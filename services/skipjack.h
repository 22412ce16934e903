// The Skipjack block cipher of FIPS 185: blocks of 64 bits, keys of 80 bits, 32 rounds.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrelon {

/// Four 16-bit words; the first byte of a block is the high byte of the first word.
using SkipjackBlock = std::array<uint16_t, 4>;

class Skipjack {
 public:
  static constexpr size_t kKeyBytes = 10;

  explicit Skipjack(const std::array<uint8_t, kKeyBytes>& key);

  /// Blocks are independent of each other and are changed in place.
  void encrypt(std::span<SkipjackBlock> blocks) const;
  void decrypt(std::span<SkipjackBlock> blocks) const;

 private:
  // The F-table as each key byte sees it: entry x of table i holds F(x ^ key[i]).
  using Tables = std::array<std::array<uint8_t, 256>, kKeyBytes>;
  Tables tables_;
};

}  // namespace kestrelon
