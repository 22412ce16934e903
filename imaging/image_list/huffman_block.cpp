#include "imaging/image_list/huffman_block.h"

#include <array>

#include "base/byte_reader.h"
#include "base/byte_writer.h"
#include "imaging/huffman.h"

namespace kestrelon {
namespace {

constexpr int kLongest = cHuffman::kLongestCode;

// What the next bits of a stream begin with; no bits where no code does.
struct Symbol {
  uint8_t value = 0;
  uint8_t bits = 0;
};

// By the next bits of the stream, as many as the longest code has.
struct DecodingTable {
  int bits = 0;
  std::vector<Symbol> entries;
};

// Nothing if the lengths allow no code.
std::optional<DecodingTable> decoding_table(std::span<const uint8_t> lengths,
                                            std::span<const uint8_t> symbols) {
  DecodingTable table;
  for (int bits = 1; bits <= kLongest; ++bits)
    if (lengths[static_cast<size_t>(bits - 1)] != 0) table.bits = bits;
  table.entries.resize(size_t{1} << table.bits);
  size_t next_entry = 0, next_symbol = 0;
  for (int bits = 1; bits <= table.bits; ++bits) {
    const size_t span = size_t{1} << (table.bits - bits);
    for (int i = 0; i < lengths[static_cast<size_t>(bits - 1)]; ++i, ++next_symbol) {
      if (next_entry + span > table.entries.size()) return std::nullopt;
      for (const size_t end = next_entry + span; next_entry < end; ++next_entry)
        table.entries[next_entry] = {symbols[next_symbol], static_cast<uint8_t>(bits)};
    }
  }
  return table;
}

}  // namespace

std::vector<uint8_t> huffman_pack(std::span<const uint8_t> plain) {
  cHuffman code;
  for (const uint8_t byte : plain) code.count(byte);
  code.build();
  std::vector<uint8_t> out;
  ByteWriter writer(out);
  writer.u32le(static_cast<uint32_t>(plain.size()));
  writer.bytes(code.lengths());
  writer.bytes(code.symbols());
  uint64_t pending = 0;
  int count = 0;  // bits in `pending`
  for (const uint8_t byte : plain) {
    pending = pending << code.code_bits(byte) | code.code(byte);
    for (count += code.code_bits(byte); count >= 8; count -= 8)
      out.push_back(static_cast<uint8_t>(pending >> (count - 8)));
  }
  if (count > 0) out.push_back(static_cast<uint8_t>(pending << (8 - count)));
  return out;
}

std::optional<std::vector<uint8_t>> huffman_unpack(std::span<const uint8_t> block, size_t limit) {
  ByteReader reader(block);
  const uint64_t size = reader.u32le();
  const auto lengths = reader.take(kLongest);
  size_t codes = 0;
  for (const uint8_t count : lengths) codes += count;
  const auto symbols = reader.take(codes);
  const auto stream = reader.rest();
  if (!reader.ok() || codes == 0 || codes > 256) return std::nullopt;
  if (size > limit || size > uint64_t{stream.size()} * 8) return std::nullopt;
  const auto table = decoding_table(lengths, symbols);
  if (!table) return std::nullopt;

  std::vector<uint8_t> out;
  out.reserve(static_cast<size_t>(size));
  uint64_t pending = 0;
  int count = 0;
  size_t next = 0;
  while (out.size() < size) {
    while (count < table->bits) {  // behind the end come zeros, which must not be used
      pending = pending << 8 | (next < stream.size() ? stream[next] : 0);
      ++next;
      count += 8;
    }
    const uint64_t mask = table->entries.size() - 1;
    const Symbol symbol = table->entries[pending >> (count - table->bits) & mask];
    if (symbol.bits == 0) return std::nullopt;
    count -= symbol.bits;
    out.push_back(symbol.value);
  }
  // Bits of bytes that were never there have been used.
  if (next > stream.size() && (next - stream.size()) * 8 > static_cast<size_t>(count))
    return std::nullopt;
  return out;
}

}  // namespace kestrelon
