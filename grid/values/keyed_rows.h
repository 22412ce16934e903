// Rows with keys computed once, sorted by their bits. Both sorts are stable.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

struct KeyedRow {
  uint64_t key = 0;
  int32_t row = 0;
  uint32_t rest = 0;  // where the rest of a byte key begins, in words
};

/// A key whose unsigned order is that of the numbers; NaN goes behind all.
uint64_t number_key(double value);

/// Sorts by `key`, n steps for each of its bytes that differ. `scratch` has the size of `rows`.
void sort_by_key(std::span<KeyedRow> rows, std::span<KeyedRow> scratch);

/// Rows with byte strings as keys: eight bytes with the row, the rest apart.
class ByteKeyedRows {
 public:
  explicit ByteKeyedRows(bool descending) : descending_(descending) {}

  /// `expected_rows` is a guess that sizes memory.
  void start(size_t expected_rows);
  /// `key` ends with its only byte 0.
  void add(int32_t row, std::string_view key);
  std::vector<KeyedRow>& sorted();

 private:
  struct Range {
    size_t begin, end;
    uint32_t depth;  // words of the keys already compared
  };

  uint64_t ordered(uint64_t word) const { return descending_ ? ~word : word; }
  void deepen_ties(const Range& range);

  bool descending_;
  size_t expected_ = 0;
  std::vector<KeyedRow> rows_, scratch_;
  std::vector<uint64_t> words_;  // the keys behind their first eight bytes
  std::vector<Range> open_;
};

}  // namespace kestrelon
