// CRC-32 with the reflected polynomial 0xEDB88320, as in ISO 3309 and zlib.
#pragma once

#include <cstdint>
#include <span>

namespace kestrelon {

/// Continues the checksum `crc` (0 to begin with) over `bytes`; pieces may be of any size. Uses
/// carry-less multiplication where the processor has it, which is looked up once.
uint32_t crc32(std::span<const uint8_t> bytes, uint32_t crc = 0);

namespace crc32_detail {

// The ways of doing it, on the bare register (inverted before and after by the caller).
uint32_t by_tables(std::span<const uint8_t> bytes, uint32_t state);
// Needs PCLMULQDQ and SSE4.1.
uint32_t by_multiplication(std::span<const uint8_t> bytes, uint32_t state);
bool has_multiplication();

}  // namespace crc32_detail
}  // namespace kestrelon
