// Bytes packed with an optimal Huffman code of their own.
//
//   32 bits   bytes before packing
//   16 bytes  how many codes have 1 bit, 2 bits ... 16 bits
//   n bytes   the byte values in the order of their codes, shortest first
//   the codes, highest bit first, the last byte filled up with zeros
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrelon {

/// The block for `plain`, which is not empty and shorter than 4 GB.
std::vector<uint8_t> huffman_pack(std::span<const uint8_t> plain);

/// The bytes of a block, or nothing if it is not sound. A block cannot promise more than its codes
/// could hold, nor more than `limit`; both are checked before memory is taken.
std::optional<std::vector<uint8_t>> huffman_unpack(std::span<const uint8_t> block, size_t limit);

}  // namespace kestrelon
