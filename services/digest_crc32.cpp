#include "services/digest_crc32.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace kestrelon {
namespace {

static_assert(std::endian::native == std::endian::little, "words of the input are read in place");

constexpr uint32_t kPolynomial = 0xEDB88320;
constexpr size_t kSlices = 16;

// Table 0 takes one byte through eight shifts; table k takes it through k bytes of zeros more.
constexpr auto kTables = [] {
  std::array<std::array<uint32_t, 256>, kSlices> tables{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t entry = i;
    for (int bit = 0; bit < 8; ++bit) entry = (entry >> 1) ^ (entry & 1 ? kPolynomial : 0);
    tables[0][i] = entry;
  }
  for (size_t k = 1; k < kSlices; ++k)
    for (size_t i = 0; i < 256; ++i) {
      const uint32_t before = tables[k - 1][i];
      tables[k][i] = (before >> 8) ^ tables[0][before & 0xFF];
    }
  return tables;
}();

// Four bytes whose last one is followed by `Behind` bytes of the slice.
template <size_t Behind>
inline uint32_t look_up(uint32_t word) {
  return kTables[Behind + 3][word & 0xFF] ^ kTables[Behind + 2][word >> 8 & 0xFF] ^
         kTables[Behind + 1][word >> 16 & 0xFF] ^ kTables[Behind][word >> 24];
}

}  // namespace

// Slicing by 16 after Kounavis and Berry, "A Systematic Approach to Building High Performance,
// Software-based, CRC Generators" (2005).
uint32_t crc32_detail::by_tables(std::span<const uint8_t> bytes, uint32_t state) {
  const uint8_t* at = bytes.data();
  size_t left = bytes.size();
  for (; left >= kSlices; left -= kSlices, at += kSlices) {
    uint32_t words[4];
    std::memcpy(words, at, sizeof words);
    state = look_up<12>(words[0] ^ state) ^ look_up<8>(words[1]) ^ look_up<4>(words[2]) ^
            look_up<0>(words[3]);
  }
  for (; left > 0; --left, ++at) state = (state >> 8) ^ kTables[0][(state ^ *at) & 0xFF];
  return state;
}

uint32_t crc32(std::span<const uint8_t> bytes, uint32_t crc) {
  static const bool multiplies = crc32_detail::has_multiplication();
  const uint32_t state = ~crc;
  return ~(multiplies ? crc32_detail::by_multiplication(bytes, state)
                      : crc32_detail::by_tables(bytes, state));
}

}  // namespace kestrelon
