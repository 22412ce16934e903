#include "services/mysql/dump_head.h"

#include <array>
#include <charconv>

#include "services/mysql/file_errors.h"

namespace kestrelon {
namespace {

constexpr size_t kMostHead = 4096;
constexpr std::array<std::string_view, 4> kTotals = {
    ": end; tables=", " rows=", " objects=", " statements="};
constexpr std::string_view kProduct = "-- Kestrelon 2012";

void seek(SystemFile& file, uint64_t offset) {
  if (!file.seek(offset)) throw read_error();
}

std::string read_at(SystemFile& file, uint64_t from) {
  std::string bytes(kMostHead, '\0');
  seek(file, from);
  size_t size = 0;
  while (size < kMostHead) {
    const auto length =
        file.read({reinterpret_cast<uint8_t*>(bytes.data()) + size, kMostHead - size});
    if (!length) throw read_error();
    if (*length == 0) break;
    size += *length;
  }
  bytes.resize(size);
  seek(file, 0);
  return bytes;
}

}  // namespace

std::string closing_line(const DumpTotals& totals) {
  const int64_t numbers[] = {totals.tables, totals.rows, totals.objects, totals.statements};
  std::string line(kProduct);
  for (size_t i = 0; i < kTotals.size(); ++i)
    line.append(kTotals[i]).append(std::to_string(numbers[i]));
  return line;
}

std::optional<DumpTotals> read_closing_line(std::string_view line) {
  if (!line.starts_with(kProduct)) return std::nullopt;
  line.remove_prefix(kProduct.size());
  int64_t numbers[kTotals.size()] = {};
  for (size_t i = 0; i < kTotals.size(); ++i) {
    if (!line.starts_with(kTotals[i])) return std::nullopt;
    line.remove_prefix(kTotals[i].size());
    const auto read = std::from_chars(line.data(), line.data() + line.size(), numbers[i]);
    if (read.ec != std::errc()) return std::nullopt;
    line.remove_prefix(static_cast<size_t>(read.ptr - line.data()));
  }
  if (!line.empty()) return std::nullopt;
  return DumpTotals{numbers[0], numbers[1], numbers[2], numbers[3]};
}

DumpKind kind_of_dump(std::string_view head) {
  if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
  if (head.starts_with(kExactMark)) return DumpKind::kExact;
  for (const std::string_view mark : {"-- MariaDB dump", "-- MySQL dump", "/*!", "/*M!"})
    if (head.starts_with(mark)) return DumpKind::kServers;
  return DumpKind::kTold;
}

std::string head_of(SystemFile& file) {
  return read_at(file, 0);
}

std::string last_line_of(SystemFile& file) {
  const uint64_t size = file.size().value_or(0);
  std::string tail = read_at(file, size > kMostHead ? size - kMostHead : 0);
  while (!tail.empty() && static_cast<unsigned char>(tail.back()) <= ' ') tail.pop_back();
  return tail.substr(tail.find_last_of("\r\n") + 1);  // from 0 without a line end
}

}  // namespace kestrelon
