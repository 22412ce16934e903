// The variable-length code of GIF pixel data, both ways.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/byte_reader.h"
#include "imaging/gif_format.h"

namespace kestrelon::gif {

/// Decodes the data sub-blocks of one image into palette indexes, a piece at a time.
///
/// Each table entry holds the last one to eight bytes of its string and the code of what stands
/// before them, so that a string is written eight bytes at a time from its end.
class LzwDecoder {
 public:
  /// `sub_blocks` starts with the first length byte and outlives the decoder; the data ends with
  /// the terminator or with the span. `min_code_size` is 1 to 8.
  LzwDecoder(std::span<const uint8_t> sub_blocks, int min_code_size);

  /// Some more indexes, valid until the next call. None after the end code, at the end of the data
  /// or once a code stood for nothing, which `ok()` then tells.
  std::span<const uint8_t> next();
  bool ok() const { return ok_; }

 private:
  struct Entry {
    uint8_t suffix[8];
    uint16_t prefix;
    uint16_t last;  // length of the string minus 1
  };
  static constexpr uint32_t kNoCode = 0xFFFF;
  static constexpr size_t kPiece = 16384;  // indexes a call, but for the last string
  static constexpr size_t kStage = 8192;

  // What changes with every code. The loop works on a copy of its own, which the bytes that it
  // writes cannot be suspected to alias.
  struct State {
    uint64_t bits = 0;  // taken out of the stage, next code lowest
    int bit_count = 0;
    int code_bits = 0;
    uint32_t next_code = 0;
    uint32_t previous = kNoCode;
    uint8_t previous_first = 0;
  };

  void restage();
  bool fill_bits();
  void clear_table(State& state) const;
  static void add_entry(Entry* table, State& state, uint8_t last_byte);

  ByteReader blocks_;
  std::unique_ptr<uint8_t[]> stage_;  // sub-block data without its length bytes
  size_t stage_at_ = 0, stage_end_ = 0;
  std::unique_ptr<Entry[]> table_;
  std::unique_ptr<uint8_t[]> piece_;
  uint32_t clear_code_;
  State state_;
  bool ended_ = false, ok_ = true;
};

/// Appends the code of `indexes` (each below 2 to the power of `min_code_size`, 2 to 8) to `out`:
/// sub-blocks of up to 255 bytes and their terminator, without the leading code size byte.
void lzw_encode(std::span<const uint8_t> indexes, int min_code_size, std::vector<uint8_t>& out);

}  // namespace kestrelon::gif
