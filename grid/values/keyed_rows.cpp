#include "grid/values/keyed_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>

namespace kestrelon {
namespace {

// Up to so many rows shifting, then merging, is cheaper than counting bytes.
constexpr size_t kFewRows = 24;
constexpr size_t kSomeRows = 768;
constexpr int kKeyBytes = 8;
constexpr size_t kSampleRows = 4096;

void insertion_sort(std::span<KeyedRow> rows) {
  for (size_t i = 1; i < rows.size(); ++i) {
    const KeyedRow moved = rows[i];
    size_t at = i;
    for (; at > 0 && rows[at - 1].key > moved.key; --at) rows[at] = rows[at - 1];
    rows[at] = moved;
  }
}

using Counts = std::array<uint32_t, 256>;

uint8_t byte_of(uint64_t key, int byte) {
  return static_cast<uint8_t>(key >> (8 * byte));
}

// Up to eight bytes, the first one highest.
uint64_t word_of(std::string_view bytes) {
  uint64_t word = 0;
  for (size_t i = 0; i < std::min<size_t>(bytes.size(), kKeyBytes); ++i)
    word |= uint64_t{static_cast<uint8_t>(bytes[i])} << (8 * (kKeyBytes - 1 - i));
  return word;
}

}  // namespace

uint64_t number_key(double value) {
  if (std::isnan(value)) return ~uint64_t{0};
  const auto bits = std::bit_cast<uint64_t>(value + 0.0);  // one zero only
  constexpr uint64_t kSign = uint64_t{1} << 63;
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

void sort_by_key(std::span<KeyedRow> rows, std::span<KeyedRow> scratch) {
  if (rows.size() <= kFewRows) return insertion_sort(rows);
  if (rows.size() <= kSomeRows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const KeyedRow& a, const KeyedRow& b) { return a.key < b.key; });
    return;
  }
  std::array<Counts, kKeyBytes> counts{};
  for (const KeyedRow& row : rows)
    for (int byte = 0; byte < kKeyBytes; ++byte)
      ++counts[static_cast<size_t>(byte)][byte_of(row.key, byte)];
  std::span<KeyedRow> from = rows, to = scratch.first(rows.size());
  for (int byte = 0; byte < kKeyBytes; ++byte) {
    Counts& places = counts[static_cast<size_t>(byte)];
    if (places[byte_of(from[0].key, byte)] == rows.size()) continue;  // the same in all
    uint32_t place = 0;
    for (uint32_t& count : places) place += std::exchange(count, place);
    for (const KeyedRow& row : from) to[places[byte_of(row.key, byte)]++] = row;
    std::swap(from, to);
  }
  if (from.data() != rows.data()) std::copy(from.begin(), from.end(), rows.begin());
}

void ByteKeyedRows::start(size_t expected_rows) {
  expected_ = expected_rows;
  rows_.clear();
  words_.clear();
  rows_.reserve(expected_rows);
}

void ByteKeyedRows::add(int32_t row, std::string_view key) {
  if (rows_.size() == kSampleRows) {
    const size_t words = words_.size() * expected_ / kSampleRows;
    words_.reserve(words + words / 8);
  }
  rows_.push_back({ordered(word_of(key)), row, static_cast<uint32_t>(words_.size())});
  for (size_t at = kKeyBytes; at < key.size(); at += kKeyBytes)
    words_.push_back(word_of(key.substr(at)));
}

std::vector<KeyedRow>& ByteKeyedRows::sorted() {
  scratch_.resize(rows_.size());
  open_.assign(1, {0, rows_.size(), 0});
  while (!open_.empty()) {
    const Range range = open_.back();
    open_.pop_back();
    const std::span rows = std::span(rows_).subspan(range.begin, range.end - range.begin);
    sort_by_key(rows, scratch_);
    deepen_ties(range);
  }
  return rows_;
}

// Rows that agree so far go on with their next eight bytes.
void ByteKeyedRows::deepen_ties(const Range& range) {
  for (size_t begin = range.begin; begin < range.end;) {
    const uint64_t key = rows_[begin].key;
    size_t end = begin + 1;
    while (end < range.end && rows_[end].key == key) ++end;
    const bool ended = (ordered(key) & 0xFF) == 0;
    if (end - begin > 1 && !ended) {
      for (size_t i = begin; i < end; ++i)
        rows_[i].key = ordered(words_[rows_[i].rest + range.depth]);
      open_.push_back({begin, end, range.depth + 1});
    }
    begin = end;
  }
}

}  // namespace kestrelon
