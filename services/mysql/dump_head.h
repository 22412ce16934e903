// The lines by which a restore knows an exact dump, and knows that it is whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/system_file.h"

namespace kestrelon {

/// First line of an exact dump.
inline constexpr std::string_view kExactMark = "-- Kestrelon 2012: exact dump 1, UTF-8";

/// What the last line of an exact dump tells.
struct DumpTotals {
  int64_t tables = 0;
  int64_t rows = 0;
  int64_t objects = 0;  // other than tables
  int64_t statements = 0;
};

std::string closing_line(const DumpTotals& totals);
std::optional<DumpTotals> read_closing_line(std::string_view line);

enum class DumpKind : uint8_t {
  kTold,    // lines as Backup writes them by default, or any other script
  kExact,   // our exact form
  kServers  // of the server's own dump tool
};

/// Kind by the first bytes, which may start with a byte order mark.
DumpKind kind_of_dump(std::string_view head);
/// The first bytes of a file, at most 4096; the file stands at its start again.
std::string head_of(SystemFile& file);
/// The last line that is not empty, at most 4096 bytes of it; the file stands at its start again.
std::string last_line_of(SystemFile& file);

}  // namespace kestrelon
